// SPDX-License-Identifier: GPL-3.0-or-later
// Steps one and two: the servo, the position and its limits.
#include "jogbench.h"

#include "trialrun/holdbutton.h"
#include "widgets/indicationlable.h"

#include <QElapsedTimer>
#include <QGroupBox>

using namespace jogbench;

class TrialRunJogTest : public QObject
{
    Q_OBJECT

private slots:
    void servoOnSendsAndLooksAtThePosition();
    void servoOffEndsThePolling();
    void pollGoesOnFromReplyToReply();
    void oneLookIsOutstandingAtMost();
    void pressLooksAtThePositionAgain();
    void lostLookIsAskedAgain();
    void limitsGrowApart_data();
    void limitsGrowApart();
    void spanLagsOneReplyBehind();
    void captureMakesTheWindowRepeatItself_data();
    void captureMakesTheWindowRepeatItself();
    void newPressEndsTheRepeating();
    void repeatingEndsAfterTwentyTimes();
};

void TrialRunJogTest::servoOnSendsAndLooksAtThePosition()
{
    TrialBench bench;
    QVERIFY(bench.waitUntilReady());
    const TrialRunDriver drive = bench.drive();
    servoOn(bench);
    QCOMPARE(bench.peer.frames, (QList<QByteArray>{panel("0001"), positionLook}));
    QVERIFY(!drive.servoOn()->isEnabled());
    QVERIFY(drive.servoOff()->isEnabled());
    QVERIFY(drive.jogForward()->isEnabled());
    QVERIFY(drive.jogRollback()->isEnabled());
    QVERIFY(drive.page()->findChild<QGroupBox *>(QStringLiteral("stepBox2"))->isEnabled());
}

void TrialRunJogTest::servoOffEndsThePolling()
{
    TrialBench bench;
    QVERIFY(bench.waitUntilReady());
    servoOn(bench);
    TrialRunDriver::click(bench.drive().servoOff());
    QCOMPARE(bench.peer.frames.last(), panel("0000"));
    const int sent = bench.peer.frames.size();
    tellPosition(bench, "00000064");
    bench.window->handleTrialRun(panel("0000"));
    QVERIFY(!runUntil([&] { return bench.peer.frames.size() > sent; }, 600));
    QCOMPARE(bench.drive().currentPosition(), QString());
    QVERIFY(bench.drive().servoOn()->isEnabled());
    QVERIFY(!bench.drive().servoOff()->isEnabled());
    QVERIFY(!bench.drive().jogForward()->isEnabled());
}

void TrialRunJogTest::pollGoesOnFromReplyToReply()
{
    TrialBench bench;
    QVERIFY(bench.waitUntilReady());
    servoOn(bench);
    tellPosition(bench, "00000064");
    tellPosition(bench, "00000065");
    QCOMPARE(bench.peer.frames.count(positionLook), 3);
    QCOMPARE(bench.drive().currentPosition(), QStringLiteral("101"));
    // An answer of another form is passed over.
    bench.window->handleTrialRun(wire::frame("018302"));
    QCOMPARE(bench.drive().currentPosition(), QStringLiteral("101"));
}

void TrialRunJogTest::oneLookIsOutstandingAtMost()
{
    TrialBench bench;
    QVERIFY(bench.waitUntilReady());
    servoOn(bench);
    for (int i = 0; i < 5; ++i)
        bench.window->readAbsolutePosition();
    QCOMPARE(bench.peer.frames.count(positionLook), 1);
}

// The answer of another form has ended the polling.
void TrialRunJogTest::pressLooksAtThePositionAgain()
{
    TrialBench bench;
    QVERIFY(bench.waitUntilReady());
    servoOn(bench);
    bench.window->handleTrialRun(wire::frame("018302"));
    bench.peer.frames.clear();
    TrialRunDriver::hold(bench.drive().jogForward());
    QElapsedTimer time;
    time.start();
    QVERIFY(runUntil([&] { return bench.peer.frames.contains(positionLook); }, 2000));
    QVERIFY2(time.elapsed() < 200, qPrintable(QString::number(time.elapsed()))); // not by the time-out
    QCOMPARE(bench.peer.frames.first(), panel("0101"));
    tellPosition(bench, "00000064");
    QCOMPARE(bench.drive().currentPosition(), QStringLiteral("100"));
}

void TrialRunJogTest::lostLookIsAskedAgain()
{
    TrialBench bench;
    QVERIFY(bench.waitUntilReady());
    servoOn(bench);
    QVERIFY(runUntil([&] { return bench.peer.frames.count(positionLook) == 2; }, 2000));
    tellPosition(bench, "00000064");
    QCOMPARE(bench.drive().currentPosition(), QStringLiteral("100"));
}

