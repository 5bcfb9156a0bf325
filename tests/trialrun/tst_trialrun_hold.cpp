// SPDX-License-Identifier: GPL-3.0-or-later
// The direction buttons: what a hold sends, and that nothing turns after it.
#include "jogbench.h"

#include "trialrun/holdbutton.h"

using namespace jogbench;

class TrialRunHoldTest : public QObject
{
    Q_OBJECT

private slots:
    void heldButtonMovesAndStops_data();
    void heldButtonMovesAndStops();
    void releaseIsSentOnceHoweverTheHoldEnds_data();
    void releaseIsSentOnceHoweverTheHoldEnds();
    void windowThatGoesReleasesWhatItHolds();
    void quickReleaseTakesTheUnsentPressBack();
    void withdrawalRepeatsTheCellThatItTakesAlong();
    void releaseOfAnEchoedPressWithdrawsNothing();
    void releaseDoesNotWaitBehindLooks();
    void servoOffWhileHeldEndsWithZero();
    void refusedStopIsSentAgain_data();
    void refusedStopIsSentAgain();
    void refusedPressIsNotSentAgain();
};

void TrialRunHoldTest::heldButtonMovesAndStops_data()
{
    QTest::addColumn<bool>("forward");
    QTest::addColumn<QByteArray>("pressed");
    QTest::newRow("forward") << true << panel("0101");
    QTest::newRow("back") << false << panel("0201");
}

void TrialRunHoldTest::heldButtonMovesAndStops()
{
    QFETCH(bool, forward);
    QFETCH(QByteArray, pressed);
    TrialBench bench;
    QVERIFY(bench.waitUntilReady());
    servoOn(bench);
    bench.peer.frames.clear();
    HoldButton *const button = forward ? bench.drive().jogForward() : bench.drive().jogRollback();
    TrialRunDriver::hold(button);
    QCOMPARE(bench.sent(), QList<QByteArray>{pressed});
    bench.window->handleTrialRun(pressed);
    TrialRunDriver::letGo(button);
    QCOMPARE(bench.sent(), (QList<QByteArray>{pressed, panel("0001")}));
}

void TrialRunHoldTest::releaseIsSentOnceHoweverTheHoldEnds_data()
{
    QTest::addColumn<QString>("end");
    for (const char *end : {"outside", "focus", "notice", "minimised", "disabled", "key"})
        QTest::newRow(end) << QString::fromLatin1(end);
}

void TrialRunHoldTest::releaseIsSentOnceHoweverTheHoldEnds()
{
    QFETCH(QString, end);
    TrialBench bench;
    QVERIFY(bench.waitUntilReady());
    QVERIFY(QTest::qWaitForWindowActive(bench.window));
    servoOn(bench);
    HoldButton *const button = bench.drive().jogForward();
    if (end == QLatin1String("key")) {
        button->setFocus();
        QTest::keyPress(button, Qt::Key_Space);
        QTest::keyRelease(button, Qt::Key_Space);
    } else {
        TrialRunDriver::hold(button);
    }
    bench.window->handleTrialRun(panel("0101"));
    if (end == QLatin1String("outside"))
        QTest::mouseRelease(button, Qt::LeftButton, {}, QPoint(-30, -30));
    else if (end == QLatin1String("focus"))
        bench.drive().servoOff()->setFocus();
    else if (end == QLatin1String("notice"))
        QCoreApplication::postEvent(bench.window, new QEvent(QEvent::WindowBlocked));
    else if (end == QLatin1String("minimised"))
        bench.window->showMinimized();
    else if (end == QLatin1String("disabled"))
        bench.drive().page()->setEnabled(false);
    QCoreApplication::sendPostedEvents(bench.window, QEvent::WindowBlocked);
    QVERIFY(!button->isHeld());
    TrialRunDriver::letGo(button);
    QCOMPARE(bench.peer.frames.count(panel("0101")), 1);
    // One of the click on "Servo ON", one of the release.
    QCOMPARE(bench.peer.frames.count(panel("0001")), 2);
    QCOMPARE(bench.sent().last(), panel("0001"));
}

void TrialRunHoldTest::windowThatGoesReleasesWhatItHolds()
{
    TrialBench bench;
    QVERIFY(bench.waitUntilReady());
    servoOn(bench);
    TrialRunDriver::hold(bench.drive().jogForward());
    bench.window->handleTrialRun(panel("0101"));
    bench.peer.frames.clear();
    delete bench.window;
    QCOMPARE(bench.peer.frames.count(panel("0001")), 1);
}

void TrialRunHoldTest::quickReleaseTakesTheUnsentPressBack()
{
    TrialBench bench;
    QVERIFY(bench.waitUntilReady());
    servoOn(bench);
    bench.peer.frames.clear();
    TrialRunDriver::hold(bench.drive().jogForward());
    TrialRunDriver::letGo(bench.drive().jogForward());
    QCOMPARE(bench.sent(), (QList<QByteArray>{panel("0101"), withdrawal, panel("0001")}));
}

