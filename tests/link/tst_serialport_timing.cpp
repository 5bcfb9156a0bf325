// SPDX-License-Identifier: GPL-3.0-or-later
// When the link sends: at once out of an idle wait, after the silent gap, and not at all while it rests.
#include "link/silentgap.h"
#include "linkbench.h"
#include "support/rununtil.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QScopeGuard>

#include <algorithm>
#include <atomic>
#include <ctime>
#include <functional>
#include <thread>

using namespace linkbench;

namespace {

QStringList threadIds()
{
    return QDir(QStringLiteral("/proc/self/task")).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
}

// How often the thread has gone to sleep by itself so far.
int wakeUpsOf(const QString &thread)
{
    QFile status(QStringLiteral("/proc/self/task/%1/status").arg(thread));
    if (!status.open(QIODevice::ReadOnly))
        return -1;
    const QByteArrayList lines = status.readAll().split('\n');
    for (const QByteArray &line : lines) {
        if (line.startsWith("voluntary_ctxt_switches:"))
            return line.mid(line.indexOf(':') + 1).trimmed().toInt();
    }
    return -1;
}

} // namespace

class SerialPortTimingTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void idleWaitEndsAsSoonAsARequestIsQueued();
    void silentGapStandsBeforeEveryRequestOnRs485();
    void gapFollowsTheSpeed_data();
    void gapFollowsTheSpeed();
    void gapStartsAnewWhenBytesCome();
    void lineThatIsNeverSilentHoldsNoRequestForEver();
    void twentyMillisecondsPassBeforeTheFirstFrame();
    void idleWorkerRests_data();
    void idleWorkerRests();
    void idleWorkerIsWokenByEverything();
};

void SerialPortTimingTest::init()
{
    resetLink();
}

