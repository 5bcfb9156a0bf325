// SPDX-License-Identifier: GPL-3.0-or-later
// The course of a run without a window: what goes to the link and in which order, what is recorded, and what
// a chunk does in each state.
#include "acquisitionbench.h"

#include "support/fulldisk.h"

#include <QtTest>

using namespace acquisitionbench;

class TestScopeAcquisition : public QObject, private AcquisitionBench
{
    Q_OBJECT

private slots:
    void init() { begin(); }
    void cleanup() { end(); }

    void startAsksForTheChannelsAndStopEndsTheRunFirst();
    void allChannelsOffAsksWithTheStopFrame();
    void lostLinkIsNotToldToStop();
    void freeRunRecordsAndShowsEachBatch();
    void batchWithoutSamplesShowsAndRecordsNothing();
    void firstFrameDecidesWhatIsWritten();
    void decimalsComeWithTheFirstBatch();
    void chunksWithoutARunDoNothing_data();
    void chunksWithoutARunDoNothing();
    void reselectionAsksAnewDuringARunOnly();
    void headersGoIntoTheChannelsOwnFiles();
    void renewedRecordKeepsTheHeadersOfTheSelection();
    void closingStopsTheDriveOnlyDuringARun_data();
    void closingStopsTheDriveOnlyDuringARun();
    void failedWriteEndsTheRecordAndNotTheRun();
};

void TestScopeAcquisition::startAsksForTheChannelsAndStopEndsTheRunFirst()
{
    startFree();
    QCOMPARE(acquisition->state(), State::FreeRun);
    const QString request = wire::frame("0114 1000 1001 0000 0000").toHex();
    QCOMPARE(log, (QStringList{request, "running"}));
    log.clear();
    acquisition->stop();
    QCOMPARE(acquisition->state(), State::Idle);
    QCOMPARE(log, (QStringList{"", "ended", stopFrame}));
}

void TestScopeAcquisition::allChannelsOffAsksWithTheStopFrame()
{
    acquisition->start({}, false);
    QCOMPARE(log, (QStringList{stopFrame, "running"}));
    QCOMPARE(acquisition->state(), State::FreeRun);
}

void TestScopeAcquisition::lostLinkIsNotToldToStop()
{
    startFree();
    log.clear();
    SerialPort::reconnecting = true;
    acquisition->stop();
    QCOMPARE(log, (QStringList{"", "ended"}));
}

void TestScopeAcquisition::freeRunRecordsAndShowsEachBatch()
{
    startFree();
    take("0114 0012 1002 0001 ffff 1001 0bb9 0000 0000");
    QCOMPARE(batches.size(), 1);
    QCOMPARE(batches.first().onlyChannel, -1);
    QCOMPARE(batches.first().samples.at(0), (QVector<double>{1, -1}));
    QCOMPARE(batches.first().samples.at(1), QVector<double>{3001 * 0.1});
    acquisition->stop();
    QCOMPARE(recordOf(0), QByteArray("Pn-F00Motor speed\r\n1\r\n-1\r\n"));
    QCOMPARE(recordOf(1), QByteArray("Pn-F26Bus voltage\r\n300.1\r\n"));
    QCOMPARE(recordNames().size(), 4);
}

void TestScopeAcquisition::batchWithoutSamplesShowsAndRecordsNothing()
{
    startFree();
    take("0114 000c 1000 1000 0000 0000");
    take("0114 0012 1002 0001");
    take("");
    QCOMPARE(batches.size(), 0);
    acquisition->stop();
    QCOMPARE(recordOf(0), QByteArray("Pn-F00Motor speed\r\n"));
}

void TestScopeAcquisition::firstFrameDecidesWhatIsWritten()
{
    startFree();
    // The first frame has samples of CH2 only, the second of both: CH1 is shown and not written.
    take("0114 000e 1000 1001 0001 0000 0000 0114 0010 1001 0007 1001 0002 0000 0000");
    QCOMPARE(batches.size(), 1);
    QCOMPARE(batches.first().samples.at(0), QVector<double>{7});
    acquisition->stop();
    QCOMPARE(recordOf(0), QByteArray("Pn-F00Motor speed\r\n"));
    QCOMPARE(recordOf(1), QByteArray("Pn-F26Bus voltage\r\n0.2\r\n"));
}

void TestScopeAcquisition::decimalsComeWithTheFirstBatch()
{
    QSignalSpy changes(acquisition, &ScopeAcquisition::decimalsChanged);
    startFree();
    QCOMPARE(acquisition->decimals(1), 0);
    take("0114 0010 1001 0001 1001 0001 0000 0000");
    QCOMPARE(acquisition->decimals(0), 0);
    QCOMPARE(acquisition->decimals(1), 1);
    QCOMPARE(changes.count(), 2);
    take("0114 0010 1001 0001 1001 0001 0000 0000");
    QCOMPARE(changes.count(), 2);
    acquisition->stop();
    QCOMPARE(acquisition->decimals(1), 1);
    acquisition->prepare();
    QCOMPARE(acquisition->decimals(1), 0);
}

void TestScopeAcquisition::chunksWithoutARunDoNothing_data()
{
    QTest::addColumn<int>("state");
    QTest::newRow("before a run") << int(State::Idle);
    QTest::newRow("without a port") << int(State::WithoutPort);
    QTest::newRow("during a replay") << int(State::Replaying);
}

