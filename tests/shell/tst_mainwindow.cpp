// SPDX-License-Identifier: GPL-3.0-or-later
// The main window: what its actions open, and what it shows of the link.
#include "shellbench.h"

#include "link/serialport.h"
#include "support/modalanswers.h"
#include "support/testdirectory.h"

#include <QComboBox>
#include <QPointer>
#include <QPrintPreviewDialog>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <QWheelEvent>

namespace {

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
