// SPDX-License-Identifier: GPL-3.0-or-later
#include "monitor/parameter_monitor.h"

#include "link/linkstate.h"
#include "link/serialport.h"
#include "link/windownames.h"
#include "monitor/alarm_error.h"
#include "monitor/control_run.h"
#include "monitor/di_do_datastatus.h"
#include "monitor/faulthistory.h"
#include "monitor/io_control.h"
#include "monitor/monitorpanel.h"
#include "monitor/monitorpoller.h"
#include "monitor/parameter_status.h"
#include "widgets/windowstate.h"

#include <QCloseEvent>
#include <QGridLayout>
#include <QScrollBar>
#include <QTabWidget>
#include <QVBoxLayout>

namespace {

constexpr int leastWidth = 850;  // pixels
constexpr int leastHeight = 500; // pixels
constexpr int gridMargin = 5;    // pixels
constexpr int gridSpacing = 2;   // pixels
constexpr int faultTab = 1;
constexpr int firstPoll = 50; // ms

// By then the link has answered or given up what a window closed before this one had on the wire, and no
// reply to that can be taken for one to this window.
constexpr int firstPollAfterAnother = 1200; // ms

// A window has gone while the link owed it a reply.
bool leftUnanswered = false;

int startDelay(const SerialPort *link)
{
    const bool mustWait = leftUnanswered && link && isLinkOpen();
    leftUnanswered = false;
    return mustWait ? firstPollAfterAnother : firstPoll;
}

} // namespace

Parameter_Monitor::Parameter_Monitor(SerialPort *link, QWidget *parent)
    : QScrollArea(parent)
    , serialPort(link)
{
    buildWindow();
    // Events are handled while the panels are built, and a box of theirs may stand for long: a poll that left
    // meanwhile would reach no link, and the chain would wait for its reply for ever.
    poller = new MonitorPoller(startDelay(link), this);
    connectPoller();
    connectPanels();
}

Parameter_Monitor::~Parameter_Monitor()
{
    if (!poller->isAnswerOwed())
        return;
    leftUnanswered = serialPort && isLinkOpen();
    emit withdrawRequests(monitorLinkName);
}

void Parameter_Monitor::buildWindow()
{
    setWindowTitle(tr("Monitor"));
    setWindowIcon(QIcon(QStringLiteral(":/pic/pic/StatusMonitor.png")));
    setFont(monitorFont());
    setWidgetResizable(false);

    didoStatus = new DI_DO_DataStatus;
    faultHistory = new FaultHistory;
    alarmError = new Alarm_Error(faultHistory);
    parameterStatus = new Parameter_Status;
    controlRun = new Control_Run;
    ioControl = new io_control;

    auto *left = new QVBoxLayout;
    left->setSpacing(gridSpacing);
    left->addWidget(didoStatus, 1);
    left->addWidget(alarmError);
    auto *page = new QWidget;
    auto *grid = new QGridLayout(page);
    grid->setContentsMargins(gridMargin, gridMargin, gridMargin, gridMargin);
    grid->setSpacing(gridSpacing);
    grid->addLayout(left, 0, 0, 2, 1);
    grid->addWidget(parameterStatus, 0, 1);
    grid->addWidget(controlRun, 1, 1);
    grid->addWidget(ioControl, 0, 2, 2, 1);
    for (const int i : {0, 1}) {
        grid->setColumnStretch(i, 1);
        grid->setRowStretch(i, 1);
    }

    tabWidget = new QTabWidget;
    tabWidget->setObjectName(QStringLiteral("tabWidget"));
    tabWidget->setMinimumSize(leastWidth, leastHeight);
    tabWidget->addTab(page, tr("Parameter Monitor"));
    tabWidget->addTab(faultHistory, tr("Fault History"));
    connect(tabWidget, &QTabWidget::currentChanged, this, &Parameter_Monitor::tabWidgetChangeSlot);
    setWidget(tabWidget);
}

