// SPDX-License-Identifier: GPL-3.0-or-later
#include "terminalclient.h"

#include "simulator/simulateddrive.h"

#include <QtTest>

#include <atomic>
#include <mutex>
#include <vector>

using namespace kt500sim;

namespace {

const char startFirstItem[] = "01141000000000000000dfce";
const char stopFrame[] = "01140000000000000000dec2";
const char readStatus[] = "010325dc00014efc";

std::unique_ptr<SimulatedDrive> countingDrive(int samplesPerFrame = 40)
{
    DriveOptions options;
    options.samplesPerFrame = samplesPerFrame;
    return std::make_unique<SimulatedDrive>(options, std::make_unique<CountingModel>());
}

/// Real time since a moment, in sample periods.
int samplesSince(TimePoint moment)
{
    return int((Clock::now() - moment) / samplePeriod);
}

/// Lets real time pass.
bool letPass(milliseconds time)
{
    const TimePoint end = Clock::now() + time;
    return becomesTrue([end] { return Clock::now() >= end; });
}

/// The samples of a frame that holds one narrow channel, the first.
QList<int> samplesOf(const QByteArray &frame)
{
    QList<int> samples;
    const int count = frame.mid(10, 2).toInt(nullptr, 16);
    for (int i = 0; i < count; ++i)
        samples << frame.mid(12 + 4 * i, 4).toInt(nullptr, 16);
    return samples;
}

} // namespace

class TestLiveStream : public QObject
{
    Q_OBJECT

private slots:
    void frozenDriveStreamsExactlyWhatItIsAdvancedBy()
    {
        const auto drive = countingDrive(4);
        drive->freeze();
        QVERIFY(drive->start());
        TerminalClient client(drive->portName());
        QVERIFY(client.write(startFirstItem));
        QVERIFY(becomesTrue([&] { return drive->isStreaming(); }));
        const int first = drive->readRegister(1500).value();
        drive->advance(microseconds(4 * 125 - 1));
        drive->advance(microseconds(1));
        const QList<int> samples = samplesOf(client.readStreamFrame());
        QCOMPARE(samples, QList<int>({first + 1, first + 2, first + 3, first + 4}));
        QVERIFY(becomesTrue([&] { return drive->counters().streamFrames == 1; }));
        // Whole frames only: what is short of the second one waits.
        drive->advance(microseconds(7 * 125));
        QCOMPARE(samplesOf(client.readStreamFrame()).first(), first + 5);
        QVERIFY(becomesTrue([&] { return drive->counters().streamFrames == 2; }));
    }

    void longStepArrivesWholeAndInOrder()
    {
        const auto drive = countingDrive();
        drive->freeze();
        QVERIFY(drive->start());
        TerminalClient client(drive->portName());
        QVERIFY(client.write(startFirstItem));
        QVERIFY(becomesTrue([&] { return drive->isStreaming(); }));
        const int first = drive->readRegister(1500).value();
        drive->advance(milliseconds(100));
        for (int frame = 0; frame < 20; ++frame) {
            const QList<int> samples = samplesOf(client.readStreamFrame());
            QCOMPARE(samples.size(), 40);
            QCOMPARE(samples.first(), first + 40 * frame + 1);
            QCOMPARE(samples.last(), first + 40 * frame + 40);
        }
    }

    void frozenModelStandsStill()
    {
        const auto drive = countingDrive();
        QVERIFY(drive->start());
        drive->freeze();
        const auto before = drive->readRegister(1500);
        drive->advance(milliseconds(10));
        QCOMPARE(drive->readRegister(1500).value(), std::uint16_t(before.value() + 80));
        TerminalClient client(drive->portName());
        const QByteArray first = client.ask(readStatus, 7);
        QCOMPARE(client.ask(readStatus, 7), first);
        drive->unfreeze();
        QVERIFY(becomesTrue([&] { return client.ask(readStatus, 7) != first; }));
    }

