// SPDX-License-Identifier: GPL-3.0-or-later
// What a link that fails means for the chain and for what was pressed meanwhile.
#include "pollerbench.h"

#include "link/serialport.h"
#include "support/signallog.h"

#include <QElapsedTimer>

namespace {

const QString firstPoll = QStringLiteral("010325DC0007");
const QString secondPoll = QStringLiteral("010325E3000A");

class LinkBench : public PollerBench
{
public:
    explicit LinkBench(bool isOpen)
        : PollerBench(false)
    {
        SerialPort::portOpened = isOpen;
        poller.HandleUpDataTimer();
    }
    ~LinkBench()
    {
        SerialPort::portOpened = false;
        SerialPort::scopeRunning = false;
    }
    Q_DISABLE_COPY_MOVE(LinkBench)

    bool waitForWithdrawnLevels(int limit = 4000) const
    {
        return QTest::qWaitFor([this] { return levels.count() > 0; }, limit);
    }

    SignalLog<MonitorWrite, int> levels{&poller, &MonitorPoller::levelsWithdrawn};
};

} // namespace

class MonitorPollerLinkTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void chainStandsOnALinkThatIsUp();
    void readWhoseReplyIsLostOnAnOpenLinkIsAskedAgain();
    void replyThatComesAfterAllMovesTheChainOnce();
    void sequenceStepWhoseReplyIsLostIsAskedAgain();
    void writeWhoseReplyIsLostIsNotRepeated();
    void lostReplyOnTheSecondTabAsksForNothing();
    void chainStartsAgainOnceTheLinkIsBackForASecond();
    void chainThatMovesAgainIsNotStartedAnew();
    void chainStartsAgainAfterACapture();
    void chainOnTheSecondTabIsNotStarted();
    void levelThatFoundNoReplyIsWithdrawn_data();
    void levelThatFoundNoReplyIsWithdrawn();
    void levelThatWasSentIsWithdrawnFromTheLink();
    void secondPressDoesNotGiveTheFirstMoreTime();
    void answeredLevelIsKept();
    void withdrawalGoesBackToTheLastAnsweredLevels();
    void settingsAreNotWithdrawn();
    void levelLostWithTheLinkIsNotSentAgain();
};

void MonitorPollerLinkTest::init()
{
    SerialPort::scopeRunning = false;
}

void MonitorPollerLinkTest::cleanup()
{
    SerialPort::portOpened = false;
}

void MonitorPollerLinkTest::chainStandsOnALinkThatIsUp()
{
    const LinkBench bench(true);
    QVERIFY(!bench.waitForFrames(2, 2000));
    QCOMPARE(bench.withdrawals, 0);
}

void MonitorPollerLinkTest::readWhoseReplyIsLostOnAnOpenLinkIsAskedAgain()
{
    LinkBench bench(true);
    bench.answer();
    QElapsedTimer clock;
    clock.start();
    QVERIFY(bench.waitForFrames(3, 6000));
    QVERIFY(clock.elapsed() >= 3900);
    QCOMPARE(bench.texts(), (QStringList{firstPoll, secondPoll, secondPoll}));
    QCOMPARE(bench.withdrawals, 1);
    bench.finishCycle();
    QCOMPARE(bench.texts().mid(2), pollCycle.mid(1));
}

void MonitorPollerLinkTest::replyThatComesAfterAllMovesTheChainOnce()
{
    LinkBench bench(true);
    QVERIFY(bench.waitForFrames(2, 6000));
    bench.answer();
    QCOMPARE(bench.texts(), (QStringList{firstPoll, firstPoll, secondPoll}));
    const int shown = bench.items.size();
    QVERIFY(shown > 0);
    bench.answer(bench.frames.first());
    QCOMPARE(bench.frames.size(), 3);
    QCOMPARE(bench.items.size(), shown);
    bench.finishCycle();
    QCOMPARE(bench.texts().mid(1), pollCycle);
}

