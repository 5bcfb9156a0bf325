// SPDX-License-Identifier: GPL-3.0-or-later
// The chain of polls when the second tab is opened and left: where it stops, where it starts again, and which
// reply is whose.
#include "pollerbench.h"

#include <QElapsedTimer>

namespace {

const QStringList &cycle = pollCycle;

} // namespace

class MonitorPollerTabsTest : public QObject
{
    Q_OBJECT

private slots:
    void historyIsAskedOncePerVisit();
    void chainStopsOnTheSecondTab();
    void timerThatRunsFiresOnceOnTheSecondTab();
    void leavingTheSecondTabStartsAtEntryOne();
    void leavingTheSecondTabInThePauseKeepsThePause();
    void pendingWritesStandStillOnTheSecondTab();
    void chainDoesNotDoubleAfterTabThereAndBack_data();
    void chainDoesNotDoubleAfterTabThereAndBack();
    void historyThatComesLateIsNotTakenForAPoll();
    void lostHistoryDoesNotHoldUpTheChain();
    void replyThatFitsNoneOfSeveralIsTheOldestOnes();
};

void MonitorPollerTabsTest::historyIsAskedOncePerVisit()
{
    PollerBench bench;
    bench.finishCycle();
    QVERIFY(bench.waitForFrames(16));
    bench.frames.clear();
    bench.poller.showFaultTab(true);
    QCOMPARE(bench.texts(), QStringList("01032352000A"));
    bench.answer();
    QVERIFY(!bench.waitForFrames(2, 600));
}

void MonitorPollerTabsTest::chainStopsOnTheSecondTab()
{
    PollerBench bench;
    const QByteArray poll = bench.frames.last();
    bench.poller.showFaultTab(true);
    bench.items.clear();
    bench.answer(poll);
    bench.answer(bench.frames.last());
    QVERIFY(bench.items.isEmpty());
    QVERIFY(!bench.waitForFrames(3, 600));
}

void MonitorPollerTabsTest::timerThatRunsFiresOnceOnTheSecondTab()
{
    PollerBench bench;
    bench.finishCycle();
    bench.frames.clear();
    bench.items.clear();
    bench.poller.showFaultTab(true);
    bench.answer();
    QVERIFY(bench.waitForFrames(2));
    QCOMPARE(bench.last(), cycle.first());
    bench.answer();
    QVERIFY(bench.items.isEmpty());
    QVERIFY(!bench.waitForFrames(3, 600));
}

void MonitorPollerTabsTest::leavingTheSecondTabStartsAtEntryOne()
{
    PollerBench bench;
    bench.answer();
    bench.answer();
    const QByteArray poll = bench.frames.last();
    bench.poller.showFaultTab(true);
    bench.answer(poll);
    bench.answer(bench.frames.last());
    bench.frames.clear();
    QElapsedTimer clock;
    clock.start();
    bench.poller.showFaultTab(false);
    QVERIFY(bench.frames.isEmpty());
    QVERIFY(bench.waitForFrames(1));
    QVERIFY(clock.elapsed() >= 8);
    QVERIFY(clock.elapsed() < 150);
    bench.finishCycle();
    QCOMPARE(bench.texts(), cycle);
}

void MonitorPollerTabsTest::leavingTheSecondTabInThePauseKeepsThePause()
{
    PollerBench bench;
    bench.finishCycle();
    bench.frames.clear();
    QElapsedTimer clock;
    clock.start();
    bench.poller.showFaultTab(true);
    bench.answer();
    bench.poller.showFaultTab(false);
    QVERIFY(bench.waitForFrames(2));
    QVERIFY(clock.elapsed() >= 180);
    bench.finishCycle();
    QCOMPARE(bench.texts(), QStringList("01032352000A") + cycle);
}

