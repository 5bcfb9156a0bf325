// SPDX-License-Identifier: GPL-3.0-or-later
// The link on a line that delays, cuts, spoils and loses answers: every request is answered once, and every
// answer is that of its own register.
#include "linkbench.h"
#include "simulator/registertable.h"
#include "simulator/simulateddrive.h"
#include "support/rununtil.h"

#include <QTemporaryDir>

using namespace linkbench;

namespace {

constexpr int registerBase = 0x2000;
const QString editor = QStringLiteral("Editor");

QByteArray word(int value)
{
    return QByteArray(1, char(value >> 8)) + char(value & 0xFF);
}

QByteArray readOf(int offset)
{
    return wire::frame(wire::bytes("0103") + word(registerBase + offset) + word(1));
}

QByteArray writeOf(int offset, int value)
{
    return wire::frame(wire::bytes("0106") + word(registerBase + offset) + word(value));
}

// A drive whose registers each have a value of their own, and a link to it.
struct Bench
{
    explicit Bench(int baud)
        : speed(baud)
    {
        resetLink();
        kt500sim::DriveOptions options;
        options.linkPath = folder.filePath(QStringLiteral("drive"));
        options.pacing = {baud == usb ? 0 : baud, kt500sim::microseconds(300)};
        drive = std::make_unique<kt500sim::SimulatedDrive>(options);
        drive->start();
        for (const kt500sim::RegisterEntry &entry : kt500sim::builtInRegisterTable()) {
            if (entry.readOnly || entry.words != 1 || offsets.size() == 120)
                continue;
            drive->writeRegister(entry.offset, quint16(0x4000 + entry.offset));
            offsets.append(entry.offset);
        }
        port = std::make_unique<SerialPort>();
    }
    bool connectLink()
    {
        const SignalLog online(port.get(), &SerialPort::servoONOFFLine);
        port->getPortName(QStringLiteral("Drive(%1)").arg(drive->portName()), speed);
        return QTest::qWaitFor([&online] { return online.count(true) > 0; });
    }

    int speed;
    QTemporaryDir folder;
    std::unique_ptr<kt500sim::SimulatedDrive> drive;
    QList<int> offsets;
    std::unique_ptr<SerialPort> port;
};

// Asks one request after the other, each when the one before has been answered, and compares every answer.
class Client : public QObject
{
public:
    struct Exchange
    {
        QByteArray request;
        QByteArray answer; // what it must be
    };

    Client(SerialPort &serialPort, QList<Exchange> list)
        : port(serialPort)
        , exchanges(std::move(list))
    {
        connect(&port, &SerialPort::handleBaseParameter, this, &Client::take);
        connect(&port, &SerialPort::servoONOFFLine, this, &Client::follow);
    }
    void ask()
    {
        waiting = true;
        port.writeSlot(exchanges.at(answered).request, editor);
    }
    bool isDone() const { return answered == exchanges.size(); }

    int answered = 0;
    QStringList wrong;
    std::function<void(int answered)> progress;

private:
    // What was asked is lost with the link; it is asked anew when that is back.
    void follow(bool isOnline)
    {
        if (!isOnline)
            isLost = true;
        if (!isOnline || !isLost || isDone())
            return;
        isLost = false;
        port.withdraw(editor);
        ask();
    }
    void take(const QByteArray &reply)
    {
        if (isDone())
            wrong.append(QStringLiteral("one too many: ") + reply.toHex());
        if (!waiting || isLost)
            return; // of the link's own probe
        waiting = false;
        if (reply != exchanges.at(answered).answer)
            wrong.append(QStringLiteral("%1: %2").arg(answered).arg(QLatin1String(reply.toHex())));
        ++answered;
        if (progress)
            progress(answered);
        if (!isDone())
            ask();
    }

    SerialPort &port;
    QList<Exchange> exchanges;
    bool waiting = false;
    bool isLost = false;
};

QList<Client::Exchange> reads(const Bench &bench)
{
    QList<Client::Exchange> list;
    for (const int offset : bench.offsets)
        list.append({readOf(offset), wire::readReply(word(0x4000 + offset))});
    return list;
}

// Writes each register and reads it back, as a page write does.
QList<Client::Exchange> writesWithReadBacks(const Bench &bench)
{
    QList<Client::Exchange> list;
    for (const int offset : bench.offsets) {
        const int value = 0x5000 + offset;
        list.append({writeOf(offset, value), writeOf(offset, value)});
        list.append({readOf(offset), wire::readReply(word(value))});
    }
    return list;
}

} // namespace

