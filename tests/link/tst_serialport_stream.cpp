// SPDX-License-Identifier: GPL-3.0-or-later
// The scope's frames and chunks on the link: the mailbox, the stop frame, a stream that nobody asked for.
#include "linkbench.h"

#include <QScopeGuard>

#include <atomic>
#include <thread>

using namespace linkbench;

class SerialPortStreamTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void scopeFrameThroughTheRequestSlotTakesTheMailbox();
    void stopFrameWaitsForTheNextChunk();
    void stoppingTheScopeEmptiesTheMailbox();
    void streamOfNobodyIsStoppedOnce();
    void streamChunksAnswerARequest();
    void closingStopsARunningStream();
};

void SerialPortStreamTest::init()
{
    resetLink();
}

void SerialPortStreamTest::scopeFrameThroughTheRequestSlotTakesTheMailbox()
{
    PtyPeer peer(
        [](const QByteArray &request) { return request == startFrame ? streamChunk : replyOf(request); });
    SerialPort port;
    const Deliveries deliveries(port);
    port.getPortName(peer.entry(), rs485);
    QTRY_VERIFY(peer.framesOnce().size() >= 1);
    port.scopeIsRunning(true);
    // If its name were queued, the next reply would go to the editor.
    port.writeSlot(startFrame, QStringLiteral("Editor"));
    QTRY_COMPARE(deliveries.list, QStringList(delivery("scope", streamChunk)));
    port.scopeIsRunning(false);
    port.writeSlot(readA, QStringLiteral("Monitor"));
    QTRY_COMPARE(deliveries.list.size(), 2);
    QCOMPARE(deliveries.list.last(), delivery("monitor", replyOf(readA)));
    QCOMPARE(peer.framesOnce(), QList<QByteArray>({probe, startFrame, readA}));
}

void SerialPortStreamTest::stopFrameWaitsForTheNextChunk()
{
    PtyPeer peer(replyOf);
    SerialPort port;
    port.getPortName(peer.entry(), usb);
    QTRY_VERIFY(peer.framesOnce().size() >= 1);
    const SignalLog online(&port, &SerialPort::servoONOFFLine);
    port.writeScopeData(stopFrame);
    // A request goes past it, and its reply is the chunk behind which the stop frame leaves.
    port.writeSlot(readA, QStringLiteral("Editor"));
    QTRY_VERIFY(peer.framesOnce().size() >= 3);
    QCOMPARE(peer.framesOnce(), QList<QByteArray>({probe, readA, stopFrame}));
    port.writeSlot(readB, QStringLiteral("Editor"));
    QTRY_VERIFY(peer.framesOnce().size() >= 4);
    QCOMPARE(peer.frames().last(), readB);
}

void SerialPortStreamTest::stoppingTheScopeEmptiesTheMailbox()
{
    PtyPeer peer(replyOf);
    SerialPort port;
    port.getPortName(peer.entry(), usb);
    QTRY_VERIFY(peer.framesOnce().size() >= 1);
    port.scopeIsRunning(true);
    QVERIFY(SerialPort::scopeRunning);
    port.writeScopeData(stopFrame);
    port.scopeIsRunning(false);
    QVERIFY(!SerialPort::scopeRunning);
    port.writeSlot(readA, QStringLiteral("Editor"));
    port.writeSlot(readB, QStringLiteral("Editor"));
    QTRY_VERIFY(peer.frames().contains(readB));
    QVERIFY(!peer.frames().contains(stopFrame));
}

void SerialPortStreamTest::streamOfNobodyIsStoppedOnce()
{
    PtyPeer peer([](const QByteArray &request) {
        if (request == stopFrame)
            return QByteArray();
        return request == probe ? streamChunk : replyOf(request);
    });
    SerialPort port;
    const Deliveries deliveries(port);
    port.getPortName(peer.entry(), usb);
    QTRY_COMPARE(deliveries.list, QStringList(QStringLiteral("scope ")));
    QTRY_COMPARE(peer.framesOnce(), QList<QByteArray>({probe, stopFrame}));
    // What still arrives is delivered as it is, and not stopped again.
    peer.write(streamChunk);
    QTRY_COMPARE(deliveries.list, QStringList({QStringLiteral("scope "), delivery("scope", streamChunk)}));
    QCOMPARE(peer.framesOnce(), QList<QByteArray>({probe, stopFrame}));
}

void SerialPortStreamTest::streamChunksAnswerARequest()
{
    PtyPeer peer(
        [](const QByteArray &request) { return request == probe ? replyOf(request) : QByteArray(); });
    SerialPort port;
    const Deliveries deliveries(port);
    port.getPortName(peer.entry(), rs485);
    QTRY_VERIFY(peer.framesOnce().size() >= 1);
    port.scopeIsRunning(true);
    const int framesBefore = SerialPort::scopeFrameCount;
    port.writeScopeData(startFrame);
    QTRY_VERIFY(peer.frames().contains(startFrame));
    port.writeSlot(readA, QStringLiteral("Editor"));
    QTRY_VERIFY(peer.frames().contains(readA));
    peer.write(streamChunk);
    QTRY_COMPARE(deliveries.list, QStringList(delivery("scope", streamChunk)));
    // The chunk has opened the gate; the request got no reply of its own.
    port.writeSlot(readB, QStringLiteral("Editor"));
    QTRY_VERIFY(peer.frames().contains(readB));
    QVERIFY(SerialPort::scopeFrameCount > framesBefore);
    port.scopeIsRunning(false);
}

void SerialPortStreamTest::closingStopsARunningStream()
{
    std::atomic<bool> streaming{true};
    PtyPeer peer([&streaming](const QByteArray &request) {
        if (request == stopFrame)
            streaming = false;
        return request == probe ? replyOf(request) : QByteArray();
    });
    SerialPort port;
    SerialPort::scopeRunning = true;
    port.getPortName(peer.entry(), rs485);
    QTRY_VERIFY(peer.framesOnce().size() >= 1);
    std::thread stream([&peer, &streaming] {
        while (streaming) {
            peer.write(streamChunk);
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
    });
    const auto stopStream = qScopeGuard([&streaming, &stream] {
        streaming = false;
        stream.join();
    });
    port.prepareShutdown();
    port.quit();
    QVERIFY(port.wait(2000));
    QTRY_VERIFY(peer.frames().contains(stopFrame));
    QVERIFY(!SerialPort::portOpened);
}

QTEST_MAIN(SerialPortStreamTest)
#include "tst_serialport_stream.moc"
