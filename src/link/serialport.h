// SPDX-License-Identifier: GPL-3.0-or-later
// The one owner of the link to the drive: a queue of requests on the main thread, a loop on a thread of its
// own. The object lives on the main thread and is owned by MainWindow; run() is the worker and alone touches
// the QSerialPort.
#pragma once

#include "link/answerdebt.h"
#include "link/devicewait.h"

#include <QByteArray>
#include <QList>
#include <QStringList>
#include <QThread>

#include <atomic>
#include <mutex>

class QTimer;

class SerialPort : public QThread
{
    Q_OBJECT

public:
    explicit SerialPort(QObject *parent = nullptr);
    ~SerialPort() override;

    // Ends the loop on the way out of the application: no notice any more, and a running stream is stopped if
    // another chunk of it arrives. quit() and wait() follow.
    void prepareShutdown();

    // Judges a received frame by its CRC. With route set, a good frame also goes to the window that asked for
    // it.
    bool checkFrameCrc(const QByteArray &frame, bool route);

    static std::atomic<bool> portOpened;     // the device is open and has not been given up
    static std::atomic<bool> scopeRunning;   // the scope is acquiring
    static std::atomic<bool> reconnecting;   // a failure was told, and reconnection runs without a word
    static std::atomic<int> scopeFrameCount; // stream frames seen; nothing reads it
    static std::atomic<int> repeatCount;     // requests written again, since the start of the process

signals:
    void handleBaseParameter(QByteArray data);
    void handleParameterMonitor(QByteArray data);
    void handlefault(QByteArray b);
    void handleGaintuning(QByteArray b, int address);
    void handleTrialRun(QByteArray b);
    void handleParameterScope(QByteArray b);
    void servoONOFFLine(bool state);
    void connetFailedSig();
    void stopscope();
    // Declared, never emitted.
    void handleErrorAlarm(QByteArray b);
    void handleParameterDIDO(QByteArray b);
    void handleDIDOState(QByteArray b);
    void communicationLost();

public slots:
    // Queues one complete frame; its reply comes on the signal of windowName. A scope frame (01 14) goes into
    // the one-place mailbox instead. Returns at once and promises nothing.
    void writeSlot(QByteArray data, QString windowName);
    // Takes back what this window has queued and the worker has not taken yet: the user was told that it
    // failed, so it must not leave later. The current request goes on.
    void withdraw(QString windowName);
    // Puts the frame into the scope's mailbox; an empty one clears it.
    void writeScopeData(QByteArray data);
    void scopeIsRunning(bool isRunning);
    // Takes a port, as "description(name)", and a speed (100 stands for a USB link), and (re)starts the
    // worker.
    void getPortName(QString port, qint32 baud);
    // The one-second watch that brings a lost link back.
    void checkUsbSlt();
    // Tells the user once that the link has failed.
    void connetFailedSlt();
    void testSlot();

protected:
    void run() override;

private:
    class Loop; // one run of the worker

    enum LinkState { Idle = 0, Probing = 1, Connected = 2, Closing = 4 };

    void requestStop();
    void stopWorker();
    void routeReply(const QByteArray &frame);

    std::atomic<bool> quietStop{false};
    std::atomic<bool> stopRequested{false};
    std::atomic<bool> closing{false};
    std::atomic<int> linkState{Idle};
    int timeoutCount = 0;      // worker only
    int scopeTimeoutCount = 0; // worker only
    bool readyToSend = false;  // worker only
    AnswerDebt answerDebt;     // worker only
    // Worker only: of the scope's frames the stop frame was written last, so no stream is due.
    bool scopeStopped = false;

    QTimer *usbTimer = nullptr;
    DeviceWait deviceWait;

    // Shared by the main thread and the worker, under this one mutex.
    mutable std::mutex mutex;
    QList<QByteArray> sendQueue;
    QStringList windowQueue; // in lockstep with sendQueue
    QByteArray scopeFrame;   // one-place mailbox
    QByteArray currentAddress;
    QString currentWindow;
    QString portName; // the target is written by the main thread only, while the worker does not run
    qint32 baudRate = 0;
};
