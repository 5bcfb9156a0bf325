// SPDX-License-Identifier: GPL-3.0-or-later
// The writes of gain tuning, frame by frame: every state by every kind of reply.
#include "gainlinkbench.h"

#include <QElapsedTimer>

class GainTuningLinkWritesTest : public QObject, private GainLinkBench
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void writeLostWithTheLinkIsFollowedByAReadOfEverything_data();
    void writeLostWithTheLinkIsFollowedByAReadOfEverything();
    void writeReplyInTheRoundDropsItsRest();
    void singleWriteEndsWithTheFirstWriteReply();
    void readInASingleWriteIsDroppedWithTheRestOfTheRound();
    void secondEditBeforeTheReplySendsASecondFrame();
    void batchIsStartedByTheNextReplyOfTheRound();
    void batchInThePauseIsStartedByTheNextRound();
    void gradeGoesAtOnceAndItsReplyStartsTheBatch();
    void emptyBatchEndsWithTheNextReply();
    void notchFramesArePacedFromTheFirstReplyOn();
    void notchTimerTakesNothingFromAnEmptyList();
    void editDuringABatchGoesInItsTurn();
    void editDuringANotchWriteGoesInItsTurn();
    void notchWriteDuringABatchFollowsIt();
    void batchDuringANotchWriteFollowsIt();
    void nothingIsWrittenDuringTheFirstRead();
};

void GainTuningLinkWritesTest::init()
{
    begin();
}

void GainTuningLinkWritesTest::cleanup()
{
    end();
}

void GainTuningLinkWritesTest::writeLostWithTheLinkIsFollowedByAReadOfEverything_data()
{
    QTest::addColumn<bool>("hasBatch");
    QTest::addColumn<bool>("hasNotches");
    QTest::addColumn<bool>("wasQueued");
    QTest::newRow("single write") << false << false << false;
    QTest::newRow("single write that was still queued") << false << false << true;
    QTest::newRow("batch") << true << false << false;
    QTest::newRow("notches") << false << true << false;
    QTest::newRow("both") << true << true << false;
}

void GainTuningLinkWritesTest::writeLostWithTheLinkIsFollowedByAReadOfEverything()
{
    QFETCH(bool, hasBatch);
    QFETCH(bool, hasNotches);
    QFETCH(bool, wasQueued);
    finishFirstRead();
    const SignalLog<> batches(link.get(), &GainTuningLink::batchWritten);
    const SignalLog<> notches(link.get(), &GainTuningLink::notchesWritten);
    if (hasBatch)
        link->writeBatch(writeA, {writeB, writeC});
    if (hasNotches)
        link->writeNotches({writeB, writeC});
    if (!hasBatch && !hasNotches)
        link->write(writeA);
    sent();
    reply(probeReply);
    // Nothing is written behind the user's back; the buttons are free again.
    QVERIFY(sent().isEmpty());
    QCOMPARE(link->state(), GainTuningLink::Idle);
    QCOMPARE(batches.count(), hasBatch ? 1 : 0);
    QCOMPARE(notches.count(), hasNotches ? 1 : 0);
    if (wasQueued)
        reply(echo);
    QTRY_COMPARE_WITH_TIMEOUT(frames->count(), 1, 2000);
    QCOMPARE(link->state(), GainTuningLink::InitialRead);
    QCOMPARE(sent(), QList<QByteArray>{wire::frame("010322590001")});
    for (int i = 0; i < allReads; ++i)
        reply(valueReply(0));
    QCOMPARE(frames->count(), allReads - 1);
    sent();
    QCOMPARE(link->state(), GainTuningLink::Idle);
    QVERIFY(waitForRound());
}

void GainTuningLinkWritesTest::writeReplyInTheRoundDropsItsRest()
{
    finishFirstRead();
    QVERIFY(waitForRound());
    reply(echo);
    QVERIFY(sent().isEmpty());
    QCOMPARE(link->state(), GainTuningLink::Idle);
    QVERIFY(waitForRound());
}

void GainTuningLinkWritesTest::singleWriteEndsWithTheFirstWriteReply()
{
    for (const QByteArray &answer : {echo, exception}) {
        init();
        finishFirstRead();
        link->write(writeA);
        QCOMPARE(sent(), QList<QByteArray>{writeA});
        QCOMPARE(link->state(), GainTuningLink::SingleWrite);
        reply(answer);
        QCOMPARE(link->state(), GainTuningLink::Idle);
        QVERIFY(sent().isEmpty());
        QVERIFY(waitForRound());
        cleanup();
    }
}

void GainTuningLinkWritesTest::readInASingleWriteIsDroppedWithTheRestOfTheRound()
{
    finishFirstRead();
    const SignalLog<int, quint32> values(link.get(), &GainTuningLink::valueMonitored);
    QVERIFY(waitForRound());
    link->write(writeA);
    sent();
    reply(valueReply(325), 0x2618);
    QCOMPARE(values.count(), 0);
    QVERIFY(sent().isEmpty());
    QCOMPARE(link->state(), GainTuningLink::SingleWrite);
    reply(echo);
    QCOMPARE(link->state(), GainTuningLink::Idle);
    QVERIFY(waitForRound());
}

