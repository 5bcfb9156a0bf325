// SPDX-License-Identifier: GPL-3.0-or-later
#include "link/communicationsetting.h"
#include "link/serialport.h"
#include "parameter/parametereditor.h"
#include "shell/mainwindow.h"
#include "shell/windowarrangement.h"
#include "support/modalanswers.h"
#include "support/testdirectory.h"

#include <QAction>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QLabel>
#include <QListWidget>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QPointer>
#include <QPrintPreviewDialog>
#include <QSettings>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <QToolBar>
#include <QTranslator>
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

// A main window with its connection dialog out of the way.
class Shell
{
public:
    Shell()
    {
        window.resize(1000, 700);
        window.show();
        dialog()->close();
    }
    QAction *action(const char *name) const { return window.findChild<QAction *>(QLatin1String(name)); }
    QMdiArea *area() const { return window.findChild<QMdiArea *>(); }
    static CommunicationSetting *dialog()
    {
        const QWidgetList widgets = QApplication::topLevelWidgets();
        for (QWidget *widget : widgets) {
            if (auto *const found = qobject_cast<CommunicationSetting *>(widget))
                return found;
        }
        return nullptr;
    }
    QMdiSubWindow *addWindow(const QString &title) const
    {
        auto *const widget = new QLabel(title);
        widget->setWindowTitle(title);
        QMdiSubWindow *const sub = area()->addSubWindow(widget);
        sub->setAttribute(Qt::WA_DeleteOnClose);
        widget->show();
        return sub;
    }

    QTranslator translator;
    MainWindow window{&translator};
};

