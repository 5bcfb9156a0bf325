// SPDX-License-Identifier: GPL-3.0-or-later
// The read of the run parameters between two polls: frames, values, and what comes across it.
#include "pollerbench.h"

#include "support/signallog.h"

namespace {

const QString firstPoll = QStringLiteral("010325DC0007");
const QString secondPoll = QStringLiteral("010325E3000A");
const QString methodRead = QStringLiteral("010320640001");

class SequenceBench : public PollerBench
{
public:
    SignalLog<int, QStringList> finished{&poller, &MonitorPoller::readFinishSignal};
};

} // namespace

class MonitorPollerSequenceTest : public QObject
{
    Q_OBJECT

private slots:
    void sequenceReadsTheMethodsParameters_data();
    void sequenceReadsTheMethodsParameters();
    void cycleGoesOnWithoutAPause();
    void methodBeyondTheThreeEndsTheSequence_data();
    void methodBeyondTheThreeEndsTheSequence();
    void spoiltMethodEndsTheSequence_data();
    void spoiltMethodEndsTheSequence();
    void spoiltValueIsAnEmptyText_data();
    void spoiltValueIsAnEmptyText();
    void echoOfAWriteIsNotTakenForTheMethod();
    void faultClearsEchoIsNotTakenForAValue();
    void writeGoesBetweenTwoSteps();
    void secondPressStartsAnew_data();
    void secondPressStartsAnew();
    void secondPressAfterTheEndReadsAgain();
    void changeOfTabAsksThePresentStepAgain_data();
    void changeOfTabAsksThePresentStepAgain();
    void probeOfARestoredLinkIsNotTakenForAValue();
};

void MonitorPollerSequenceTest::sequenceReadsTheMethodsParameters_data()
{
    QTest::addColumn<QByteArray>("method");
    QTest::addColumn<QStringList>("frames");
    QTest::addColumn<QStringList>("values");
    QTest::newRow("position") << QByteArray("0000")
                              << QStringList{"0103212C0001", "0103213A0002", "010321300002", "010321380002"}
                              << QStringList{"1a21", "fffffffe", "00020000", "00002710"};
    QTest::newRow("speed") << QByteArray("0001")
                           << QStringList{"010321900001", "010321910002", "010321930001", "010321940001",
                                          "0103219B0001"}
                           << QStringList{"0001", "fffffc18", "0064", "00c8", "c350"};
    QTest::newRow("torque") << QByteArray("0002")
                            << QStringList{"010321F40001", "010321F50001", "010321FD0001", "010321FF0001",
                                           "010322000001"}
                            << QStringList{"0002", "ffce", "0001", "7530", "7531"};
}

void MonitorPollerSequenceTest::sequenceReadsTheMethodsParameters()
{
    QFETCH(QByteArray, method);
    QFETCH(QStringList, frames);
    QFETCH(QStringList, values);
    SequenceBench bench;
    bench.poller.requestRead();
    bench.answer();
    bench.answerWith(method.constData());
    bench.items.clear();
    for (const QString &value : qAsConst(values)) {
        QCOMPARE(bench.finished.count(), 0);
        bench.answerWith(value.toLatin1().constData());
    }
    QCOMPARE(bench.texts(), QStringList({firstPoll, methodRead}) + frames + QStringList(firstPoll));
    QCOMPARE(bench.finished.count(), 1);
    QCOMPARE(std::get<0>(bench.finished.calls.first()), method.right(1).toInt());
    QCOMPARE(std::get<1>(bench.finished.calls.first()), values);
    QVERIFY(bench.items.isEmpty());
    QCOMPARE(bench.frames.at(2), wire::frame(frames.first().toLatin1().constData()));
}

void MonitorPollerSequenceTest::cycleGoesOnWithoutAPause()
{
    SequenceBench bench;
    bench.answer();
    bench.poller.requestRead();
    bench.answer();
    QCOMPARE(bench.last(), methodRead);
    bench.answerWith("0003");
    QCOMPARE(bench.last(), firstPoll);
    bench.finishCycle();
    QCOMPARE(bench.frames.size(), 2 + 1 + 15);
}

void MonitorPollerSequenceTest::methodBeyondTheThreeEndsTheSequence_data()
{
    QTest::addColumn<QByteArray>("method");
    QTest::addColumn<int>("index");
    QTest::newRow("3") << QByteArray("0003") << 3;
    QTest::newRow("16") << QByteArray("0010") << 16;
    QTest::newRow("the greatest") << QByteArray("FFFF") << 65535;
}