void TestScopeAcquisition::chunksWithoutARunDoNothing()
{
    QFETCH(int, state);
    if (state == int(State::WithoutPort))
        acquisition->showWithoutPort();
    else if (state == int(State::Replaying))
        acquisition->beginReplay();
    QCOMPARE(int(acquisition->state()), state);
    take(five);
    QCOMPARE(batches.size(), 0);
    QCOMPARE(log, QStringList());
    // The first batch of the next run still tells its decimals.
    startFree();
    take("0114 0010 1001 0001 1001 0001 0000 0000");
    QCOMPARE(acquisition->decimals(1), 1);
    acquisition->stop();
    take(five);
    QCOMPARE(batches.size(), 1);
}

void TestScopeAcquisition::reselectionAsksAnewDuringARunOnly()
{
    acquisition->reselect(settings(true));
    QCOMPARE(log, QStringList{""});
    startFree();
    log.clear();
    acquisition->reselect(settings(false));
    QCOMPARE(log, (QStringList{"", wire::frame("0114 1000 0000 0000 0000").toHex()}));
    log.clear();
    // Nothing selected is no request, but the withdrawal of one.
    acquisition->reselect({});
    QCOMPARE(log, (QStringList{"", ""}));
}

void TestScopeAcquisition::headersGoIntoTheChannelsOwnFiles()
{
    ScopeChannelSettings channels;
    channels.at(2) = {true, false, "Pn-F26"};
    acquisition->start(channels, false);
    // Reading goes on by the code of each channel.
    acquisition->reselect(channels);
    acquisition->takeChunk(wire::bytes("0114 000e 0000 0000 1001 0009 0000"), channels, {});
    acquisition->stop();
    QCOMPARE(recordOf(0), QByteArray());
    QCOMPARE(recordOf(2), QByteArray("Pn-F26Bus voltage\r\n0.9\r\n"));
}

void TestScopeAcquisition::renewedRecordKeepsTheHeadersOfTheSelection()
{
    startWithCondition();
    take(nine, 9, 0);
    QTRY_COMPARE(acquisition->state(), State::StoppedByCondition);
    acquisition->renewRecord();
    acquisition->stop();
    QCOMPARE(recordOf(0), QByteArray("Pn-F00Motor speed\r\n"));
    acquisition->renewRecord();
    acquisition->record()->close();
    QCOMPARE(recordOf(0), QByteArray());
}

void TestScopeAcquisition::closingStopsTheDriveOnlyDuringARun_data()
{
    QTest::addColumn<int>("state");
    QTest::addColumn<bool>("stops");
    QTest::newRow("idle") << int(State::Idle) << false;
    QTest::newRow("free run") << int(State::FreeRun) << true;
    QTest::newRow("armed") << int(State::Armed) << true;
    QTest::newRow("ending") << int(State::Ending) << true;
    QTest::newRow("stopped by condition") << int(State::StoppedByCondition) << false;
    QTest::newRow("without port") << int(State::WithoutPort) << false;
    QTest::newRow("replaying") << int(State::Replaying) << false;
}

void TestScopeAcquisition::closingStopsTheDriveOnlyDuringARun()
{
    QFETCH(int, state);
    QFETCH(bool, stops);
    switch (State(state)) {
    case State::Idle:
        break;
    case State::FreeRun:
        startFree();
        break;
    case State::Armed:
        startWithCondition();
        break;
    case State::Ending:
        startWithCondition();
        take(nine, 9);
        break;
    case State::StoppedByCondition:
        startWithCondition();
        take(nine, 9, 0);
        break;
    case State::WithoutPort:
        acquisition->showWithoutPort();
        break;
    case State::Replaying:
        acquisition->beginReplay();
        break;
    }
    QTRY_COMPARE(int(acquisition->state()), state);
    log.clear();
    acquisition->abandon();
    QCOMPARE(log, stops ? QStringList({"ended", stopFrame}) : QStringList({"ended"}));
    log.clear();
    take(nine, 9);
    QCOMPARE(log, QStringList());
}

void TestScopeAcquisition::failedWriteEndsTheRecordAndNotTheRun()
{
#ifdef Q_OS_UNIX
    startFree(false);
    // 255 samples of 4369 a frame.
    const QByteArray frame =
        QByteArray::fromHex("0114020a10ff") + QByteArray(510, '\x11') + QByteArray(6, '\0');
    {
        const FullDisk disk(4096);
        for (int i = 0; i < 20; ++i)
            acquisition->takeChunk(frame, settings(false), {});
        QCOMPARE(batches.size(), 20);
        QVERIFY(acquisition->record()->isIncomplete());
    }
    acquisition->takeChunk(frame, settings(false), {});
    acquisition->stop();
    // What is there is the front part of the run, without a gap and in whole lines.
    const QByteArray whole = "Pn-F00Motor speed\r\n" + QByteArray("4369\r\n").repeated(21 * 255);
    const QByteArray record = recordOf(0);
    QVERIFY(record.size() < whole.size());
    QVERIFY(record.size() > 4000);
    QVERIFY(whole.startsWith(record) && record.endsWith("\r\n"));
    QVERIFY(acquisition->record()->isIncomplete());
    acquisition->prepare();
    QVERIFY(!acquisition->record()->isIncomplete());
#endif
}

QTEST_GUILESS_MAIN(TestScopeAcquisition)
#include "tst_scopeacquisition.moc"
