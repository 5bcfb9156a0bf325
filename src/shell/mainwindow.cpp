// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/mainwindow.h"
#include "ui_mainwindow.h"

#include "link/communicationsetting.h"
#include "link/serialport.h"
#include "settings/applanguage.h"
#include "settings/settingskeys.h"
#include "shell/externalprograms.h"
#include "shell/windowarrangement.h"
#include "shell/windowgeometry.h"
#include "shell/workingfolder.h"
#include "shell/workingwindows.h"
#include "widgets/toolicons.h"

#include <QApplication>
#include <QCloseEvent>
#include <QLabel>
#include <QLocale>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMessageBox>
#include <QProcess>
#include <QSettings>
#include <QTranslator>

namespace {

constexpr int toolBarHeight = 26;       // pixels
constexpr int toolBarRightMargin = 100; // pixels

} // namespace

const QString MainWindow::baseTitle = QStringLiteral("Velmora V1.0.3");

MainWindow::MainWindow(QTranslator *appTranslator, QWidget *parent)
    : QMainWindow(parent)
    , ui(std::make_unique<Ui::MainWindow>())
    , translator(appTranslator)
{
    ui->setupUi(this);
    // The tool bar is fixed: nothing offers to hide it.
    setContextMenuPolicy(Qt::NoContextMenu);
    ui->actionPrint->setVisible(false);
    setWindowTitle(shownTitle);

    mdiArea = new QMdiArea;
    connect(mdiArea, &QMdiArea::subWindowActivated, this, &MainWindow::updateMenus);
    updateMenus();
    mdiArea->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    mdiArea->setOption(QMdiArea::DontMaximizeSubWindowOnActivation, true);

    ui->actionExit->setStatusTip(tr("Exit the application"));
    ui->actionParameter_Editor->setStatusTip(tr("Open Parameter Editor"));

    ui->ToolBar->setContentsMargins(0, 0, toolBarRightMargin, 0);
    ui->ToolBar->setFixedHeight(toolBarHeight);
    ui->ToolBar->setIconSize(toolIconSize);
    onlineLabel = new QLabel;
    onlineLabel->setObjectName(QStringLiteral("onlineLabel"));
    onlineLabel->setFixedSize(toolIconSize);
    statusBar()->addPermanentWidget(onlineLabel);

    serialPort = new SerialPort(this);
    connect(serialPort, &SerialPort::servoONOFFLine, this, &MainWindow::servoONOFFLine);

    QSettings settings(settingsFile, QSettings::IniFormat);
    restoreGeometry(settings.value(settingskey::geometry).toByteArray());
    keepOnScreen(this);
    calcProcess = new QProcess(this);

    communicationDialog = new CommunicationSetting;
    connect(communicationDialog, &CommunicationSetting::setPortName, serialPort, &SerialPort::getPortName);
    communicationDialog->setModal(true);
    communicationDialog->show();

    ui->centralLayout->addWidget(mdiArea);
    servoONOFFLine(false);
    ui->ToolBar->setMovable(false);
    ui->ToolBar->setObjectName(QStringLiteral("ToolBar"));
    ui->ToolBar->installEventFilter(this);
}

MainWindow::~MainWindow()
{
    delete communicationDialog;
    delete serialPort;
    // The working windows report to this one as they go, so they go while it is whole.
    disconnect(mdiArea, nullptr, this, nullptr);
    delete mdiArea;
}

void MainWindow::updateMenus()
{
    const bool hasWindows = !mdiArea->subWindowList().isEmpty();
    for (QAction *action : {ui->actionCascade, ui->actionTitle_Horizontally, ui->actionTitle_Vertically,
                            ui->actionMinimize_All})
        action->setEnabled(hasWindows);
}

void MainWindow::servoONOFFLine(bool state)
{
    // Runs for every received chunk; what is shown already is left alone.
    if (onlineState == state)
        return;
    onlineState = state;
    const QString picture =
        state ? QStringLiteral(":/pic/pic/online.png") : QStringLiteral(":/pic/pic/offline.png");
    // These two texts show in Chinese in either language.
    const QString toolTip = state ? QStringLiteral("在线") : QStringLiteral("离线");
    onlinePixmap.load(picture);
    onlineLabel->setStyleSheet(QStringLiteral("QLabel {border-image: url(%1);}").arg(picture));
    onlineLabel->setToolTip(toolTip);
    ui->actiononOff->setIcon(QIcon(picture));
    ui->actiononOff->setToolTip(toolTip);
}

