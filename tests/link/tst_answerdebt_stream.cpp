// SPDX-License-Identifier: GPL-3.0-or-later
// A drive that streams although nobody wants it: the answers amid its frames find their requests, and no
// other.
#include "debtline.h"

#include <QTest>

using namespace debtline;

namespace {

// Four channels, of which the first sends one sample.
const QByteArray frame = wire::bytes("0114000e 1001 0539 0000 0000 0000");
// Its samples are the bytes of answer B.
const QByteArray frameLikeAnswer = wire::bytes("01140014 1004") + answerB + wire::bytes("00 0000 0000 0000");

} // namespace

class AnswerDebtStreamTest : public QObject
{
    Q_OBJECT

private slots:
    void answerAmidFramesIsDelivered_data();
    void answerAmidFramesIsDelivered();
    void answerInSeveralChunksIsDelivered_data();
    void answerInSeveralChunksIsDelivered();
    void answerByItselfIsDelivered();
    void samplesAreNoAnswer();
    void nothingNewIsAskedForAMoment();
    void answerEndsTheWait();
    void lateAnswerIsDeliveredWhileNothingElseIsAsked();
    void overtakenAnswerIsNotTheNextRequests_data();
    void overtakenAnswerIsNotTheNextRequests();
    void secondAnswerOfARepeatIsThrownAway_data();
    void secondAnswerOfARepeatIsThrownAway();
    void doubtIsSettledAmidFrames();
    void nothingIsDeliveredTwice();
    void nothingAnswersARequestBeforeItIsWritten();
    void unwantedStreamKeepsHoldAndDebt();
    void wantedStreamAnswersWhatAnUnwantedOneHasOvertaken();
};

void AnswerDebtStreamTest::answerAmidFramesIsDelivered_data()
{
    QTest::addColumn<QByteArray>("chunk");
    QTest::newRow("behind a frame") << frame + answerA;
    QTest::newRow("behind several frames") << frame + frame + frame + answerA;
    QTest::newRow("between frames") << frame + answerA + frame;
    QTest::newRow("before a frame that is cut off") << frame + answerA + frame.left(5);
    QTest::newRow("behind a backlog of frames") << frame.repeated(100) + answerA;
    QTest::newRow("before a backlog of frames") << frame + answerA + frame.repeated(100);
    QTest::newRow("behind a head without a length") << wire::bytes("01140000") + answerA;
    QTest::newRow("behind a frame that is cut off") << frame.left(6) + answerA;
}

void AnswerDebtStreamTest::answerAmidFramesIsDelivered()
{
    QFETCH(QByteArray, chunk);
    Line line;
    for (int i = 0; i < 3; ++i) {
        line.ask();
        line.pass(3);
        QCOMPARE(line.unwanted(chunk), answerA);
        QVERIFY(!line.debt.isHolding());
    }
}

void AnswerDebtStreamTest::answerInSeveralChunksIsDelivered_data()
{
    QTest::addColumn<QList<QByteArray>>("chunks"); // the first begins with a frame; the last gives the answer
    QTest::newRow("two pieces") << QList<QByteArray>{frame + answerA.left(3), answerA.mid(3)};
    QTest::newRow("three pieces") << QList<QByteArray>{frame + answerA.left(1), answerA.mid(1, 4),
                                                       answerA.mid(5)};
    QTest::newRow("frames behind the rest")
        << QList<QByteArray>{frame + answerA.left(3), answerA.mid(3) + frame};
    QTest::newRow("behind the rest of a frame") << QList<QByteArray>{frame.left(9), frame.mid(9) + answerA};
    QTest::newRow("before a frame") << QList<QByteArray>{frame, answerA + frame};
    QTest::newRow("behind another frame") << QList<QByteArray>{frame, frame + answerA};
    QTest::newRow("behind much of a long frame")
        << QList<QByteArray>{wire::bytes("01140800") + QByteArray(1000, 1), QByteArray(1044, 1) + answerA};
}

void AnswerDebtStreamTest::answerInSeveralChunksIsDelivered()
{
    QFETCH(QList<QByteArray>, chunks);
    Line line;
    line.ask();
    for (int i = 0; i < chunks.size(); ++i) {
        line.pass(1);
        const QByteArray &chunk = chunks.at(i);
        const bool isStream = chunk.startsWith(wire::bytes("0114"));
        QCOMPARE(isStream ? line.unwanted(chunk) : line.bad(chunk),
                 i + 1 < chunks.size() ? nothing : answerA);
    }
    QVERIFY(!line.debt.isHolding());
    line.ask();
    QCOMPARE(line.good(answerB), answerB);
}

void AnswerDebtStreamTest::answerByItselfIsDelivered()
{
    Line line;
    line.ask();
    QCOMPARE(line.unwanted(frame), nothing);
    line.pass(4);
    QCOMPARE(line.good(answerA), answerA);
    QVERIFY(!line.debt.isHolding());
}

void AnswerDebtStreamTest::samplesAreNoAnswer()
{
    Line line;
    line.ask();
    QCOMPARE(line.unwanted(frameLikeAnswer), nothing);
    QCOMPARE(line.unwanted(frameLikeAnswer + answerA + frameLikeAnswer), answerA);
}

void AnswerDebtStreamTest::nothingNewIsAskedForAMoment()
{
    Line line;
    line.ask();
    line.unwanted(frame);
    QVERIFY(line.debt.isHolding());
    QCOMPARE(line.holdLeft(), 50);
    // However long the stream goes on.
    line.pass(30);
    line.unwanted(frame);
    QCOMPARE(line.holdLeft(), 20);
    QCOMPARE(line.passHold(), nothing);
    QVERIFY(!line.debt.isHolding());
    line.unwanted(frame);
    QVERIFY(!line.debt.isHolding());
}

