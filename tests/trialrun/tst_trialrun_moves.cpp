// SPDX-License-Identifier: GPL-3.0-or-later
// Step three: moves by a held button, and the continuous run.
#include "trialbench.h"
#include "trialrun/holdbutton.h"

class TrialRunMovesTest : public QObject
{
    Q_OBJECT

private slots:
    void moveHasTheSignOfItsDirection();
    void lowestDistanceMovesForwardOnAForwardPress();
    void pressAndReleaseKeepTheirOrder();
    void releaseDropsAMoveThatHasNotBegun();
    void moveIsRefusedWhileTheTableIsRead();
    void releaseOfAMoveIsSentOnceHoweverTheHoldEnds_data();
    void releaseOfAMoveIsSentOnceHoweverTheHoldEnds();
    void runAndPause();
};

void TrialRunMovesTest::moveHasTheSignOfItsDirection()
{
    TrialBench bench;
    QVERIFY(bench.waitUntilReady());
    const TrialRunDriver drive = bench.drive();
    bench.enter(drive.once());
    TrialRunDriver::type(drive.positionTable(), 0, QStringLiteral("1000"));
    TrialBench::settled();
    for (HoldButton *button : {drive.moveRollback(), drive.moveForward(), drive.moveForward()}) {
        bench.peer.frames.clear();
        TrialRunDriver::hold(button);
        TrialBench::settled();
        TrialRunDriver::letGo(button);
        TrialBench::settled();
        const char *distance =
            button == drive.moveRollback() ? "0110 213A 0002 04 FFFFFC18" : "0110 213A 0002 04 000003E8";
        QCOMPARE(bench.sent(), frames({distance, "010620CA0401", "010620CA0001"}));
    }
}

void TrialRunMovesTest::lowestDistanceMovesForwardOnAForwardPress()
{
    TrialBench bench;
    bench.peer.registers[0x213A] = 0x8000;
    bench.peer.registers[0x213B] = 0;
    QVERIFY(bench.waitUntilReady());
    const TrialRunDriver drive = bench.drive();
    bench.enter(drive.once());
    bench.window->positionrollbackPressedSlt();
    TrialBench::settled();
    QCOMPARE(bench.peer.frames.first(), wire::frame("0110 213A 0002 04 80000000"));
    bench.window->positionrollbackReleasedSlt();
    TrialBench::settled();
    bench.peer.frames.clear();
    bench.window->positionforewardPressedSlt();
    TrialBench::settled();
    QCOMPARE(bench.peer.frames.first(), wire::frame("0110 213A 0002 04 7FFFFFFF"));
}

void TrialRunMovesTest::pressAndReleaseKeepTheirOrder()
{
    TrialBench bench;
    QVERIFY(bench.waitUntilReady());
    const TrialRunDriver drive = bench.drive();
    bench.enter(drive.once());
    TrialRunDriver::hold(drive.moveForward());
    QVERIFY(!drive.continuous()->isEnabled());
    TrialBench::settled();
    TrialRunDriver::letGo(drive.moveForward());
    QVERIFY(drive.continuous()->isEnabled());
    QCOMPARE(bench.sent().mid(1), (QList<QByteArray>{panel("0401"), panel("0001")}));
}

void TrialRunMovesTest::releaseDropsAMoveThatHasNotBegun()
{
    TrialBench bench;
    QVERIFY(bench.waitUntilReady());
    const TrialRunDriver drive = bench.drive();
    bench.enter(drive.once());
    bench.peer.held = true;
    TrialRunDriver::hold(drive.moveForward());
    TrialRunDriver::letGo(drive.moveForward());
    bench.peer.release();
    TrialBench::settled();
    QVERIFY(!bench.peer.frames.contains(panel("0401")));
    QCOMPARE(bench.peer.frames.last(), panel("0001"));
    // And the start that has gone out without an answer is taken back.
    bench.peer.frames.clear();
    bench.peer.intercept = [](const QByteArray &request, const QByteArray &usual) {
        return request == panel("0401") ? QByteArray() : usual;
    };
    TrialRunDriver::hold(drive.moveForward());
    TrialBench::settled();
    TrialRunDriver::letGo(drive.moveForward());
    QCOMPARE(bench.peer.frames.mid(1), (QList<QByteArray>{panel("0401"), withdrawal, panel("0001")}));
}