void GainTuningLinkWritesTest::secondEditBeforeTheReplySendsASecondFrame()
{
    finishFirstRead();
    link->write(writeA);
    link->write(writeB);
    QCOMPARE(sent(), (QList<QByteArray>{writeA, writeB}));
    reply(echo);
    QCOMPARE(link->state(), GainTuningLink::Idle);
    reply(echo);
    QVERIFY(sent().isEmpty());
    QCOMPARE(link->state(), GainTuningLink::Idle);
}

void GainTuningLinkWritesTest::batchIsStartedByTheNextReplyOfTheRound()
{
    finishFirstRead();
    const SignalLog<> ends(link.get(), &GainTuningLink::batchWritten);
    QVERIFY(waitForRound());
    link->writeBatch({}, {writeA, writeB, writeC});
    QVERIFY(sent().isEmpty());
    QCOMPARE(link->state(), GainTuningLink::BatchWrite);
    // The rest of the round and the batch go side by side until the first write has been answered.
    reply(valueReply(1), 0x2618);
    QCOMPARE(sent(), (QList<QByteArray>{cycle.at(1), writeA}));
    reply(valueReply(1), 0x2600);
    QCOMPARE(sent(), (QList<QByteArray>{cycle.at(2), writeB}));
    reply(echo);
    QCOMPARE(sent(), QList<QByteArray>{writeC});
    QCOMPARE(ends.count(), 0);
    reply(valueReply(1), 0x2601);
    QCOMPARE(ends.count(), 1);
    QCOMPARE(link->state(), GainTuningLink::Idle);
    QVERIFY(sent().isEmpty());
    QVERIFY(waitForRound());
}

void GainTuningLinkWritesTest::batchInThePauseIsStartedByTheNextRound()
{
    finishFirstRead();
    const SignalLog<> ends(link.get(), &GainTuningLink::batchWritten);
    link->writeBatch({}, {writeA});
    QVERIFY(sent().isEmpty());
    QVERIFY(waitForRound());
    reply(valueReply(1), 0x2618);
    QCOMPARE(sent(), (QList<QByteArray>{cycle.at(1), writeA}));
    reply(valueReply(1), 0x2600);
    QCOMPARE(ends.count(), 1);
}

void GainTuningLinkWritesTest::gradeGoesAtOnceAndItsReplyStartsTheBatch()
{
    finishFirstRead();
    const SignalLog<> ends(link.get(), &GainTuningLink::batchWritten);
    link->writeBatch(writeB, {writeA, writeC});
    QCOMPARE(sent(), QList<QByteArray>{writeB});
    reply(echo);
    QCOMPARE(sent(), QList<QByteArray>{writeA});
    reply(echo);
    QCOMPARE(sent(), QList<QByteArray>{writeC});
    QCOMPARE(ends.count(), 0);
    reply(echo);
    QCOMPARE(ends.count(), 1);
    QCOMPARE(link->state(), GainTuningLink::Idle);
}

void GainTuningLinkWritesTest::emptyBatchEndsWithTheNextReply()
{
    finishFirstRead();
    const SignalLog<> ends(link.get(), &GainTuningLink::batchWritten);
    QVERIFY(waitForRound());
    link->writeBatch({}, {});
    QCOMPARE(ends.count(), 0);
    reply(valueReply(1));
    QCOMPARE(ends.count(), 1);
}

void GainTuningLinkWritesTest::notchFramesArePacedFromTheFirstReplyOn()
{
    finishFirstRead();
    const SignalLog<> ends(link.get(), &GainTuningLink::notchesWritten);
    QVERIFY(waitForRound());
    link->writeNotches({writeA, writeB});
    QCOMPARE(link->state(), GainTuningLink::NotchWrite);
    QElapsedTimer time;
    time.start();
    for (int i = 0; i < 4; ++i) {
        reply(valueReply(1));
        QCOMPARE(sent(), cycle.mid(i + 1, 1));
    }
    QTRY_COMPARE_WITH_TIMEOUT(frames->count(), 1, 2000);
    // A coarse timer may come up to a twentieth early.
    QVERIFY2(time.elapsed() >= 185, qPrintable(QString::number(time.elapsed())));
    QCOMPARE(sent(), QList<QByteArray>{writeA});
    reply(echo);
    QVERIFY(sent().isEmpty());
    QTRY_COMPARE_WITH_TIMEOUT(frames->count(), 1, 2000);
    QCOMPARE(sent(), QList<QByteArray>{writeB});
    QCOMPARE(ends.count(), 0);
    reply(echo);
    QCOMPARE(ends.count(), 1);
    QCOMPARE(link->state(), GainTuningLink::Idle);
    QVERIFY(waitForRound());
}