void Parameter_Monitor::connectPoller()
{
    connect(poller, &MonitorPoller::frameReady, this,
            [this](const QByteArray &frame) { emit writeToSerialPort(frame, monitorLinkName); });
    connect(poller, &MonitorPoller::withdrawNeeded, this, [this] { emit withdrawRequests(monitorLinkName); });
    connect(poller, &MonitorPoller::levelsWithdrawn, this, &Parameter_Monitor::restoreLevels);
    connect(poller, &MonitorPoller::DIDOStatusSignal, this, &Parameter_Monitor::DIDOStatusSignal);
    connect(poller, &MonitorPoller::DIDOFunctionSignal, this, &Parameter_Monitor::DIDOFunctionSignal);
    connect(poller, &MonitorPoller::AlarmErrorSignal, this, &Parameter_Monitor::AlarmErrorSignal);
    connect(poller, &MonitorPoller::ParameterSignal, this, &Parameter_Monitor::ParameterSignal);
    connect(poller, &MonitorPoller::io_DIDOFuncSignal, this, &Parameter_Monitor::io_DIDOFuncSignal);
    connect(poller, &MonitorPoller::readFinishSignal, this, &Parameter_Monitor::readFinishSignal);
    if (serialPort) {
        connect(serialPort, &SerialPort::servoONOFFLine, poller, [this](bool isOnline) {
            if (!isOnline)
                poller->noteLostLink();
        });
    }
}

void Parameter_Monitor::connectPanels()
{
    using Monitor = Parameter_Monitor;
    connect(this, &Monitor::DIDOStatusSignal, didoStatus, &DI_DO_DataStatus::handleDIDOStatusSlot);
    connect(this, &Monitor::DIDOFunctionSignal, didoStatus, &DI_DO_DataStatus::handleDIDOFunctionSlot);
    connect(this, &Monitor::AlarmErrorSignal, alarmError, &Alarm_Error::handAlarmErrorSlot);
    connect(this, &Monitor::ParameterSignal, parameterStatus, &Parameter_Status::handleParameterMonitorSlot);
    connect(this, &Monitor::FaultHistorySignal, faultHistory, &FaultHistory::handleFaultHistorySlot);
    connect(this, &Monitor::io_DIDOFuncSignal, ioControl, &io_control::handleio_DIDOFuncSlot);
    connect(this, &Monitor::readFinishSignal, controlRun, &Control_Run::handleReadFinishSlot);

    connect(alarmError, &Alarm_Error::sendFaultClearSignal, this, &Monitor::handleFalutClearSlot);
    connect(ioControl, &io_control::DIsourceChangedSignal, this, &Monitor::handleDISourceChangeSlot);
    connect(ioControl, &io_control::DOsourceChangedSignal, this, &Monitor::handleDOSourceChangeSlot);
    connect(ioControl, &io_control::DIfunctionChangedSignal, this, &Monitor::handleDIfunctionChangeSlot);
    connect(ioControl, &io_control::DOfunctionChangedSignal, this, &Monitor::handleDOfunctionChangeSlot);
    connect(ioControl, &io_control::DIBtnclickedSignal, this, &Monitor::handleDIBtnclickdSlot);
    connect(ioControl, &io_control::DOBtnclickedSignal, this, &Monitor::handleDOBtnclickdSlot);
    connect(controlRun, &Control_Run::methodComboBoxchangedSignal, this,
            &Monitor::handlemethodComboBoxChangedSlot);
    connect(controlRun, &Control_Run::Pn300ComboBoxChangedSignal, this,
            &Monitor::handlePn300ComboBoxChangedSlot);
    connect(controlRun, &Control_Run::LineEditChangedSignal, this, &Monitor::handleLineEditChangedSlot);
    connect(controlRun, &Control_Run::otherComboBoxChangedSignal, this,
            &Monitor::handleotherComboBoxChangedSlot);
    connect(controlRun, &Control_Run::readBtnclickedSignal, this, &Monitor::handlereadBtnclickedSlot);

    connect(ioControl, &io_control::DIsourceChangedSignal, controlRun, &Control_Run::DIDOsourceChangedSlot);
    connect(ioControl, &io_control::DIEnableSignal, controlRun, &Control_Run::DIEnableSlot);
    connect(ioControl, &io_control::DIEnableNumSignal, controlRun, &Control_Run::DIEnableNumSlot);
    connect(controlRun, &Control_Run::BtnEnableSignal, ioControl, &io_control::handleBtnEnableSlot);
}