void MainWindow::showCommunicationLost()
{
    QMessageBox box;
    box.setText(tr("Communication Lost."));
    box.exec();
}

void MainWindow::changeCursor()
{
    QApplication::setOverrideCursor(Qt::ArrowCursor);
}

void MainWindow::showPrintAct()
{
    ui->actionPrint->setVisible(true);
}

void MainWindow::hidePrintAct()
{
    ui->actionPrint->setVisible(false);
}

void MainWindow::scopeIsRunning(bool isRunning)
{
    scopeStopped = !isRunning;
    for (QAction *action : {ui->actionParameter_Editor, ui->actionParameter_Monitor, ui->actionTrial_run,
                            ui->actionGain_Tuning, ui->actionMechanical_analysis, ui->actionElectroic_cam})
        action->setEnabled(scopeStopped);
}

void MainWindow::subwindowStateChanged(QString title)
{
    shownTitle = title.isEmpty() ? baseTitle : baseTitle + QLatin1String(" - [") + title + QLatin1Char(']');
    setWindowTitle(shownTitle);
}

bool MainWindow::isInFront(const QWidget *widget) const
{
    const QMdiSubWindow *const front = mdiArea->currentSubWindow();
    return front && front->widget() == widget;
}

void MainWindow::openWorkingWindow(const char *className)
{
    if (QMdiSubWindow *const open = findSubWindow(mdiArea, className)) {
        mdiArea->setActiveSubWindow(open);
        return;
    }
    const WorkingWindow *const kind = findWorkingWindow(className);
    QWidget *const widget = kind->create(serialPort);
    QMdiSubWindow *const window = mdiArea->addSubWindow(widget);
    window->setAttribute(Qt::WA_DeleteOnClose);
    widget->setAttribute(Qt::WA_DeleteOnClose);
    widget->show();
    kind->connectTo(widget, serialPort, this);
    window->setWindowIcon(QIcon(QLatin1String(kind->icon)));
    window->move(0, 0);
    window->resize(kind->size(mdiArea->size()));
}

void MainWindow::on_actionParameter_Editor_triggered()
{
    openWorkingWindow(workingwindow::parameterEditor);
}

void MainWindow::on_actionTrial_run_triggered()
{
    openWorkingWindow(workingwindow::trialRun);
}

void MainWindow::on_actionGain_Tuning_triggered()
{
    openWorkingWindow(workingwindow::gainTuning);
}

// Two entries, one window: that of the tool bar, and that of the menu, which a capture leaves enabled.
void MainWindow::on_actionParameter_Monitor_triggered()
{
    openWorkingWindow(workingwindow::monitor);
}

void MainWindow::on_actionStatus_Monitor_triggered()
{
    openWorkingWindow(workingwindow::monitor);
}

void MainWindow::on_actionData_Scope_triggered()
{
    openWorkingWindow(workingwindow::scope);
}

void MainWindow::on_actionScope_triggered()
{
    openWorkingWindow(workingwindow::scope);
}

void MainWindow::on_actionPrint_triggered()
{
    emit doPrint();
}

void MainWindow::on_actionCommunication_triggered()
{
    communicationDialog->show();
}

void MainWindow::on_actionCascade_triggered()
{
    cascadeWindows(mdiArea);
}

void MainWindow::on_actionTitle_Horizontally_triggered()
{
    tileWindowsSideBySide(mdiArea);
}

void MainWindow::on_actionTitle_Vertically_triggered()
{
    tileWindowsStacked(mdiArea);
}

void MainWindow::on_actionMinimize_All_triggered()
{
    const QList<QMdiSubWindow *> windows = mdiArea->subWindowList();
    for (QMdiSubWindow *window : windows)
        window->showMinimized();
}

void MainWindow::on_actionCalculation_triggered()
{
    startCalculator(calcProcess);
}

void MainWindow::on_actionAbout_triggered() {}

