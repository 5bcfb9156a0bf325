// SPDX-License-Identifier: GPL-3.0-or-later
#include "link/serialloop.h"

#include "link/framecodec.h"
#include "link/silentgap.h"

namespace {

constexpr int replyWait = 50;  // ms
constexpr int shortWait = 1;   // ms: idle turns on USB, and after a scope frame
constexpr int drainWait = 5;   // ms
constexpr int settleTime = 20; // ms between the opening and the first frame
constexpr int stopFrameTries = 10;
constexpr int stopFrameWait = 10; // ms
constexpr int probes = 3;
constexpr int timeoutLimit = 20;

// Pieces of the chunk's text between the heads of its frames; a running figure that nothing reads.
int streamFrameCount(const QByteArray &chunk)
{
    if (chunk.isEmpty())
        return 0;
    const QString text = QString::fromLatin1(chunk.toHex());
    return text.split(text.left(6), Qt::SkipEmptyParts).size();
}

} // namespace

void SerialPort::run()
{
    {
        Loop loop(*this);
        if (loop.open()) {
            msleep(settleTime);
            loop.turnUntilStopped();
        }
    }
    portOpened = false;
    stopRequested = false;
    if (!quietStop)
        emit servoONOFFLine(false);
    const std::lock_guard<std::mutex> lock(mutex);
    quietStop = false;
}

SerialPort::Loop::Loop(SerialPort &serialPort)
    : link(serialPort)
    , probeFrame(QByteArray::fromHex(probeFrameText))
    , probesLeft(probes)
{
    const std::lock_guard<std::mutex> lock(link.mutex);
    device.setPortName(link.portName);
    baudRate = link.baudRate;
    gap = silentGap(baudRate);
}

SerialPort::Loop::~Loop()
{
    if (device.isOpen())
        device.close();
}

bool SerialPort::Loop::open()
{
    DeviceWait::sharpenTimers();
    device.setDataBits(QSerialPort::Data8);
    device.setParity(QSerialPort::NoParity);
    device.setStopBits(QSerialPort::OneStop);
    device.setBaudRate(baudRate, QSerialPort::AllDirections);
    bool opened = device.open(QIODevice::ReadWrite);
    if (!opened) {
        // A device may refuse the speed, 100 most of all. It is opened at a speed that all know, and the
        // speed asked for is set afterwards, whether it takes it or not.
        device.clearError();
        device.setBaudRate(QSerialPort::Baud9600, QSerialPort::AllDirections);
        opened = device.open(QIODevice::ReadWrite);
        if (opened)
            device.setBaudRate(baudRate, QSerialPort::AllDirections);
    }
    portOpened = opened;
    return opened;
}

void SerialPort::Loop::turnUntilStopped()
{
    link.readyToSend = true;
    link.linkState = Probing;
    while (!link.stopRequested && portOpened)
        turn();
}

void SerialPort::Loop::turn()
{
    chooseWait();
    takeScopeFrame();
    takeRequest();
    writeCurrent();

    switch (link.deviceWait.wait(device, waitMs, currentFrame.isEmpty())) {
    case DeviceWait::Result::Woken:
        return;
    case DeviceWait::Result::TimedOut:
        countTimeout();
        return;
    case DeviceWait::Result::Ready:
        break;
    }
    const QByteArray chunk = readChunk();
    if (isAccepted(chunk))
        accept();
    sideWrites();
    deliver(chunk);
    emit link.servoONOFFLine(true);
}

void SerialPort::Loop::chooseWait()
{
    waitMs = replyWait;
    if (!probeFrame.isEmpty()) {
        currentFrame = probeFrame;
        isWritten = false;
        probeFrame.clear();
    } else if (baudRate == usbBaudRate) {
        waitMs = shortWait;
    }
}

void SerialPort::Loop::takeScopeFrame()
{
    const std::lock_guard<std::mutex> lock(link.mutex);
    // The stop frame stays in the mailbox: it goes out between two received chunks.
    if (link.scopeFrame.isEmpty() || isStopFrame(link.scopeFrame))
        return;
    currentFrame = link.scopeFrame;
    isWritten = false;
    link.scopeFrame.clear();
    waitMs = shortWait;
}