    void modelKeepsRealTimeExceptWhileItIsFrozen()
    {
        const auto drive = countingDrive();
        QVERIFY(drive->start());
        const auto count = [&drive] { return int(drive->readRegister(1500).value()); };
        // What passed before the freezing counts.
        const int first = count();
        const TimePoint running = Clock::now();
        QVERIFY(letPass(milliseconds(100)));
        const int least = samplesSince(running);
        drive->freeze();
        const int frozen = count();
        QVERIFY2(frozen - first >= least - 1, qPrintable(QString::number(frozen - first)));
        // What passes meanwhile does not.
        QVERIFY(letPass(milliseconds(300)));
        QCOMPARE(count(), frozen);
        TimePoint again = Clock::now();
        drive->unfreeze();
        int gained = count() - frozen;
        QVERIFY2(gained <= samplesSince(again) + 1, qPrintable(QString::number(gained)));
        // Nor does what passes while the drive is stopped.
        drive->stop();
        const int stopped = count();
        QVERIFY(letPass(milliseconds(300)));
        again = Clock::now();
        QVERIFY(drive->start());
        gained = count() - stopped;
        QVERIFY2(gained <= samplesSince(again) + 1, qPrintable(QString::number(gained)));
    }

    void framesThatFellBehindAreSpacedByAMillisecond()
    {
        const auto drive = countingDrive(4);
        std::mutex mutex;
        std::vector<TimePoint> sent;
        drive->setFrameListener([&](const LoggedFrame &frame) {
            const std::lock_guard<std::mutex> lock(mutex);
            if (frame.kind == FrameKind::StreamFrame)
                sent.push_back(Clock::now());
        });
        drive->freeze();
        QVERIFY(drive->start());
        TerminalClient client(drive->portName());
        QVERIFY(client.write(startFirstItem));
        QVERIFY(becomesTrue([&] { return drive->isStreaming(); }));
        const TimePoint before = Clock::now();
        drive->advance(30 * 4 * samplePeriod);
        QVERIFY(becomesTrue([&] { return drive->counters().streamFrames == 30; }));
        drive->stop();
        QCOMPARE(sent.size(), std::size_t(30));
        for (std::size_t i = 0; i < sent.size(); ++i)
            QVERIFY(sent[i] - before >= milliseconds(i));
    }

    void drivesLongStandstillIsNotMadeUpFor_data()
    {
        QTest::addColumn<int>("standstill"); // ms
        QTest::addColumn<int>("madeUp");     // samples, 8 a millisecond
        QTest::newRow("short") << 100 << 800;
        QTest::newRow("long") << 700 << 1600;
    }
    void drivesLongStandstillIsNotMadeUpFor()
    {
        QFETCH(int, standstill);
        QFETCH(int, madeUp);
        const auto drive = countingDrive();
        std::atomic<bool> isStanding{false};
        std::atomic<bool> hasStood{false};
        drive->setFrameListener([&](const LoggedFrame &frame) {
            if (frame.kind != FrameKind::StreamFrame || hasStood)
                return;
            isStanding = true;
            hasStood = true;
            letPass(milliseconds(standstill));
            isStanding = false;
        });
        QVERIFY(drive->start());
        TerminalClient client(drive->portName());
        QVERIFY(client.write(startFirstItem));
        const QList<int> last = samplesOf(client.readStreamFrame());
        QVERIFY(becomesTrue([&] { return hasStood && !isStanding; }));
        const TimePoint again = Clock::now();
        // The samples of a turn or two around it are not told apart, and the model takes its step in the turn
        // that follows.
        constexpr int someTurns = 400;
        int gained = 0;
        QVERIFY(becomesTrue([&] {
            gained = int(drive->readRegister(1500).value()) - last.last();
            return gained > someTurns;
        }));
        QVERIFY2(gained >= madeUp, qPrintable(QString::number(gained)));
        QVERIFY2(gained <= madeUp + samplesSince(again) + someTurns, qPrintable(QString::number(gained)));
    }

