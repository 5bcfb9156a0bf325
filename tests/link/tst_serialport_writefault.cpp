// SPDX-License-Identifier: GPL-3.0-or-later
// The link at a device that polls writable and takes nothing: its waits count as time-outs like any other's.
#include "failingwrites.h"
#include "linkbench.h"

#include <QElapsedTimer>

using namespace linkbench;

class SerialPortWriteFaultTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void eachWaitThatCanNotWriteCountsAsOneTimeout_data();
    void eachWaitThatCanNotWriteCountsAsOneTimeout();
};

void SerialPortWriteFaultTest::init()
{
    resetLink();
}

void SerialPortWriteFaultTest::eachWaitThatCanNotWriteCountsAsOneTimeout_data()
{
    QTest::addColumn<int>("baud");
    QTest::addColumn<int>("waits"); // milliseconds in all
    QTest::newRow("RS-485") << rs485 << 20 * 50;
    QTest::newRow("USB") << usb << 50 + 19 * 1;
}

void SerialPortWriteFaultTest::eachWaitThatCanNotWriteCountsAsOneTimeout()
{
    QFETCH(int, baud);
    QFETCH(int, waits);
    // One answer to the probes of a worker: none comes late to the request that can't leave. A worker that
    // has given up before it came is followed by another one after a second.
    QElapsedTimer sinceAnswer;
    PtyPeer peer([&sinceAnswer](const QByteArray &request) {
        if (sinceAnswer.isValid() && !sinceAnswer.hasExpired(500))
            return QByteArray();
        sinceAnswer.start();
        return replyOf(request);
    });
    SerialPort port;
    const SignalLog online(&port, &SerialPort::servoONOFFLine);
    port.getPortName(peer.entry(), baud);
    QTRY_VERIFY_WITH_TIMEOUT(online.count(true) >= 1, 20000);
    const FailingWrites failing(peer.path());
    const int repeatsBefore = SerialPort::repeatCount;
    QElapsedTimer clock;
    clock.start();
    port.writeSlot(readA, QStringLiteral("Editor"));
    QVERIFY(port.wait(10000));
    // Read before events run: the watch would start the worker again.
    const qint64 elapsed = clock.elapsed();
    QCOMPARE(SerialPort::repeatCount - repeatsBefore, 19);
    QVERIFY2(elapsed >= waits - 1, qPrintable(QString::number(elapsed)));
    QVERIFY(!SerialPort::portOpened);
    QCOMPARE(peer.framesOnce(), QList<QByteArray>({probe}));
}

QTEST_MAIN(SerialPortWriteFaultTest)
#include "tst_serialport_writefault.moc"