void Parameter_Monitor::restoreLevels(MonitorWrite kind, int levels)
{
    if (kind == MonitorWrite::DILevel) {
        ioControl->restoreDILevels(levels);
        controlRun->showLevels(levels);
    } else {
        ioControl->restoreDOLevels(levels);
    }
}

void Parameter_Monitor::packData(QString startAddress1)
{
    poller->packData(startAddress1);
}

void Parameter_Monitor::handleParameterMonitor(QByteArray b)
{
    poller->takeReply(b);
}

void Parameter_Monitor::handleFalutHistory(QByteArray b)
{
    emit FaultHistorySignal(b);
}

void Parameter_Monitor::HandleUpDataTimer()
{
    poller->HandleUpDataTimer();
}

void Parameter_Monitor::tabWidgetChangeSlot()
{
    poller->showFaultTab(tabWidget->currentIndex() == faultTab);
}

void Parameter_Monitor::handleFalutClearSlot()
{
    poller->requestFaultClear();
}

void Parameter_Monitor::handleDISourceChangeSlot(int index)
{
    poller->requestWrite(MonitorWrite::DISource, 0, index);
}

void Parameter_Monitor::handleDOSourceChangeSlot(int index)
{
    poller->requestWrite(MonitorWrite::DOSource, 0, index);
}

void Parameter_Monitor::handleDIfunctionChangeSlot(int num, int index)
{
    poller->requestWrite(MonitorWrite::DIFunction, num, index);
}

void Parameter_Monitor::handleDOfunctionChangeSlot(int num, int index)
{
    poller->requestWrite(MonitorWrite::DOFunction, num, index);
}

void Parameter_Monitor::handleDIBtnclickdSlot(int DIstatus)
{
    poller->requestWrite(MonitorWrite::DILevel, 0, DIstatus);
}

void Parameter_Monitor::handleDOBtnclickdSlot(int DOstatus)
{
    poller->requestWrite(MonitorWrite::DOLevel, 0, DOstatus);
}

void Parameter_Monitor::handlemethodComboBoxChangedSlot(int index)
{
    poller->requestWrite(MonitorWrite::Method, 0, index);
}

void Parameter_Monitor::handlePn300ComboBoxChangedSlot(int value)
{
    poller->requestWrite(MonitorWrite::Pn300, 0, value);
}

void Parameter_Monitor::handleLineEditChangedSlot(int index, int value)
{
    poller->requestWrite(MonitorWrite::LineEdit, index, value);
}

void Parameter_Monitor::handleotherComboBoxChangedSlot(int index, int value)
{
    poller->requestWrite(MonitorWrite::OtherCombo, index, value);
}

void Parameter_Monitor::handlereadBtnclickedSlot()
{
    poller->requestRead();
}

void Parameter_Monitor::changeEvent(QEvent *event)
{
    QScrollArea::changeEvent(event);
    if (event->type() == QEvent::WindowStateChange)
        emit windowStateChanged(reportedWindowState(this, isClosing));
}

void Parameter_Monitor::hideEvent(QHideEvent *event)
{
    QScrollArea::hideEvent(event);
    emit windowStateChanged(QString());
}

void Parameter_Monitor::closeEvent(QCloseEvent *event)
{
    isClosing = true;
    QScrollArea::closeEvent(event);
}

void Parameter_Monitor::resizeEvent(QResizeEvent *event)
{
    QScrollArea::resizeEvent(event);
    fitContent();
}

// The content fills the window, and is scrolled where the window is smaller than its minimum.
void Parameter_Monitor::fitContent()
{
    const QSize least = tabWidget->minimumSize().expandedTo(tabWidget->minimumSizeHint());
    QSize room = maximumViewportSize();
    // The bar of one direction takes its room from the other.
    if (room.height() < least.height())
        room.rwidth() -= verticalScrollBar()->sizeHint().width();
    if (room.width() < least.width())
        room.rheight() -= horizontalScrollBar()->sizeHint().height();
    tabWidget->resize(room.expandedTo(least));
}
