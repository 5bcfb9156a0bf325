// SPDX-License-Identifier: GPL-3.0-or-later
// The link over a pseudo-terminal to a scripted peer: frames, order, routing, timing.
#include "link/framecodec.h"
#include "link/serialport.h"
#include "link/silentgap.h"
#include "support/ptypeer.h"
#include "support/signallog.h"
#include "support/wire.h"

#include <QScopeGuard>
#include <QTest>

#include <ctime>

namespace {

const QByteArray probe = wire::bytes("010320600002cfd5");
const QByteArray stopFrame = wire::bytes("01140000000000000000dec2");
const QByteArray startFrame = wire::frame("01141000000000000000");
const QByteArray readA = wire::frame("010320070001");
const QByteArray readB = wire::frame("010320080001");
const QByteArray readC = wire::frame("010320090001");
const QByteArray faultRead = wire::frame("010323520001");
const QByteArray streamChunk = wire::bytes("01140010100200010002000000000000");
constexpr int rs485 = 115200;
constexpr int usb = 100;

// Answers every request at once with words that repeat the low address byte.
QByteArray echoAddress(const QByteArray &request)
{
    return wire::replyTo(request, QByteArray(4, request.at(3)));
}

QByteArray replyOf(const QByteArray &request)
{
    return echoAddress(request);
}

// Counts the deliveries of all reply signals by name, in order.
class Deliveries
{
public:
    explicit Deliveries(SerialPort &port)
    {
        const auto note = [this](const char *signal, const QByteArray &data) {
            list.append(QLatin1String(signal) + QLatin1Char(' ') + QString::fromLatin1(data.toHex()));
        };
        QObject::connect(&port, &SerialPort::handleBaseParameter, &context,
                         [note](const QByteArray &b) { note("editor", b); });
        QObject::connect(&port, &SerialPort::handleParameterMonitor, &context,
                         [note](const QByteArray &b) { note("monitor", b); });
        QObject::connect(&port, &SerialPort::handlefault, &context,
                         [note](const QByteArray &b) { note("fault", b); });
        QObject::connect(&port, &SerialPort::handleGaintuning, &context,
                         [note](const QByteArray &b, int address) {
                             note(qPrintable(QStringLiteral("gain@%1").arg(address, 0, 16)), b);
                         });
        QObject::connect(&port, &SerialPort::handleTrialRun, &context,
                         [note](const QByteArray &b) { note("trial", b); });
        QObject::connect(&port, &SerialPort::handleParameterScope, &context,
                         [note](const QByteArray &b) { note("scope", b); });
    }
    QStringList list;

private:
    QObject context;
};

QString delivery(const char *signal, const QByteArray &data)
{
    return QLatin1String(signal) + QLatin1Char(' ') + QString::fromLatin1(data.toHex());
}

} // namespace

class SerialPortTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void probeIsSentFirstAndItsReplyGoesNowhere();
    void requestsGoOutInOrderAndOneAtATime();
    void replyGoesToTheWindowThatAsked_data();
    void replyGoesToTheWindowThatAsked();
    void emptyFrameIsNotQueued();
    void scopeFrameThroughTheRequestSlotTakesTheMailbox();
    void frameIsWrittenAgainUntilItIsAnswered();
    void replyWithBadChecksumIsAskedAgain();
    void garbageKeepsTheLinkOnlineAndCompletesNothing();
    void goodCrcOfAnyContentCompletesTheRequest();
    void replyInTwoPiecesIsAskedAgain();
    void lateReplyAnswersTheRequestOutstandingThen();
    void exceptionReplyCompletesItsRequest();
    void onlineIsToldForEveryChunk();
    void stopFrameWaitsForTheNextChunk();
    void stoppingTheScopeEmptiesTheMailbox();
    void streamOfNobodyIsStoppedOnce();
    void streamChunksAnswerARequest();
    void closingStopsARunningStream();
    void restartKeepsTheQueueAndAQueuedRequestProbes();
    void replyToARestartsProbeGoesToTheLastWindow();
    void portWithoutBracketsKeepsTheOldName();
    void emptyPortNameGoesOffline();
    void refusedSpeedOpensAllTheSame();
    void idleWaitEndsAsSoonAsARequestIsQueued();
    void silentGapStandsBeforeEveryRequestOnRs485();
    void gapFollowsTheSpeed_data();
    void gapFollowsTheSpeed();
    void idleWorkerRests();
};

