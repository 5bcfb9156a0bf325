// SPDX-License-Identifier: GPL-3.0-or-later
// The main window: its actions, what they open, and what it shows of the link.
#include "shellbench.h"

#include "link/serialport.h"
#include "support/modalanswers.h"
#include "support/testdirectory.h"

#include <QComboBox>
#include <QContextMenuEvent>
#include <QMenu>
#include <QMenuBar>
#include <QPointer>
#include <QPrintPreviewDialog>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>
#include <QWheelEvent>

namespace {

QStringList textsOf(const QWidget *widget)
{
    QStringList texts;
    const QList<QAction *> actions = widget->actions();
    for (const QAction *action : actions)
        texts.append(action->isSeparator() ? QStringLiteral("|") : action->text());
    return texts;
}

QImage pictureOf(const QIcon &icon)
{
    return icon.pixmap(24, 24).toImage();
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

class MainWindowTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void menusHoldTheirEntriesInOrder_data();
    void menusHoldTheirEntriesInOrder();
    void toolBarHoldsItsActionsInOrder();
    void everyActionHasAnIcon();
    void statusTipsAreSet();
    void connectionDialogComesFirst();
    void connectionDialogComesAgainOnItsAction();
    void actionsWithoutAFunctionDoNothing();
    void indicatorFollowsTheLink();
    void indicatorIsNotRedoneForEveryChunk();
    void editorOpensWithItsSizeAndPlace();
    void secondOpeningOnlyActivates();
    void windowIsFoundUnderAnyTitle();
    void printStandsWithTheEditorOnly();
    void printReachesTheEditorInFront();
    void maximizedWindowNamesItselfInTheTitle();
    void runningScopeDisablesSixActions();
    void toolBarHasNoContextMenu();
    void nothingOffersToHideTheToolBar_data();
    void nothingOffersToHideTheToolBar();
    void toolsAreDrawnUnscaled();
    void wheelDoesNotChangeFilteredComboBoxes();
    void messagesThatNothingShowsExist();

private:
    TestDirectory directory;
};

void MainWindowTest::init()
{
    directory.clear();
    directory.setLanguage(QStringLiteral("en_US"));
    SerialPort::portOpened = false;
    SerialPort::reconnecting = false;
}

void MainWindowTest::menusHoldTheirEntriesInOrder_data()
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

void MainWindowTest::menusHoldTheirEntriesInOrder()
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

void MainWindowTest::toolBarHoldsItsActionsInOrder()
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

void MainWindowTest::everyActionHasAnIcon()
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

void MainWindowTest::statusTipsAreSet()
{
    const Shell shell;
    QCOMPARE(shell.action("actionExit")->statusTip(), QStringLiteral("Exit the application"));
    QCOMPARE(shell.action("actionParameter_Editor")->statusTip(), QStringLiteral("Open Parameter Editor"));
}

void MainWindowTest::connectionDialogComesFirst()
{
    QTranslator translator;
    const MainWindow window(&translator);
    QVERIFY(Shell::dialog());
    QVERIFY(Shell::dialog()->isVisible());
    QVERIFY(Shell::dialog()->isModal());
    QVERIFY(!window.isVisible());
}

void MainWindowTest::connectionDialogComesAgainOnItsAction()
{
    const Shell shell;
    const CommunicationSetting *const dialog = Shell::dialog();
    QVERIFY(!dialog->isVisible());
    shell.action("actionCommunication")->trigger();
    QVERIFY(dialog->isVisible());
    QCOMPARE(Shell::dialog(), dialog);
}

void MainWindowTest::actionsWithoutAFunctionDoNothing()
{
    ModalAnswers boxes;
    const Shell shell;
    const int widgets = QApplication::topLevelWidgets().size();
    for (const char *name :
         {"actionSave", "actionMechanical_analysis", "actionElectroic_cam", "actionSimulation", "actionAbout",
          "actiononOff", "actionRun", "actionOff_Line"}) {
        QVERIFY2(shell.action(name)->isEnabled(), name);
        shell.action(name)->trigger();
    }
    QVERIFY(shell.area()->subWindowList().isEmpty());
    QCOMPARE(QApplication::topLevelWidgets().size(), widgets);
}

void MainWindowTest::indicatorFollowsTheLink()
{
    Shell shell;
    const QAction *const action = shell.action("actiononOff");
    const auto *const label = shell.window.findChild<QLabel *>(QStringLiteral("onlineLabel"));
    const QString onlineStyle = QStringLiteral("QLabel {border-image: url(:/pic/pic/online.png);}");
    const QString offlineStyle = QStringLiteral("QLabel {border-image: url(:/pic/pic/offline.png);}");
    const QImage offlineImage = pictureOf(QIcon(QStringLiteral(":/pic/pic/offline.png")));
    const QImage onlineImage = pictureOf(QIcon(QStringLiteral(":/pic/pic/online.png")));
    QVERIFY(onlineImage != offlineImage);
    QCOMPARE(action->toolTip(), QStringLiteral("离线"));
    QCOMPARE(label->toolTip(), QStringLiteral("离线"));
    QCOMPARE(label->styleSheet(), offlineStyle);
    QCOMPARE(pictureOf(action->icon()), offlineImage);
    shell.window.servoONOFFLine(true);
    QCOMPARE(action->toolTip(), QStringLiteral("在线"));
    QCOMPARE(label->toolTip(), QStringLiteral("在线"));
    QCOMPARE(label->styleSheet(), onlineStyle);
    QCOMPARE(pictureOf(action->icon()), onlineImage);
    shell.window.servoONOFFLine(false);
    QCOMPARE(label->styleSheet(), offlineStyle);
    QCOMPARE(pictureOf(action->icon()), offlineImage);
}

void MainWindowTest::indicatorIsNotRedoneForEveryChunk()
{
    Shell shell;
    shell.window.servoONOFFLine(true);
    QSignalSpy changes(shell.action("actiononOff"), &QAction::changed);
    for (int i = 0; i < 100; ++i)
        shell.window.servoONOFFLine(true);
    QCOMPARE(changes.count(), 0);
}

void MainWindowTest::editorOpensWithItsSizeAndPlace()
{
    const Shell shell;
    shell.action("actionParameter_Editor")->trigger();
    const QList<QMdiSubWindow *> windows = shell.area()->subWindowList();
    QCOMPARE(windows.size(), 1);
    QCOMPARE(windows.first()->windowTitle(), QStringLiteral("Parameter Editor"));
    QCOMPARE(windows.first()->pos(), QPoint(0, 0));
    QCOMPARE(windows.first()->size(),
             QSize(int(shell.area()->width() * 0.9), int(shell.area()->height() * 0.9)));
    QVERIFY(windows.first()->testAttribute(Qt::WA_DeleteOnClose));
    QCOMPARE(pictureOf(windows.first()->windowIcon()),
             pictureOf(QIcon(QStringLiteral(":/pic/pic/Parameter.png"))));
    const QPointer<QWidget> editor = windows.first()->widget();
    windows.first()->close();
    QTRY_VERIFY(!editor);
}

void MainWindowTest::secondOpeningOnlyActivates()
{
    const Shell shell;
    shell.action("actionParameter_Editor")->trigger();
    QMdiSubWindow *const editor = shell.area()->subWindowList().first();
    editor->setGeometry(40, 30, 500, 400);
    shell.addWindow(QStringLiteral("Other"));
    QVERIFY(shell.area()->activeSubWindow() != editor);
    shell.action("actionParameter_Editor")->trigger();
    QCOMPARE(shell.area()->subWindowList().size(), 2);
    QCOMPARE(shell.area()->activeSubWindow(), editor);
    QCOMPARE(editor->geometry(), QRect(40, 30, 500, 400));
}

// After a change of language that was not followed by a restart the window keeps the title that it was made
// with.
void MainWindowTest::windowIsFoundUnderAnyTitle()
{
    const Shell shell;
    shell.action("actionParameter_Editor")->trigger();
    QMdiSubWindow *const editor = shell.area()->subWindowList().first();
    editor->widget()->setWindowTitle(QStringLiteral("参数编辑"));
    shell.addWindow(QStringLiteral("Parameter Editor"));
    shell.action("actionParameter_Editor")->trigger();
    QCOMPARE(shell.area()->subWindowList().size(), 2);
    QCOMPARE(shell.area()->activeSubWindow(), editor);
}

void MainWindowTest::printStandsWithTheEditorOnly()
{
    Shell shell;
    QVERIFY(!shell.action("actionPrint")->isVisible());
    shell.action("actionParameter_Editor")->trigger();
    QVERIFY(shell.action("actionPrint")->isVisible());
    shell.area()->subWindowList().first()->close();
    QVERIFY(!shell.action("actionPrint")->isVisible());
    QSignalSpy print(&shell.window, &MainWindow::doPrint);
    shell.window.on_actionPrint_triggered();
    QCOMPARE(print.count(), 1);
}

void MainWindowTest::printReachesTheEditorInFront()
{
    const Shell shell;
    shell.action("actionParameter_Editor")->trigger();
    QMdiSubWindow *const editor = shell.area()->subWindowList().first();
    int previews = 0;
    QTimer closePreview;
    connect(&closePreview, &QTimer::timeout, &closePreview, [&previews] {
        if (auto *const preview = qobject_cast<QPrintPreviewDialog *>(QApplication::activeModalWidget())) {
            ++previews;
            preview->reject();
        }
    });
    closePreview.start(0);
    shell.action("actionPrint")->trigger();
    QCOMPARE(previews, 1);

    QMdiSubWindow *const other = shell.addWindow(QStringLiteral("Other"));
    shell.area()->setActiveSubWindow(other);
    shell.action("actionPrint")->trigger();
    QCOMPARE(previews, 1);

    shell.area()->setActiveSubWindow(editor);
    shell.action("actionPrint")->trigger();
    QCOMPARE(previews, 2);
}

void MainWindowTest::maximizedWindowNamesItselfInTheTitle()
{
    const Shell shell;
    QCOMPARE(shell.window.windowTitle(), QStringLiteral("Velmora V1.0.3"));
    shell.action("actionParameter_Editor")->trigger();
    QMdiSubWindow *const editor = shell.area()->subWindowList().first();
    editor->showMaximized();
    QTRY_COMPARE(shell.window.windowTitle(), QStringLiteral("Velmora V1.0.3 - [Parameter Editor]"));
    editor->showNormal();
    QTRY_COMPARE(shell.window.windowTitle(), QStringLiteral("Velmora V1.0.3"));
    editor->showMaximized();
    editor->close();
    QTRY_COMPARE(shell.window.windowTitle(), QStringLiteral("Velmora V1.0.3"));
}

void MainWindowTest::runningScopeDisablesSixActions()
{
    Shell shell;
    const QStringList six{"actionParameter_Editor", "actionParameter_Monitor",   "actionTrial_run",
                          "actionGain_Tuning",      "actionMechanical_analysis", "actionElectroic_cam"};
    shell.window.scopeIsRunning(true);
    for (const QString &name : six)
        QVERIFY2(!shell.action(qPrintable(name))->isEnabled(), qPrintable(name));
    // Not among them.
    QVERIFY(shell.action("actionStatus_Monitor")->isEnabled());
    QVERIFY(shell.action("actionData_Scope")->isEnabled());
    shell.window.scopeIsRunning(false);
    for (const QString &name : six)
        QVERIFY2(shell.action(qPrintable(name))->isEnabled(), qPrintable(name));
}

void MainWindowTest::toolBarHasNoContextMenu()
{
    const Shell shell;
    auto *const bar = shell.window.findChild<QToolBar *>();
    QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(5, 5));
    QCoreApplication::sendEvent(bar, &event);
    QVERIFY(!QApplication::activePopupWidget());
}

