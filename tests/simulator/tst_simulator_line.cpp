// SPDX-License-Identifier: GPL-3.0-or-later
#include "terminalclient.h"

#include "simulator/console.h"
#include "simulator/simulateddrive.h"

#include <QtTest>

#include <atomic>
#include <thread>

#include <sys/ioctl.h>

using namespace kt500sim;

namespace {

const char probe[] = "010320600002cfd5";
const char probeReply[] = "0103044b540500af57";
const char readJogSpeed[] = "0103200700013e0b";
const char jogSpeedReply[] = "01030207d0bbe8";

} // namespace

class TestLine : public QObject
{
    Q_OBJECT

private slots:
    void probeIsAnswered()
    {
        SimulatedDrive drive;
        QString error;
        QVERIFY2(drive.start(&error), qPrintable(error));
        TerminalClient client(drive.portName());
        QCOMPARE(client.ask(probe, 9), QByteArray(probeReply));
        QCOMPARE(client.ask(readJogSpeed, 7), QByteArray(jogSpeedReply));
        const Counters counters = drive.counters();
        QCOMPARE(counters.requests, std::uint64_t(2));
        QCOMPARE(counters.replies, std::uint64_t(2));
        QCOMPARE(counters.bytesReceived, std::uint64_t(16));
        QCOMPARE(counters.bytesSent, std::uint64_t(16));
        QCOMPARE(counters.retransmissions, std::uint64_t(0));
    }

    void everyByteValuePassesTheTerminal()
    {
        SimulatedDrive drive;
        QVERIFY(drive.start());
        TerminalClient client(drive.portName());
        // Control characters among the bytes: flow control, end of file, line ends, interrupt.
        QVERIFY(drive.writeRegister(7, 0x1113));
        QCOMPARE(client.ask(readJogSpeed, 7).mid(0, 10), QByteArray("0103021113"));
        QVERIFY(drive.writeRegister(7, 0x040a));
        QCOMPARE(client.ask(readJogSpeed, 7).mid(0, 10), QByteArray("010302040a"));
        QVERIFY(drive.writeRegister(7, 0x0d03));
        QCOMPARE(client.ask(readJogSpeed, 7).mid(0, 10), QByteArray("0103020d03"));
    }

    void unreadableAndForeignFramesAreNotAnswered()
    {
        SimulatedDrive drive;
        QVERIFY(drive.start());
        TerminalClient client(drive.portName());
        QVERIFY(client.write("010320600002cfd6"));
        QVERIFY(becomesTrue([&] { return drive.counters().badChecksums == 1; }));
        QVERIFY(client.write("020320600002cfe6"));
        QVERIFY(becomesTrue([&] { return drive.counters().foreignFrames == 1; }));
        // The next bytes to come answer the next good request.
        QCOMPARE(client.ask(readJogSpeed, 7), QByteArray(jogSpeedReply));
        QCOMPARE(drive.counters().requests, std::uint64_t(1));
    }

    void longWriteWithoutItsAddressIsRefused()
    {
        SimulatedDrive drive;
        QVERIFY(drive.start());
        TerminalClient client(drive.portName());
        QCOMPARE(client.ask("01100001020064a887", 5), QByteArray("0190030c01"));
        QCOMPARE(drive.counters().exceptions, std::uint64_t(1));
    }

    void writesReachTheCopiesAndSurviveAsTheyShould()
    {
        SimulatedDrive drive;
        QVERIFY(drive.start());
        TerminalClient client(drive.portName());
        QCOMPARE(client.ask("010620070bb83489", 8), QByteArray("010620070bb83489"));
        QCOMPARE(client.ask("0110e13a000204fffffc18f5be", 8), QByteArray("0110e13a000257f9"));
        QCOMPARE(drive.readRegister(7).value(), std::uint16_t(3000));
        QCOMPARE(drive.readRegister(7, RegisterCopy::Stored).value(), std::uint16_t(2000));
        QCOMPARE(drive.readPair(314, RegisterCopy::Stored).value(), -1000);

        drive.powerCycle();
        QCOMPARE(client.ask(readJogSpeed, 7), QByteArray(jogSpeedReply));
        QCOMPARE(drive.readPair(314).value(), -1000);
        drive.factoryReset();
        QCOMPARE(drive.readPair(314).value(), 131072);
    }

    void registersAreReachedWithoutTheLine()
    {
        SimulatedDrive drive;
        QVERIFY(!drive.readRegister(50));
        QVERIFY(!drive.writeRegister(50, 1));
        QVERIFY(!drive.readPair(49));
        QVERIFY(drive.writePair(1004, -5, RegisterCopy::Stored));
        QCOMPARE(drive.readPair(1004, RegisterCopy::Stored).value(), -5);
        QCOMPARE(drive.registers().working[1004], std::uint16_t(0xffff));
        QCOMPARE(drive.registers().stored[1005], std::uint16_t(0xfffb));
    }

    void pacedReplyTakesItsTime_data()
    {
        QTest::addColumn<int>("baud");
        QTest::addColumn<int>("turnaround");
        QTest::addColumn<int>("leastMicroseconds");
        // 8 characters there and 9 back, ten bits each.
        QTest::newRow("wire time") << 9600 << 0 << 17708;
        QTest::newRow("turnaround") << 0 << 20000 << 20000;
        QTest::newRow("both") << 19200 << 5000 << 13854;
    }
    void pacedReplyTakesItsTime()
    {
        QFETCH(int, baud);
        QFETCH(int, turnaround);
        QFETCH(int, leastMicroseconds);
        DriveOptions options;
        options.pacing = {baud, microseconds(turnaround)};
        SimulatedDrive drive(options);
        QVERIFY(drive.start());
        TerminalClient client(drive.portName());
        for (int i = 0; i < 3; ++i) {
            const TimePoint before = Clock::now();
            QCOMPARE(client.ask(probe, 9), QByteArray(probeReply));
            QVERIFY(Clock::now() - before >= microseconds(leastMicroseconds));
        }
        drive.setPacing({});
        QCOMPARE(client.ask(probe, 9), QByteArray(probeReply));
    }