void MonitorPollerLinkTest::sequenceStepWhoseReplyIsLostIsAskedAgain()
{
    const QString method = QStringLiteral("010320640001");
    LinkBench bench(true);
    const SignalLog<int, QStringList> finished{&bench.poller, &MonitorPoller::readFinishSignal};
    bench.poller.requestRead();
    bench.answer();
    QCOMPARE(bench.last(), method);
    QVERIFY(bench.waitForFrames(3, 6000));
    QCOMPARE(bench.texts(), (QStringList{firstPoll, method, method}));
    // The drive is in torque mode.
    bench.answerWith("0002");
    while (finished.count() == 0 && bench.frames.size() < 30)
        bench.answer();
    QCOMPARE(finished.count(), 1);
    QCOMPARE(std::get<0>(finished.calls.first()), 2);
}

void MonitorPollerLinkTest::writeWhoseReplyIsLostIsNotRepeated()
{
    LinkBench bench(true);
    bench.poller.requestWrite(MonitorWrite::Method, 0, 1);
    bench.answer();
    const QString write = QStringLiteral("0106E0640001");
    QCOMPARE(bench.last(), write);
    QVERIFY(bench.waitForFrames(3, 6000));
    QCOMPARE(bench.texts(), (QStringList{firstPoll, write, firstPoll}));
    // Its echo, should it come after all, is nobody's.
    bench.answer(bench.frames.at(1));
    QCOMPARE(bench.frames.size(), 3);
    bench.answer();
    QCOMPARE(bench.last(), secondPoll);
}

void MonitorPollerLinkTest::lostReplyOnTheSecondTabAsksForNothing()
{
    LinkBench bench(true);
    bench.poller.showFaultTab(true);
    const int sent = bench.frames.size();
    QVERIFY(!bench.waitForFrames(sent + 1, 5000));
}

void MonitorPollerLinkTest::chainStartsAgainOnceTheLinkIsBackForASecond()
{
    LinkBench bench(true);
    bench.answer();
    bench.answer();
    SerialPort::portOpened = false;
    QVERIFY(!bench.waitForFrames(4, 500));
    SerialPort::portOpened = true;
    QElapsedTimer clock;
    clock.start();
    QVERIFY(bench.waitForFrames(4));
    QVERIFY(clock.elapsed() >= 850);
    QCOMPARE(bench.last(), firstPoll);
    // What the link may still hold would be answered beside it.
    QCOMPARE(bench.withdrawals, 1);
    bench.answer();
    QCOMPARE(bench.last(), secondPoll);
    QCOMPARE(bench.frames.size(), 5);
}

void MonitorPollerLinkTest::chainThatMovesAgainIsNotStartedAnew()
{
    LinkBench bench(true);
    bench.poller.noteLostLink();
    bench.answer();
    QCOMPARE(bench.frames.size(), 2);
    QVERIFY(!bench.waitForFrames(3, 1500));
    QCOMPARE(bench.withdrawals, 0);
}

void MonitorPollerLinkTest::chainStartsAgainAfterACapture()
{
    LinkBench bench(true);
    bench.answer();
    SerialPort::scopeRunning = true;
    QVERIFY(!bench.waitForFrames(3, 1500));
    SerialPort::scopeRunning = false;
    QVERIFY(bench.waitForFrames(3));
    QCOMPARE(bench.last(), firstPoll);
}

void MonitorPollerLinkTest::chainOnTheSecondTabIsNotStarted()
{
    LinkBench bench(false);
    bench.poller.showFaultTab(true);
    QVERIFY(!bench.waitForFrames(3, 300));
    SerialPort::portOpened = true;
    QVERIFY(!bench.waitForFrames(3, 1500));
}

void MonitorPollerLinkTest::levelThatFoundNoReplyIsWithdrawn_data()
{
    QTest::addColumn<bool>("isInput");
    QTest::newRow("DI") << true;
    QTest::newRow("DO") << false;
}