class SerialPortDisturbedTest : public QObject
{
    Q_OBJECT

private slots:
    void everyAnswerIsThatOfItsRegister_data();
    void everyAnswerIsThatOfItsRegister();
    void writesAndReadBacksKeepTogether_data();
    void writesAndReadBacksKeepTogether();
    void answerLaterThanTheLinkWaitsIsNeverAnothers();
    void undisturbedExchangeWritesEveryFrameOnce();
    void requestsWaitingInTheQueueKeepTheirAnswers();
    void answerOfAStoppedWorkerIsNotTheNextOnes();
    void heldLinkStillStops();
};

void SerialPortDisturbedTest::everyAnswerIsThatOfItsRegister_data()
{
    QTest::addColumn<QStringList>("faults"); // one after the other, some twenty requests apart
    QTest::addColumn<int>("baud");
    const auto rows = [](const char *name, const QStringList &faults, bool atUsb = true) {
        for (const int baud : {115200, 9600, 100}) {
            if (baud != 100 || atUsb)
                QTest::newRow(qPrintable(QStringLiteral("%1, %2").arg(QLatin1String(name)).arg(baud)))
                    << faults << baud;
        }
    };
    rows("late by 55 ms", {"late 1 55"});
    // At the USB entry the link is given up after 70 ms of silence, or 20 after a bad chunk.
    rows("late by 70 ms", {"late 1 70"}, false);
    rows("late by 120 ms", {"late 1 120"}, false);
    rows("late by 200 ms", {"late 1 200"}, false);
    rows("late by 400 ms", {"late 1 400"}, false);
    rows("two pieces 1 ms apart", {"split 1 1"});
    rows("two pieces 5 ms apart", {"split 1 5"});
    rows("two pieces 20 ms apart", {"split 1 20"}, false);
    rows("three pieces 1 ms apart", {"splinter 1 1"});
    rows("three pieces 7 ms apart", {"splinter 1 7"});
    rows("three pieces 20 ms apart", {"splinter 1 20"}, false);
    rows("bad checksum, then good", {"badcrc 1"});
    rows("lost", {"noreply 1"});
    rows("stale bytes in front", {"stale 1"});
    rows("three lost", {"noreply 3"});
    rows("four in two pieces", {"split 4 2"});
    rows("three in three pieces", {"splinter 3 3"});
    rows("five bad checksums", {"badcrc 5"});
    rows("three late", {"late 3 60"}, false);
    rows("all kinds", {"split 2 3", "badcrc 2", "late 1 54", "splinter 1 5", "noreply 1"});
    rows("late again and again", {"late 1 70", "late 2 90", "late 1 400", "late 1 120"}, false);
    rows("stale bytes and pieces", {"stale 2", "split 1 1"});
}

void SerialPortDisturbedTest::everyAnswerIsThatOfItsRegister()
{
    QFETCH(QStringList, faults);
    QFETCH(int, baud);
    Bench bench(baud);
    QVERIFY(bench.offsets.size() == 120);
    QVERIFY(bench.connectLink());
    Client client(*bench.port, reads(bench));
    client.progress = [&](int answered) {
        if (answered % 20 == 15 && !faults.isEmpty())
            bench.drive->setFault(faults.takeFirst());
    };
    client.ask();
    QVERIFY(runUntil([&client] { return client.isDone(); }, 30000));
    QVERIFY2(client.wrong.isEmpty(), qPrintable(client.wrong.join(QStringLiteral("; "))));
    QVERIFY(faults.isEmpty());
    QVERIFY(bench.drive->counters().disturbedReplies > 0);
}

void SerialPortDisturbedTest::writesAndReadBacksKeepTogether_data()
{
    QTest::addColumn<QString>("fault");
    QTest::addColumn<int>("baud");
    QTest::newRow("late, 115200") << "late 1 70" << 115200;
    QTest::newRow("late, 9600") << "late 1 120" << 9600;
    QTest::newRow("late, USB") << "late 1 55" << 100;
    QTest::newRow("two pieces, 115200") << "split 2 1" << 115200;
    QTest::newRow("two pieces, USB") << "split 2 1" << 100;
    QTest::newRow("lost, 115200") << "noreply 1" << 115200;
    QTest::newRow("bad checksums, USB") << "badcrc 2" << 100;
}

void SerialPortDisturbedTest::writesAndReadBacksKeepTogether()
{
    QFETCH(QString, fault);
    QFETCH(int, baud);
    Bench bench(baud);
    QVERIFY(bench.connectLink());
    Client client(*bench.port, writesWithReadBacks(bench));
    client.progress = [&](int answered) {
        // Both a write and a read-back are struck.
        if (answered == 20 || answered == 81)
            bench.drive->setFault(fault);
    };
    client.ask();
    QVERIFY(runUntil([&client] { return client.isDone(); }, 30000));
    QVERIFY2(client.wrong.isEmpty(), qPrintable(client.wrong.join(QStringLiteral("; "))));
    for (const int offset : bench.offsets)
        QCOMPARE(*bench.drive->readRegister(offset), quint16(0x5000 + offset));
    QVERIFY(bench.drive->counters().retransmissions > 0);
}