void MainWindow::on_actionUser_Guide_triggered() {}

void MainWindow::on_actionSoftware_Guide_triggered()
{
    openHelp();
}

// The connection dialog is shown first and has no parent; without this the main window would come up over it.
void MainWindow::showEvent(QShowEvent *event)
{
    QMainWindow::showEvent(event);
    if (communicationDialog->isVisible()) {
        communicationDialog->raise();
        communicationDialog->activateWindow();
    }
}

// The MDI area sets and restores titles of its own around a maximized window; ours is the last word.
bool MainWindow::event(QEvent *event)
{
    const bool handled = QMainWindow::event(event);
    if (event->type() == QEvent::WindowTitleChange && windowTitle() != shownTitle)
        setWindowTitle(shownTitle);
    return handled;
}

bool MainWindow::eventFilter(QObject *object, QEvent *event)
{
    if (event->type() == QEvent::ContextMenu && object->objectName() == QLatin1String("ToolBar"))
        return true;
    if (event->type() == QEvent::Wheel && object->inherits("QComboBox"))
        return true;
    return QMainWindow::eventFilter(object, event);
}

void MainWindow::closeTrialRunWindow()
{
    if (QMdiSubWindow *const window = findSubWindow(mdiArea, workingwindow::trialRun))
        window->deleteLater();
}

// The trial run gives the drive back as it closes, and a capture has to be stopped: both need the link.
bool MainWindow::refusesToClose()
{
    QString text;
    const QList<QMdiSubWindow *> windows = mdiArea->subWindowList();
    for (const QMdiSubWindow *window : windows) {
        const QWidget *const widget = window->widget();
        if (widget && widget->inherits(workingwindow::trialRun))
            text = tr("Please close \"Trial Run\" window frist");
        else if (widget && widget->inherits(workingwindow::scope) && !scopeStopped)
            text = tr("Please close \"Scope\" window frist");
        if (!text.isEmpty())
            break;
    }
    if (text.isEmpty())
        return false;
    QMessageBox::warning(this, tr("Warnig"), text, QMessageBox::Ok);
    return true;
}

void MainWindow::closeEvent(QCloseEvent *event)
{
    if (refusesToClose()) {
        event->ignore();
        return;
    }
    serialPort->prepareShutdown();
    serialPort->quit();
    serialPort->wait();
    mdiArea->closeAllSubWindows();
    saveSettings();
    QMainWindow::closeEvent(event);
}

// The directories are remembered for the life of the process only, and of those that share them.
void MainWindow::saveSettings() const
{
    QSettings settings(settingsFile, QSettings::IniFormat);
    settings.setValue(settingskey::geometry, saveGeometry());
    if (isWorkingFolderShared())
        return;
    settings.beginGroup(settingskey::savePath);
    for (const QLatin1String key :
         {settingskey::openFilePath, settingskey::saveFilePath, settingskey::savePixmapPath})
        settings.setValue(key, QString());
}

void MainWindow::on_actionExit_triggered()
{
    QApplication::closeAllWindows();
    QCoreApplication::exit(0);
}

void MainWindow::on_actionEnglish_triggered()
{
    QCoreApplication::removeTranslator(translator);
    writeConfiguredLanguage(QLocale(QLocale::English).name());
}

void MainWindow::on_actionSimplified_Chinese_triggered()
{
    if (translator->load(QStringLiteral(":/lan/sd_zh_CN.qm")))
        QCoreApplication::installTranslator(translator);
    writeConfiguredLanguage(QLocale(QLocale::Chinese).name());
}

void MainWindow::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange)
        askForRestart();
    else
        QMainWindow::changeEvent(event);
}

void MainWindow::askForRestart()
{
    QMessageBox box;
    box.setText(tr("The language has been modified."));
    box.setInformativeText(tr("Do you want to restart application?"));
    box.setStandardButtons(QMessageBox::Ok | QMessageBox::Cancel);
    box.setDefaultButton(QMessageBox::Ok);
    if (box.exec() != QMessageBox::Ok)
        return;
    QCoreApplication::quit();
    QProcess::startDetached(QCoreApplication::applicationFilePath(), QStringList());
}