void AnswerDebtStreamTest::answerEndsTheWait()
{
    Line line;
    line.ask();
    line.unwanted(frame);
    line.pass(2);
    QCOMPARE(line.unwanted(frame + answerA), answerA);
    QVERIFY(!line.debt.isHolding());
    line.ask();
    QCOMPARE(line.good(answerB), answerB);
}

void AnswerDebtStreamTest::lateAnswerIsDeliveredWhileNothingElseIsAsked()
{
    Line line;
    line.ask();
    line.unwanted(frame);
    line.passHold();
    line.pass(100);
    QCOMPARE(line.unwanted(frame + answerA), answerA);
    QVERIFY(!line.debt.isHolding());
}

void AnswerDebtStreamTest::overtakenAnswerIsNotTheNextRequests_data()
{
    QTest::addColumn<QByteArray>("chunk");
    QTest::newRow("in one chunk") << frame + answerA + frame + answerB;
    QTest::newRow("joined") << frame + answerA + answerB;
}

void AnswerDebtStreamTest::overtakenAnswerIsNotTheNextRequests()
{
    QFETCH(QByteArray, chunk);
    Line line;
    line.ask();
    line.unwanted(frame);
    line.passHold();
    line.ask();
    line.pass(2);
    QCOMPARE(line.unwanted(chunk), answerB);
    line.passHold();

    // Each by itself, too.
    line.ask();
    line.unwanted(frame);
    line.passHold();
    line.ask();
    QCOMPARE(line.good(answerA), nothing);
    line.pass(2);
    QCOMPARE(line.good(answerB), answerB);
    line.passHold();

    // And where the first is lost for good, the second is waited for and then believed.
    line.ask();
    line.unwanted(frame);
    line.passHold();
    line.ask();
    QCOMPARE(line.unwanted(frame + answerB), nothing);
    QVERIFY(line.debt.isHolding());
    QCOMPARE(line.passHold(), answerB);
}

void AnswerDebtStreamTest::secondAnswerOfARepeatIsThrownAway_data()
{
    QTest::addColumn<QByteArray>("chunk");
    QTest::newRow("behind frames") << frame + answerA;
    QTest::newRow("by itself") << answerA;
}

void AnswerDebtStreamTest::secondAnswerOfARepeatIsThrownAway()
{
    QFETCH(QByteArray, chunk);
    Line line;
    line.ask({50});
    line.pass(2);
    QCOMPARE(line.unwanted(frame + answerA), answerA);
    QVERIFY(line.debt.isHolding());
    line.unwanted(frame);
    QVERIFY(line.debt.isHolding());
    QCOMPARE(chunk == answerA ? line.good(chunk) : line.unwanted(chunk), nothing);
    QCOMPARE(line.holdLeft(), 20);
    QCOMPARE(line.passHold(), nothing);
    line.ask();
    QCOMPARE(line.good(answerB), answerB);
}

void AnswerDebtStreamTest::doubtIsSettledAmidFrames()
{
    Line line;
    line.ask({50});
    QCOMPARE(line.good(answerA), answerA);
    line.passHold();
    line.ask();
    QCOMPARE(line.unwanted(frame + answerA + frame), nothing);
    QVERIFY(line.debt.isHolding());
    QCOMPARE(line.unwanted(frame + answerB), answerB);
}

void AnswerDebtStreamTest::nothingIsDeliveredTwice()
{
    Line line;
    line.ask();
    QCOMPARE(line.unwanted(frame + answerA + answerB), answerA);
    QCOMPARE(line.unwanted(frame), nothing);
    QCOMPARE(line.unwanted(frame + answerA), nothing);
}

void AnswerDebtStreamTest::nothingAnswersARequestBeforeItIsWritten()
{
    Line line;
    line.debt.begin(line.now);
    QCOMPARE(line.unwanted(frame + answerA), nothing);
    QVERIFY(line.debt.awaitsWriting());
    QVERIFY(!line.debt.isHolding());
    line.debt.written(line.now);
    QCOMPARE(line.unwanted(frame + answerB), answerB);
}

void AnswerDebtStreamTest::unwantedStreamKeepsHoldAndDebt()
{
    Line line;
    line.ask({50});
    QCOMPARE(line.good(answerA), answerA);
    QCOMPARE(line.holdLeft(), 70);
    QCOMPARE(line.unwanted(frame), nothing);
    QCOMPARE(line.holdLeft(), 70);
    line.passHold();
    line.ask();
    QCOMPARE(line.good(answerB), nothing); // still one owed
    QCOMPARE(line.unwanted(frame), nothing);
    QCOMPARE(line.passHold(), answerB);
}

void AnswerDebtStreamTest::wantedStreamAnswersWhatAnUnwantedOneHasOvertaken()
{
    Line line;
    line.ask();
    line.unwanted(frame + answerA.left(3));
    QCOMPARE(line.debt.streamChunk(), nothing);
    QVERIFY(!line.debt.isHolding());
    QCOMPARE(line.bad(answerA.mid(3)), nothing);
    line.ask();
    QCOMPARE(line.good(answerB), answerB);
}

QTEST_APPLESS_MAIN(AnswerDebtStreamTest)
#include "tst_answerdebt_stream.moc"