// The chain stands, so the level has not even left.
void MonitorPollerLinkTest::levelThatFoundNoReplyIsWithdrawn()
{
    QFETCH(bool, isInput);
    const MonitorWrite kind = isInput ? MonitorWrite::DILevel : MonitorWrite::DOLevel;
    LinkBench bench(false);
    QElapsedTimer clock;
    clock.start();
    bench.poller.requestWrite(kind, 0, 4);
    QVERIFY(bench.waitForWithdrawnLevels());
    QVERIFY(clock.elapsed() >= 2950);
    QCOMPARE(bench.levels.calls, (QList<std::tuple<MonitorWrite, int>>{{kind, 0}}));
    QCOMPARE(bench.withdrawals, 0);
    bench.finishCycle();
    QCOMPARE(bench.frames.size(), 15);
    QVERIFY(bench.texts().filter(QStringLiteral("010620C")).isEmpty());
}

void MonitorPollerLinkTest::levelThatWasSentIsWithdrawnFromTheLink()
{
    LinkBench bench(true);
    bench.poller.requestWrite(MonitorWrite::DILevel, 0, 4);
    bench.answer();
    QCOMPARE(bench.last(), QStringLiteral("010620CA0004"));
    QVERIFY(bench.waitForWithdrawnLevels());
    QCOMPARE(bench.withdrawals, 1);
    // Its place in the chain is given up with it.
    bench.frames.clear();
    QVERIFY(bench.waitForFrames(1));
    QCOMPARE(bench.last(), firstPoll);
    bench.answer();
    QCOMPARE(bench.last(), secondPoll);
}

void MonitorPollerLinkTest::secondPressDoesNotGiveTheFirstMoreTime()
{
    LinkBench bench(false);
    QElapsedTimer clock;
    clock.start();
    bench.poller.requestWrite(MonitorWrite::DILevel, 0, 4);
    QVERIFY(!bench.waitForWithdrawnLevels(2000));
    bench.poller.requestWrite(MonitorWrite::DILevel, 0, 12);
    QVERIFY(bench.waitForWithdrawnLevels());
    QVERIFY(clock.elapsed() < 4500);
    bench.finishCycle();
    QVERIFY(bench.texts().filter(QStringLiteral("010620CA")).isEmpty());
}

void MonitorPollerLinkTest::answeredLevelIsKept()
{
    LinkBench bench(true);
    bench.poller.requestWrite(MonitorWrite::DILevel, 0, 4);
    bench.answer();
    bench.answer();
    QVERIFY(!bench.waitForWithdrawnLevels(3500));
}

void MonitorPollerLinkTest::withdrawalGoesBackToTheLastAnsweredLevels()
{
    LinkBench bench(true);
    bench.poller.requestWrite(MonitorWrite::DOLevel, 0, 5);
    bench.answer();
    bench.answer();
    bench.poller.requestWrite(MonitorWrite::DOLevel, 0, 0x8005);
    QVERIFY(bench.waitForWithdrawnLevels());
    QCOMPARE(bench.levels.calls, (QList<std::tuple<MonitorWrite, int>>{{MonitorWrite::DOLevel, 5}}));
}

void MonitorPollerLinkTest::settingsAreNotWithdrawn()
{
    LinkBench bench(false);
    bench.poller.requestWrite(MonitorWrite::DIFunction, 3, 1);
    QVERIFY(!bench.waitForWithdrawnLevels(3500));
    bench.answer();
    QCOMPARE(bench.last(), QStringLiteral("0106E0D60001"));
}

void MonitorPollerLinkTest::levelLostWithTheLinkIsNotSentAgain()
{
    LinkBench bench(true);
    bench.poller.requestWrite(MonitorWrite::DILevel, 0, 4);
    bench.answer();
    SerialPort::portOpened = false;
    QVERIFY(!bench.waitForFrames(3, 300));
    SerialPort::portOpened = true;
    QVERIFY(bench.waitForFrames(3));
    QCOMPARE(bench.last(), firstPoll);
    QCOMPARE(bench.levels.calls, (QList<std::tuple<MonitorWrite, int>>{{MonitorWrite::DILevel, 0}}));
    bench.finishCycle();
    QCOMPARE(bench.texts().filter(QStringLiteral("010620CA")).size(), 1);
}

QTEST_GUILESS_MAIN(MonitorPollerLinkTest)

#include "tst_monitorpoller_link.moc"