void TrialRunJogTest::limitsGrowApart_data()
{
    QTest::addColumn<QList<QByteArray>>("positions");
    QTest::addColumn<QStringList>("shown"); // forward, current, rollback
    QTest::newRow("zero") << QList<QByteArray>{"00000000"} << QStringList{"0", "0", "0"};
    QTest::newRow("forward") << QList<QByteArray>{"00000064", "00000032"} << QStringList{"100", "50", "0"};
    QTest::newRow("back") << QList<QByteArray>{"FFFFFF9C", "FFFFFFCE"} << QStringList{"0", "-50", "-100"};
    QTest::newRow("both") << QList<QByteArray>{"00000064", "FFFFFF9C", "00000000"}
                          << QStringList{"100", "0", "-100"};
    QTest::newRow("ends") << QList<QByteArray>{"7FFFFFFF", "80000000"}
                          << QStringList{"2147483647", "-2147483648", "-2147483648"};
}

void TrialRunJogTest::limitsGrowApart()
{
    QFETCH(QList<QByteArray>, positions);
    QFETCH(QStringList, shown);
    TrialBench bench;
    QVERIFY(bench.waitUntilReady());
    servoOn(bench);
    for (const QByteArray &position : qAsConst(positions))
        tellPosition(bench, position);
    const TrialRunDriver drive = bench.drive();
    QCOMPARE((QStringList{drive.forwardLimit(), drive.currentPosition(), drive.rollbackLimit()}), shown);
}

void TrialRunJogTest::spanLagsOneReplyBehind()
{
    TrialBench bench;
    QVERIFY(bench.waitUntilReady());
    servoOn(bench);
    const auto *const bar = bench.window->findChild<IndicationLable *>();
    tellPosition(bench, "00000064");
    QCOMPARE(bar->currentValue, 100.0);
    QCOMPARE(bar->spanValue, 0.0);
    tellPosition(bench, "FFFFFF9C");
    QCOMPARE(bar->spanValue, 100.0);
    QCOMPARE(bar->forwardValue, 100);
    QCOMPARE(bar->rollbackValue, 0);
    tellPosition(bench, "00000000");
    QCOMPARE(bar->spanValue, 200.0);
    QCOMPARE(bar->rollbackValue, -100);
}

void TrialRunJogTest::captureMakesTheWindowRepeatItself_data()
{
    QTest::addColumn<bool>("off");
    QTest::addColumn<QByteArray>("frame");
    QTest::newRow("release") << false << panel("0001");
    QTest::newRow("servo off") << true << panel("0000");
}

void TrialRunJogTest::captureMakesTheWindowRepeatItself()
{
    QFETCH(bool, off);
    QFETCH(QByteArray, frame);
    TrialBench bench;
    QVERIFY(bench.waitUntilReady());
    servoOn(bench);
    TrialRunDriver::hold(bench.drive().jogForward());
    bench.window->handleTrialRun(panel("0101"));
    SerialPort::scopeRunning = true;
    bench.peer.frames.clear();
    TrialRunDriver::letGo(bench.drive().jogForward());
    if (off)
        TrialRunDriver::click(bench.drive().servoOff());
    QVERIFY(runUntil([&] { return bench.peer.frames.count(frame) >= 3; }, 2000));
    bench.window->handleTrialRun(frame);
    const int sent = bench.peer.frames.count(frame);
    QVERIFY(!runUntil([&] { return bench.peer.frames.count(frame) > sent; }, 400));
}

void TrialRunJogTest::newPressEndsTheRepeating()
{
    TrialBench bench;
    QVERIFY(bench.waitUntilReady());
    servoOn(bench);
    SerialPort::scopeRunning = true;
    TrialRunDriver::hold(bench.drive().jogForward());
    TrialRunDriver::letGo(bench.drive().jogForward());
    QVERIFY(runUntil([&] { return bench.peer.frames.count(panel("0001")) >= 4; }, 2000));
    TrialRunDriver::hold(bench.drive().jogForward());
    bench.peer.frames.clear();
    QVERIFY(!runUntil([&] { return bench.peer.frames.contains(panel("0001")); }, 400));
    TrialRunDriver::letGo(bench.drive().jogForward());
    QVERIFY(runUntil([&] { return bench.peer.frames.count(panel("0001")) >= 3; }, 2000));
}

void TrialRunJogTest::repeatingEndsAfterTwentyTimes()
{
    TrialBench bench;
    QVERIFY(bench.waitUntilReady());
    servoOn(bench);
    SerialPort::scopeRunning = true;
    bench.peer.frames.clear();
    TrialRunDriver::click(bench.drive().servoOff());
    QVERIFY(runUntil([&] { return bench.peer.frames.count(panel("0000")) == 21; }, 5000));
    QVERIFY(!runUntil([&] { return bench.peer.frames.count(panel("0000")) > 21; }, 400));
}

QTEST_MAIN(TrialRunJogTest)
#include "tst_trialrun_jog.moc"