void TrialRunHoldTest::withdrawalRepeatsTheCellThatItTakesAlong()
{
    TrialBench bench;
    QVERIFY(bench.waitUntilReady());
    servoOn(bench);
    bench.peer.frames.clear();
    TrialRunDriver::type(bench.drive().jogTable(), 0, QStringLiteral("1.2"));
    TrialRunDriver::hold(bench.drive().jogForward());
    TrialRunDriver::letGo(bench.drive().jogForward());
    const QByteArray speed = wire::frame("01062007000C");
    QCOMPARE(bench.sent(), (QList<QByteArray>{speed, panel("0101"), withdrawal, speed, panel("0001")}));
}

void TrialRunHoldTest::releaseOfAnEchoedPressWithdrawsNothing()
{
    TrialBench bench;
    QVERIFY(bench.waitUntilReady());
    servoOn(bench);
    TrialRunDriver::hold(bench.drive().jogForward());
    bench.window->handleTrialRun(panel("0101"));
    TrialRunDriver::letGo(bench.drive().jogForward());
    QVERIFY(!bench.peer.frames.contains(withdrawal));
}

void TrialRunHoldTest::releaseDoesNotWaitBehindLooks()
{
    TrialBench bench;
    QVERIFY(bench.waitUntilReady());
    servoOn(bench);
    TrialRunDriver::hold(bench.drive().jogForward());
    bench.window->handleTrialRun(panel("0101"));
    QVERIFY(runUntil([&] { return bench.peer.frames.count(positionLook) >= 3; }, 3000));
    bench.peer.frames.clear();
    TrialRunDriver::letGo(bench.drive().jogForward());
    QCOMPARE(bench.peer.frames, (QList<QByteArray>{withdrawal, panel("0001")}));
}

void TrialRunHoldTest::servoOffWhileHeldEndsWithZero()
{
    TrialBench bench;
    QVERIFY(bench.waitUntilReady());
    servoOn(bench);
    TrialRunDriver::hold(bench.drive().jogForward());
    bench.window->handleTrialRun(panel("0101"));
    bench.peer.frames.clear();
    bench.window->servoOFFSlt();
    QCOMPARE(bench.sent().first(), panel("0001"));
    QCOMPARE(bench.sent().last(), panel("0000"));
    const int sent = bench.sent().size();
    TrialRunDriver::letGo(bench.drive().jogForward());
    QCOMPARE(bench.sent().size(), sent);
}

void TrialRunHoldTest::refusedStopIsSentAgain_data()
{
    QTest::addColumn<QString>("stop");
    QTest::addColumn<QByteArray>("frame");
    QTest::newRow("release") << "release" << panel("0001");
    QTest::newRow("servo off") << "servo off" << panel("0000");
    QTest::newRow("step three") << "step three" << panel("0000");
}

// Nothing turns that nobody holds, and be it that the drive takes the order at the third time only. An order
// that it never takes is not repeated for ever.
void TrialRunHoldTest::refusedStopIsSentAgain()
{
    QFETCH(QString, stop);
    QFETCH(QByteArray, frame);
    for (const int refusals : {2, 1000}) {
        TrialBench bench;
        QVERIFY(bench.waitUntilReady());
        const TrialRunDriver drive = bench.drive();
        TrialRunDriver::click(drive.servoOn());
        TrialRunDriver::hold(drive.jogForward());
        TrialBench::settled();
        bench.peer.frames.clear();
        int left = refusals;
        bench.peer.intercept = [&](const QByteArray &request, const QByteArray &usual) {
            return request == frame && left-- > 0 ? wire::frame("018604") : usual;
        };
        TrialRunDriver::letGo(drive.jogForward());
        if (stop == QLatin1String("servo off"))
            TrialRunDriver::click(drive.servoOff());
        else if (stop == QLatin1String("step three"))
            TrialRunDriver::click(drive.positionRun());
        TrialBench::settled();
        QCOMPARE(bench.peer.frames.count(frame), refusals == 2 ? 3 : 11);
    }
}

void TrialRunHoldTest::refusedPressIsNotSentAgain()
{
    TrialBench bench;
    QVERIFY(bench.waitUntilReady());
    servoOn(bench);
    TrialRunDriver::hold(bench.drive().jogForward());
    bench.peer.frames.clear();
    bench.window->handleTrialRun(wire::frame("018604"));
    QVERIFY(bench.sent().isEmpty());
    // A release that a new press has followed must not end that one.
    TrialRunDriver::letGo(bench.drive().jogForward());
    TrialRunDriver::hold(bench.drive().jogRollback());
    bench.peer.frames.clear();
    bench.window->handleTrialRun(wire::frame("018604"));
    QVERIFY(bench.sent().isEmpty());
}

QTEST_MAIN(TrialRunHoldTest)
#include "tst_trialrun_hold.moc"