QImage pictureOf(const QIcon &icon)
{
    return icon.pixmap(24, 24).toImage();
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
    void placeholdersStandEnabledAndDoNothing();
    void indicatorFollowsTheLink();
    void indicatorIsNotRedoneForEveryChunk();
    void windowActionsNeedAWindow();
    void editorOpensWithItsSizeAndPlace();
    void secondOpeningOnlyActivates();
    void printStandsWithTheEditorOnly();
    void printReachesTheEditorInFront();
    void maximizedWindowNamesItselfInTheTitle();
    void runningScopeDisablesSixActions();
    void cascadeStepsTheWindows();
    void cascadeStopsAtAMinimizedWindow();
    void horizontalTilesStandSideBySide();
    void verticalTilesStandStacked();
    void minimizedFirstWindowLeavesTheTilesAlone();
    void minimizeAllMinimizesAll();
    void toolBarHasNoContextMenu();
    void wheelDoesNotChangeFilteredComboBoxes();
    void closingIsRefusedWithATrialRun();
    void closingIsRefusedWhileTheScopeCaptures();
    void closingWithAnIdleScopeIsAllowed();
    void trialRunWindowIsDeletedOnItsWish();
    void closingKeepsGeometryAndBlanksThePaths();
    void geometryIsRestored();
    void brokenSettingsGiveTheDefaults_data();
    void brokenSettingsGiveTheDefaults();
    void readOnlySettingsDoNotDisturb();
    void closingInMidTransferIsSafe();
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

void MainWindowTest::placeholdersStandEnabledAndDoNothing()
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

void MainWindowTest::windowActionsNeedAWindow()
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

void MainWindowTest::cascadeStepsTheWindows()
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

void MainWindowTest::cascadeStopsAtAMinimizedWindow()
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

void MainWindowTest::horizontalTilesStandSideBySide()
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

void MainWindowTest::verticalTilesStandStacked()
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

void MainWindowTest::minimizedFirstWindowLeavesTheTilesAlone()
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

void MainWindowTest::minimizeAllMinimizesAll()
{
    const Shell shell;
    shell.addWindow(QStringLiteral("A"));
    shell.addWindow(QStringLiteral("B"));
    shell.action("actionMinimize_All")->trigger();
    for (const QMdiSubWindow *window : shell.area()->subWindowList())
        QVERIFY(window->isMinimized());
}

void MainWindowTest::toolBarHasNoContextMenu()
{
    const Shell shell;
    auto *const bar = shell.window.findChild<QToolBar *>();
    QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(5, 5));
    QCoreApplication::sendEvent(bar, &event);
    QVERIFY(!QApplication::activePopupWidget());
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

void MainWindowTest::closingIsRefusedWithATrialRun()
{
    ModalAnswers boxes;
    Shell shell;
    shell.addWindow(QStringLiteral("Trial Run"));
    boxes.expect(QStringLiteral("Please close \"Trial Run\" window frist"));
    QVERIFY(!shell.window.close());
    QVERIFY(shell.window.isVisible());
    QCOMPARE(boxes.seen.first().title, QStringLiteral("Warnig"));
    QCOMPARE(boxes.seen.first().icon, QMessageBox::Warning);
    QCOMPARE(boxes.seen.first().buttons, QStringList("OK"));
    QVERIFY(!QSettings(QStringLiteral("settings.ini"), QSettings::IniFormat)
                 .contains(QStringLiteral("geometry")));
}

void MainWindowTest::closingIsRefusedWhileTheScopeCaptures()
{
    ModalAnswers boxes;
    Shell shell;
    shell.addWindow(QStringLiteral("Scope"));
    shell.window.scopeIsRunning(true);
    boxes.expect(QStringLiteral("Please close \"Scope\" window frist"));
    QVERIFY(!shell.window.close());
    QCOMPARE(boxes.seen.first().title, QStringLiteral("Warnig"));
}

void MainWindowTest::closingWithAnIdleScopeIsAllowed()
{
    ModalAnswers boxes;
    Shell shell;
    shell.addWindow(QStringLiteral("Scope"));
    QVERIFY(shell.window.close());
}

void MainWindowTest::trialRunWindowIsDeletedOnItsWish()
{
    Shell shell;
    const QPointer<QMdiSubWindow> trial = shell.addWindow(QStringLiteral("Trial Run"));
    const QPointer<QMdiSubWindow> other = shell.addWindow(QStringLiteral("Other"));
    shell.window.closeTrialRunWindow();
    QTRY_VERIFY(!trial);
    QVERIFY(other);
}

void MainWindowTest::closingKeepsGeometryAndBlanksThePaths()
{
    {
        QSettings settings(QStringLiteral("settings.ini"), QSettings::IniFormat);
        settings.setValue(QStringLiteral("SavePath/openFilePath"), QStringLiteral("/somewhere"));
    }
    Shell shell;
    QVERIFY(shell.window.close());
    const QSettings settings(QStringLiteral("settings.ini"), QSettings::IniFormat);
    QVERIFY(!settings.value(QStringLiteral("geometry")).toByteArray().isEmpty());
    for (const char *key : {"openFilePath", "saveFilePath", "savePixmapPath"}) {
        const QString path = QLatin1String("SavePath/") + QLatin1String(key);
        QVERIFY2(settings.contains(path), key);
        QCOMPARE(settings.value(path).toString(), QString());
    }
}

void MainWindowTest::geometryIsRestored()
{
    {
        Shell shell;
        shell.window.setGeometry(60, 70, 640, 480);
        QVERIFY(shell.window.close());
    }
    QTranslator translator;
    const MainWindow window(&translator);
    QCOMPARE(window.size(), QSize(640, 480));
}

void MainWindowTest::brokenSettingsGiveTheDefaults_data()
{
    QTest::addColumn<QByteArray>("contents");
    QTest::newRow("garbage") << QByteArray("\x00\xff\x80[[[=\n\n=x\n", 12);
    QTest::newRow("geometry of unexpected form") << QByteArray("geometry=12\n[Language]\nLanguage=en_US\n");
    QTest::newRow("empty") << QByteArray();
}

void MainWindowTest::brokenSettingsGiveTheDefaults()
{
    QFETCH(QByteArray, contents);
    QFile file(QStringLiteral("settings.ini"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(contents);
    file.close();
    const Shell shell;
    QVERIFY(shell.window.isVisible());
    shell.action("actionParameter_Editor")->trigger();
    QCOMPARE(shell.area()->subWindowList().size(), 1);
}

void MainWindowTest::readOnlySettingsDoNotDisturb()
{
    // A directory of that name can be neither read nor written as a file.
    QFile::remove(QStringLiteral("settings.ini"));
    QVERIFY(QDir().mkdir(QStringLiteral("settings.ini")));
    ModalAnswers boxes;
    Shell shell;
    shell.action("actionParameter_Editor")->trigger();
    shell.window.on_actionEnglish_triggered();
    QVERIFY(shell.window.close());
    QVERIFY(QFileInfo(QStringLiteral("settings.ini")).isDir());
}

void MainWindowTest::closingInMidTransferIsSafe()
{
    ModalAnswers boxes;
    Shell shell;
    shell.action("actionParameter_Editor")->trigger();
    const QPointer<ParameterEditor> editor = shell.window.findChild<ParameterEditor *>();
    QTRY_COMPARE(editor->findChild<QListWidget *>()->currentRow(), 1);
    SerialPort::portOpened = true;
    editor->readPageSlt();
    QVERIFY(shell.window.close());
    QTRY_VERIFY(!editor);
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
