// SPDX-License-Identifier: GPL-3.0-or-later
#include "link/serialport.h"

#include "link/framecodec.h"
#include "link/portlist.h"
#include "link/windownames.h"

#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QTimer>

#include <memory>

namespace {

constexpr int watchInterval = 1000;   // ms
constexpr int noticeDuration = 2000;  // ms
constexpr int faultRegister = 0x2352; // the fault record that the monitor shows in a window of its own

} // namespace

std::atomic<bool> SerialPort::portOpened{false};
std::atomic<bool> SerialPort::scopeRunning{false};
std::atomic<bool> SerialPort::reconnecting{false};
std::atomic<int> SerialPort::scopeFrameCount{0};
std::atomic<int> SerialPort::repeatCount{0};

SerialPort::SerialPort(QObject *parent)
    : QThread(parent)
    , usbTimer(new QTimer(this))
{
    connect(usbTimer, &QTimer::timeout, this, &SerialPort::checkUsbSlt);
    connect(this, &SerialPort::connetFailedSig, this, &SerialPort::connetFailedSlt);
}

SerialPort::~SerialPort()
{
    closing = true;
    stopWorker();
}

void SerialPort::prepareShutdown()
{
    closing = true;
    linkState = Closing;
    usbTimer->stop();
    requestStop();
}

void SerialPort::requestStop()
{
    stopRequested = true;
    deviceWait.stop();
}

// Waits for the end of run(), which takes one turn of the loop at most. A worker that was ending by itself
// may have cleared the flags before they were set here, so they are cleared again for the next start.
void SerialPort::stopWorker()
{
    requestStop();
    quit();
    wait();
    deviceWait.resume();
    const std::lock_guard<std::mutex> lock(mutex);
    stopRequested = false;
    quietStop = false;
}

void SerialPort::writeSlot(QByteArray data, QString windowName)
{
    if (isScopeFrame(data)) {
        writeScopeData(data);
        return;
    }
    if (data.isEmpty())
        return;
    {
        const std::lock_guard<std::mutex> lock(mutex);
        sendQueue.append(data);
        windowQueue.append(windowName);
    }
    deviceWait.wake();
}

void SerialPort::withdraw(QString windowName)
{
    const std::lock_guard<std::mutex> lock(mutex);
    for (int i = windowQueue.size() - 1; i >= 0; --i) {
        if (windowQueue.at(i) == windowName) {
            windowQueue.removeAt(i);
            sendQueue.removeAt(i);
        }
    }
}

void SerialPort::writeScopeData(QByteArray data)
{
    {
        const std::lock_guard<std::mutex> lock(mutex);
        scopeFrame = data;
    }
    // The stop frame waits for the next chunk anyway.
    if (!data.isEmpty() && !isStopFrame(data))
        deviceWait.wake();
}

void SerialPort::scopeIsRunning(bool isRunning)
{
    scopeRunning = isRunning;
    if (isRunning) {
        // From now on the worker counts how long no data come.
        deviceWait.wake();
        return;
    }
    const std::lock_guard<std::mutex> lock(mutex);
    scopeFrame.clear();
}

void SerialPort::getPortName(QString port, qint32 baud)
{
    if (isRunning()) {
        quietStop = true;
        stopWorker();
    }
    {
        const std::lock_guard<std::mutex> lock(mutex);
        if (port.contains(QLatin1Char('('))) {
            portName = port.section(QLatin1Char('('), -1);
            portName.chop(1);
        }
        if (!portName.isEmpty())
            baudRate = baud;
    }
    if (portName.isEmpty()) {
        emit servoONOFFLine(false);
        usbTimer->stop();
        return;
    }
    start(QThread::HighestPriority);
    usbTimer->start(watchInterval);
}

void SerialPort::checkUsbSlt()
{
    if (closing)
        return;
    // The notice runs an event loop of its own, in which the application may end.
    const QPointer<SerialPort> self(this);
    const auto tellOrReconnect = [this, &self] {
        if (!reconnecting)
            emit connetFailedSig();
        if (self && reconnecting && !closing)
            getPortName(portName, baudRate);
    };

    QStringList names;
    const QList<SerialPortEntry> ports = serialPorts();
    for (const SerialPortEntry &port : ports) {
        names.append(port.name);
        // Deliberate: the names are collected as the walk goes, so this tests every port from ours onward.
        if (names.contains(portName) && port.manufacturer.isEmpty()) {
            if (isRunning()) {
                quietStop = false;
                stopWorker();
            }
            tellOrReconnect();
            if (!self || closing)
                return;
        }
        if (isFinished())
            tellOrReconnect();
        if (!self || closing)
            return;
    }
}

void SerialPort::connetFailedSlt()
{
    if (closing)
        return;
    usbTimer->stop();
    reconnecting = true;
    if (scopeRunning) {
        emit stopscope();
        scopeRunning = false;
    }
    usbTimer->start(watchInterval);

    QMessageBox box(QMessageBox::NoIcon, QString(),
                    tr("Fail to connect to the device via \nRead Modbus Failed!"));
    // A box without any button gives itself an "OK" when it is shown, unless it has had one before.
    const std::unique_ptr<QPushButton> button(box.addButton(QMessageBox::Ok));
    box.removeButton(button.get());
    QTimer::singleShot(noticeDuration, Qt::PreciseTimer, &box, &QDialog::accept);
    box.exec();
}

void SerialPort::testSlot()
{
    closing = true;
    msleep(20);
    requestStop();
}

bool SerialPort::checkFrameCrc(const QByteArray &frame, bool route)
{
    const bool good = hasGoodCrc(frame);
    if (good && route)
        routeReply(frame);
    return good;
}

void SerialPort::routeReply(const QByteArray &frame)
{
    QString window;
    int address = 0;
    {
        const std::lock_guard<std::mutex> lock(mutex);
        window = currentWindow;
        address = currentAddress.toHex().toInt(nullptr, 16);
    }
    if (window == monitorLinkName) {
        emit handleParameterMonitor(frame);
        if (address == faultRegister)
            emit handlefault(frame);
    } else if (window == editorLinkName) {
        emit handleBaseParameter(frame);
    } else if (window == gainTuningLinkName) {
        emit handleGaintuning(frame, address);
    } else if (window == trialRunLinkName) {
        emit handleTrialRun(frame);
    }
}