void MonitorPollerSequenceTest::methodBeyondTheThreeEndsTheSequence()
{
    QFETCH(QByteArray, method);
    QFETCH(int, index);
    SequenceBench bench;
    bench.poller.requestRead();
    bench.answer();
    bench.answerWith(method.constData());
    QCOMPARE(bench.finished.count(), 1);
    QCOMPARE(std::get<0>(bench.finished.calls.first()), index);
    QVERIFY(std::get<1>(bench.finished.calls.first()).isEmpty());
    QCOMPARE(bench.last(), firstPoll);
}

void MonitorPollerSequenceTest::spoiltMethodEndsTheSequence_data()
{
    QTest::addColumn<QByteArray>("reply");
    QTest::newRow("exception") << wire::frame("018302");
    QTest::newRow("no data") << wire::frame("010300");
    QTest::newRow("two registers") << wire::frame("01030400000001");
    QTest::newRow("cut off") << wire::bytes("01030200");
}

void MonitorPollerSequenceTest::spoiltMethodEndsTheSequence()
{
    QFETCH(QByteArray, reply);
    SequenceBench bench;
    bench.poller.requestRead();
    bench.answer();
    bench.poller.takeReply(reply);
    QCOMPARE(bench.finished.count(), 1);
    // None of the three methods: nothing is filled in.
    QVERIFY(std::get<0>(bench.finished.calls.first()) >= 3);
    QVERIFY(std::get<1>(bench.finished.calls.first()).isEmpty());
    QCOMPARE(bench.last(), firstPoll);
}

void MonitorPollerSequenceTest::spoiltValueIsAnEmptyText_data()
{
    QTest::addColumn<QByteArray>("reply");
    QTest::newRow("exception") << wire::frame("018302");
    QTest::newRow("exception as long as the value") << wire::frame("01830400000001");
    QTest::newRow("one register") << wire::frame("0103020001");
    QTest::newRow("no data") << wire::frame("010300");
}

void MonitorPollerSequenceTest::spoiltValueIsAnEmptyText()
{
    QFETCH(QByteArray, reply);
    SequenceBench bench;
    bench.poller.requestRead();
    bench.answer();
    bench.answerWith("0000");
    bench.answerWith("0001");
    bench.poller.takeReply(reply);
    bench.answerWith("00000003");
    bench.answerWith("00000004");
    QCOMPARE(bench.finished.count(), 1);
    QCOMPARE(std::get<1>(bench.finished.calls.first()),
             QStringList({"0001", QString(), "00000003", "00000004"}));
}

void MonitorPollerSequenceTest::echoOfAWriteIsNotTakenForTheMethod()
{
    SequenceBench bench;
    bench.poller.requestWrite(MonitorWrite::Method, 0, 1);
    bench.answer();
    bench.poller.requestRead();
    // Has the form of a good reply to the method's read.
    bench.answerWith("0002");
    QCOMPARE(bench.frames.size(), 2);
    QVERIFY(bench.waitForFrames(3));
    bench.answer();
    QCOMPARE(bench.last(), methodRead);
    bench.answerWith("0001");
    QCOMPARE(bench.last(), QStringLiteral("010321900001"));
}

void MonitorPollerSequenceTest::faultClearsEchoIsNotTakenForAValue()
{
    SequenceBench bench;
    bench.poller.requestFaultClear();
    while (bench.frames.size() < 16)
        bench.answer();
    const QByteArray clear = bench.frames.last();
    bench.poller.requestRead();
    QVERIFY(bench.waitForFrames(17));
    bench.items.clear();
    bench.answer(clear);
    QVERIFY(bench.items.isEmpty());
    QCOMPARE(bench.last(), firstPoll);
    bench.answer();
    bench.answerWith("0001");
    QCOMPARE(bench.last(), QStringLiteral("010321900001"));
    QCOMPARE(bench.finished.count(), 0);
}

void MonitorPollerSequenceTest::writeGoesBetweenTwoSteps()
{
    SequenceBench bench;
    bench.poller.requestRead();
    bench.answer();
    bench.answerWith("0002");
    bench.poller.requestWrite(MonitorWrite::DISource, 0, 1);
    bench.answerWith("0001");
    QCOMPARE(bench.last(), QStringLiteral("0106E0C8FFFF"));
    bench.answer();
    QVERIFY(bench.waitForFrames(5));
    QCOMPARE(bench.last(), firstPoll);
    bench.answer();
    QCOMPARE(bench.last(), QStringLiteral("010321F50001"));
    for (const char *value : {"0002", "0003", "0004", "0005"})
        bench.answerWith(value);
    QCOMPARE(bench.finished.count(), 1);
    QCOMPARE(std::get<1>(bench.finished.calls.first()),
             QStringList({"0001", "0002", "0003", "0004", "0005"}));
}

