// SPDX-License-Identifier: GPL-3.0-or-later
// The scope's frames and chunks on the link: the mailbox, the stop frame, a running stream.
#include "linkbench.h"
#include "support/rununtil.h"

#include <QElapsedTimer>
#include <QScopeGuard>

#include <algorithm>
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
    void streamChunksAnswerARequest();
    void scopeFramesAreOwedNoAnswer();
    void closingStopsARunningStream();
    void closingStopsAStreamThatIsDrained();
    void streamEndsTheDrainAfterOneChunk();
    void stoppedScopeIsRightlySilent_data();
    void stoppedScopeIsRightlySilent();
    void newRunAfterAStopIsWatchedAgain();
    void streamChunkIsNeverHeldOrDropped();
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
    QTRY_VERIFY(!deliveries.list.isEmpty());
    port.scopeIsRunning(false);
    // A start frame is repeated after a millisecond, so more chunks may come, and several as one.
    const auto isScopeOnly = [](const QString &text) { return text.startsWith(QLatin1String("scope 0114")); };
    QVERIFY(std::all_of(deliveries.list.cbegin(), deliveries.list.cend(), isScopeOnly));
    port.writeSlot(readA, QStringLiteral("Monitor"));
    port.writeSlot(readB, QStringLiteral("Monitor"));
    QTRY_VERIFY(deliveries.list.contains(delivery("monitor", replyOf(readB))));
    for (const QString &text : qAsConst(deliveries.list))
        QVERIFY2(isScopeOnly(text) || text.startsWith(QLatin1String("monitor ")), qPrintable(text));
    QCOMPARE(peer.framesOnce().mid(0, 2), QList<QByteArray>({probe, startFrame}));
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

