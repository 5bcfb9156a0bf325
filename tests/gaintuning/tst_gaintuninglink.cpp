// SPDX-License-Identifier: GPL-3.0-or-later
// The conversation of gain tuning, frame by frame: every state by every kind of reply.
#include "gaintuning/gaintuninglink.h"
#include "link/serialport.h"
#include "support/signallog.h"
#include "support/wire.h"

#include <QTest>

namespace {

const QByteArray writeA = wire::frame("01 10 E2 58 00 01 02 00 01");
const QByteArray writeB = wire::frame("01 10 E2 59 00 01 02 00 0A");
const QByteArray writeC = wire::frame("01 10 E2 5A 00 01 02 00 14");
const QByteArray echo = wire::frame("01 10 E2 58 00 01");
const QByteArray exception = wire::frame("01 83 02");
const QByteArray probeReply = wire::frame("01 03 04 00 00 00 00");
const QList<QByteArray> cycle{wire::frame("01 03 26 18 00 01"), wire::frame("01 03 26 00 00 01"),
                              wire::frame("01 03 26 01 00 01"), wire::frame("01 03 26 02 00 01")};
constexpr int allReads = 33;

QByteArray valueReply(int value)
{
    return wire::readReply(QByteArray().append(char(value >> 8)).append(char(value)));
}

} // namespace

class GainTuningLinkTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void firstReadAsksForEverythingInOrder();
    void firstReadIsFollowedByTheEndlessRound();
    void exceptionEndsTheFirstRead();
    void replyToAProbeIsIgnoredAndTheHeadAskedAgain();
    void replyToAProbeInThePauseAsksNothing();
    void writeLostWithTheLinkIsFollowedByAReadOfEverything_data();
    void writeLostWithTheLinkIsFollowedByAReadOfEverything();
    void repeatedRequestMayBeAnsweredTwice_data();
    void repeatedRequestMayBeAnsweredTwice();
    void roundMonitorsItsFourRegisters();
    void roundWaitsForTheEndOfAScopeRun();
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

private:
    void reply(const QByteArray &bytes, int address = 0) { link->takeReply(bytes, address); }
    void finishFirstRead()
    {
        link->start();
        for (int i = 0; i < allReads; ++i)
            reply(valueReply(0));
        frames->calls.clear();
    }
    QList<QByteArray> sent() const
    {
        QList<QByteArray> list;
        for (const auto &call : frames->calls)
            list.append(std::get<0>(call));
        frames->calls.clear();
        return list;
    }
    // The round of four that the pause has begun.
    bool waitForRound() const
    {
        return QTest::qWaitFor([this] { return frames->count() == 1; }, 2000) && sent() == cycle.mid(0, 1);
    }

    std::unique_ptr<GainTuningLink> link;
    std::unique_ptr<SignalLog<QByteArray>> frames;
};

void GainTuningLinkTest::init()
{
    link = std::make_unique<GainTuningLink>();
    link->fillVibrationReads();
    link->fillInertiaReads();
    link->fillGainModeReads();
    frames = std::make_unique<SignalLog<QByteArray>>(link.get(), &GainTuningLink::frameReady);
}

void GainTuningLinkTest::cleanup()
{
    frames.reset();
    link.reset();
}

void GainTuningLinkTest::firstReadAsksForEverythingInOrder()
{
    const QList<QByteArray> texts{
        "010322590001", "0103225A0001", "010322620001", "010322630001", "010322640001", "010321F60001",
        "0103227D0001", "0103227E0001", "010322580001", "0103225D0001", "0103225E0001", "0103225F0001",
        "010322600001", "010326180001", "0103225A0001", "0103225C0001", "010322AE0001", "010326000001",
        "010326010001", "010326020001", "010322970001", "010322980001", "010322990001", "0103229A0001",
        "0103229B0001", "0103229C0001", "0103229D0001", "0103229E0001", "0103229F0001", "010322A00001",
        "010322A10001", "010322A20001", "010322960001"};
    QCOMPARE(texts.size(), allReads);
    const SignalLog<int, quint32> values(link.get(), &GainTuningLink::valueRead);
    link->start();
    for (int i = 0; i < allReads; ++i) {
        QCOMPARE(sent(), QList<QByteArray>{wire::frame(texts.at(i).constData())});
        QCOMPARE(link->state(), GainTuningLink::InitialRead);
        reply(valueReply(1000 + i), 0x2000 + i);
        QCOMPARE(values.count(), i + 1);
        QCOMPARE(std::get<0>(values.calls.at(i)), 0x2000 + i);
        QCOMPARE(std::get<1>(values.calls.at(i)), quint32(1000 + i));
    }
    QCOMPARE(link->state(), GainTuningLink::Idle);
    QVERIFY(sent().isEmpty());
}

void GainTuningLinkTest::firstReadIsFollowedByTheEndlessRound()
{
    finishFirstRead();
    for (int round = 0; round < 4; ++round) {
        QVERIFY(waitForRound());
        for (int i = 0; i < 4; ++i) {
            reply(valueReply(7));
            QCOMPARE(sent(), cycle.mid(i + 1, 1));
        }
    }
}

void GainTuningLinkTest::exceptionEndsTheFirstRead()
{
    const SignalLog<int, quint32> values(link.get(), &GainTuningLink::valueRead);
    link->start();
    sent();
    reply(exception);
    QCOMPARE(link->state(), GainTuningLink::Idle);
    QVERIFY(sent().isEmpty());
    QCOMPARE(values.count(), 0);
    QVERIFY(waitForRound());
}

