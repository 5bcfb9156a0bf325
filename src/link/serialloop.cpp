// SPDX-License-Identifier: GPL-3.0-or-later
#include "link/serialloop.h"

#include "link/framecodec.h"
#include "link/silentgap.h"

#include <algorithm>

namespace {

constexpr int replyWait = 50; // ms
constexpr int shortWait = 1;  // ms: idle turns on USB, and after a scope frame
constexpr int drainWait = 5;  // ms
// Nothing is current and no stream is due: whatever there is to do ends the wait.
constexpr int idleWait = 100;                       // ms
constexpr std::chrono::milliseconds settleTime(20); // between the opening and the first frame
// A line that is never silent can't keep a frame back for longer.
constexpr std::chrono::milliseconds longestGap(50);
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
            deviceWait.pause(DeviceWait::Clock::now() + settleTime);
            loop.turnUntilStopped();
        }
    }
    portOpened = false;
    stopRequested = false;
    deviceWait.resume();
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
    link.answerDebt.abandon();
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
    deliverAnswer(link.answerDebt.endHold(DeviceWait::Clock::now()));
    chooseWait();
    takeScopeFrame();
    takeRequest();
    writeCurrent();

    switch (waitForChunk()) {
    case DeviceWait::Result::Woken:
    case DeviceWait::Result::Stopped:
        return;
    case DeviceWait::Result::TimedOut:
        countTimeout();
        return;
    case DeviceWait::Result::Ready:
        break;
    }
    const QByteArray chunk = readChunk();
    const ChunkKind kind = judge(chunk);
    const QByteArray answer = settle(chunk, kind);
    if (kind != ChunkKind::Bad)
        accept();
    sideWrites();
    deliverAnswer(answer);
    if (kind == ChunkKind::Stream)
        deliverStream(chunk);
    emit link.servoONOFFLine(true);
}

void SerialPort::Loop::chooseWait()
{
    waitMs = replyWait;
    if (!probeFrame.isEmpty()) {
        currentFrame = probeFrame;
        probeFrame.clear();
        wasWritten = false;
        link.answerDebt.begin(DeviceWait::Clock::now());
    } else if (baudRate == usbBaudRate) {
        waitMs = shortWait;
    }
}

void SerialPort::Loop::takeScopeFrame()
{
    // A request that waits for the line's silence is written first: it has been taken from its queue.
    if (!link.readyToSend && link.answerDebt.awaitsWriting())
        return;
    const std::lock_guard<std::mutex> lock(link.mutex);
    // The stop frame stays in the mailbox: it goes out between two received chunks.
    if (link.scopeFrame.isEmpty() || isStopFrame(link.scopeFrame))
        return;
    currentFrame = link.scopeFrame;
    link.scopeFrame.clear();
    link.scopeStopped = false;
    wasWritten = false;
    waitMs = shortWait;
}

void SerialPort::Loop::takeRequest()
{
    if (!link.readyToSend || link.answerDebt.isHolding())
        return;
    const std::lock_guard<std::mutex> lock(link.mutex);
    if (link.sendQueue.isEmpty())
        return;
    currentFrame = link.sendQueue.takeFirst();
    if (!link.windowQueue.isEmpty())
        link.currentWindow = link.windowQueue.takeFirst();
    if (!currentFrame.isEmpty())
        link.currentAddress = currentFrame.mid(2, 2);
    waitMs = replyWait;
    link.readyToSend = false;
    wasWritten = false;
    link.answerDebt.begin(DeviceWait::Clock::now());
}

void SerialPort::Loop::writeCurrent()
{
    if (currentFrame.isEmpty())
        return;
    if (reconnecting)
        drainInput();
    if (link.stopRequested || !isLineSilent())
        return;
    if (wasWritten)
        ++repeatCount;
    device.write(currentFrame);
    wasWritten = true;
    if (!isScopeFrame(currentFrame))
        link.answerDebt.written(DeviceWait::Clock::now());
}

