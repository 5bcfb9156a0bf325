// SPDX-License-Identifier: GPL-3.0-or-later
// A run that waits for a condition, shows what comes for a time, and is stopped.
#include "acquisitionbench.h"

#include <QtTest>

using namespace acquisitionbench;

class TestScopeCondition : public QObject, private AcquisitionBench
{
    Q_OBJECT

private slots:
    void init() { begin(); }
    void cleanup() { end(); }

    void untilTheConditionHoldsSamplesAreRecordedOnly();
    void conditionShowsItsChannelUntilTheTimeIsOver();
    void timeThatIsNoNumberEndsAtOnce();
    void conditionWithoutAChannelIsNeverMet();
    void runStoppedByItsConditionRepeatsTheStopFrame();
    void lateConditionStartsNoTimeAfterTheStop();
    void stopByConditionLeavesRecordAndRunningAsTheyAre();
    void newValueHoldsFromTheNextBatchOn();
};

void TestScopeCondition::untilTheConditionHoldsSamplesAreRecordedOnly()
{
    startWithCondition();
    take(five, 9);
    QCOMPARE(batches.size(), 0);
    QCOMPARE(acquisition->state(), State::Armed);
    acquisition->stop();
    QCOMPARE(recordOf(0), QByteArray("Pn-F00Motor speed\r\n5\r\n"));
}

void TestScopeCondition::conditionShowsItsChannelUntilTheTimeIsOver()
{
    startWithCondition();
    take(nine, 9, 50);
    QCOMPARE(acquisition->state(), State::Ending);
    QCOMPARE(batches.size(), 1);
    QCOMPARE(batches.first().onlyChannel, 0);
    take(five, 9, 50); // no longer meets the condition, and is shown all the same
    QCOMPARE(batches.size(), 2);
    log.clear();
    QTRY_COMPARE(acquisition->state(), State::StoppedByCondition);
    QCOMPARE(log, QStringList{stopFrame});
}

void TestScopeCondition::timeThatIsNoNumberEndsAtOnce()
{
    startWithCondition();
    take(nine, 9, 0);
    QCoreApplication::processEvents();
    QTRY_COMPARE_WITH_TIMEOUT(acquisition->state(), State::StoppedByCondition, 1000);
    acquisition->start(settings(false), true);
    take(nine, 9, -5);
    QTRY_COMPARE_WITH_TIMEOUT(acquisition->state(), State::StoppedByCondition, 1000);
}

void TestScopeCondition::conditionWithoutAChannelIsNeverMet()
{
    acquisition->setStopCondition({QStringLiteral("CH7"), QStringLiteral(">=")});
    acquisition->start(settings(false), true);
    take(nine, 0);
    QCOMPARE(acquisition->state(), State::Armed);
    QCOMPARE(batches.size(), 0);
}

void TestScopeCondition::runStoppedByItsConditionRepeatsTheStopFrame()
{
    startWithCondition();
    take(nine, 9, 0);
    QTRY_COMPARE(acquisition->state(), State::StoppedByCondition);
    log.clear();
    take(five, 9);
    QCOMPARE(log, (QStringList{stopFrame, stopFrame}));
    take("", 9);
    QCOMPARE(log.size(), 4);
    acquisition->stop();
    QCOMPARE(recordOf(0), QByteArray("Pn-F00Motor speed\r\n9\r\n5\r\n"));
}

void TestScopeCondition::lateConditionStartsNoTimeAfterTheStop()
{
    startWithCondition();
    take(nine, 9, 0);
    QTRY_COMPARE(acquisition->state(), State::StoppedByCondition);
    QSignalSpy over(acquisition, &ScopeAcquisition::lastPartOver);
    take(nine, 9, 0);
    QCOMPARE(acquisition->state(), State::StoppedByCondition);
    QVERIFY(!over.wait(50));
}

void TestScopeCondition::stopByConditionLeavesRecordAndRunningAsTheyAre()
{
    startWithCondition();
    take(nine, 9, 0);
    QTRY_COMPARE(acquisition->state(), State::StoppedByCondition);
    QCOMPARE(log.count("ended"), 0);
    QVERIFY(acquisition->record()->isOpen());
    QVERIFY(!acquisition->isUnderWay());
    QVERIFY(!acquisition->offersStop());
}

void TestScopeCondition::newValueHoldsFromTheNextBatchOn()
{
    startWithCondition();
    take(five, 9);
    take(five, 5);
    QCOMPARE(acquisition->state(), State::Ending);
    acquisition->stop();
    startWithCondition();
    take(five, 9);
    acquisition->setStopCondition({QStringLiteral("CH1"), QStringLiteral("<=")});
    take(five, 9);
    QCOMPARE(acquisition->state(), State::Ending);
}

QTEST_GUILESS_MAIN(TestScopeCondition)
#include "tst_scopecondition.moc"