void SerialPortTest::init()
{
    SerialPort::portOpened = false;
    SerialPort::scopeRunning = false;
    SerialPort::reconnecting = false;
}

void SerialPortTest::probeIsSentFirstAndItsReplyGoesNowhere()
{
    PtyPeer peer(echoAddress);
    SerialPort port;
    const Deliveries deliveries(port);
    const SignalLog online(&port, &SerialPort::servoONOFFLine);
    port.getPortName(peer.entry(), rs485);
    QTRY_VERIFY(online.count() >= 1);
    QCOMPARE(std::get<0>(online.calls.first()), true);
    QVERIFY(SerialPort::portOpened);
    QCOMPARE(peer.framesOnce(), QList<QByteArray>({probe}));
    QVERIFY(deliveries.list.isEmpty());
}

void SerialPortTest::requestsGoOutInOrderAndOneAtATime()
{
    std::atomic<int> outstanding{0};
    std::atomic<int> most{0};
    PtyPeer peer([&outstanding, &most](const QByteArray &request) {
        most = std::max(most.load(), ++outstanding);
        std::this_thread::sleep_for(std::chrono::milliseconds(3));
        --outstanding;
        return echoAddress(request);
    });
    SerialPort port;
    const Deliveries deliveries(port);
    const SignalLog online(&port, &SerialPort::servoONOFFLine);
    port.getPortName(peer.entry(), rs485);
    // The probe is answered, so none of the replies below can be its own.
    QTRY_VERIFY(online.count() >= 1);
    port.writeSlot(readA, QStringLiteral("Editor"));
    port.writeSlot(readB, QStringLiteral("Monitor"));
    port.writeSlot(readC, QStringLiteral("Editor"));
    QTRY_VERIFY(deliveries.list.contains(delivery("editor", replyOf(readC))));
    // A busy machine may make the link ask twice and be answered twice.
    QStringList once = deliveries.list;
    once.removeDuplicates();
    QCOMPARE(once, QStringList({delivery("editor", replyOf(readA)), delivery("monitor", replyOf(readB)),
                                delivery("editor", replyOf(readC))}));
    QCOMPARE(peer.framesOnce(), QList<QByteArray>({probe, readA, readB, readC}));
    QCOMPARE(most.load(), 1);
}

void SerialPortTest::replyGoesToTheWindowThatAsked_data()
{
    QTest::addColumn<QString>("window");
    QTest::addColumn<QByteArray>("request");
    QTest::addColumn<QStringList>("signalNames");
    QTest::newRow("editor") << "Editor" << readA << QStringList("editor");
    QTest::newRow("monitor") << "Monitor" << readA << QStringList("monitor");
    QTest::newRow("fault record") << "Monitor" << faultRead << QStringList({"monitor", "fault"});
    QTest::newRow("fault record for the editor") << "Editor" << faultRead << QStringList("editor");
    QTest::newRow("gain tuning") << "Gain Tuning" << readB << QStringList("gain@2008");
    QTest::newRow("trial run") << "Trial Run" << readC << QStringList("trial");
    QTest::newRow("case counts") << "editor" << readA << QStringList();
    QTest::newRow("scope's other frames") << "Scope" << readA << QStringList();
    QTest::newRow("no name") << "" << readA << QStringList();
}

void SerialPortTest::replyGoesToTheWindowThatAsked()
{
    QFETCH(QString, window);
    QFETCH(QByteArray, request);
    QFETCH(QStringList, signalNames);
    PtyPeer peer(echoAddress);
    SerialPort port;
    const Deliveries deliveries(port);
    port.getPortName(peer.entry(), usb);
    port.writeSlot(request, window);
    // A second request shows that the first has been dealt with.
    const QByteArray last = wire::frame("010320630001");
    port.writeSlot(last, QStringLiteral("Trial Run"));
    const QString end = delivery("trial", replyOf(last));
    QTRY_VERIFY(deliveries.list.contains(end));
    QStringList expected;
    for (const QString &name : qAsConst(signalNames))
        expected.append(delivery(qPrintable(name), replyOf(request)));
    expected.append(end);
    QCOMPARE(deliveries.list, expected);
    QVERIFY(peer.frames().contains(request));
}