// Waits for the silent gap. Bytes that come meanwhile are the drive's: this turn reads them, and the gap
// starts anew behind them.
bool SerialPort::Loop::isLineSilent()
{
    if (gap.count() == 0)
        return true;
    const DeviceWait::Clock::time_point now = DeviceWait::Clock::now();
    if (!silenceAwaitedFrom)
        silenceAwaitedFrom = now;
    if (!link.deviceWait.waitForSilence(device, lastByte + gap) && now - *silenceAwaitedFrom < longestGap)
        return false;
    silenceAwaitedFrom.reset();
    return true;
}

// Throws stale bytes away until the line is silent; a running stream ends it after one chunk, and a stop in
// any case.
void SerialPort::Loop::drainInput()
{
    QByteArray previous;
    while (link.deviceWait.wait(device, drainWait, DeviceWait::EndedBy::Stop) == DeviceWait::Result::Ready) {
        if (isScopeFrame(previous))
            break;
        previous = readChunk();
    }
}

DeviceWait::Result SerialPort::Loop::waitForChunk()
{
    using Result = DeviceWait::Result;
    int milliseconds = isIdle() ? idleWait : waitMs;
    bool wasCut = false;
    if (link.answerDebt.isHolding()) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(link.answerDebt.holdEnd() -
                                                                       DeviceWait::Clock::now());
        wasCut = left.count() < milliseconds;
        if (wasCut)
            milliseconds = std::max(int(left.count()), 0);
    }
    const Result result = link.deviceWait.wait(device, milliseconds,
                                               currentFrame.isEmpty() ? DeviceWait::EndedBy::StopOrCall
                                                                      : DeviceWait::EndedBy::Stop);
    // On the way out a stream is still stopped, between two of its chunks.
    if (result == Result::Stopped && link.closing)
        return link.deviceWait.wait(device, replyWait, DeviceWait::EndedBy::Time);
    // The end of a hold is no time-out.
    return result == Result::TimedOut && wasCut ? Result::Woken : result;
}

bool SerialPort::Loop::isIdle() const
{
    return currentFrame.isEmpty() && link.linkState == Connected && !isStreamDue();
}

// While the stop frame is the scope's last, written or waiting, the drive is rightly silent.
bool SerialPort::Loop::isStreamDue() const
{
    if (!scopeRunning)
        return false;
    const std::lock_guard<std::mutex> lock(link.mutex);
    return link.scopeFrame.isEmpty() ? !link.scopeStopped : !isStopFrame(link.scopeFrame);
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
        if (isStreamDue() && ++link.scopeTimeoutCount >= timeoutLimit)
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

SerialPort::Loop::ChunkKind SerialPort::Loop::judge(const QByteArray &chunk) const
{
    if (isScopeFrame(chunk))
        return ChunkKind::Stream;
    return !chunk.isEmpty() && link.checkFrameCrc(chunk, false) ? ChunkKind::Good : ChunkKind::Bad;
}

// Reckons the chunk up with what the drive owes; gives the answer that may be delivered.
QByteArray SerialPort::Loop::settle(const QByteArray &chunk, ChunkKind kind)
{
    const DeviceWait::Clock::time_point now = DeviceWait::Clock::now();
    switch (kind) {
    case ChunkKind::Stream:
        return scopeRunning ? link.answerDebt.streamChunk() : link.answerDebt.unwantedStreamChunk(chunk, now);
    case ChunkKind::Good:
        return link.answerDebt.goodChunk(chunk, now);
    case ChunkKind::Bad:
        break;
    }
    return link.answerDebt.badChunk(chunk, now);
}

void SerialPort::Loop::accept()
{
    link.linkState = Connected;
    // What has not been written yet can't have been answered.
    if (!link.answerDebt.awaitsWriting())
        link.readyToSend = true;
    if (wasWritten)
        currentFrame.clear();
    link.timeoutCount = 0;
    link.scopeTimeoutCount = 0;
    reconnecting = false;
    probesLeft = probes;
}

void SerialPort::Loop::writeStopFrame()
{
    link.scopeStopped = true;
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

// The CRC has been found good when the chunk was judged.
void SerialPort::Loop::deliverAnswer(const QByteArray &answer)
{
    if (answer.isEmpty())
        return;
    link.routeReply(answer);
    link.deviceWait.expectCall();
}

void SerialPort::Loop::deliverStream(QByteArray chunk)
{
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