void SerialPortStreamTest::scopeFramesAreOwedNoAnswer()
{
    PtyPeer peer(
        [](const QByteArray &request) { return request == startFrame ? QByteArray() : replyOf(request); });
    SerialPort port;
    const Deliveries deliveries(port);
    port.getPortName(peer.entry(), rs485);
    QTRY_VERIFY(peer.framesOnce().size() >= 1);
    // Owed answers would hold the second request back for 20 ms and more. The quickest of some is looked at,
    // a busy machine holds up the others.
    qint64 quickest = 1000000; // microseconds
    for (int i = 1; i <= 8; ++i) {
        peer.forget();
        port.writeScopeData(startFrame);
        QTRY_VERIFY(peer.frames().contains(startFrame));
        port.writeSlot(readA, QStringLiteral("Editor"));
        port.writeSlot(readB, QStringLiteral("Editor"));
        QTRY_COMPARE(deliveries.list.size(), 2 * i);
        const std::vector<PtyPeer::Request> requests = peer.requests();
        quickest = std::min(quickest, requests.back().at - requests.at(requests.size() - 2).at);
    }
    QVERIFY2(quickest < 15000, qPrintable(QString::number(quickest)));
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

void SerialPortStreamTest::closingStopsAStreamThatIsDrained()
{
    std::atomic<bool> stopped{false};
    std::atomic<bool> streaming{true};
    PtyPeer peer([&stopped](const QByteArray &request) {
        if (request == stopFrame)
            stopped = true;
        return QByteArray();
    });
    // Never silent, and no chunk of a stream either: the drain has no end of its own.
    std::thread stream([&peer, &streaming] {
        while (streaming) {
            peer.write(wire::bytes("AABBCC"));
            std::this_thread::sleep_for(std::chrono::microseconds(300));
        }
    });
    const auto stopStream = qScopeGuard([&streaming, &stream] {
        streaming = false;
        stream.join();
    });
    // On a busy machine the noise has pauses, which end the drain too, and no chunk may come in time for the
    // stop frame, so it is looked at several times.
    qint64 ending = 0; // ms
    for (int i = 0; i < 5; ++i) {
        SerialPort port;
        SerialPort::reconnecting = true;
        port.getPortName(peer.entry(), rs485);
        QElapsedTimer clock;
        clock.start();
        QTRY_VERIFY(SerialPort::portOpened && clock.elapsed() > 50);
        // "Ok" in the connection dialog ends it.
        clock.start();
        port.getPortName(peer.entry(), rs485);
        ending += clock.elapsed();
        clock.start();
        QTRY_VERIFY(SerialPort::portOpened && clock.elapsed() > 50);
        clock.start();
        port.prepareShutdown();
        port.quit();
        QVERIFY(port.wait(10000));
        ending += clock.elapsed();
    }
    QVERIFY2(ending < 2000, qPrintable(QString::number(ending)));
    QTRY_VERIFY(stopped);
}

void SerialPortStreamTest::streamEndsTheDrainAfterOneChunk()
{
    std::atomic<bool> streaming{true};
    PtyPeer peer([&streaming](const QByteArray &request) {
        if (request == stopFrame)
            streaming = false;
        return QByteArray();
    });
    SerialPort port;
    SerialPort::reconnecting = true;
    const Deliveries deliveries(port);
    std::thread stream([&peer, &streaming] {
        while (streaming) {
            peer.write(streamChunk);
            std::this_thread::sleep_for(std::chrono::microseconds(300));
        }
    });
    const auto stopStream = qScopeGuard([&streaming, &stream] {
        streaming = false;
        stream.join();
    });
    // A drain that waited for silence would throw the stream away for ever.
    QElapsedTimer clock;
    clock.start();
    port.getPortName(peer.entry(), usb);
    QVERIFY(runUntil([&deliveries] { return !deliveries.list.isEmpty(); }, 5000));
    QVERIFY2(clock.elapsed() < 300, qPrintable(QString::number(clock.elapsed())));
    QTRY_VERIFY(!streaming);
    QVERIFY(!SerialPort::reconnecting);
}

void SerialPortStreamTest::stoppedScopeIsRightlySilent_data()
{
    QTest::addColumn<bool>("wasWritten");
    QTest::newRow("the stop frame was written") << true;
    QTest::newRow("the stop frame waits, as in a run with all channels off") << false;
}

void SerialPortStreamTest::stoppedScopeIsRightlySilent()
{
    QFETCH(bool, wasWritten);
    PtyPeer peer(replyOf);
    SerialPort port;
    const Deliveries deliveries(port);
    port.getPortName(peer.entry(), usb);
    QTRY_VERIFY(peer.framesOnce().size() >= 1);
    port.writeScopeData(stopFrame);
    port.scopeIsRunning(true);
    if (wasWritten) {
        port.writeSlot(readA, QStringLiteral("Editor"));
        QTRY_VERIFY(peer.frames().contains(stopFrame));
    }
    // Twenty time-outs would take 20 ms here.
    QElapsedTimer silent;
    silent.start();
    QTRY_VERIFY(silent.elapsed() > 400);
    QVERIFY(port.isRunning());
    QVERIFY(SerialPort::portOpened);
    port.scopeIsRunning(false);
}

void SerialPortStreamTest::newRunAfterAStopIsWatchedAgain()
{
    // The new run's start is answered by one chunk; then nothing comes any more.
    PtyPeer peer([](const QByteArray &request) {
        if (request == stopFrame)
            return QByteArray();
        return request == startFrame ? streamChunk : replyOf(request);
    });
    SerialPort port;
    port.getPortName(peer.entry(), usb);
    QTRY_VERIFY(peer.framesOnce().size() >= 1);
    port.scopeIsRunning(true);
    port.writeScopeData(stopFrame);
    port.writeSlot(readA, QStringLiteral("Editor"));
    QTRY_VERIFY(peer.frames().contains(stopFrame));
    QVERIFY(port.isRunning());
    const SignalLog chunks(&port, &SerialPort::handleParameterScope);
    port.writeScopeData(startFrame);
    QVERIFY(port.wait(5000));
    QTRY_VERIFY(chunks.count() >= 1);
    QVERIFY(!SerialPort::portOpened);
    port.scopeIsRunning(false);
}

void SerialPortStreamTest::streamChunkIsNeverHeldOrDropped()
{
    std::atomic<int> asked{0};
    PtyPeer peer([&asked](const QByteArray &request) {
        // The first writing is not answered, so that the link is held after the second.
        return request == readA && ++asked == 1 ? QByteArray() : replyOf(request);
    });
    SerialPort port;
    const Deliveries deliveries(port);
    port.getPortName(peer.entry(), rs485);
    QTRY_VERIFY(peer.framesOnce().size() >= 1);
    port.scopeIsRunning(true); // else the stream would be nobody's
    connect(&port, &SerialPort::handleBaseParameter, this, [&port, &peer](const QByteArray &reply) {
        if (reply != replyOf(readA))
            return;
        peer.write(streamChunk);
        port.writeSlot(readB, QStringLiteral("Editor"));
    });
    port.writeSlot(readA, QStringLiteral("Editor"));
    QVERIFY(runUntil([&deliveries] { return deliveries.list.size() == 3; }, 5000));
    QCOMPARE(deliveries.list, QStringList({delivery("editor", replyOf(readA)), delivery("scope", streamChunk),
                                           delivery("editor", replyOf(readB))}));
    // The chunk has ended the hold, which would have lasted 70 ms and more.
    const std::vector<PtyPeer::Request> requests = peer.requests();
    const auto last = requests.at(requests.size() - 2);
    QCOMPARE(last.frame, readA);
    QCOMPARE(requests.back().frame, readB);
    const qint64 held = (requests.back().at - last.at) / 1000;
    QVERIFY2(held < 60, qPrintable(QString::number(held)));
    port.scopeIsRunning(false);
}

QTEST_MAIN(SerialPortStreamTest)
#include "tst_serialport_stream.moc"
