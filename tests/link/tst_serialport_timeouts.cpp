// SPDX-License-Identifier: GPL-3.0-or-later
// When the link is given up: after how many time-outs, what starts their count anew, and how a worker ends.
#include "linkbench.h"

#include <QElapsedTimer>

#include <atomic>

using namespace linkbench;

class SerialPortTimeoutsTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void twentyTimeoutsGiveTheLinkUp_data();
    void twentyTimeoutsGiveTheLinkUp();
    void answerStartsTheCountOfTimeoutsAnew();
    void runningScopeWithoutDataGivesTheLinkUp();
    void streamChunkStartsTheScopesCountAnew();
    void idleLinkIsNeverGivenUp();
    void shutdownEndsInATurn();
    void destroyedWhileRunningEnds();
};

void SerialPortTimeoutsTest::init()
{
    resetLink();
}

void SerialPortTimeoutsTest::twentyTimeoutsGiveTheLinkUp_data()
{
    QTest::addColumn<int>("baud");
    QTest::addColumn<int>("atLeast"); // milliseconds
    QTest::addColumn<int>("atMost");
    QTest::newRow("RS-485, 20 x 50 ms") << rs485 << 950 << 5000;
    QTest::newRow("USB, 50 ms and 19 x 1 ms") << usb << 60 << 900;
}

void SerialPortTimeoutsTest::twentyTimeoutsGiveTheLinkUp()
{
    QFETCH(int, baud);
    QFETCH(int, atLeast);
    QFETCH(int, atMost);
    PtyPeer peer(
        [](const QByteArray &request) { return request == probe ? replyOf(request) : QByteArray(); });
    SerialPort port;
    const SignalLog online(&port, &SerialPort::servoONOFFLine);
    port.getPortName(peer.entry(), baud);
    QTRY_VERIFY(online.count() >= 1);
    QElapsedTimer clock;
    clock.start();
    port.writeSlot(readA, QStringLiteral("Editor"));
    QVERIFY(port.wait(10000));
    const qint64 elapsed = clock.elapsed();
    QVERIFY(!SerialPort::portOpened);
    QVERIFY2(elapsed >= atLeast && elapsed <= atMost, qPrintable(QString::number(elapsed)));
    QTRY_COMPARE(peer.frames().count(readA), 20);
    QTRY_VERIFY(online.count(false) >= 2);
}

void SerialPortTimeoutsTest::answerStartsTheCountOfTimeoutsAnew()
{
    // Twelve time-outs for each of three requests: more than twenty in all, never twenty in a row.
    std::atomic<int> deafFor{0};
    PtyPeer peer([&deafFor](const QByteArray &request) {
        return request != probe && --deafFor >= 0 ? QByteArray() : replyOf(request);
    });
    SerialPort port;
    const SignalLog replies(&port, &SerialPort::handleBaseParameter);
    const SignalLog online(&port, &SerialPort::servoONOFFLine);
    port.getPortName(peer.entry(), usb);
    QTRY_VERIFY(online.count(true) >= 1);
    for (int i = 1; i <= 3; ++i) {
        deafFor = 12;
        port.writeSlot(readA, QStringLiteral("Editor"));
        QTRY_COMPARE(replies.count(), i);
    }
    QVERIFY(port.isRunning());
    QVERIFY(peer.frames().count(readA) >= 3 * 13);
}

void SerialPortTimeoutsTest::runningScopeWithoutDataGivesTheLinkUp()
{
    PtyPeer peer(replyOf);
    SerialPort port;
    port.getPortName(peer.entry(), usb);
    QTRY_VERIFY(peer.frameCount() >= 1);
    port.scopeIsRunning(true);
    QVERIFY(port.wait(5000));
    QVERIFY(!SerialPort::portOpened);
    QCOMPARE(peer.framesOnce(), QList<QByteArray>({probe}));
}

void SerialPortTimeoutsTest::streamChunkStartsTheScopesCountAnew()
{
    PtyPeer peer(replyOf);
    SerialPort port;
    const SignalLog chunks(&port, &SerialPort::handleParameterScope);
    port.getPortName(peer.entry(), rs485);
    QTRY_VERIFY(peer.frameCount() >= 1);
    port.scopeIsRunning(true);
    // A chunk every 600 ms: twelve time-outs of 50 ms between two, more than twenty in all.
    for (int i = 1; i <= 3; ++i) {
        QElapsedTimer silent;
        silent.start();
        QTRY_VERIFY(silent.elapsed() >= 600);
        peer.write(streamChunk);
        QTRY_COMPARE(chunks.count(), i);
    }
    QVERIFY(port.isRunning());
    // And without any more of them the link is given up.
    QVERIFY(port.wait(5000));
}

void SerialPortTimeoutsTest::idleLinkIsNeverGivenUp()
{
    PtyPeer peer(replyOf);
    SerialPort port;
    port.getPortName(peer.entry(), usb);
    QTRY_VERIFY(peer.frameCount() >= 1);
    QElapsedTimer idle;
    idle.start();
    // Some hundred idle turns.
    QTRY_VERIFY(idle.elapsed() > 500);
    QVERIFY(port.isRunning());
    QVERIFY(SerialPort::portOpened);
}

void SerialPortTimeoutsTest::shutdownEndsInATurn()
{
    PtyPeer peer;
    SerialPort port;
    port.getPortName(peer.entry(), rs485);
    QTRY_VERIFY(peer.frameCount() > 0);
    port.prepareShutdown();
    port.quit();
    QVERIFY(port.wait(1000));
}

void SerialPortTimeoutsTest::destroyedWhileRunningEnds()
{
    PtyPeer peer(replyOf);
    {
        SerialPort port;
        port.getPortName(peer.entry(), rs485);
        QTRY_VERIFY(peer.frameCount() >= 1);
    }
    QVERIFY(!SerialPort::portOpened);
}

QTEST_MAIN(SerialPortTimeoutsTest)
#include "tst_serialport_timeouts.moc"