void SerialPort::Loop::takeRequest()
{
    if (!link.readyToSend)
        return;
    const std::lock_guard<std::mutex> lock(link.mutex);
    if (link.sendQueue.isEmpty())
        return;
    currentFrame = link.sendQueue.takeFirst();
    isWritten = false;
    if (!link.windowQueue.isEmpty())
        link.currentWindow = link.windowQueue.takeFirst();
    if (!currentFrame.isEmpty())
        link.currentAddress = currentFrame.mid(2, 2);
    waitMs = replyWait;
    link.readyToSend = false;
}

void SerialPort::Loop::writeCurrent()
{
    if (currentFrame.isEmpty())
        return;
    if (reconnecting)
        drainInput();
    if (gap.count() > 0)
        link.deviceWait.holdUntil(lastByte + gap);
    if (isWritten)
        ++repeatCount;
    isWritten = true;
    device.write(currentFrame);
}

// Throws stale bytes away until the line is silent; a running stream ends it after one chunk.
void SerialPort::Loop::drainInput()
{
    QByteArray previous;
    while (link.deviceWait.wait(device, drainWait, false) == DeviceWait::Result::Ready) {
        if (isScopeFrame(previous))
            break;
        previous = readChunk();
    }
}

void SerialPort::Loop::countTimeout()
{
    if (link.linkState == Probing) {
        if (--probesLeft == 0) {
            portOpened = false;
            link.linkState = Idle;
            link.stopRequested = true;
        }
    } else if (link.linkState == Connected) {
        if (!currentFrame.isEmpty() && ++link.timeoutCount >= timeoutLimit)
            giveUp();
        if (scopeRunning && ++link.scopeTimeoutCount >= timeoutLimit)
            giveUp();
    }
}

void SerialPort::Loop::giveUp()
{
    link.linkState = Idle;
    link.stopRequested = true;
    emit link.servoONOFFLine(false);
    portOpened = false;
    reconnecting = false;
}

bool SerialPort::Loop::isAccepted(const QByteArray &chunk) const
{
    return isScopeFrame(chunk) || (!chunk.isEmpty() && link.checkFrameCrc(chunk, false));
}

void SerialPort::Loop::accept()
{
    link.linkState = Connected;
    link.readyToSend = true;
    currentFrame.clear();
    link.timeoutCount = 0;
    link.scopeTimeoutCount = 0;
    reconnecting = false;
    probesLeft = probes;
}

void SerialPort::Loop::writeStopFrame()
{
    for (int i = 0; i < stopFrameTries; ++i) {
        device.write(QByteArray::fromHex(stopFrameText));
        if (device.waitForBytesWritten(stopFrameWait))
            break;
    }
}

void SerialPort::Loop::sideWrites()
{
    if (link.closing)
        writeStopFrame();
    bool stopAsked = false;
    {
        const std::lock_guard<std::mutex> lock(link.mutex);
        stopAsked = isStopFrame(link.scopeFrame);
        if (stopAsked)
            link.scopeFrame.clear();
    }
    if (stopAsked)
        writeStopFrame();
}

void SerialPort::Loop::deliver(QByteArray chunk)
{
    if (!isScopeFrame(chunk)) {
        if (link.checkFrameCrc(chunk, true))
            link.deviceWait.expectCall();
        return;
    }
    if (firstStream && !scopeRunning) {
        // The drive is streaming to nobody: it was left running by an earlier session.
        writeStopFrame();
        chunk.clear();
    }
    emit link.handleParameterScope(chunk);
    scopeFrameCount += streamFrameCount(chunk);
    firstStream = false;
}

QByteArray SerialPort::Loop::readChunk()
{
    const QByteArray chunk = device.readAll();
    lastByte = DeviceWait::Clock::now();
    return chunk;
}
