// SPDX-License-Identifier: GPL-3.0-or-later
// The answers that the drive owes: which chunk is delivered, how long the link is held, with given times.
#include "debtline.h"

#include <QTest>

using namespace debtline;

class AnswerDebtTest : public QObject
{
    Q_OBJECT

private slots:
    void requestWrittenOnceIsAnsweredWithoutAHold();
    void holdLastsAsLongAsTheAnswerTookAndAMoment_data();
    void holdLastsAsLongAsTheAnswerTookAndAMoment();
    void holdEndsAtItsTimeAndNotBefore();
    void leftoversAreThrownAwayAndStartTheSilenceAnew();
    void holdShrinksOnceAllHaveCome();
    void badChunksNeitherPayNorProlong();
    void answerInPiecesIsPaid();
    void joinedAnswersArePaidEach();
    void noiseBeforeAnAnswerDoesNotHideIt();
    void exceptionsAndWritesAreAnswersToo_data();
    void exceptionsAndWritesAreAnswersToo();
    void doubtfulAnswerIsTheLastThatComes();
    void doubtfulAnswerIsDeliveredAtTheEndOfTheSilence();
    void doubtLastsForOneRequest();
    void ownRepetitionsKeepTheDebt();
    void debtIsForgottenAfterALongSilence();
    void oldAnswerThatNobodyWaitsForIsThrownAway();
    void unaskedChunkIsDeliveredWhenNothingIsOwed();
    void nothingAnswersARequestBeforeItIsWritten();
    void streamEndsHoldAndDebt();
    void abandonedRequestMakesTheNextOneDoubtful();
};

void AnswerDebtTest::requestWrittenOnceIsAnsweredWithoutAHold()
{
    Line line;
    for (int i = 0; i < 3; ++i) {
        line.ask();
        line.pass(3);
        QCOMPARE(line.good(answerA), answerA);
        QVERIFY(!line.debt.isHolding());
    }
}

void AnswerDebtTest::holdLastsAsLongAsTheAnswerTookAndAMoment_data()
{
    QTest::addColumn<int>("after"); // ms from the second writing, which follows the first by 50 ms
    QTest::addColumn<int>("hold");
    QTest::newRow("at once") << 0 << 70;
    QTest::newRow("late by 70 ms") << 20 << 90;
    QTest::newRow("late by 400 ms") << 350 << 420;
    QTest::newRow("late by 480 ms") << 430 << 500;
    QTest::newRow("no longer than half a second") << 700 << 500;
}

void AnswerDebtTest::holdLastsAsLongAsTheAnswerTookAndAMoment()
{
    QFETCH(int, after);
    QFETCH(int, hold);
    Line line;
    line.ask({50});
    line.pass(after);
    QCOMPARE(line.good(answerA), answerA);
    QVERIFY(line.debt.isHolding());
    QCOMPARE(line.holdLeft(), hold);
}

void AnswerDebtTest::holdEndsAtItsTimeAndNotBefore()
{
    Line line;
    line.ask({50});
    line.good(answerA);
    line.pass(69);
    line.debt.endHold(line.now);
    QVERIFY(line.debt.isHolding());
    line.pass(1);
    QCOMPARE(line.debt.endHold(line.now), nothing);
    QVERIFY(!line.debt.isHolding());
}

void AnswerDebtTest::leftoversAreThrownAwayAndStartTheSilenceAnew()
{
    Line line;
    line.ask({50, 50, 50});
    QCOMPARE(line.good(answerA), answerA);
    QCOMPARE(line.holdLeft(), 170);
    line.pass(100);
    QCOMPARE(line.good(answerA), nothing);
    // It took longer than the first, and another is still owed.
    QCOMPARE(line.holdLeft(), 270);
}