void SerialPortTimingTest::idleWaitEndsAsSoonAsARequestIsQueued()
{
    PtyPeer peer(replyOf);
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

void SerialPortTimingTest::silentGapStandsBeforeEveryRequestOnRs485()
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
        return replyOf(request);
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

void SerialPortTimingTest::gapFollowsTheSpeed_data()
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

void SerialPortTimingTest::gapFollowsTheSpeed()
{
    QFETCH(int, baud);
    QFETCH(int, microseconds);
    QCOMPARE(int(silentGap(baud).count()), microseconds);
}

void SerialPortTimingTest::gapStartsAnewWhenBytesCome()
{
    // At 9600 baud the gap lasts 3.645 ms. The drive goes on speaking for three times that after its answer.
    // On a busy machine it makes pauses in which the next request may leave, so it is looked at several
    // times.
    std::atomic<bool> speaking{false};
    std::atomic<bool> spokenOver{true};
    PtyPeer peer([&](const QByteArray &request) {
        if (request == readB && speaking)
            spokenOver = true;
        if (request == readA)
            speaking = true;
        return replyOf(request);
    });
    SerialPort port;
    Deliveries deliveries(port);
    port.getPortName(peer.entry(), 9600);
    QTRY_VERIFY(peer.framesOnce().size() >= 1);
    for (int attempt = 0; attempt < 30 && spokenOver; ++attempt) {
        speaking = false;
        spokenOver = false;
        deliveries.list.clear();
        std::thread speaker([&] {
            QElapsedTimer clock;
            clock.start();
            while (!speaking && clock.elapsed() < 5000)
                std::this_thread::sleep_for(std::chrono::microseconds(100));
            for (int i = 0; i < 12; ++i) {
                peer.write(wire::bytes("55"));
                std::this_thread::sleep_for(std::chrono::milliseconds(1));
            }
            speaking = false;
        });
        const auto joinSpeaker = qScopeGuard([&speaker] { speaker.join(); });
        port.writeSlot(readA, QStringLiteral("Editor"));
        port.writeSlot(readB, QStringLiteral("Editor"));
        QTRY_VERIFY(deliveries.list.contains(delivery("editor", replyOf(readB))));
    }
    QVERIFY(!spokenOver);
}

void SerialPortTimingTest::lineThatIsNeverSilentHoldsNoRequestForEver()
{
    std::atomic<bool> speaking{true};
    PtyPeer peer;
    SerialPort port;
    std::thread speaker([&] {
        while (speaking) {
            peer.write(wire::bytes("55"));
            std::this_thread::sleep_for(std::chrono::microseconds(500));
        }
    });
    port.getPortName(peer.entry(), 300); // the gap lasts 117 ms
    const bool wasWritten = QTest::qWaitFor([&peer] { return peer.frameCount() > 0; }, 2000);
    speaking = false;
    speaker.join();
    QVERIFY(wasWritten);
}

void SerialPortTimingTest::twentyMillisecondsPassBeforeTheFirstFrame()
{
    for (const int baud : {rs485, usb}) {
        QElapsedTimer clock; // the peer's own starts with it
        clock.start();
        PtyPeer peer(replyOf);
        SerialPort port;
        const qint64 opened = clock.nsecsElapsed() / 1000;
        port.getPortName(peer.entry(), baud);
        QTRY_VERIFY(peer.frameCount() >= 1);
        const qint64 passed = peer.requests().front().at - opened;
        QVERIFY2(passed >= 19500, qPrintable(QString::number(passed)));
    }
}

void SerialPortTimingTest::idleWorkerRests_data()
{
    QTest::addColumn<int>("baud");
    QTest::addColumn<bool>("hasVanished");
    QTest::newRow("RS-485") << rs485 << false;
    QTest::newRow("RS-485, unplugged") << rs485 << true;
    QTest::newRow("USB") << usb << false;
    QTest::newRow("USB, unplugged") << usb << true;
}

void SerialPortTimingTest::idleWorkerRests()
{
    QFETCH(int, baud);
    QFETCH(bool, hasVanished);
    PtyPeer peer(replyOf);
    SerialPort port;
    const SignalLog online(&port, &SerialPort::servoONOFFLine);
    const QStringList before = threadIds();
    port.getPortName(peer.entry(), baud);
    QTRY_VERIFY(online.count(true) >= 1);
    QStringList worker = threadIds();
    for (const QString &id : before)
        worker.removeAll(id);
    QCOMPARE(worker.size(), 1);
    if (hasVanished)
        peer.hangUp();
    const int wakeUps = wakeUpsOf(worker.first());
    const std::clock_t cpu = std::clock();
    QElapsedTimer idle;
    idle.start();
    QVERIFY(runUntil([&idle] { return idle.elapsed() >= 1000; }, 5000));
    const double seconds = idle.elapsed() / 1000.0;
    const double perSecond = (wakeUpsOf(worker.first()) - wakeUps) / seconds;
    QVERIFY2(perSecond < 30, qPrintable(QString::number(perSecond)));
    QVERIFY2(perSecond > 0, "the measure is blind");
    // The test's own waiting is in it.
    const double share = double(std::clock() - cpu) / CLOCKS_PER_SEC / seconds;
    QVERIFY2(share < 0.1, qPrintable(QString::number(share)));
    QVERIFY(port.isRunning());
    QCOMPARE(peer.framesOnce().size(), 1);
}

void SerialPortTimingTest::idleWorkerIsWokenByEverything()
{
    PtyPeer peer(
        [](const QByteArray &request) { return request == startFrame ? streamChunk : replyOf(request); });
    SerialPort port;
    const Deliveries deliveries(port);
    // At the USB entry a peer that a busy machine holds up for 20 ms would lose the link.
    port.getPortName(peer.entry(), rs485);
    QTRY_VERIFY(peer.framesOnce().size() >= 1);
    // An idle wait lasts 100 ms: ten of each would take a second.
    const auto tenTimes = [&](const std::function<void()> &act) {
        QElapsedTimer clock;
        clock.start();
        for (int i = 0; i < 10; ++i) {
            const int before = deliveries.list.size();
            act();
            if (!runUntil([&] { return deliveries.list.size() > before; }, 5000))
                return qint64(-1);
        }
        return clock.elapsed();
    };
    const qint64 requests = tenTimes([&port] { port.writeSlot(readA, QStringLiteral("Editor")); });
    QVERIFY2(requests >= 0 && requests < 800, qPrintable(QString::number(requests)));
    const qint64 starts = tenTimes([&port] { port.writeScopeData(startFrame); });
    QVERIFY2(starts >= 0 && starts < 800, qPrintable(QString::number(starts)));
    QElapsedTimer clock;
    clock.start();
    for (int i = 0; i < 5; ++i) {
        port.getPortName(peer.entry(), rs485);
        const int before = peer.frameCount();
        QTRY_VERIFY(peer.frameCount() > before);
    }
    port.prepareShutdown();
    QVERIFY(port.wait(5000));
    QVERIFY2(clock.elapsed() < 1000, qPrintable(QString::number(clock.elapsed())));
}

QTEST_MAIN(SerialPortTimingTest)
#include "tst_serialport_timing.moc"
