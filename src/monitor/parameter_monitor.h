// SPDX-License-Identifier: GPL-3.0-or-later
// The monitor window: status, inputs and outputs, alarms, control and the fault record, fed by one chain of
// reads. Main thread; a sub-window of MainWindow that deletes itself on close.
#pragma once

#include <QByteArray>
#include <QScrollArea>
#include <QStringList>

class Alarm_Error;
class Control_Run;
class DI_DO_DataStatus;
class FaultHistory;
class MonitorPoller;
class Parameter_Status;
class QTabWidget;
class SerialPort;
class io_control;
enum class MonitorWrite;

class Parameter_Monitor : public QScrollArea
{
    Q_OBJECT

public:
    // The link says when it is lost; without one, nothing does.
    explicit Parameter_Monitor(SerialPort *link = nullptr, QWidget *parent = nullptr);
    ~Parameter_Monitor() override;

signals:
    void writeToSerialPort(QByteArray data, QString windowName);
    void writeToSerialPort(QByteArray data);
    void DIDOStatusSignal(QByteArray data, int address);
    void DIDOFunctionSignal(QByteArray data, int address);
    void AlarmErrorSignal(QByteArray data, int address);
    void ParameterSignal(QByteArray data, int address);
    void FaultHistorySignal(QByteArray data);
    // The title when the window becomes maximized, an empty text when it stops being so.
    void windowStateChanged(QString title);
    void io_DIDOFuncSignal(QByteArray data, int address);
    void readFinishSignal(int index, QStringList paraList);
    // What the link has queued for this window must not leave any more.
    void withdrawRequests(QString windowName);

public slots:
    // Asks for the block of a code such as "Pn-F25".
    void packData(QString startAddress1);
    void handleParameterMonitor(QByteArray b);
    void handleFalutHistory(QByteArray b);
    void HandleUpDataTimer();
    void tabWidgetChangeSlot();
    void handleFalutClearSlot();
    void handleDISourceChangeSlot(int index);
    void handleDOSourceChangeSlot(int index);
    void handleDIfunctionChangeSlot(int num, int index);
    void handleDOfunctionChangeSlot(int num, int index);
    void handleDIBtnclickdSlot(int DIstatus);
    void handleDOBtnclickdSlot(int DOstatus);
    void handlemethodComboBoxChangedSlot(int index);
    void handlePn300ComboBoxChangedSlot(int value);
    void handleLineEditChangedSlot(int index, int value);
    void handleotherComboBoxChangedSlot(int index, int value);
    void handlereadBtnclickedSlot();

protected:
    void changeEvent(QEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void buildWindow();
    void connectPoller();
    void connectPanels();
    void fitContent();
    void restoreLevels(MonitorWrite kind, int levels);

    SerialPort *serialPort = nullptr;
    MonitorPoller *poller = nullptr;
    QTabWidget *tabWidget = nullptr;
    DI_DO_DataStatus *didoStatus = nullptr;
    Alarm_Error *alarmError = nullptr;
    Parameter_Status *parameterStatus = nullptr;
    Control_Run *controlRun = nullptr;
    io_control *ioControl = nullptr;
    FaultHistory *faultHistory = nullptr;
    bool isClosing = false;
};