void AnswerDebtTest::holdShrinksOnceAllHaveCome()
{
    Line line;
    line.ask({50});
    QCOMPARE(line.good(answerA), answerA);
    line.pass(2);
    QCOMPARE(line.good(answerA), nothing);
    QCOMPARE(line.holdLeft(), 20);
    QCOMPARE(line.passHold(), nothing);
    // All was paid: the next answer is as good as any.
    line.ask();
    QCOMPARE(line.good(answerB), answerB);
    QVERIFY(!line.debt.isHolding());
}

void AnswerDebtTest::badChunksNeitherPayNorProlong()
{
    Line line;
    line.ask({50});
    QCOMPARE(line.good(answerA), answerA);
    line.pass(30);
    QCOMPARE(line.bad(answerA.left(5)), nothing);
    QCOMPARE(line.bad(wire::bytes("55aa55")), nothing);
    QCOMPARE(line.holdLeft(), 40);
    line.passHold();
    line.ask();
    QCOMPARE(line.good(answerB), nothing); // still one owed
}

void AnswerDebtTest::answerInPiecesIsPaid()
{
    Line line;
    line.ask();
    line.pass(2);
    QCOMPARE(line.bad(answerA.left(2)), nothing);
    line.debt.written(line.now);
    line.pass(1);
    QCOMPARE(line.bad(answerA.mid(2, 2)), nothing);
    line.debt.written(line.now);
    QCOMPARE(line.bad(answerA.mid(4)), nothing);
    line.debt.written(line.now);
    // Written four times, one answer came in pieces: three are to come.
    QCOMPARE(line.good(answerA), answerA);
    QCOMPARE(line.good(answerA), nothing);
    QCOMPARE(line.holdLeft(), 23);
    QCOMPARE(line.good(answerA), nothing);
    QCOMPARE(line.holdLeft(), 20);
}

void AnswerDebtTest::joinedAnswersArePaidEach()
{
    Line line;
    line.ask({50});
    QCOMPARE(line.bad(answerA + answerA), nothing);
    line.debt.written(line.now);
    QCOMPARE(line.good(answerA), answerA);
    QVERIFY(!line.debt.isHolding());
}

void AnswerDebtTest::noiseBeforeAnAnswerDoesNotHideIt()
{
    Line line;
    line.ask();
    QCOMPARE(line.bad(wire::bytes("0103ff") + answerA), nothing);
    line.debt.written(line.now);
    QCOMPARE(line.good(answerA), answerA);
    QVERIFY(!line.debt.isHolding());
}

void AnswerDebtTest::exceptionsAndWritesAreAnswersToo_data()
{
    QTest::addColumn<QByteArray>("answer");
    QTest::newRow("write of one") << wire::frame("010620070bb8");
    QTest::newRow("write of several") << wire::frame("0110e13a0002");
    QTest::newRow("read of two") << wire::frame("0103044b540500");
    QTest::newRow("refused read") << wire::frame("018302");
    QTest::newRow("refused write") << wire::frame("019003");
}

void AnswerDebtTest::exceptionsAndWritesAreAnswersToo()
{
    QFETCH(QByteArray, answer);
    Line line;
    line.ask({50});
    QCOMPARE(line.bad(answer + answer.left(3)), nothing);
    QCOMPARE(line.good(answer), answer);
    QVERIFY(!line.debt.isHolding());
}

void AnswerDebtTest::doubtfulAnswerIsTheLastThatComes()
{
    Line line;
    line.ask({50});
    QCOMPARE(line.good(answerA), answerA);
    QCOMPARE(line.passHold(), nothing);
    line.ask();
    line.pass(4);
    // The answer to the earlier request, later still than was waited for.
    QCOMPARE(line.good(answerA), nothing);
    QVERIFY(line.debt.isHolding());
    line.pass(4);
    QCOMPARE(line.good(answerB), answerB);
    QCOMPARE(line.holdLeft(), 20);
    QCOMPARE(line.passHold(), nothing);
    line.ask();
    QCOMPARE(line.good(answerC), answerC);
}

