// SPDX-License-Identifier: GPL-3.0-or-later
// The main window's menus and its tool bar.
#include "shellbench.h"

#include "link/serialport.h"
#include "support/testdirectory.h"

#include <QContextMenuEvent>
#include <QMenu>
#include <QMenuBar>
#include <QTest>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>

namespace {

QStringList textsOf(const QWidget *widget)
{
    QStringList texts;
    const QList<QAction *> actions = widget->actions();
    for (const QAction *action : actions)
        texts.append(action->isSeparator() ? QStringLiteral("|") : action->text());
    return texts;
}

// Whether the opaque pixels of the picture stand side by side somewhere in the image.
bool isDrawnIn(const QImage &image, const QImage &picture)
{
    const auto standsAt = [&](int left, int top) {
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                const QColor colour = picture.pixelColor(x, y);
                if (colour.alpha() == 255 && image.pixelColor(left + x, top + y).rgb() != colour.rgb())
                    return false;
            }
        }
        return true;
    };
    for (int top = 0; top + picture.height() <= image.height(); ++top) {
        for (int left = 0; left + picture.width() <= image.width(); ++left) {
            if (standsAt(left, top))
                return true;
        }
    }
    return false;
}

} // namespace

class MainWindowBarsTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void menusHoldTheirEntriesInOrder_data();
    void menusHoldTheirEntriesInOrder();
    void toolBarHoldsItsActionsInOrder();
    void everyActionHasAnIcon();
    void statusTipsAreSet();
    void toolBarHasNoContextMenu();
    void nothingOffersToHideTheToolBar_data();
    void nothingOffersToHideTheToolBar();
    void toolsAreDrawnUnscaled();

private:
    TestDirectory directory;
};

void MainWindowBarsTest::init()
{
    directory.clear();
    directory.setLanguage(QStringLiteral("en_US"));
    SerialPort::portOpened = false;
    SerialPort::reconnecting = false;
}

void MainWindowBarsTest::menusHoldTheirEntriesInOrder_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("menu");
    QTest::addColumn<QStringList>("entries");
    QTest::newRow("File") << 0 << "File(F)" << QStringList({"Save", "Print", "Exit"});
    QTest::newRow("Edit") << 1 << "Edit(E)" << QStringList({"Language"});
    QTest::newRow("View") << 2 << "View(V)"
                          << QStringList({"Communication", "Trial run", "Status Monitor", "Parameter Editor",
                                          "Gain Tuning", "Data Scope", "Mechanical analysis",
                                          "Electroic cam"});
    QTest::newRow("Window") << 3 << "Window(W)"
                            << QStringList(
                                   {"Cascade", "Title Horizontally", "Title Vertically", "Minimize All"});
    QTest::newRow("Tools") << 4 << "Tools(T)" << QStringList({"Simulation", "Calculation"});
    QTest::newRow("Help") << 5 << "Help(H)" << QStringList({"About...", "Software Guide"});
}

void MainWindowBarsTest::menusHoldTheirEntriesInOrder()
{
    QFETCH(int, index);
    QFETCH(QString, menu);
    QFETCH(QStringList, entries);
    const Shell shell;
    const QList<QAction *> menus = shell.window.menuBar()->actions();
    QCOMPARE(menus.size(), 6);
    QCOMPARE(menus.at(index)->text(), menu);
    QCOMPARE(textsOf(menus.at(index)->menu()), entries);
    if (menu == QLatin1String("Edit(E)"))
        QCOMPARE(textsOf(menus.at(index)->menu()->actions().first()->menu()),
                 QStringList({"Simplified Chinese", "English"}));
}

void MainWindowBarsTest::toolBarHoldsItsActionsInOrder()
{
    const Shell shell;
    const QList<QToolBar *> bars = shell.window.findChildren<QToolBar *>();
    QCOMPARE(bars.size(), 1);
    const QToolBar *const bar = bars.first();
    QCOMPARE(textsOf(bar), QStringList({"|", "Communication", "Trial run", "Parameter Monitor",
                                        "Parameter Editor", "Gain Tuning", "Data Scope",
                                        "Mechanical analysis", "Electroic cam", "|", "onOff"}));
    QCOMPARE(bar->objectName(), QStringLiteral("ToolBar"));
    QVERIFY(!bar->isMovable());
    QCOMPARE(bar->height(), 26);
    QCOMPARE(bar->contentsMargins(), QMargins(0, 0, 100, 0));
    QCOMPARE(shell.window.toolBarArea(bars.first()), Qt::TopToolBarArea);
}