void MonitorPollerSequenceTest::secondPressStartsAnew_data()
{
    QTest::addColumn<int>("answered");
    for (int answered = 0; answered < 5; ++answered)
        QTest::addRow("with %d steps answered", answered) << answered;
}

void MonitorPollerSequenceTest::secondPressStartsAnew()
{
    QFETCH(int, answered);
    SequenceBench bench;
    bench.poller.requestRead();
    bench.answer();
    if (answered > 0)
        bench.answerWith("0002");
    for (int i = 1; i < answered; ++i)
        bench.answerWith("0055");
    bench.poller.requestRead();
    bench.frames.clear();
    // The reply to the step on its way: no method and no value of the new sequence.
    bench.answerWith("0001");
    QCOMPARE(bench.texts(), QStringList(methodRead));
    QCOMPARE(bench.finished.count(), 0);
    bench.answerWith("0002");
    for (const char *value : {"0001", "0002", "0003", "0004", "0005"})
        bench.answerWith(value);
    QCOMPARE(bench.finished.count(), 1);
    QCOMPARE(std::get<0>(bench.finished.calls.first()), 2);
    QCOMPARE(std::get<1>(bench.finished.calls.first()),
             QStringList({"0001", "0002", "0003", "0004", "0005"}));
}

void MonitorPollerSequenceTest::secondPressAfterTheEndReadsAgain()
{
    SequenceBench bench;
    for (int round = 1; round <= 2; ++round) {
        bench.poller.requestRead();
        bench.answer();
        QCOMPARE(bench.last(), methodRead);
        bench.answerWith("0004");
        QCOMPARE(bench.finished.count(), round);
    }
}

void MonitorPollerSequenceTest::changeOfTabAsksThePresentStepAgain_data()
{
    QTest::addColumn<bool>("isAnsweredBeforeTheReturn");
    QTest::addColumn<int>("step");
    for (int step = 0; step < 5; ++step) {
        QTest::addRow("step %d, answered on the second tab", step) << true << step;
        QTest::addRow("step %d, answered after the return", step) << false << step;
    }
}

void MonitorPollerSequenceTest::changeOfTabAsksThePresentStepAgain()
{
    QFETCH(bool, isAnsweredBeforeTheReturn);
    QFETCH(int, step);
    SequenceBench bench;
    bench.poller.requestRead();
    bench.answer();
    if (step > 0)
        bench.answerWith("0001");
    const QList<const char *> values{"0001", "00000002", "0003", "0004", "0005"};
    for (int i = 1; i < step; ++i)
        bench.answerWith(values.at(i - 1));
    const QByteArray stepFrame = bench.frames.last();
    bench.poller.showFaultTab(true);
    const QByteArray history = bench.frames.last();
    if (isAnsweredBeforeTheReturn) {
        bench.answer(stepFrame);
        bench.answer(history);
    }
    bench.frames.clear();
    bench.poller.showFaultTab(false);
    QVERIFY(bench.waitForFrames(1));
    QCOMPARE(bench.last(), firstPoll);
    if (!isAnsweredBeforeTheReturn) {
        bench.answer(stepFrame);
        bench.answer(history);
        QCOMPARE(bench.frames.size(), 1);
    }
    bench.answer();
    QCOMPARE(bench.frames.last(), stepFrame);
    if (step == 0)
        bench.answerWith("0001");
    for (int i = qMax(1, step); i <= values.size(); ++i)
        bench.answerWith(values.at(i - 1));
    QCOMPARE(bench.finished.count(), 1);
    QCOMPARE(std::get<1>(bench.finished.calls.first()),
             QStringList({"0001", "00000002", "0003", "0004", "0005"}));
}

// The link begins anew with a read of two registers, whose reply goes to the window that asked last.
void MonitorPollerSequenceTest::probeOfARestoredLinkIsNotTakenForAValue()
{
    SequenceBench bench;
    bench.poller.requestRead();
    bench.answer();
    bench.answerWith("0000");
    bench.answerWith("0001");
    const QString step = bench.last();
    bench.poller.noteLostLink();
    bench.answerWith("DEADBEEF");
    QCOMPARE(bench.last(), step);
    bench.answerWith("00000002");
    bench.answerWith("00000003");
    bench.answerWith("00000004");
    QCOMPARE(bench.finished.count(), 1);
    QCOMPARE(std::get<1>(bench.finished.calls.first()),
             QStringList({"0001", "00000002", "00000003", "00000004"}));
}

QTEST_GUILESS_MAIN(MonitorPollerSequenceTest)

#include "tst_monitorpoller_sequence.moc"
