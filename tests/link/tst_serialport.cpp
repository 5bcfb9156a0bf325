// SPDX-License-Identifier: GPL-3.0-or-later
// The link over a pseudo-terminal to a scripted peer: frames, order, routing.
#include "linkbench.h"

#include <algorithm>

using namespace linkbench;

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
    void frameIsWrittenAgainUntilItIsAnswered();
    void replyWithBadChecksumIsAskedAgain();
    void garbageKeepsTheLinkOnlineAndCompletesNothing();
    void goodCrcOfAnyContentCompletesTheRequest();
    void replyInTwoPiecesIsAskedAgain();
    void lateReplyAnswersTheRequestOutstandingThen();
    void exceptionReplyCompletesItsRequest();
    void onlineIsToldForEveryChunk();
    void restartKeepsTheQueueAndAQueuedRequestProbes();
    void replyToARestartsProbeGoesToTheLastWindow();
    void withdrawnRequestsNeverLeave();
    void portWithoutBracketsKeepsTheOldName();
    void emptyPortNameGoesOffline();
    void refusedSpeedOpensAllTheSame();
};

void SerialPortTest::init()
{
    resetLink();
}

void SerialPortTest::probeIsSentFirstAndItsReplyGoesNowhere()
{
    PtyPeer peer(replyOf);
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
        return replyOf(request);
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
    PtyPeer peer(replyOf);
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
    PtyPeer peer(replyOf);
    SerialPort port;
    const Deliveries deliveries(port);
    port.writeSlot(QByteArray(), QStringLiteral("Editor"));
    port.writeSlot(readA, QStringLiteral("Monitor"));
    port.getPortName(peer.entry(), usb);
    QTRY_COMPARE(deliveries.list, QStringList(delivery("monitor", replyOf(readA))));
    QCOMPARE(peer.framesOnce(), QList<QByteArray>({readA}));
}

void SerialPortTest::frameIsWrittenAgainUntilItIsAnswered()
{
    std::atomic<int> deaf{4};
    PtyPeer peer([&deaf](const QByteArray &request) {
        if (request == readA && --deaf >= 0)
            return QByteArray();
        return replyOf(request);
    });
    const int repeatsBefore = SerialPort::repeatCount;
    SerialPort port;
    const Deliveries deliveries(port);
    port.getPortName(peer.entry(), rs485);
    QTRY_VERIFY(peer.framesOnce().size() >= 1);
    port.writeSlot(readA, QStringLiteral("Editor"));
    QTRY_COMPARE(deliveries.list, QStringList(delivery("editor", replyOf(readA))));
    QCOMPARE(peer.framesOnce(), QList<QByteArray>({probe, readA}));
    QVERIFY(peer.frames().count(readA) >= 5);
    QCOMPARE(SerialPort::repeatCount - repeatsBefore, peer.frames().size() - peer.framesOnce().size());
    // Each repetition comes a full wait after the one before. A busy machine reads the first one late, and
    // only that makes the whole shorter.
    std::vector<PtyPeer::Request> requests = peer.requests();
    requests.erase(std::remove_if(requests.begin(), requests.end(),
                                  [](const PtyPeer::Request &request) { return request.frame != readA; }),
                   requests.end());
    const qint64 apart = requests.back().at - requests.front().at;
    QVERIFY2(apart > 45000 * qint64(requests.size() - 1), qPrintable(QString::number(apart)));
}

void SerialPortTest::replyWithBadChecksumIsAskedAgain()
{
    std::atomic<int> bad{2};
    PtyPeer peer([&bad](const QByteArray &request) {
        QByteArray reply = replyOf(request);
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
        return garbage ? wire::bytes("DEADBEEF") : replyOf(request);
    });
    SerialPort port;
    const Deliveries deliveries(port);
    const SignalLog online(&port, &SerialPort::servoONOFFLine);
    // At "USB" a peer that is 20 ms late would end the link.
    port.getPortName(peer.entry(), rs485);
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
    PtyPeer peer([&odd](const QByteArray &request) { return request == readA ? odd : replyOf(request); });
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
        const QByteArray reply = replyOf(request);
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
        return replyOf(request);
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
        [&refusal](const QByteArray &request) { return request == readA ? refusal : replyOf(request); });
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
    PtyPeer peer(replyOf);
    SerialPort port;
    const SignalLog online(&port, &SerialPort::servoONOFFLine);
    port.getPortName(peer.entry(), usb);
    for (int i = 0; i < 30; ++i)
        port.writeSlot(readA, QStringLiteral("Editor"));
    QTRY_VERIFY(online.count() >= 30);
    QCOMPARE(online.count(false), 0);
}

void SerialPortTest::restartKeepsTheQueueAndAQueuedRequestProbes()
{
    PtyPeer silent;
    PtyPeer peer(replyOf);
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
    PtyPeer other(replyOf);
    second.getPortName(other.entry(), rs485);
    QTRY_COMPARE(later.list.size(), 2);
    QCOMPARE(other.framesOnce(), QList<QByteArray>({readA, readB}));
}

void SerialPortTest::replyToARestartsProbeGoesToTheLastWindow()
{
    PtyPeer peer(replyOf);
    SerialPort port;
    const Deliveries deliveries(port);
    port.getPortName(peer.entry(), usb);
    port.writeSlot(readA, QStringLiteral("Editor"));
    QTRY_COMPARE(deliveries.list.size(), 1);
    port.getPortName(peer.entry(), usb);
    QTRY_COMPARE(deliveries.list,
                 QStringList({delivery("editor", replyOf(readA)), delivery("editor", replyOf(probe))}));
}

void SerialPortTest::withdrawnRequestsNeverLeave()
{
    PtyPeer peer(replyOf);
    SerialPort port;
    const Deliveries deliveries(port);
    port.writeSlot(readA, QStringLiteral("Editor"));
    port.writeSlot(readB, QStringLiteral("Monitor"));
    port.writeSlot(readC, QStringLiteral("Editor"));
    port.withdraw(QStringLiteral("Editor"));
    // What was asked by others, or later, leaves, and each answer finds its window.
    port.writeSlot(readA, QStringLiteral("Gain Tuning"));
    port.getPortName(peer.entry(), rs485);
    QTRY_COMPARE(deliveries.list.size(), 2);
    QCOMPARE(peer.framesOnce(), QList<QByteArray>({readB, readA}));
    QCOMPARE(deliveries.list,
             QStringList({delivery("monitor", replyOf(readB)), delivery("gain@2007", replyOf(readA))}));
}

void SerialPortTest::portWithoutBracketsKeepsTheOldName()
{
    PtyPeer peer(replyOf);
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
    PtyPeer peer(replyOf);
    SerialPort port;
    const SignalLog online(&port, &SerialPort::servoONOFFLine);
    // Below zero is refused by every layer.
    port.getPortName(peer.entry(), -5);
    QTRY_VERIFY(online.count() >= 1);
    QCOMPARE(std::get<0>(online.calls.first()), true);
    QCOMPARE(peer.framesOnce(), QList<QByteArray>({probe}));
}

QTEST_MAIN(SerialPortTest)
#include "tst_serialport.moc"