void MainWindowBarsTest::everyActionHasAnIcon()
{
    const Shell shell;
    const QStringList names{"actionSave",
                            "actionPrint",
                            "actionExit",
                            "actionSimplified_Chinese",
                            "actionEnglish",
                            "actionCommunication",
                            "actionTrial_run",
                            "actionStatus_Monitor",
                            "actionParameter_Monitor",
                            "actionParameter_Editor",
                            "actionGain_Tuning",
                            "actionData_Scope",
                            "actionScope",
                            "actionMechanical_analysis",
                            "actionElectroic_cam",
                            "actionCascade",
                            "actionTitle_Horizontally",
                            "actionTitle_Vertically",
                            "actionMinimize_All",
                            "actionSimulation",
                            "actionCalculation",
                            "actionAbout",
                            "actionSoftware_Guide",
                            "actiononOff",
                            "actionRun",
                            "actionOff_Line"};
    for (const QString &name : names) {
        const QAction *const action = shell.action(qPrintable(name));
        QVERIFY2(action, qPrintable(name));
        QVERIFY2(!action->icon().pixmap(24, 24).isNull(), qPrintable(name));
    }
}

void MainWindowBarsTest::statusTipsAreSet()
{
    const Shell shell;
    QCOMPARE(shell.action("actionExit")->statusTip(), QStringLiteral("Exit the application"));
    QCOMPARE(shell.action("actionParameter_Editor")->statusTip(), QStringLiteral("Open Parameter Editor"));
}

void MainWindowBarsTest::toolBarHasNoContextMenu()
{
    const Shell shell;
    auto *const bar = shell.window.findChild<QToolBar *>();
    QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(5, 5));
    QCoreApplication::sendEvent(bar, &event);
    QVERIFY(!QApplication::activePopupWidget());
}

void MainWindowBarsTest::nothingOffersToHideTheToolBar_data()
{
    QTest::addColumn<QString>("className");
    QTest::newRow("menu bar") << "QMenuBar";
    QTest::newRow("tool bar") << "QToolBar";
}

void MainWindowBarsTest::nothingOffersToHideTheToolBar()
{
    QFETCH(QString, className);
    const Shell shell;
    QWidget *place = nullptr;
    const QList<QWidget *> widgets = shell.window.findChildren<QWidget *>();
    for (QWidget *widget : widgets) {
        if (widget->metaObject()->className() == className)
            place = widget;
    }
    QVERIFY(place);
    // Behind what stands on the left.
    const QPoint free(place->width() - 5, place->height() / 2);
    QTimer closeMenu;
    bool hasMenu = false;
    connect(&closeMenu, &QTimer::timeout, &closeMenu, [&hasMenu] {
        if (QWidget *const menu = QApplication::activePopupWidget()) {
            hasMenu = true;
            menu->close();
        }
    });
    closeMenu.start(0);
    QContextMenuEvent event(QContextMenuEvent::Mouse, free, place->mapToGlobal(free));
    QApplication::sendEvent(place, &event);
    QCoreApplication::processEvents();
    QVERIFY(!hasMenu);
    QVERIFY(!QApplication::activePopupWidget());
}

// The picture of each tool is found in the bar pixel by pixel: nothing has scaled it.
void MainWindowBarsTest::toolsAreDrawnUnscaled()
{
    const Shell shell;
    shell.action("actionParameter_Editor")->trigger();
    shell.area()->subWindowList().first()->findChild<QAction *>(QStringLiteral("editAction"))->trigger();
    QList<QToolBar *> bars;
    const QWidgetList widgets = QApplication::allWidgets();
    for (QWidget *widget : widgets) {
        auto *const bar = qobject_cast<QToolBar *>(widget);
        if (bar && bar->isVisible() && !bar->actions().isEmpty())
            bars.append(bar);
    }
    QCOMPARE(bars.size(), 3);
    int tools = 0;
    for (const QToolBar *bar : qAsConst(bars)) {
        QCOMPARE(bar->iconSize(), QSize(16, 16));
        const QList<QAction *> actions = bar->actions();
        for (QAction *action : actions) {
            auto *const button = qobject_cast<QToolButton *>(bar->widgetForAction(action));
            if (!button || action->icon().isNull())
                continue;
            ++tools;
            QVERIFY2(button->isVisible(), qPrintable(action->text()));
            const QPixmap picture = action->icon().pixmap(bar->iconSize());
            QCOMPARE(picture.size(), QSize(16, 16));
            QVERIFY2(action->icon().availableSizes().contains(QSize(16, 16)), qPrintable(action->text()));
            QVERIFY2(isDrawnIn(button->grab().toImage(), picture.toImage()), qPrintable(action->text()));
        }
    }
    QCOMPARE(tools, 9 + 6 + 8);
}

QTEST_MAIN(MainWindowBarsTest)
#include "tst_mainwindow_bars.moc"
