// SPDX-License-Identifier: GPL-3.0-or-later
// The fault reset between two cycles: when it leaves, and that its echo is taken for nothing else.
#include "pollerbench.h"

namespace {

const QString firstPoll = QStringLiteral("010325DC0007");
const QString secondPoll = QStringLiteral("010325E3000A");
const QString faultClear = QStringLiteral("010623200001");

} // namespace

class MonitorPollerFaultClearTest : public QObject
{
    Q_OBJECT

private slots:
    void faultClearLeavesAtTheEndOfTheCycle();
    void faultClearInThePauseWaitsForTheNextEnd();
    void faultClearLeavesAtTheEndThatAWriteMakes();
    void faultClearIsSentOnce();
    void echoOfTheFaultClearIsDropped();
    void faultClearAnsweredLateIsNotTakenForAPoll();
    void faultClearWithoutAnAnswerDoesNotHoldUpTheChain();
    void faultClearThatHasWaitedTooLongIsNotSent();
};

void MonitorPollerFaultClearTest::faultClearLeavesAtTheEndOfTheCycle()
{
    PollerBench bench;
    bench.answer();
    bench.poller.requestFaultClear();
    while (bench.frames.size() < 15) {
        bench.answer();
        QVERIFY(bench.last() != faultClear);
    }
    bench.answer();
    QCOMPARE(bench.frames.size(), 16);
    QCOMPARE(bench.frames.last(), wire::frame("010623200001"));
}

void MonitorPollerFaultClearTest::faultClearInThePauseWaitsForTheNextEnd()
{
    PollerBench bench;
    bench.finishCycle();
    bench.frames.clear();
    bench.poller.requestFaultClear();
    QVERIFY(bench.waitForFrames(1));
    bench.finishCycle();
    QCOMPARE(bench.frames.size(), 16);
    QCOMPARE(bench.texts().indexOf(faultClear), 15);
}

void MonitorPollerFaultClearTest::faultClearLeavesAtTheEndThatAWriteMakes()
{
    PollerBench bench;
    bench.poller.requestFaultClear();
    bench.poller.requestWrite(MonitorWrite::Method, 0, 2);
    bench.answer();
    bench.answer();
    QCOMPARE(bench.texts(), QStringList({firstPoll, "0106E0640002", faultClear}));
}

void MonitorPollerFaultClearTest::faultClearIsSentOnce()
{
    PollerBench bench;
    bench.poller.requestFaultClear();
    bench.finishCycle();
    QVERIFY(bench.waitForFrames(17));
    bench.finishCycle();
    QCOMPARE(bench.texts().count(faultClear), 1);
    QCOMPARE(bench.frames.size(), 31);
}

void MonitorPollerFaultClearTest::echoOfTheFaultClearIsDropped()
{
    PollerBench bench;
    bench.poller.requestFaultClear();
    while (bench.frames.size() < 16)
        bench.answer();
    bench.items.clear();
    bench.answer();
    QVERIFY(bench.items.isEmpty());
    QCOMPARE(bench.frames.size(), 16);
    QVERIFY(bench.waitForFrames(17));
    bench.answer();
    QCOMPARE(bench.items.size(), 7);
    QCOMPARE(bench.last(), secondPoll);
}

void MonitorPollerFaultClearTest::faultClearAnsweredLateIsNotTakenForAPoll()
{
    PollerBench bench;
    bench.poller.requestFaultClear();
    while (bench.frames.size() < 16)
        bench.answer();
    const QByteArray clear = bench.frames.last();
    QVERIFY(bench.waitForFrames(17));
    bench.items.clear();
    bench.frames.clear();
    bench.answer(clear);
    QVERIFY(bench.items.isEmpty());
    QVERIFY(bench.frames.isEmpty());
    bench.answerWith("0001 0002 0003 0004 0005 0006 0007");
    QCOMPARE(bench.items.size(), 7);
    QCOMPARE(bench.texts(), QStringList(secondPoll));
}

void MonitorPollerFaultClearTest::faultClearWithoutAnAnswerDoesNotHoldUpTheChain()
{
    PollerBench bench;
    bench.poller.requestFaultClear();
    while (bench.frames.size() < 16)
        bench.answer();
    QVERIFY(bench.waitForFrames(17));
    bench.items.clear();
    bench.answer();
    QCOMPARE(bench.items.size(), 7);
    QCOMPARE(bench.last(), secondPoll);
}

void MonitorPollerFaultClearTest::faultClearThatHasWaitedTooLongIsNotSent()
{
    PollerBench bench;
    bench.poller.requestFaultClear();
    QVERIFY(!bench.waitForFrames(2, 3100));
    bench.finishCycle();
    QCOMPARE(bench.frames.size(), 15);
    // It can be pressed again.
    bench.poller.requestFaultClear();
    QVERIFY(bench.waitForFrames(16));
    bench.finishCycle();
    QCOMPARE(bench.last(), faultClear);
}

QTEST_GUILESS_MAIN(MonitorPollerFaultClearTest)

#include "tst_monitorpoller_faultclear.moc"
