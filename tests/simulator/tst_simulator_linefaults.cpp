// SPDX-License-Identifier: GPL-3.0-or-later
#include "terminalclient.h"

#include "simulator/simulateddrive.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

#include <mutex>

using namespace kt500sim;

namespace {

const char probe[] = "010320600002cfd5";
const char probeReply[] = "0103044b540500af57";
const char readJogSpeed[] = "0103200700013e0b";
const char jogSpeedReply[] = "01030207d0bbe8";
const char stopFrame[] = "01140000000000000000dec2";

/// A running drive with a client on its line, and what the drive sent.
struct Line
{
    Line()
    {
        drive.setFrameListener([this](const LoggedFrame &frame) {
            const std::lock_guard<std::mutex> lock(mutex);
            if (frame.kind == FrameKind::Reply)
                replies.push_back(frame);
        });
        drive.start();
        client = std::make_unique<TerminalClient>(drive.portName());
    }
    ~Line() { drive.stop(); }

    bool requestsArrived(std::uint64_t count)
    {
        return becomesTrue([&] { return drive.counters().requests == count; });
    }
    std::vector<LoggedFrame> sentReplies()
    {
        const std::lock_guard<std::mutex> lock(mutex);
        return replies;
    }

    std::mutex mutex;
    std::vector<LoggedFrame> replies;
    SimulatedDrive drive;
    std::unique_ptr<TerminalClient> client;
};

} // namespace

class TestLineFaults : public QObject
{
    Q_OBJECT

private slots:
    void lostRepliesAreExecutedButSilent()
    {
        Line line;
        line.drive.setFault(Fault::noReply(2));
        QVERIFY(line.client->write("010620070bb83489"));
        QVERIFY(line.requestsArrived(1));
        QVERIFY(line.client->write("010620070bb83489"));
        QVERIFY(line.requestsArrived(2));
        QCOMPARE(line.drive.readRegister(7).value(), std::uint16_t(3000));
        // Only the third is answered: the next bytes are its reply, and no more come.
        QCOMPARE(line.client->ask("010620070bb83489", 8), QByteArray("010620070bb83489"));
        QCOMPARE(line.drive.counters().replies, std::uint64_t(1));
        QCOMPARE(line.drive.counters().disturbedReplies, std::uint64_t(2));
    }

    void repeatedRequestsWithoutAGoodReplyCountAsRetransmissions()
    {
        Line line;
        line.drive.setFault(Fault::noReply(2));
        for (std::uint64_t i = 1; i <= 2; ++i) {
            QVERIFY(line.client->write(probe));
            QVERIFY(line.requestsArrived(i));
        }
        QCOMPARE(line.client->ask(probe, 9), QByteArray(probeReply));
        QCOMPARE(line.drive.counters().retransmissions, std::uint64_t(2));
        // The same request after a good reply is a new request.
        QCOMPARE(line.client->ask(probe, 9), QByteArray(probeReply));
        QCOMPARE(line.drive.counters().retransmissions, std::uint64_t(2));
        line.drive.resetCounters();
        QCOMPARE(line.drive.counters().requests, std::uint64_t(0));
    }

    void badChecksumSpoilsTheNextRepliesAlone()
    {
        Line line;
        line.drive.setFault(Fault::badChecksum(2));
        QCOMPARE(line.client->ask(probe, 9), QByteArray("0103044b540500afa8"));
        QCOMPARE(line.client->ask(readJogSpeed, 7), QByteArray("01030207d0bb17"));
        QCOMPARE(line.client->ask(probe, 9), QByteArray(probeReply));
    }

    void splitReplyComesInTwoPiecesAGapApart()
    {
        Line line;
        line.drive.setFault(Fault::splitReply(1, 60));
        QCOMPARE(line.client->ask(probe, 9), QByteArray(probeReply));
        const std::vector<LoggedFrame> sent = line.sentReplies();
        QCOMPARE(sent.size(), std::size_t(2));
        QCOMPARE(hexOf(sent[0].bytes), QByteArray("0103044b"));
        QCOMPARE(hexOf(sent[1].bytes), QByteArray("540500af57"));
        QVERIFY(sent[1].time - sent[0].time >= milliseconds(55));
        QCOMPARE(line.drive.counters().replies, std::uint64_t(1));
    }

    void lateReplyHoldsUpThoseBehindIt()
    {
        Line line;
        line.drive.setFault(Fault::lateReply(1, 80));
        const TimePoint before = Clock::now();
        QVERIFY(line.client->write(probe));
        QVERIFY(line.requestsArrived(1));
        QVERIFY(line.client->write(readJogSpeed));
        QCOMPARE(line.client->read(16), QByteArray(probeReply) + jogSpeedReply);
        QVERIFY(Clock::now() - before >= milliseconds(80));
    }