void MainWindowTest::nothingOffersToHideTheToolBar_data()
{
    QTest::addColumn<QString>("className");
    QTest::newRow("menu bar") << "QMenuBar";
    QTest::newRow("tool bar") << "QToolBar";
}

void MainWindowTest::nothingOffersToHideTheToolBar()
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
void MainWindowTest::toolsAreDrawnUnscaled()
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

void MainWindowTest::wheelDoesNotChangeFilteredComboBoxes()
{
    Shell shell;
    QComboBox box;
    box.addItems({"a", "b", "c"});
    box.setCurrentIndex(1);
    box.show();
    QWheelEvent wheel(QPointF(5, 5), box.mapToGlobal(QPoint(5, 5)), QPoint(), QPoint(0, -120), Qt::NoButton,
                      {}, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&box, &wheel);
    QCOMPARE(box.currentIndex(), 2);
    box.installEventFilter(&shell.window);
    QCoreApplication::sendEvent(&box, &wheel);
    QCOMPARE(box.currentIndex(), 2);
    QWheelEvent up(QPointF(5, 5), box.mapToGlobal(QPoint(5, 5)), QPoint(), QPoint(0, 120), Qt::NoButton, {},
                   Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&box, &up);
    QCOMPARE(box.currentIndex(), 2);
}

void MainWindowTest::messagesThatNothingShowsExist()
{
    ModalAnswers boxes;
    Shell shell;
    boxes.expect(QStringLiteral("Communication Lost."));
    shell.window.showCommunicationLost();
    shell.window.changeCursor();
    QCOMPARE(QApplication::overrideCursor()->shape(), Qt::ArrowCursor);
    QApplication::restoreOverrideCursor();
}

QTEST_MAIN(MainWindowTest)
#include "tst_mainwindow.moc"