void AnswerDebtTest::doubtfulAnswerIsDeliveredAtTheEndOfTheSilence()
{
    Line line;
    line.ask({50});
    line.good(answerA);
    line.passHold();
    line.ask();
    line.pass(4);
    QCOMPARE(line.good(answerB), nothing);
    // As long as the slowest answer of late took.
    QCOMPARE(line.holdLeft(), 70);
    QCOMPARE(line.passHold(), answerB);
    QVERIFY(!line.debt.isHolding());
}

void AnswerDebtTest::doubtLastsForOneRequest()
{
    Line line;
    line.ask({50});
    line.good(answerA);
    line.passHold();
    line.ask();
    line.good(answerB);
    QCOMPARE(line.passHold(), answerB);
    line.ask();
    line.pass(2);
    QCOMPARE(line.good(answerC), answerC);
    QVERIFY(!line.debt.isHolding());
}

void AnswerDebtTest::ownRepetitionsKeepTheDebt()
{
    Line line;
    line.ask({50});
    line.good(answerA);
    line.passHold();
    line.ask({50});
    line.good(answerB);
    QCOMPARE(line.passHold(), answerB);
    // Written twice and answered once, the second request leaves a debt of its own.
    line.ask();
    QCOMPARE(line.good(answerC), nothing);
    QCOMPARE(line.passHold(), answerC);
    line.ask();
    QCOMPARE(line.good(answerA), answerA);
}

void AnswerDebtTest::debtIsForgottenAfterALongSilence()
{
    Line line;
    line.ask({50});
    line.good(answerA);
    line.passHold();
    line.pass(431); // 501 since the answer
    line.ask();
    QCOMPARE(line.good(answerB), answerB);
    QVERIFY(!line.debt.isHolding());
}

void AnswerDebtTest::oldAnswerThatNobodyWaitsForIsThrownAway()
{
    Line line;
    line.ask({50});
    line.good(answerA);
    line.passHold();
    QCOMPARE(line.good(answerA), nothing);
    QVERIFY(!line.debt.isHolding());
    line.ask();
    QCOMPARE(line.good(answerB), answerB);
}

void AnswerDebtTest::unaskedChunkIsDeliveredWhenNothingIsOwed()
{
    Line line;
    QCOMPARE(line.good(answerA), answerA);
    line.ask();
    QCOMPARE(line.good(answerB), answerB);
    QCOMPARE(line.good(answerC), answerC);
}

void AnswerDebtTest::nothingAnswersARequestBeforeItIsWritten()
{
    Line line;
    line.debt.begin(line.now);
    QVERIFY(line.debt.awaitsWriting());
    QCOMPARE(line.good(answerA), nothing);
    QVERIFY(line.debt.awaitsWriting());
    line.debt.written(line.now);
    QVERIFY(!line.debt.awaitsWriting());
    QCOMPARE(line.good(answerB), answerB);
}

void AnswerDebtTest::streamEndsHoldAndDebt()
{
    Line line;
    line.ask({50});
    line.good(answerA);
    QCOMPARE(line.debt.streamChunk(), nothing);
    QVERIFY(!line.debt.isHolding());
    line.ask();
    QCOMPARE(line.good(answerB), answerB);
    // And what was kept is delivered, not lost.
    line.ask({50});
    line.good(answerA);
    line.passHold();
    line.ask();
    QCOMPARE(line.good(answerB), nothing);
    QCOMPARE(line.debt.streamChunk(), answerB);
    QVERIFY(!line.debt.isHolding());
}

void AnswerDebtTest::abandonedRequestMakesTheNextOneDoubtful()
{
    Line line;
    line.ask();
    line.debt.abandon();
    line.ask();
    QCOMPARE(line.good(answerA), nothing);
    QCOMPARE(line.good(answerB), answerB);
    // A hold ends with the worker too.
    QVERIFY(line.debt.isHolding());
    line.debt.abandon();
    QVERIFY(!line.debt.isHolding());
}

QTEST_APPLESS_MAIN(AnswerDebtTest)
#include "tst_answerdebt.moc"