    void staleBytesStandBeforeTheReply()
    {
        Line line;
        QCOMPARE(line.client->ask(probe, 9), QByteArray(probeReply));
        line.drive.setFault(Fault::staleBytes(1));
        QCOMPARE(line.client->ask(readJogSpeed, 11), QByteArray("0500af57") + jogSpeedReply);
        QCOMPARE(line.client->ask(readJogSpeed, 7), QByteArray(jogSpeedReply));
    }

    void exceptionIsAnsweredInPlaceOfExecution()
    {
        Line line;
        line.drive.setFault(Fault::exception(4, 1));
        QCOMPARE(line.client->ask(probe, 5), QByteArray("01830440f3"));
        line.drive.setFault(Fault::exception(6, 1));
        QCOMPARE(line.client->ask("010620070bb83489", 5), QByteArray("018606c262"));
        QCOMPARE(line.drive.readRegister(7).value(), std::uint16_t(2000));
        QCOMPARE(line.client->ask(probe, 9), QByteArray(probeReply));
        QCOMPARE(line.drive.counters().exceptions, std::uint64_t(2));
    }

    void silentDriveNeitherHearsNorSpeaks()
    {
        Line line;
        line.drive.setFault(Fault::silence(3600 * 1000));
        QVERIFY(line.client->write("010620070bb83489"));
        QVERIFY(line.requestsArrived(1));
        QCOMPARE(line.drive.readRegister(7).value(), std::uint16_t(2000));
        line.drive.clearFaults();
        QCOMPARE(line.client->ask(probe, 9), QByteArray(probeReply));
    }

    void silenceEndsByItself()
    {
        Line line;
        const TimePoint before = Clock::now();
        line.drive.setFault(Fault::silence(60));
        QVERIFY(becomesTrue([&] {
            line.client->write(probe);
            return line.drive.counters().replies > 0;
        }));
        QVERIFY(Clock::now() - before >= milliseconds(60));
        QCOMPARE(line.client->read(9), QByteArray(probeReply));
    }

    void silenceSwallowsAReplyThatWasOnItsWay()
    {
        Line line;
        line.drive.setFault(Fault::lateReply(1, 30));
        QVERIFY(line.client->write(probe));
        QVERIFY(line.requestsArrived(1));
        line.drive.setFault(Fault::silence(100));
        QVERIFY(becomesTrue([&] {
            line.client->write(readJogSpeed);
            return !line.sentReplies().empty();
        }));
        QCOMPARE(line.client->read(7), QByteArray(jogSpeedReply));
    }

    void hangUpEndsTheTerminalAndReturns()
    {
        QTemporaryDir folder;
        DriveOptions options;
        options.linkPath = folder.filePath(QStringLiteral("drive"));
        SimulatedDrive drive(options);
        QVERIFY(drive.start());
        TerminalClient before(drive.portName());
        QCOMPARE(before.ask(probe, 9), QByteArray(probeReply));

        drive.hangUp(milliseconds(0));
        QVERIFY(before.seesTheEnd());
        QVERIFY(drive.isHungUp());
        QVERIFY(drive.isRunning());
        QVERIFY(!QFile::exists(options.linkPath));
        QVERIFY(!TerminalClient(drive.portName()).isOpen());

        // The old client still has the dead terminal, so the new one must have another name.
        const QString oldDevice = drive.devicePath();
        drive.clearFaults();
        QVERIFY(becomesTrue([&] { return !drive.isHungUp(); }));
        QVERIFY(drive.devicePath() != oldDevice);
        QCOMPARE(QFile::symLinkTarget(options.linkPath), drive.devicePath());
        TerminalClient after(drive.portName());
        QCOMPARE(after.ask(probe, 9), QByteArray(probeReply));
        QCOMPARE(drive.counters().hangUps, std::uint64_t(1));
    }

    void hangUpReturnsByItselfAndTellsSo()
    {
        SimulatedDrive drive;
        std::mutex mutex;
        QList<bool> told;
        drive.setLineListener([&](bool up) {
            const std::lock_guard<std::mutex> lock(mutex);
            told << up;
        });
        QVERIFY(drive.start());
        TerminalClient client(drive.portName());
        const TimePoint before = Clock::now();
        drive.hangUp(milliseconds(50));
        QVERIFY(client.seesTheEnd());
        QVERIFY(becomesTrue([&] { return !drive.isHungUp(); }));
        QVERIFY(Clock::now() - before >= milliseconds(50));
        TerminalClient next(drive.portName());
        QCOMPARE(next.ask(probe, 9), QByteArray(probeReply));
        const std::lock_guard<std::mutex> lock(mutex);
        QCOMPARE(told, QList<bool>({false, true}));
    }

    void hangUpWithoutAClientReturnsToo()
    {
        SimulatedDrive drive;
        QVERIFY(drive.start());
        drive.hangUp(milliseconds(1));
        QVERIFY(becomesTrue([&] { return !drive.isHungUp(); }));
        TerminalClient client(drive.portName());
        QCOMPARE(client.ask(probe, 9), QByteArray(probeReply));
    }