void GainTuningLinkWritesTest::notchTimerTakesNothingFromAnEmptyList()
{
    finishFirstRead();
    QVERIFY(waitForRound());
    link->writeNotches({writeA});
    reply(valueReply(1));
    sent();
    QTRY_COMPARE_WITH_TIMEOUT(frames->count(), 1, 2000);
    QCOMPARE(sent(), QList<QByteArray>{writeA});
    // The reply stays away for more than another pause.
    GainTuningLink other;
    const SignalLog<QByteArray> otherFrames(&other, &GainTuningLink::frameReady);
    other.fillInertiaReads();
    other.start();
    other.takeReply(exception, 0);
    QTRY_COMPARE_WITH_TIMEOUT(otherFrames.count(), 2, 2000);
    QVERIFY(sent().isEmpty());
    QCOMPARE(link->state(), GainTuningLink::NotchWrite);
    reply(echo);
    QCOMPARE(link->state(), GainTuningLink::Idle);
}

void GainTuningLinkWritesTest::editDuringABatchGoesInItsTurn()
{
    finishFirstRead();
    link->writeBatch(writeB, {writeA});
    sent();
    link->write(writeC);
    QCOMPARE(link->state(), GainTuningLink::BatchWrite);
    QVERIFY(sent().isEmpty());
    reply(echo);
    QCOMPARE(sent(), QList<QByteArray>{writeA});
    reply(echo);
    QCOMPARE(sent(), QList<QByteArray>{writeC});
    reply(echo);
    QCOMPARE(link->state(), GainTuningLink::Idle);
}

void GainTuningLinkWritesTest::editDuringANotchWriteGoesInItsTurn()
{
    finishFirstRead();
    QVERIFY(waitForRound());
    link->writeNotches({writeA});
    link->write(writeC);
    QCOMPARE(link->state(), GainTuningLink::NotchWrite);
    reply(echo);
    for (const QByteArray &expected : {writeA, writeC}) {
        QTRY_COMPARE_WITH_TIMEOUT(frames->count(), 1, 2000);
        QCOMPARE(sent(), QList<QByteArray>{expected});
        QCOMPARE(link->state(), GainTuningLink::NotchWrite);
        reply(echo);
    }
    QCOMPARE(link->state(), GainTuningLink::Idle);
}

void GainTuningLinkWritesTest::notchWriteDuringABatchFollowsIt()
{
    finishFirstRead();
    const SignalLog<> batches(link.get(), &GainTuningLink::batchWritten);
    const SignalLog<> notches(link.get(), &GainTuningLink::notchesWritten);
    link->writeBatch(writeB, {});
    sent();
    link->writeNotches({writeA});
    QCOMPARE(link->state(), GainTuningLink::BatchWrite);
    reply(echo);
    QCOMPARE(batches.count(), 1);
    QCOMPARE(link->state(), GainTuningLink::NotchWrite);
    QTRY_COMPARE_WITH_TIMEOUT(frames->count(), 1, 2000);
    QCOMPARE(sent(), QList<QByteArray>{writeA});
    reply(echo);
    QCOMPARE(notches.count(), 1);
    QCOMPARE(link->state(), GainTuningLink::Idle);
}

void GainTuningLinkWritesTest::batchDuringANotchWriteFollowsIt()
{
    finishFirstRead();
    const SignalLog<> batches(link.get(), &GainTuningLink::batchWritten);
    const SignalLog<> notches(link.get(), &GainTuningLink::notchesWritten);
    QVERIFY(waitForRound());
    link->writeNotches({writeA});
    link->writeBatch(writeB, {writeC});
    QCOMPARE(link->state(), GainTuningLink::NotchWrite);
    reply(echo);
    QVERIFY(sent().isEmpty());
    QTRY_COMPARE_WITH_TIMEOUT(frames->count(), 1, 2000);
    QCOMPARE(sent(), QList<QByteArray>{writeA});
    reply(echo);
    QCOMPARE(notches.count(), 1);
    QCOMPARE(sent(), QList<QByteArray>{writeB});
    reply(echo);
    QCOMPARE(sent(), QList<QByteArray>{writeC});
    reply(echo);
    QCOMPARE(batches.count(), 1);
    QCOMPARE(link->state(), GainTuningLink::Idle);
}

void GainTuningLinkWritesTest::nothingIsWrittenDuringTheFirstRead()
{
    link->start();
    sent();
    link->write(writeA);
    link->writeBatch(writeB, {writeC});
    link->writeNotches({writeA});
    QVERIFY(sent().isEmpty());
    QCOMPARE(link->state(), GainTuningLink::InitialRead);
    for (int i = 0; i < allReads; ++i)
        reply(valueReply(0));
    QCOMPARE(link->state(), GainTuningLink::Idle);
    QCOMPARE(frames->count(), allReads - 1);
}

QTEST_GUILESS_MAIN(GainTuningLinkWritesTest)
#include "tst_gaintuninglink_writes.moc"
