// SPDX-License-Identifier: GPL-3.0-or-later
// How the main window lays out its sub-windows.
#include "shellbench.h"

#include "link/serialport.h"
#include "support/testdirectory.h"

#include <QTest>

class WindowArrangementTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void windowActionsNeedAWindow();
    void cascadeStepsTheWindows();
    void cascadeStopsAtAMinimizedWindow();
    void maximizedWindowsAreCascadedToo();
    void maximizedWindowsAreTiledToo();
    void horizontalTilesStandSideBySide();
    void verticalTilesStandStacked();
    void minimizedFirstWindowLeavesTheTilesAlone();
    void minimizeAllMinimizesAll();

private:
    TestDirectory directory;
};

void WindowArrangementTest::init()
{
    directory.clear();
    directory.setLanguage(QStringLiteral("en_US"));
    SerialPort::portOpened = false;
    SerialPort::reconnecting = false;
}

void WindowArrangementTest::windowActionsNeedAWindow()
{
    const Shell shell;
    const auto allEnabled = [&shell](bool enabled) {
        for (const char *name :
             {"actionCascade", "actionTitle_Horizontally", "actionTitle_Vertically", "actionMinimize_All"}) {
            if (shell.action(name)->isEnabled() != enabled)
                return false;
        }
        return true;
    };
    QVERIFY(allEnabled(false));
    QMdiSubWindow *const window = shell.addWindow(QStringLiteral("A"));
    QVERIFY(allEnabled(true));
    window->close();
    QTRY_VERIFY(allEnabled(false));
}

void WindowArrangementTest::cascadeStepsTheWindows()
{
    const Shell shell;
    for (const char *title : {"A", "B", "C"})
        shell.addWindow(QLatin1String(title));
    shell.action("actionCascade")->trigger();
    const QList<QMdiSubWindow *> windows = shell.area()->subWindowList();
    const QSize size(int(shell.area()->width() * 0.85), int(shell.area()->height() * 0.85));
    for (int i = 0; i < 3; ++i)
        QCOMPARE(windows.at(i)->geometry(), QRect(QPoint(20 * i, 20 * i), size));
    QCOMPARE(shell.area()->activeSubWindow(), windows.last());
}

void WindowArrangementTest::cascadeStopsAtAMinimizedWindow()
{
    const Shell shell;
    QMdiSubWindow *const first = shell.addWindow(QStringLiteral("A"));
    QMdiSubWindow *const second = shell.addWindow(QStringLiteral("B"));
    QMdiSubWindow *const third = shell.addWindow(QStringLiteral("C"));
    third->setGeometry(5, 6, 200, 150);
    second->showMinimized();
    shell.action("actionCascade")->trigger();
    QCOMPARE(first->pos(), QPoint(0, 0));
    QVERIFY(second->isMinimized());
    QCOMPARE(third->geometry(), QRect(5, 6, 200, 150));
    QCOMPARE(shell.area()->activeSubWindow(), second);
}

void WindowArrangementTest::maximizedWindowsAreCascadedToo()
{
    const Shell shell;
    QMdiSubWindow *const first = shell.addWindow(QStringLiteral("A"));
    QMdiSubWindow *const second = shell.addWindow(QStringLiteral("B"));
    first->showMaximized();
    second->showMaximized();
    QVERIFY(first->isMaximized() || second->isMaximized());
    shell.action("actionCascade")->trigger();
    QVERIFY(!first->isMaximized());
    QVERIFY(!second->isMaximized());
    const QSize size(int(shell.area()->width() * 0.85), int(shell.area()->height() * 0.85));
    QCOMPARE(first->geometry(), QRect(QPoint(0, 0), size));
    QCOMPARE(second->geometry(), QRect(QPoint(20, 20), size));
}

void WindowArrangementTest::maximizedWindowsAreTiledToo()
{
    for (const char *action : {"actionTitle_Horizontally", "actionTitle_Vertically"}) {
        const Shell shell;
        QMdiSubWindow *const first = shell.addWindow(QStringLiteral("A"));
        QMdiSubWindow *const second = shell.addWindow(QStringLiteral("B"));
        first->showMaximized();
        second->showMaximized();
        shell.action(action)->trigger();
        QVERIFY(!first->isMaximized());
        QVERIFY(!second->isMaximized());
        QVERIFY(!first->geometry().intersects(second->geometry()));
    }
}

void WindowArrangementTest::horizontalTilesStandSideBySide()
{
    const Shell shell;
    for (const char *title : {"A", "B", "C"})
        shell.addWindow(QLatin1String(title));
    shell.action("actionTitle_Horizontally")->trigger();
    const int width = shell.area()->width();
    const int height = shell.area()->height();
    for (int i = 0; i < 3; ++i)
        QCOMPARE(shell.area()->subWindowList().at(i)->geometry(), QRect(i * width / 3, 0, width / 3, height));
}

void WindowArrangementTest::verticalTilesStandStacked()
{
    const Shell shell;
    for (const char *title : {"A", "B", "C"})
        shell.addWindow(QLatin1String(title));
    shell.action("actionTitle_Vertically")->trigger();
    const int width = shell.area()->width();
    const int height = shell.area()->height();
    for (int i = 0; i < 3; ++i)
        QCOMPARE(shell.area()->subWindowList().at(i)->geometry(),
                 QRect(0, i * height / 3, width, height / 3));
}

void WindowArrangementTest::minimizedFirstWindowLeavesTheTilesAlone()
{
    const Shell shell;
    QMdiSubWindow *const first = shell.addWindow(QStringLiteral("A"));
    QMdiSubWindow *const second = shell.addWindow(QStringLiteral("B"));
    second->setGeometry(5, 6, 200, 150);
    first->showMinimized();
    shell.action("actionTitle_Vertically")->trigger();
    QVERIFY(first->isMinimized());
    QCOMPARE(second->geometry(), QRect(5, 6, 200, 150));
}

void WindowArrangementTest::minimizeAllMinimizesAll()
{
    const Shell shell;
    shell.addWindow(QStringLiteral("A"));
    shell.addWindow(QStringLiteral("B"));
    shell.action("actionMinimize_All")->trigger();
    for (const QMdiSubWindow *window : shell.area()->subWindowList())
        QVERIFY(window->isMinimized());
}

QTEST_MAIN(WindowArrangementTest)
#include "tst_windowarrangement.moc"
