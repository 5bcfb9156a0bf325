// SPDX-License-Identifier: GPL-3.0-or-later
// A reply to gain tuning that never comes although the link stays open.
#include "gainlinkbench.h"
#include "link/replywatch.h"
#include "link/serialport.h"

#include <QElapsedTimer>

namespace {

constexpr int lossLimit =
    2 * ReplyWatch::longestWait; // ms in which a loss is noticed, however busy the machine

} // namespace

class GainTuningLinkLostRepliesTest : public QObject, private GainLinkBench
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void lostReadIsAskedAgain_data();
    void lostReadIsAskedAgain();
    void lostWriteIsNotRepeated_data();
    void lostWriteIsNotRepeated();
    void nothingIsAskedAgainWithoutALink();

private:
    int waitForFrame()
    {
        QElapsedTimer clock;
        clock.start();
        return QTest::qWaitFor([this] { return frames->count() > 0; }, lossLimit) ? int(clock.elapsed()) : -1;
    }
};

void GainTuningLinkLostRepliesTest::init()
{
    SerialPort::portOpened = true;
    begin();
}

void GainTuningLinkLostRepliesTest::cleanup()
{
    end();
    SerialPort::portOpened = false;
}

void GainTuningLinkLostRepliesTest::lostReadIsAskedAgain_data()
{
    QTest::addColumn<bool>("isFirstRead");
    QTest::newRow("of the first read") << true;
    QTest::newRow("of the endless round") << false;
}

void GainTuningLinkLostRepliesTest::lostReadIsAskedAgain()
{
    QFETCH(bool, isFirstRead);
    if (isFirstRead) {
        link->start();
        reply(valueReply(0), 0x2259);
    } else {
        finishFirstRead();
        QVERIFY(waitForRound());
        reply(valueReply(0), 0x2618);
    }
    const QByteArray lost = sent().last();
    QCOMPARE(lost, isFirstRead ? wire::frame("0103225A0001") : cycle.at(1));
    const int wait = waitForFrame();
    QVERIFY2(wait >= ReplyWatch::longestWait * 9 / 10, qPrintable(QString::number(wait)));
    QCOMPARE(sent(), QList<QByteArray>{lost});
    // It goes on where it stood.
    for (int i = isFirstRead ? 1 : allReads - 3; i < allReads; ++i)
        reply(valueReply(0));
    QCOMPARE(frames->count(), isFirstRead ? allReads - 2 : 2);
    sent();
    QCOMPARE(link->state(), GainTuningLink::Idle);
    QVERIFY(waitForRound());
}

void GainTuningLinkLostRepliesTest::lostWriteIsNotRepeated_data()
{
    QTest::addColumn<int>("state"); // in which the reply is lost; Idle: a read of the round comes first
    QTest::newRow("single write") << int(GainTuningLink::SingleWrite);
    QTest::newRow("single write behind a read of the round") << int(GainTuningLink::Idle);
    QTest::newRow("batch") << int(GainTuningLink::BatchWrite);
    QTest::newRow("notches") << int(GainTuningLink::NotchWrite);
}

void GainTuningLinkLostRepliesTest::lostWriteIsNotRepeated()
{
    QFETCH(int, state);
    finishFirstRead();
    const SignalLog<> batches(link.get(), &GainTuningLink::batchWritten);
    const SignalLog<> notches(link.get(), &GainTuningLink::notchesWritten);
    if (state == GainTuningLink::BatchWrite) {
        QVERIFY(waitForRound());
        link->writeBatch(writeA, {writeB, writeC});
    } else if (state == GainTuningLink::NotchWrite) {
        QVERIFY(waitForRound());
        link->writeNotches({writeA});
        for (int i = 0; i < 4; ++i)
            reply(valueReply(0));
        sent();
        QTRY_COMPARE(frames->count(), 1);
    } else {
        if (state == GainTuningLink::Idle)
            QVERIFY(waitForRound());
        link->write(writeA);
    }
    QCOMPARE(sent(), QList<QByteArray>{writeA});
    if (state == GainTuningLink::Idle)
        reply(valueReply(0), 0x2618);
    const int wait = waitForFrame();
    QVERIFY2(wait >= ReplyWatch::longestWait * 9 / 10, qPrintable(QString::number(wait)));
    // The buttons are free again, and everything is read anew.
    QCOMPARE(batches.count(), state == GainTuningLink::BatchWrite ? 1 : 0);
    QCOMPARE(notches.count(), state == GainTuningLink::NotchWrite ? 1 : 0);
    QCOMPARE(link->state(), GainTuningLink::InitialRead);
    for (int i = 0; i < allReads; ++i)
        reply(valueReply(0));
    const QList<QByteArray> all = sent();
    QCOMPARE(all.size(), allReads);
    QCOMPARE(all.first(), wire::frame("010322590001"));
    for (const QByteArray &frame : {writeA, writeB, writeC})
        QVERIFY(!all.contains(frame));
    QCOMPARE(link->state(), GainTuningLink::Idle);
    QVERIFY(waitForRound());
}

void GainTuningLinkLostRepliesTest::nothingIsAskedAgainWithoutALink()
{
    SerialPort::portOpened = false;
    link->start();
    sent();
    QVERIFY(!QTest::qWaitFor([this] { return frames->count() > 0; }, ReplyWatch::longestWait + 1000));
}

QTEST_GUILESS_MAIN(GainTuningLinkLostRepliesTest)
#include "tst_gaintuninglink_lostreplies.moc"
