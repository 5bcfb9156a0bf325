// SPDX-License-Identifier: GPL-3.0-or-later
// When the link sends: at once out of an idle wait, after the silent gap, and not at all while it rests.
#include "link/silentgap.h"
#include "linkbench.h"

#include <QElapsedTimer>

#include <algorithm>
#include <atomic>
#include <ctime>

using namespace linkbench;

class SerialPortTimingTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void idleWaitEndsAsSoonAsARequestIsQueued();
    void silentGapStandsBeforeEveryRequestOnRs485();
    void gapFollowsTheSpeed_data();
    void gapFollowsTheSpeed();
    void idleWorkerRests();
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

void SerialPortTimingTest::idleWorkerRests()
{
    PtyPeer peer(replyOf);
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

QTEST_MAIN(SerialPortTimingTest)
#include "tst_serialport_timing.moc"