    void repeatedStartBeginsANewStreamOfTheNewChannels()
    {
        const auto drive = countingDrive(4);
        drive->freeze();
        QVERIFY(drive->start());
        TerminalClient client(drive->portName());
        QVERIFY(client.write(startFirstItem));
        QVERIFY(becomesTrue([&] { return drive->isStreaming(); }));
        drive->advance(3 * samplePeriod);
        const int before = drive->readRegister(1500).value();
        QVERIFY(client.write("01140000100000000000"
                             "dc52"));
        QVERIFY(becomesTrue([&] { return drive->counters().requests == 2; }));
        drive->advance(4 * samplePeriod);
        const auto hex = [](int number) { return QByteArray::number(number, 16).rightJustified(4, '0'); };
        QCOMPARE(client.readStreamFrame(), QByteArray("0114001400001004") + hex(before + 1) +
                                               hex(before + 2) + hex(before + 3) + hex(before + 4) +
                                               "00000000");
    }

    void streamRunsAtTheSampleRate()
    {
        const auto drive = countingDrive();
        QVERIFY(drive->start());
        TerminalClient client(drive->portName());
        QVERIFY(client.write(startFirstItem));
        QList<int> samples = samplesOf(client.readStreamFrame());
        const TimePoint before = Clock::now();
        int next = samples.last() + 1;
        // A slow machine may lose time, never samples within what it caught up; a fast one never gains any.
        for (int frame = 0; frame < 20; ++frame) {
            samples = samplesOf(client.readStreamFrame());
            QCOMPARE(samples.size(), 40);
            QVERIFY(samples.first() >= next);
            next = samples.last() + 1;
        }
        // The first frame may have been read late, but by no more than one frame's time on average.
        QVERIFY(Clock::now() - before >= milliseconds(15 * 5));
        QVERIFY(client.write(stopFrame));
        QVERIFY(becomesTrue([&] { return !drive->isStreaming(); }));
    }

    void requestsAreAnsweredBetweenStreamFrames()
    {
        const auto drive = countingDrive(4);
        drive->freeze();
        QVERIFY(drive->start());
        TerminalClient client(drive->portName());
        QVERIFY(client.write(startFirstItem));
        QVERIFY(becomesTrue([&] { return drive->isStreaming(); }));
        drive->advance(microseconds(500));
        QVERIFY(client.readStreamFrame().startsWith("011400141004"));
        QCOMPARE(client.ask("0103200700013e0b", 7), QByteArray("01030207d0bbe8"));
        drive->advance(microseconds(500));
        QVERIFY(client.readStreamFrame().startsWith("011400141004"));
    }

    void streamGoesOnForTheNextClient()
    {
        const auto drive = countingDrive();
        QVERIFY(drive->start());
        {
            TerminalClient first(drive->portName());
            QVERIFY(first.write(startFirstItem));
            QVERIFY(!first.readStreamFrame().isEmpty());
        }
        QVERIFY(becomesTrue([&] { return !drive->hasClient(); }));
        const std::uint64_t before = drive->counters().streamFrames;
        QVERIFY(becomesTrue([&] { return drive->counters().streamFrames > before + 5; }));
        // It finds whole frames of the present, nothing that piled up while nobody listened.
        const int now = drive->readRegister(1500).value();
        TerminalClient second(drive->portName());
        QList<int> samples;
        for (int i = 0; i < 3; ++i) {
            samples = samplesOf(second.readStreamFrame());
            QCOMPARE(samples.size(), 40);
        }
        QVERIFY(samples.first() > now);
    }

    void pacedLineDropsWholeFramesWhenItIsFull()
    {
        DriveOptions options;
        options.pacing.baud = 115200; // a frame of 90 characters takes longer than the 5 ms that it covers
        SimulatedDrive drive(options, std::make_unique<CountingModel>());
        QVERIFY(drive.start());
        TerminalClient client(drive.portName());
        QVERIFY(client.write(startFirstItem));
        for (int i = 0; i < 5; ++i)
            QCOMPARE(samplesOf(client.readStreamFrame()).size(), 40);
        QVERIFY(drive.counters().streamFramesDropped > 0);
    }

    void powerCycleEndsTheStream()
    {
        const auto drive = countingDrive();
        QVERIFY(drive->start());
        TerminalClient client(drive->portName());
        QVERIFY(client.write(startFirstItem));
        QVERIFY(!client.readStreamFrame().isEmpty());
        drive->powerCycle();
        QVERIFY(!drive->isStreaming());
    }
};

QTEST_APPLESS_MAIN(TestLiveStream)
#include "tst_simulator_livestream.moc"