void SerialPortDisturbedTest::answerLaterThanTheLinkWaitsIsNeverAnothers()
{
    Bench bench(usb);
    QVERIFY(bench.connectLink());
    Client client(*bench.port, reads(bench));
    client.progress = [&](int answered) {
        if (answered == 30)
            bench.drive->setFault(QStringLiteral("late 1 400"));
    };
    client.ask();
    QVERIFY(runUntil([&bench] { return bench.port->isFinished(); }, 10000));
    QCOMPARE(client.answered, 30);
    // What was asked is lost with the worker, and its answers come while the next session begins.
    bench.port->getPortName(QStringLiteral("Drive(%1)").arg(bench.drive->portName()), usb);
    QVERIFY(runUntil([&client] { return client.isDone(); }, 30000));
    QVERIFY2(client.wrong.isEmpty(), qPrintable(client.wrong.join(QStringLiteral("; "))));
}

void SerialPortDisturbedTest::undisturbedExchangeWritesEveryFrameOnce()
{
    PtyPeer peer(replyOf);
    SerialPort port;
    resetLink();
    const Deliveries deliveries(port);
    port.getPortName(peer.entry(), rs485);
    QList<QByteArray> asked{probe};
    QStringList expected;
    for (int i = 1; i <= 30; ++i) {
        const QByteArray request = readOf(i);
        asked.append(request);
        expected.append(delivery("editor", replyOf(request)));
        port.writeSlot(request, editor);
    }
    QTRY_COMPARE(deliveries.list, expected);
    const QList<QByteArray> frames = peer.framesOnce();
    QCOMPARE(frames.mid(frames.size() - 30), asked.mid(1));
}

void SerialPortDisturbedTest::requestsWaitingInTheQueueKeepTheirAnswers()
{
    Bench bench(rs485);
    QVERIFY(bench.connectLink());
    QStringList expected;
    const Deliveries deliveries(*bench.port);
    QVERIFY(bench.drive->setFault(QStringLiteral("late 1 130")));
    for (int i = 0; i < 20; ++i) {
        const int offset = bench.offsets.at(i);
        bench.port->writeSlot(readOf(offset), i % 2 == 0 ? editor : QStringLiteral("Monitor"));
        expected.append(delivery(i % 2 == 0 ? "editor" : "monitor", wire::readReply(word(0x4000 + offset))));
    }
    QTRY_COMPARE(deliveries.list.size(), 20);
    QCOMPARE(deliveries.list, expected);
}

void SerialPortDisturbedTest::answerOfAStoppedWorkerIsNotTheNextOnes()
{
    std::atomic<bool> slow{false};
    PtyPeer peer([&slow](const QByteArray &request) { return slow ? QByteArray() : replyOf(request); });
    SerialPort port;
    resetLink();
    const Deliveries deliveries(port);
    const SignalLog online(&port, &SerialPort::servoONOFFLine);
    port.getPortName(peer.entry(), rs485);
    QTRY_VERIFY(online.count(true) > 0);
    slow = true;
    port.writeSlot(readA, editor);
    QTRY_VERIFY(peer.frames().contains(readA));
    // "Ok" in the connection dialog: the request is lost, its answer comes to the next session's first.
    port.writeSlot(readB, editor);
    std::atomic<bool> isLate{true};
    peer.setHandler([&peer, &isLate](const QByteArray &request) {
        if (request != readB)
            return QByteArray();
        if (!isLate.exchange(false))
            return replyOf(readB);
        peer.write(replyOf(readB));
        return replyOf(readA);
    });
    port.getPortName(peer.entry(), rs485);
    QTRY_VERIFY(deliveries.list.size() >= 1);
    QCOMPARE(deliveries.list.first(), delivery("editor", replyOf(readB)));
}

void SerialPortDisturbedTest::heldLinkStillStops()
{
    Bench bench(rs485);
    QVERIFY(bench.connectLink());
    const Deliveries deliveries(*bench.port);
    QVERIFY(bench.drive->setFault(QStringLiteral("late 1 400")));
    bench.port->writeSlot(readOf(bench.offsets.first()), editor);
    QTRY_COMPARE(deliveries.list.size(), 1);
    QElapsedTimer clock;
    clock.start();
    bench.port->prepareShutdown();
    QVERIFY(bench.port->wait(2000));
    QVERIFY2(clock.elapsed() < 300, qPrintable(QString::number(clock.elapsed())));
}

QTEST_MAIN(SerialPortDisturbedTest)
#include "tst_serialport_disturbed.moc"
