// SPDX-License-Identifier: GPL-3.0-or-later
// A drive on the link that streams although no capture runs: it is stopped, and takes no reply away.
#include "linkbench.h"

#include <algorithm>

using namespace linkbench;

class SerialPortUnaskedStreamTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void streamOfNobodyIsStoppedOnce();
    void replyAmidAStreamOfNobodyIsDelivered_data();
    void replyAmidAStreamOfNobodyIsDelivered();
    void replyAmidAStreamOfNobodyIsNotTheNextRequests();
};

void SerialPortUnaskedStreamTest::init()
{
    resetLink();
}

void SerialPortUnaskedStreamTest::streamOfNobodyIsStoppedOnce()
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

void SerialPortUnaskedStreamTest::replyAmidAStreamOfNobodyIsDelivered_data()
{
    QTest::addColumn<QByteArray>("inFront");
    QTest::addColumn<QByteArray>("behind");
    QTest::newRow("behind a frame") << streamChunk << QByteArray();
    QTest::newRow("between frames") << streamChunk + streamChunk << streamChunk;
}

void SerialPortUnaskedStreamTest::replyAmidAStreamOfNobodyIsDelivered()
{
    QFETCH(QByteArray, inFront);
    QFETCH(QByteArray, behind);
    PtyPeer peer([&](const QByteArray &request) {
        return request == stopFrame || request == probe ? QByteArray() : inFront + replyOf(request) + behind;
    });
    SerialPort port;
    const SignalLog editor(&port, &SerialPort::handleBaseParameter);
    const SignalLog monitor(&port, &SerialPort::handleParameterMonitor);
    port.writeSlot(readA, QStringLiteral("Editor"));
    port.writeSlot(readB, QStringLiteral("Monitor"));
    port.writeSlot(readC, QStringLiteral("Editor"));
    port.getPortName(peer.entry(), rs485);
    QTRY_COMPARE(editor.count(), 2);
    QTRY_COMPARE(monitor.count(), 1);
    QCOMPARE(std::get<0>(editor.calls.at(0)), replyOf(readA));
    QCOMPARE(std::get<0>(editor.calls.at(1)), replyOf(readC));
    QCOMPARE(std::get<0>(monitor.calls.at(0)), replyOf(readB));
}

void SerialPortUnaskedStreamTest::replyAmidAStreamOfNobodyIsNotTheNextRequests()
{
    QByteArray overtaken = streamChunk + replyOf(readA);
    PtyPeer peer([&overtaken](const QByteArray &request) {
        if (request == readA)
            return streamChunk;
        if (request != readB)
            return QByteArray();
        QByteArray late;
        late.swap(overtaken);
        return late + streamChunk + replyOf(readB);
    });
    SerialPort port;
    const Deliveries deliveries(port);
    port.writeSlot(readA, QStringLiteral("Editor"));
    port.writeSlot(readB, QStringLiteral("Monitor"));
    port.getPortName(peer.entry(), rs485);
    const auto isReply = [](const QString &text) { return !text.startsWith(QLatin1String("scope")); };
    QTRY_VERIFY(std::any_of(deliveries.list.cbegin(), deliveries.list.cend(), isReply));
    QCOMPARE(*std::find_if(deliveries.list.cbegin(), deliveries.list.cend(), isReply),
             delivery("monitor", replyOf(readB)));
    QCOMPARE(peer.framesOnce(), QList<QByteArray>({readA, stopFrame, readB}));
}

QTEST_MAIN(SerialPortUnaskedStreamTest)
#include "tst_serialport_unaskedstream.moc"