    void turnaroundIsGivenInMicroseconds()
    {
        SimulatedDrive drive;
        QVERIFY(drive.start());
        TerminalClient client(drive.portName());
        Console console(drive, {});
        QCOMPARE(console.execute(QStringLiteral("pace 0 30000")), QString());
        const TimePoint before = Clock::now();
        QCOMPARE(client.ask(probe, 9), QByteArray(probeReply));
        QVERIFY(Clock::now() - before >= milliseconds(30));
        QVERIFY(Clock::now() - before < std::chrono::seconds(5));
    }

    void modelGoesOnByCommand()
    {
        SimulatedDrive drive({}, std::make_unique<CountingModel>());
        QVERIFY(drive.start());
        Console console(drive, {});
        QCOMPARE(console.execute(QStringLiteral("freeze")), QString());
        const std::uint16_t before = drive.readRegister(1500).value();
        TerminalClient client(drive.portName());
        QCOMPARE(client.ask(probe, 9), QByteArray(probeReply));
        QCOMPARE(drive.readRegister(1500).value(), before);
        QCOMPARE(console.execute(QStringLiteral("unfreeze")), QString());
        QVERIFY(becomesTrue([&] { return drive.readRegister(1500).value() != before; }));
    }

    void drivesStopsAndStartsAgain()
    {
        SimulatedDrive drive;
        QVERIFY(drive.start());
        QVERIFY(drive.start());
        QVERIFY(drive.writeRegister(7, 1));
        TerminalClient first(drive.portName());
        QCOMPARE(first.ask(probe, 9), QByteArray(probeReply));
        drive.stop();
        drive.stop();
        QVERIFY(!drive.isRunning());
        QVERIFY(first.seesTheEnd());
        QCOMPARE(drive.readRegister(7).value(), std::uint16_t(1));
        first.close();

        QVERIFY(drive.start());
        QVERIFY(drive.isRunning());
        TerminalClient second(drive.portName());
        QCOMPARE(second.ask(probe, 9), QByteArray(probeReply));
    }

    void countersAreListedByName()
    {
        Counters counters;
        counters.requests = 1;
        counters.retransmissions = 2;
        counters.badChecksums = 3;
        counters.foreignFrames = 4;
        counters.replies = 5;
        counters.disturbedReplies = 6;
        counters.exceptions = 7;
        counters.streamFrames = 8;
        counters.streamFramesDropped = 9;
        counters.bytesReceived = 10;
        counters.bytesSent = 11;
        counters.hangUps = 12;
        QCOMPARE(QByteArray::fromStdString(toText(counters)),
                 QByteArray("requests 1\nretransmissions 2\nbad-checksums 3\nforeign-frames 4\nreplies 5\n"
                            "disturbed-replies 6\nexceptions 7\nstream-frames 8\nstream-frames-dropped 9\n"
                            "bytes-received 10\nbytes-sent 11\nhang-ups 12\n"));
    }

    void replyThatAClientLeftUnreadIsGoneForTheNext()
    {
        SimulatedDrive drive;
        QVERIFY(drive.start());
        {
            TerminalClient first(drive.portName());
            QVERIFY(first.write(probe));
            QVERIFY(becomesTrue([&] { return drive.counters().replies == 1; }));
            QVERIFY(drive.hasClient());
        }
        QVERIFY(becomesTrue([&] { return !drive.hasClient(); }));
        TerminalClient second(drive.portName());
        QCOMPARE(second.ask(readJogSpeed, 7), QByteArray(jogSpeedReply));
    }

    void terminalLeftExclusiveByItsClientIsFreeForTheNext()
    {
        SimulatedDrive drive;
        QVERIFY(drive.start());
        const int descriptor = ::open(qPrintable(drive.portName()), O_RDWR | O_NOCTTY);
        QVERIFY(::ioctl(descriptor, TIOCEXCL) == 0);
        QVERIFY(becomesTrue([&] { return drive.hasClient(); }));
        ::close(descriptor);
        QVERIFY(becomesTrue([&] { return !drive.hasClient(); }));
        const int next = ::open(qPrintable(drive.portName()), O_RDWR | O_NOCTTY);
        QVERIFY(next >= 0);
        int exclusive = 1;
        QVERIFY(::ioctl(next, TIOCGEXCL, &exclusive) == 0);
        ::close(next);
        QCOMPARE(exclusive, 0);
    }

    void manyThreadsMaySteerOneDrive()
    {
        SimulatedDrive drive;
        QVERIFY(drive.start());
        TerminalClient client(drive.portName());
        std::atomic<bool> enough{false};
        std::vector<std::thread> threads;
        threads.emplace_back([&] {
            while (!enough)
                drive.writeRegister(8, 5);
        });
        threads.emplace_back([&] {
            while (!enough)
                drive.setFault(Fault::lateReply(1, 1));
        });
        threads.emplace_back([&] {
            while (!enough)
                drive.counters();
        });
        QByteArrayList wrong;
        for (int i = 0; i < 200; ++i) {
            const QByteArray reply = client.ask(probe, 9);
            if (reply != probeReply)
                wrong << reply;
        }
        enough = true;
        for (std::thread &thread : threads)
            thread.join();
        QCOMPARE(wrong, QByteArrayList());
        QCOMPARE(drive.readRegister(8).value(), std::uint16_t(5));
    }
};

QTEST_APPLESS_MAIN(TestLine)
#include "tst_simulator_line.moc"
