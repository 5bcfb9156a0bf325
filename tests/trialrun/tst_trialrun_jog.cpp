// SPDX-License-Identifier: GPL-3.0-or-later
// Steps one and two: servo, direction buttons, the position and its limits.
#include "trialbench.h"
#include "trialrun/holdbutton.h"
#include "widgets/indicationlable.h"

#include <QElapsedTimer>
#include <QGroupBox>

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
    void captureMakesTheWindowRepeatItself_data();
    void captureMakesTheWindowRepeatItself();
    void newPressEndsTheRepeating();
    void repeatingEndsAfterTwentyTimes();

private:
    static void servoOn(TrialBench &bench);
    // Answers the look that is outstanding.
    static void tellPosition(TrialBench &bench, const char *hex);
};

void TrialRunJogTest::servoOn(TrialBench &bench)
{
    bench.peer.held = true;
    TrialRunDriver::click(bench.drive().servoOn());
    bench.window->handleTrialRun(panel("0001"));
}

void TrialRunJogTest::tellPosition(TrialBench &bench, const char *hex)
{
    bench.window->handleTrialRun(wire::readReply(wire::bytes(hex)));
}

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

void TrialRunJogTest::heldButtonMovesAndStops_data()
{
    QTest::addColumn<bool>("forward");
    QTest::addColumn<QByteArray>("pressed");
    QTest::newRow("forward") << true << panel("0101");
    QTest::newRow("back") << false << panel("0201");
}

void TrialRunJogTest::heldButtonMovesAndStops()
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

void TrialRunJogTest::releaseIsSentOnceHoweverTheHoldEnds_data()
{
    QTest::addColumn<QString>("end");
    for (const char *end : {"outside", "focus", "notice", "minimised", "disabled", "key"})
        QTest::newRow(end) << QString::fromLatin1(end);
}

void TrialRunJogTest::releaseIsSentOnceHoweverTheHoldEnds()
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

void TrialRunJogTest::windowThatGoesReleasesWhatItHolds()
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

void TrialRunJogTest::quickReleaseTakesTheUnsentPressBack()
{
    TrialBench bench;
    QVERIFY(bench.waitUntilReady());
    servoOn(bench);
    bench.peer.frames.clear();
    TrialRunDriver::hold(bench.drive().jogForward());
    TrialRunDriver::letGo(bench.drive().jogForward());
    QCOMPARE(bench.sent(), (QList<QByteArray>{panel("0101"), withdrawal, panel("0001")}));
}

void TrialRunJogTest::withdrawalRepeatsTheCellThatItTakesAlong()
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

void TrialRunJogTest::releaseOfAnEchoedPressWithdrawsNothing()
{
    TrialBench bench;
    QVERIFY(bench.waitUntilReady());
    servoOn(bench);
    TrialRunDriver::hold(bench.drive().jogForward());
    bench.window->handleTrialRun(panel("0101"));
    TrialRunDriver::letGo(bench.drive().jogForward());
    QVERIFY(!bench.peer.frames.contains(withdrawal));
}

void TrialRunJogTest::releaseDoesNotWaitBehindLooks()
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

void TrialRunJogTest::servoOffWhileHeldEndsWithZero()
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

void TrialRunJogTest::refusedStopIsSentAgain_data()
{
    QTest::addColumn<QString>("stop");
    QTest::addColumn<QByteArray>("frame");
    QTest::newRow("release") << "release" << panel("0001");
    QTest::newRow("servo off") << "servo off" << panel("0000");
    QTest::newRow("step three") << "step three" << panel("0000");
}

// Nothing turns that nobody holds, and be it that the drive takes the order at the third time only. An order
// that it never takes is not repeated for ever.
void TrialRunJogTest::refusedStopIsSentAgain()
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

void TrialRunJogTest::refusedPressIsNotSentAgain()
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