void MonitorPollerTabsTest::pendingWritesStandStillOnTheSecondTab()
{
    PollerBench bench;
    const QByteArray poll = bench.frames.last();
    bench.poller.requestWrite(MonitorWrite::Method, 0, 2);
    bench.poller.showFaultTab(true);
    bench.answer(poll);
    bench.answer(bench.frames.last());
    QVERIFY(!bench.waitForFrames(3, 300));
    bench.frames.clear();
    bench.poller.showFaultTab(false);
    QVERIFY(bench.waitForFrames(1));
    bench.answer();
    QCOMPARE(bench.texts(), QStringList({"010325DC0007", "0106E0640002"}));
}

void MonitorPollerTabsTest::chainDoesNotDoubleAfterTabThereAndBack_data()
{
    QTest::addColumn<int>("entry");
    for (int entry = 0; entry < 15; ++entry)
        QTest::addRow("while entry %d is owed", entry + 1) << entry;
}

// Nothing is answered before the tab is back: three replies are owed at once, and come in order.
void MonitorPollerTabsTest::chainDoesNotDoubleAfterTabThereAndBack()
{
    QFETCH(int, entry);
    PollerBench bench;
    for (int i = 0; i < entry; ++i)
        bench.answer();
    bench.poller.showFaultTab(true);
    bench.poller.showFaultTab(false);
    QVERIFY(bench.waitForFrames(entry + 3));
    const QList<QByteArray> owed = bench.frames.mid(entry);
    bench.frames.clear();
    bench.items.clear();
    for (const QByteArray &request : owed) {
        const int words = request.at(5);
        QByteArray data;
        // The old replies carry other values than the new one.
        for (int i = 0; i < words; ++i)
            data.append('\0').append(request == owed.last() ? '\x07' : '\x55');
        bench.poller.takeReply(wire::readReply(data));
    }
    bench.finishCycle();
    QCOMPARE(bench.texts(), cycle.mid(1));
    for (const PollerBench::Item &item : qAsConst(bench.items)) {
        if (entry > 0)
            QVERIFY(!item.data.contains('\x55'));
    }
}

void MonitorPollerTabsTest::historyThatComesLateIsNotTakenForAPoll()
{
    PollerBench bench;
    bench.answer(bench.frames.last());
    const QByteArray poll = bench.frames.last();
    bench.poller.showFaultTab(true);
    const QByteArray history = bench.frames.last();
    bench.answer(poll);
    bench.poller.showFaultTab(false);
    QVERIFY(bench.waitForFrames(4));
    bench.items.clear();
    bench.frames.clear();
    bench.answer(history);
    QVERIFY(bench.items.isEmpty());
    QVERIFY(bench.frames.isEmpty());
    bench.answerWith("0001 0002 0003 0004 0005 0006 0007");
    QCOMPARE(bench.items.size(), 7);
    QCOMPARE(bench.texts(), QStringList(cycle.at(1)));
}

void MonitorPollerTabsTest::lostHistoryDoesNotHoldUpTheChain()
{
    PollerBench bench;
    bench.answer();
    bench.poller.showFaultTab(true);
    bench.poller.showFaultTab(false);
    QVERIFY(bench.waitForFrames(4));
    bench.frames.clear();
    // The newest request alone is answered.
    bench.answerWith("0001 0002 0003 0004 0005 0006 0007");
    bench.finishCycle();
    QCOMPARE(bench.texts(), cycle.mid(1));
}

void MonitorPollerTabsTest::replyThatFitsNoneOfSeveralIsTheOldestOnes()
{
    PollerBench bench;
    bench.answer();
    bench.poller.showFaultTab(true);
    bench.poller.showFaultTab(false);
    QVERIFY(bench.waitForFrames(4));
    bench.frames.clear();
    bench.items.clear();
    bench.answerWith("00010002");
    QVERIFY(bench.frames.isEmpty());
    QVERIFY(bench.items.isEmpty());
}

QTEST_GUILESS_MAIN(MonitorPollerTabsTest)

#include "tst_monitorpoller_tabs.moc"