    void stoppedWhileHungUpStartsAgain()
    {
        SimulatedDrive drive;
        QVERIFY(drive.start());
        drive.hangUp(milliseconds(0));
        drive.stop();
        QVERIFY(drive.start());
        QVERIFY(!drive.isHungUp());
        TerminalClient client(drive.portName());
        QCOMPARE(client.ask(probe, 9), QByteArray(probeReply));
    }

    void whatWasOnItsWayIsGone_data()
    {
        QTest::addColumn<bool>("hangsUp");
        QTest::newRow("after a power cycle") << false;
        QTest::newRow("after a hang-up") << true;
    }
    void whatWasOnItsWayIsGone()
    {
        QFETCH(bool, hangsUp);
        DriveOptions options;
        options.frameGap = std::chrono::hours(1); // a begun request would wait for its end
        SimulatedDrive drive(options);
        QVERIFY(drive.start());
        auto client = std::make_unique<TerminalClient>(drive.portName());
        drive.setFault(Fault::lateReply(1, 300));
        QVERIFY(client->write(probe));
        QVERIFY(becomesTrue([&] { return drive.counters().requests == 1; }));
        QVERIFY(client->write("01032060"));
        QVERIFY(becomesTrue([&] { return drive.counters().bytesReceived == 12; }));
        if (hangsUp) {
            drive.hangUp(milliseconds(1));
            QVERIFY(becomesTrue([&] { return !drive.isHungUp(); }));
            client = std::make_unique<TerminalClient>(drive.portName());
        } else {
            drive.powerCycle();
        }
        // Neither the late reply nor the begun request stands before this one.
        QCOMPARE(client->ask(readJogSpeed, 7), QByteArray(jogSpeedReply));
        QCOMPARE(drive.counters().requests, std::uint64_t(2));
    }

    void streamThatTheClientAskedForTooIsItsOwn()
    {
        Line line;
        line.drive.setFault(Fault::unaskedStream(true));
        QVERIFY(line.client->write("01141000000000000000dfce"));
        QVERIFY(line.requestsArrived(1));
        line.drive.clearFaults();
        QVERIFY(line.drive.isStreaming());
    }

    void garbageDrownsEveryReply()
    {
        Line line;
        line.drive.setFault(Fault::garbage(true));
        const QByteArray noise = line.client->read(300);
        QCOMPARE(noise.size(), 600);
        for (int i = 0; i < noise.size(); i += 2)
            QVERIFY(noise.mid(i, 2) != "01");
        QVERIFY(line.client->write(probe));
        QVERIFY(line.requestsArrived(1));
        line.drive.setFault(Fault::garbage(false));
        // What is still on the way is noise; then the line is clean again.
        const std::size_t rest = line.drive.counters().bytesSent - 300;
        line.client->read(rest);
        QCOMPARE(line.drive.counters().replies, std::uint64_t(0));
        QCOMPARE(line.client->ask(probe, 9), QByteArray(probeReply));
    }

    void unaskedStreamIsEndedByAStopFrame()
    {
        Line line;
        line.drive.setFault(Fault::unaskedStream(true));
        QVERIFY(line.client->readStreamFrame().startsWith("0114005c1028"));
        QVERIFY(line.client->readStreamFrame().startsWith("0114005c1028"));
        QVERIFY(line.client->write(stopFrame));
        QVERIFY(becomesTrue([&] { return !line.drive.isStreaming(); }));
    }

    void unaskedStreamIsEndedByClear()
    {
        Line line;
        line.drive.setFault(Fault::unaskedStream(true));
        QVERIFY(line.drive.isStreaming());
        line.drive.clearFaults();
        QVERIFY(!line.drive.isStreaming());
    }

    void clearLeavesAStreamThatWasAskedFor()
    {
        Line line;
        QVERIFY(line.client->write("01141000000000000000dfce"));
        QVERIFY(becomesTrue([&] { return line.drive.isStreaming(); }));
        line.drive.clearFaults();
        QVERIFY(line.drive.isStreaming());
    }

    void faultIsSetByItsText()
    {
        Line line;
        QVERIFY(line.drive.setFault(QStringLiteral("exception 4 1")));
        QCOMPARE(line.client->ask(probe, 5), QByteArray("01830440f3"));
        QString error;
        QVERIFY(!line.drive.setFault(QStringLiteral("nonsense"), &error));
        QCOMPARE(error, QStringLiteral("there is no fault \"nonsense\""));
    }

    void clearEndsEveryCountedFault()
    {
        Line line;
        for (const char *fault : {"noreply 9", "badcrc 9", "late 9 5000", "stale 9", "exception 4 9",
                                  "split 9 5000", "splinter 9 5000"})
            QVERIFY(line.drive.setFault(QString::fromLatin1(fault)));
        line.drive.clearFaults();
        QCOMPARE(line.client->ask(probe, 9), QByteArray(probeReply));
    }
};

QTEST_APPLESS_MAIN(TestLineFaults)
#include "tst_simulator_linefaults.moc"