void TrialRunMovesTest::moveIsRefusedWhileTheTableIsRead()
{
    TrialBench bench;
    QVERIFY(bench.waitUntilReady());
    const TrialRunDriver drive = bench.drive();
    QVERIFY(bench.enterStepThree());
    bench.peer.held = true;
    TrialRunDriver::click(drive.once());
    TrialRunDriver::hold(drive.moveForward());
    TrialRunDriver::letGo(drive.moveForward());
    QCOMPARE(bench.peer.frames.size(), 1);
    bench.peer.release();
    TrialBench::settled();
    QCOMPARE(bench.peer.frames.size(), 7);
    QVERIFY(!TrialRunDriver::cell(drive.positionTable(), 6).isEmpty());
}

void TrialRunMovesTest::releaseOfAMoveIsSentOnceHoweverTheHoldEnds_data()
{
    QTest::addColumn<bool>("forward");
    QTest::addColumn<QString>("end");
    for (const bool forward : {true, false}) {
        for (const char *end : {"outside", "focus", "notice", "minimised", "disabled", "mode"})
            QTest::addRow("%s, %s", forward ? "forward" : "back", end) << forward << QString::fromLatin1(end);
    }
}

void TrialRunMovesTest::releaseOfAMoveIsSentOnceHoweverTheHoldEnds()
{
    QFETCH(bool, forward);
    QFETCH(QString, end);
    TrialBench bench;
    QVERIFY(bench.waitUntilReady());
    QVERIFY(QTest::qWaitForWindowActive(bench.window));
    const TrialRunDriver drive = bench.drive();
    bench.enter(drive.once());
    HoldButton *const button = forward ? drive.moveForward() : drive.moveRollback();
    TrialRunDriver::hold(button);
    TrialBench::settled();
    QCOMPARE(bench.peer.frames.count(panel("0401")), 1);
    if (end == QLatin1String("outside")) {
        QTest::mouseRelease(button, Qt::LeftButton, {}, QPoint(-30, -30));
    } else if (end == QLatin1String("focus")) {
        drive.jogRun()->setFocus();
    } else if (end == QLatin1String("notice")) {
        QEvent blocked(QEvent::WindowBlocked);
        QCoreApplication::sendEvent(bench.window, &blocked);
    } else if (end == QLatin1String("minimised")) {
        bench.window->showMinimized();
    } else if (end == QLatin1String("disabled")) {
        drive.page()->setEnabled(false);
    } else {
        bench.window->continuousBtnToggledSlt(true);
    }
    QVERIFY(!button->isHeld());
    TrialRunDriver::letGo(button);
    TrialBench::settled();
    QCOMPARE(bench.peer.frames.count(panel("0001")), 1);
    QCOMPARE(bench.peer.frames.count(panel("0401")), 1);
}

void TrialRunMovesTest::runAndPause()
{
    TrialBench bench;
    QVERIFY(bench.waitUntilReady());
    const TrialRunDriver drive = bench.drive();
    bench.enter(drive.continuous());
    TrialRunDriver::click(drive.runButton("Run"));
    TrialBench::settled();
    QCOMPARE(bench.sent(), frames({"0106212C0002", "010620CA0001"}));
    QVERIFY(!drive.runButton("Run"));
    QVERIFY(!drive.once()->isEnabled());
    QVERIFY(!drive.jogRun()->isEnabled());
    bench.peer.frames.clear();
    TrialRunDriver::click(drive.runButton("Pause"));
    TrialBench::settled();
    QCOMPARE(bench.sent(), frames({"0106212C0002", "010620CA0000"}));
    QVERIFY(drive.runButton("Run"));
    QVERIFY(drive.once()->isEnabled());
    QVERIFY(drive.jogRun()->isEnabled());
}

QTEST_MAIN(TrialRunMovesTest)
#include "tst_trialrun_moves.moc"