void SerialPortTest::emptyFrameIsNotQueued()
{
    PtyPeer peer(echoAddress);
    SerialPort port;
    const Deliveries deliveries(port);
    port.writeSlot(QByteArray(), QStringLiteral("Editor"));
    port.writeSlot(readA, QStringLiteral("Monitor"));
    port.getPortName(peer.entry(), usb);
    QTRY_COMPARE(deliveries.list, QStringList(delivery("monitor", replyOf(readA))));
    QCOMPARE(peer.framesOnce(), QList<QByteArray>({readA}));
}

void SerialPortTest::scopeFrameThroughTheRequestSlotTakesTheMailbox()
{
    PtyPeer peer(
        [](const QByteArray &request) { return request == startFrame ? streamChunk : echoAddress(request); });
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

void SerialPortTest::frameIsWrittenAgainUntilItIsAnswered()
{
    std::atomic<int> deaf{4};
    PtyPeer peer([&deaf](const QByteArray &request) {
        if (request == readA && --deaf >= 0)
            return QByteArray();
        return echoAddress(request);
    });
    SerialPort port;
    const Deliveries deliveries(port);
    port.getPortName(peer.entry(), rs485);
    QTRY_VERIFY(peer.framesOnce().size() >= 1);
    port.writeSlot(readA, QStringLiteral("Editor"));
    QTRY_COMPARE(deliveries.list, QStringList(delivery("editor", replyOf(readA))));
    QCOMPARE(peer.framesOnce(), QList<QByteArray>({probe, readA}));
    QVERIFY(peer.frames().count(readA) >= 5);
    // Each repetition comes a full wait after the one before.
    const std::vector<PtyPeer::Request> requests = peer.requests();
    for (std::size_t i = 1; i < requests.size(); ++i) {
        if (requests.at(i).frame != requests.at(i - 1).frame)
            continue;
        QVERIFY2(requests.at(i).at - requests.at(i - 1).at > 45000, "repeated before the wait was over");
    }
}

void SerialPortTest::replyWithBadChecksumIsAskedAgain()
{
    std::atomic<int> bad{2};
    PtyPeer peer([&bad](const QByteArray &request) {
        QByteArray reply = echoAddress(request);
        if (request == readA && --bad >= 0)
            reply[reply.size() - 1] = char(reply.at(reply.size() - 1) ^ 0x01);
        return reply;
    });
    SerialPort port;
    const Deliveries deliveries(port);
    const SignalLog online(&port, &SerialPort::servoONOFFLine);
    port.getPortName(peer.entry(), rs485);
    QTRY_VERIFY(peer.framesOnce().size() >= 1);
    port.writeSlot(readA, QStringLiteral("Editor"));
    QTRY_COMPARE(deliveries.list, QStringList(delivery("editor", replyOf(readA))));
    QVERIFY(peer.frames().count(readA) >= 3);
    QTRY_VERIFY(online.count() >= 4);
}

void SerialPortTest::garbageKeepsTheLinkOnlineAndCompletesNothing()
{
    std::atomic<bool> garbage{false};
    PtyPeer peer([&garbage](const QByteArray &request) {
        return garbage ? wire::bytes("DEADBEEF") : echoAddress(request);
    });
    SerialPort port;
    const Deliveries deliveries(port);
    const SignalLog online(&port, &SerialPort::servoONOFFLine);
    port.getPortName(peer.entry(), usb);
    QTRY_VERIFY(online.count() >= 1);
    garbage = true;
    port.writeSlot(readA, QStringLiteral("Editor"));
    QTRY_VERIFY(online.count() > 40);
    QVERIFY(SerialPort::portOpened);
    QVERIFY(deliveries.list.isEmpty());
    QCOMPARE(online.count(false), 0);
    // The request is still the current one when the line recovers.
    garbage = false;
    QTRY_COMPARE(deliveries.list, QStringList(delivery("editor", replyOf(readA))));
}

void SerialPortTest::goodCrcOfAnyContentCompletesTheRequest()
{
    const QByteArray odd = wire::frame("0177AABBCCDDEEFF00112233");
    PtyPeer peer([&odd](const QByteArray &request) { return request == readA ? odd : echoAddress(request); });
    SerialPort port;
    const Deliveries deliveries(port);
    port.getPortName(peer.entry(), usb);
    port.writeSlot(readA, QStringLiteral("Editor"));
    port.writeSlot(readB, QStringLiteral("Editor"));
    QTRY_COMPARE(deliveries.list, QStringList({delivery("editor", odd), delivery("editor", replyOf(readB))}));
}

void SerialPortTest::replyInTwoPiecesIsAskedAgain()
{
    std::atomic<int> split{1};
    PtyPeer *writer = nullptr;
    PtyPeer peer([&split, &writer](const QByteArray &request) {
        const QByteArray reply = echoAddress(request);
        if (request != readA || --split < 0)
            return reply;
        // The second piece follows by itself, behind a pause that is shorter than the wait.
        std::thread([&writer, reply] {
            std::this_thread::sleep_for(std::chrono::milliseconds(15));
            writer->write(reply.mid(3));
        }).detach();
        return reply.left(3);
    });
    writer = &peer;
    SerialPort port;
    const Deliveries deliveries(port);
    const SignalLog online(&port, &SerialPort::servoONOFFLine);
    port.getPortName(peer.entry(), rs485);
    QTRY_VERIFY(peer.framesOnce().size() >= 1);
    port.writeSlot(readA, QStringLiteral("Editor"));
    QTRY_COMPARE(deliveries.list, QStringList(delivery("editor", replyOf(readA))));
    QVERIFY(peer.frameCount() >= 3);
    // The probe's reply, the two pieces, and the whole reply at least.
    QTRY_VERIFY(online.count() >= 4);
}

void SerialPortTest::lateReplyAnswersTheRequestOutstandingThen()
{
    // The answer to the first writing comes after the second has gone out.
    std::atomic<bool> late{true};
    PtyPeer peer([&late](const QByteArray &request) {
        if (request == readA && late.exchange(false))
            std::this_thread::sleep_for(std::chrono::milliseconds(70));
        return echoAddress(request);
    });
    SerialPort port;
    const Deliveries deliveries(port);
    port.getPortName(peer.entry(), rs485);
    QTRY_VERIFY(peer.framesOnce().size() >= 1);
    port.writeSlot(readA, QStringLiteral("Editor"));
    port.writeSlot(readB, QStringLiteral("Monitor"));
    QTRY_VERIFY(deliveries.list.size() >= 2);
    QCOMPARE(deliveries.list.first(), delivery("editor", replyOf(readA)));
    QTRY_VERIFY(peer.frames().contains(readB));
    QVERIFY(peer.frames().count(readA) >= 2);
    QVERIFY(SerialPort::portOpened);
}

void SerialPortTest::exceptionReplyCompletesItsRequest()
{
    const QByteArray refusal = wire::bytes("018302C0F1");
    PtyPeer peer(
        [&refusal](const QByteArray &request) { return request == readA ? refusal : echoAddress(request); });
    SerialPort port;
    const Deliveries deliveries(port);
    port.getPortName(peer.entry(), usb);
    QTRY_VERIFY(peer.framesOnce().size() >= 1);
    port.writeSlot(readA, QStringLiteral("Editor"));
    QTRY_COMPARE(deliveries.list, QStringList(delivery("editor", refusal)));
    QCOMPARE(peer.framesOnce(), QList<QByteArray>({probe, readA}));
}

void SerialPortTest::onlineIsToldForEveryChunk()
{
    PtyPeer peer(echoAddress);
    SerialPort port;
    const SignalLog online(&port, &SerialPort::servoONOFFLine);
    port.getPortName(peer.entry(), usb);
    for (int i = 0; i < 30; ++i)
        port.writeSlot(readA, QStringLiteral("Editor"));
    QTRY_VERIFY(online.count() >= 30);
    QCOMPARE(online.count(false), 0);
}

void SerialPortTest::stopFrameWaitsForTheNextChunk()
{
    PtyPeer peer(echoAddress);
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

void SerialPortTest::stoppingTheScopeEmptiesTheMailbox()
{
    PtyPeer peer(echoAddress);
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

void SerialPortTest::streamOfNobodyIsStoppedOnce()
{
    PtyPeer *stream = nullptr;
    PtyPeer peer([&stream](const QByteArray &request) {
        if (request == stopFrame)
            return QByteArray();
        return request == probe ? streamChunk : echoAddress(request);
    });
    stream = &peer;
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

void SerialPortTest::streamChunksAnswerARequest()
{
    PtyPeer peer(
        [](const QByteArray &request) { return request == probe ? echoAddress(request) : QByteArray(); });
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

void SerialPortTest::closingStopsARunningStream()
{
    std::atomic<bool> streaming{true};
    PtyPeer peer([&streaming](const QByteArray &request) {
        if (request == stopFrame)
            streaming = false;
        return request == probe ? echoAddress(request) : QByteArray();
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

void SerialPortTest::restartKeepsTheQueueAndAQueuedRequestProbes()
{
    PtyPeer silent;
    PtyPeer peer(echoAddress);
    SerialPort port;
    const Deliveries deliveries(port);
    const SignalLog online(&port, &SerialPort::servoONOFFLine);
    port.getPortName(silent.entry(), usb);
    QTRY_VERIFY(silent.frameCount() > 0);
    port.getPortName(peer.entry(), rs485);
    QTRY_COMPARE(peer.framesOnce(), QList<QByteArray>({probe}));
    // The restart asked for by the user does not go off-line in between.
    QTRY_VERIFY(online.count() > 0);
    QCOMPARE(online.count(false), 0);

    SerialPort second;
    const Deliveries later(second);
    second.writeSlot(readA, QStringLiteral("Editor"));
    second.writeSlot(readB, QStringLiteral("Monitor"));
    PtyPeer other(echoAddress);
    second.getPortName(other.entry(), rs485);
    QTRY_COMPARE(later.list.size(), 2);
    QCOMPARE(other.framesOnce(), QList<QByteArray>({readA, readB}));
}

void SerialPortTest::replyToARestartsProbeGoesToTheLastWindow()
{
    PtyPeer peer(echoAddress);
    SerialPort port;
    const Deliveries deliveries(port);
    port.getPortName(peer.entry(), usb);
    port.writeSlot(readA, QStringLiteral("Editor"));
    QTRY_COMPARE(deliveries.list.size(), 1);
    port.getPortName(peer.entry(), usb);
    QTRY_COMPARE(deliveries.list,
                 QStringList({delivery("editor", replyOf(readA)), delivery("editor", replyOf(probe))}));
}

void SerialPortTest::portWithoutBracketsKeepsTheOldName()
{
    PtyPeer peer(echoAddress);
    SerialPort port;
    port.getPortName(peer.entry(), usb);
    QTRY_VERIFY(peer.framesOnce().size() >= 1);
    peer.forget();
    port.getPortName(QStringLiteral("no brackets"), rs485);
    QTRY_VERIFY(peer.frameCount() >= 1);
}

void SerialPortTest::emptyPortNameGoesOffline()
{
    SerialPort port;
    const SignalLog online(&port, &SerialPort::servoONOFFLine);
    port.getPortName(QStringLiteral("no brackets"), rs485);
    QCOMPARE(online.count(), 1);
    QCOMPARE(std::get<0>(online.calls.first()), false);
    QVERIFY(!port.isRunning());
}

void SerialPortTest::refusedSpeedOpensAllTheSame()
{
    PtyPeer peer(echoAddress);
    SerialPort port;
    const SignalLog online(&port, &SerialPort::servoONOFFLine);
    // Below zero is refused by every layer.
    port.getPortName(peer.entry(), -5);
    QTRY_VERIFY(online.count() >= 1);
    QCOMPARE(std::get<0>(online.calls.first()), true);
    QCOMPARE(peer.framesOnce(), QList<QByteArray>({probe}));
}

void SerialPortTest::idleWaitEndsAsSoonAsARequestIsQueued()
{
    PtyPeer peer(echoAddress);
    SerialPort port;
    int answered = 0;
    connect(&port, &SerialPort::handleBaseParameter, &port, [&port, &answered] {
        if (++answered < 40)
            port.writeSlot(readA, QStringLiteral("Editor"));
    });
    port.getPortName(peer.entry(), rs485);
    QTRY_VERIFY(peer.framesOnce().size() >= 1);
    port.writeSlot(readA, QStringLiteral("Editor"));
    QTRY_COMPARE(answered, 40);
    // Every exchange would take the 50 ms of an idle turn otherwise. The middle one tells.
    const std::vector<PtyPeer::Request> requests = peer.requests();
    QList<qint64> distances;
    for (std::size_t i = 2; i < requests.size(); ++i)
        distances.append(requests.at(i).at - requests.at(i - 1).at);
    std::sort(distances.begin(), distances.end());
    QVERIFY2(distances.at(distances.size() / 2) < 25000, "the idle wait was served to its end");
}

void SerialPortTest::silentGapStandsBeforeEveryRequestOnRs485()
{
    QElapsedTimer clock;
    clock.start();
    std::atomic<qint64> replied{0};
    std::atomic<qint64> smallest{1000000};
    PtyPeer peer([&clock, &replied, &smallest](const QByteArray &request) {
        const qint64 now = clock.nsecsElapsed() / 1000;
        if (replied > 0)
            smallest = std::min(smallest.load(), now - replied.load());
        replied = clock.nsecsElapsed() / 1000;
        return echoAddress(request);
    });
    SerialPort port;
    const Deliveries deliveries(port);
    port.getPortName(peer.entry(), rs485);
    for (int i = 0; i < 50; ++i)
        port.writeSlot(readA, QStringLiteral("Editor"));
    QTRY_COMPARE(deliveries.list.size(), 50);
    QVERIFY2(smallest >= 1750, qPrintable(QString::number(smallest)));
    port.getPortName(peer.entry(), usb);
    smallest = 1000000;
    for (int i = 0; i < 50; ++i)
        port.writeSlot(readA, QStringLiteral("Editor"));
    QTRY_COMPARE(deliveries.list.size(), 100);
    QVERIFY2(smallest < 1750, qPrintable(QString::number(smallest)));
}

void SerialPortTest::gapFollowsTheSpeed_data()
{
    QTest::addColumn<int>("baud");
    QTest::addColumn<int>("microseconds");
    QTest::newRow("115200") << 115200 << 1750;
    QTest::newRow("57600") << 57600 << 1750;
    QTest::newRow("38400") << 38400 << 1750;
    QTest::newRow("19200") << 19200 << 1750;
    QTest::newRow("9600") << 9600 << 3645;
    QTest::newRow("USB") << 100 << 0;
}

void SerialPortTest::gapFollowsTheSpeed()
{
    QFETCH(int, baud);
    QFETCH(int, microseconds);
    QCOMPARE(int(silentGap(baud).count()), microseconds);
}

void SerialPortTest::idleWorkerRests()
{
    PtyPeer peer(echoAddress);
    SerialPort port;
    port.getPortName(peer.entry(), rs485);
    QTRY_VERIFY(peer.framesOnce().size() >= 1);
    const std::clock_t before = std::clock();
    QElapsedTimer idle;
    idle.start();
    QTRY_VERIFY(idle.elapsed() >= 600);
    const double share = double(std::clock() - before) / CLOCKS_PER_SEC / (idle.elapsed() / 1000.0);
    QVERIFY2(share < 0.5, qPrintable(QString::number(share)));
    QCOMPARE(peer.framesOnce().size(), 1);
}

QTEST_MAIN(SerialPortTest)
#include "tst_serialport.moc"