void GainTuningLinkTest::replyToAProbeIsIgnoredAndTheHeadAskedAgain()
{
    const SignalLog<int, quint32> values(link.get(), &GainTuningLink::valueRead);
    link->start();
    const QList<QByteArray> head = sent();
    reply(probeReply, 0x2259);
    QCOMPARE(sent(), head);
    QCOMPARE(link->state(), GainTuningLink::InitialRead);
    QCOMPARE(values.count(), 0);
    reply(valueReply(5), 0x2259);
    QCOMPARE(values.count(), 1);
    QCOMPARE(sent(), QList<QByteArray>{wire::frame("0103225A0001")});
}

void GainTuningLinkTest::replyToAProbeInThePauseAsksNothing()
{
    finishFirstRead();
    reply(probeReply);
    QVERIFY(sent().isEmpty());
    QVERIFY(waitForRound());
}

void GainTuningLinkTest::writeLostWithTheLinkIsFollowedByAReadOfEverything_data()
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

void GainTuningLinkTest::writeLostWithTheLinkIsFollowedByAReadOfEverything()
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

void GainTuningLinkTest::repeatedRequestMayBeAnsweredTwice_data()
{
    QTest::addColumn<bool>("twice");
    QTest::newRow("lost with the old worker") << false;
    QTest::newRow("still queued when the link was lost") << true;
}

void GainTuningLinkTest::repeatedRequestMayBeAnsweredTwice()
{
    QFETCH(bool, twice);
    const SignalLog<int, quint32> values(link.get(), &GainTuningLink::valueRead);
    link->start();
    QList<QByteArray> queue = sent(); // of the worker; it survives the loss
    reply(probeReply, 0x2259);
    if (!twice)
        queue.clear();
    queue += sent();
    QCOMPARE(queue.size(), twice ? 2 : 1);
    while (!queue.isEmpty()) {
        const QByteArray request = queue.takeFirst();
        reply(valueReply(7), quint8(request.at(2)) << 8 | quint8(request.at(3)));
        queue += sent();
    }
    QCOMPARE(link->state(), GainTuningLink::Idle);
    // None of the values has been left for the endless round, which would not show it.
    QCOMPARE(values.count(), twice ? allReads + 1 : allReads);
    QCOMPARE(std::get<0>(values.calls.last()), 0x2296);
    QVERIFY(waitForRound());
}

void GainTuningLinkTest::roundMonitorsItsFourRegisters()
{
    finishFirstRead();
    const SignalLog<int, quint32> values(link.get(), &GainTuningLink::valueMonitored);
    const SignalLog<int, quint32> full(link.get(), &GainTuningLink::valueRead);
    QVERIFY(waitForRound());
    reply(valueReply(325), 0x2618);
    reply(valueReply(1), 0x2600);
    reply(valueReply(440), 0x2601);
    reply(valueReply(2), 0x2602);
    QCOMPARE(values.count(), 4);
    QCOMPARE(std::get<0>(values.calls.at(2)), 0x2601);
    QCOMPARE(std::get<1>(values.calls.at(2)), 440u);
    QCOMPARE(full.count(), 0);
}

void GainTuningLinkTest::roundWaitsForTheEndOfAScopeRun()
{
    SerialPort::scopeRunning = true;
    finishFirstRead();
    const bool asked = QTest::qWaitFor([this] { return frames->count() > 0; }, 700);
    SerialPort::scopeRunning = false;
    QVERIFY(!asked);
    QVERIFY(waitForRound());
}

void GainTuningLinkTest::writeReplyInTheRoundDropsItsRest()
{
    finishFirstRead();
    QVERIFY(waitForRound());
    reply(echo);
    QVERIFY(sent().isEmpty());
    QCOMPARE(link->state(), GainTuningLink::Idle);
    QVERIFY(waitForRound());
}

void GainTuningLinkTest::singleWriteEndsWithTheFirstWriteReply()
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

void GainTuningLinkTest::readInASingleWriteIsDroppedWithTheRestOfTheRound()
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

void GainTuningLinkTest::secondEditBeforeTheReplySendsASecondFrame()
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

void GainTuningLinkTest::batchIsStartedByTheNextReplyOfTheRound()
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

void GainTuningLinkTest::batchInThePauseIsStartedByTheNextRound()
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

void GainTuningLinkTest::gradeGoesAtOnceAndItsReplyStartsTheBatch()
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

void GainTuningLinkTest::emptyBatchEndsWithTheNextReply()
{
    finishFirstRead();
    const SignalLog<> ends(link.get(), &GainTuningLink::batchWritten);
    QVERIFY(waitForRound());
    link->writeBatch({}, {});
    QCOMPARE(ends.count(), 0);
    reply(valueReply(1));
    QCOMPARE(ends.count(), 1);
}

void GainTuningLinkTest::notchFramesArePacedFromTheFirstReplyOn()
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

void GainTuningLinkTest::notchTimerTakesNothingFromAnEmptyList()
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

void GainTuningLinkTest::editDuringABatchGoesInItsTurn()
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

void GainTuningLinkTest::editDuringANotchWriteGoesInItsTurn()
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

void GainTuningLinkTest::notchWriteDuringABatchFollowsIt()
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

void GainTuningLinkTest::batchDuringANotchWriteFollowsIt()
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

void GainTuningLinkTest::nothingIsWrittenDuringTheFirstRead()
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

QTEST_GUILESS_MAIN(GainTuningLinkTest)
#include "tst_gaintuninglink.moc"
