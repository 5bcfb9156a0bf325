// SPDX-License-Identifier: GPL-3.0-or-later
// The main window and its frame on screens of any size.
#include "shellbench.h"

#include "settings/settingskeys.h"
#include "shell/windowgeometry.h"
#include "support/testdirectory.h"

#include <QScreen>
#include <QSettings>
#include <QTest>
#include <QWindow>

class WindowGeometryTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void windowAndFrameLieInside_data();
    void windowAndFrameLieInside();
    void firstStartFitsTheScreen();
    void geometryOfALargerScreenIsFitted_data();
    void geometryOfALargerScreenIsFitted();
    void windowThatFitsKeepsItsGeometry();
    void sizeSetAfterwardsStays();
    void maximizedWindowStaysMaximized();

private:
    TestDirectory directory;
};

namespace {

QRect available()
{
    return QGuiApplication::primaryScreen()->availableGeometry();
}

// Waits until the window has been shown and its frame is known.
bool standsInside(const QWidget &window)
{
    return QTest::qWaitFor([&window] {
        return window.windowHandle() && window.windowHandle()->isExposed() &&
               available().contains(window.frameGeometry());
    });
}

} // namespace

void WindowGeometryTest::init()
{
    directory.clear();
    directory.setLanguage(QStringLiteral("en_US"));
}

void WindowGeometryTest::windowAndFrameLieInside_data()
{
    QTest::addColumn<QRect>("geometry");
    QTest::addColumn<QRect>("available");
    QTest::addColumn<QRect>("fitted");
    // The frame has 4 pixels at the left, 30 above, 5 at the right and 6 below.
    const QRect screen(0, 0, 1024, 768);
    QTest::newRow("has room") << QRect(100, 80, 600, 400) << screen << QRect(100, 80, 600, 400);
    QTest::newRow("fills the room") << QRect(4, 30, 1015, 732) << screen << QRect(4, 30, 1015, 732);
    QTest::newRow("too large") << QRect(0, 0, 1280, 800) << screen << QRect(4, 30, 1015, 732);
    QTest::newRow("as large as the screen") << QRect(0, 0, 1024, 768) << screen << QRect(4, 30, 1015, 732);
    QTest::newRow("too wide") << QRect(200, 100, 1100, 500) << screen << QRect(4, 100, 1015, 500);
    QTest::newRow("too high") << QRect(200, 100, 500, 900) << screen << QRect(200, 30, 500, 732);
    QTest::newRow("title above the screen") << QRect(50, 0, 500, 400) << screen << QRect(50, 30, 500, 400);
    QTest::newRow("left of the screen") << QRect(-90, 60, 500, 400) << screen << QRect(4, 60, 500, 400);
    QTest::newRow("right of the screen") << QRect(900, 60, 500, 400) << screen << QRect(519, 60, 500, 400);
    QTest::newRow("below the screen") << QRect(50, 700, 500, 400) << screen << QRect(50, 362, 500, 400);
    QTest::newRow("panel above and screen at the left")
        << QRect(-1500, 0, 2000, 900) << QRect(-1280, 40, 1280, 760) << QRect(-1276, 70, 1271, 724);
}

void WindowGeometryTest::windowAndFrameLieInside()
{
    QFETCH(QRect, geometry);
    QFETCH(QRect, available);
    QFETCH(QRect, fitted);
    QCOMPARE(fittedGeometry(geometry, {4, 30, 5, 6}, available), fitted);
}

void WindowGeometryTest::firstStartFitsTheScreen()
{
    QTranslator translator;
    MainWindow window(&translator);
    // As it is designed it would not.
    QVERIFY(QSize(1280, 800) != available().size().boundedTo(QSize(1280, 800)));
    window.show();
    QVERIFY(standsInside(window));
    // And takes what there is, with the frame that it has got and not the one that was expected.
    QTRY_COMPARE(window.frameGeometry(), available());
}

void WindowGeometryTest::geometryOfALargerScreenIsFitted_data()
{
    QTest::addColumn<QRect>("stored");
    QTest::newRow("larger") << QRect(40, 50, 2000, 1500);
    QTest::newRow("outside") << QRect(available().right() + 300, 60, 500, 400);
    QTest::newRow("title outside") << QRect(20, available().top() - 100, 500, 400);
}

void WindowGeometryTest::geometryOfALargerScreenIsFitted()
{
    QFETCH(QRect, stored);
    {
        QWidget before;
        before.setGeometry(stored);
        QSettings(settingsFile, QSettings::IniFormat).setValue(settingskey::geometry, before.saveGeometry());
    }
    QTranslator translator;
    MainWindow window(&translator);
    window.show();
    QVERIFY(standsInside(window));
    QCOMPARE(window.size().boundedTo(stored.size()), window.size());
}

void WindowGeometryTest::windowThatFitsKeepsItsGeometry()
{
    QWidget window;
    window.setGeometry(60, 70, 500, 400);
    keepOnScreen(&window);
    QCOMPARE(window.geometry(), QRect(60, 70, 500, 400));
    window.show();
    QVERIFY(standsInside(window));
    QCOMPARE(window.geometry(), QRect(60, 70, 500, 400));
}

void WindowGeometryTest::sizeSetAfterwardsStays()
{
    QWidget window;
    window.resize(2000, 1500);
    keepOnScreen(&window);
    QVERIFY(window.width() <= available().width());
    window.setGeometry(0, 0, 1900, 300);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QCoreApplication::processEvents();
    QCOMPARE(window.size(), QSize(1900, 300));
}

void WindowGeometryTest::maximizedWindowStaysMaximized()
{
    QWidget window;
    window.setWindowState(Qt::WindowMaximized);
    keepOnScreen(&window);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QCoreApplication::processEvents();
    QVERIFY(window.isMaximized());
}

QTEST_MAIN(WindowGeometryTest)
#include "tst_windowgeometry.moc"
