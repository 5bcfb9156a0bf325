// SPDX-License-Identifier: GPL-3.0-or-later
// A link that is lost ends every motion, and nothing moves again without a new press.
#include "trialbench.h"
#include "trialrun/holdbutton.h"

class TrialRunLinkLossTest : public QObject
{
    Q_OBJECT

private slots:
    void servoIsOffInTheWindow();
    void zeroThatIsLostAgainIsSentAgain();
    void heldButtonEndsWithTheLink();
    void continuousRunEndsWithTheLink();
    void pressWithoutLinkDoesNotLeave_data();
    void pressWithoutLinkDoesNotLeave();
    void idleWindowSendsNothing();
    void stalledSequenceWaitsForTheNextAct();
    void addresslessFrameIsNotSentTwice();
    void typedCellIsKept();

private:
    static void loseLink(TrialBench &bench);
};

void TrialRunLinkLossTest::loseLink(TrialBench &bench)
{
    bench.peer.frames.clear();
    SerialPort::portOpened = false;
    bench.window->linkEnded();
}

void TrialRunLinkLossTest::servoIsOffInTheWindow()
{
    TrialBench bench;
    QVERIFY(bench.waitUntilReady());
    TrialRunDriver::click(bench.drive().servoOn());
    TrialBench::settled();
    bench.peer.held = true;
    loseLink(bench);
    QCOMPARE(bench.peer.frames, (QList<QByteArray>{withdrawal, panel("0000")}));
    QVERIFY(bench.drive().servoOn()->isEnabled());
    QVERIFY(!bench.drive().servoOff()->isEnabled());
    QVERIFY(!bench.drive().jogForward()->isEnabled());
    SerialPort::portOpened = true;
    // The look at the position does not come back by itself either.
    QVERIFY(!runUntil([&] { return bench.peer.frames.size() > 2; }, 600));
}

// Of a worker that finds no drive nothing comes back, and its request is lost with it.
void TrialRunLinkLossTest::zeroThatIsLostAgainIsSentAgain()
{
    TrialBench bench;
    QVERIFY(bench.waitUntilReady());
    TrialRunDriver::click(bench.drive().servoOn());
    TrialBench::settled();
    bench.peer.held = true;
    for (int i = 0; i < 3; ++i) {
        loseLink(bench);
        QCOMPARE(bench.peer.frames, (QList<QByteArray>{withdrawal, panel("0000")}));
    }
    // Once it has been answered, a lost link has nothing to stop.
    SerialPort::portOpened = true;
    bench.window->handleTrialRun(panel("0000"));
    loseLink(bench);
    QCOMPARE(bench.sent().count(panel("0000")), 0);
}

void TrialRunLinkLossTest::heldButtonEndsWithTheLink()
{
    TrialBench bench;
    QVERIFY(bench.waitUntilReady());
    TrialRunDriver::click(bench.drive().servoOn());
    TrialRunDriver::hold(bench.drive().jogForward());
    TrialBench::settled();
    bench.peer.held = true;
    loseLink(bench);
    QVERIFY(!bench.drive().jogForward()->isHeld());
    QCOMPARE(bench.sent().last(), panel("0000"));
    const int sent = bench.peer.frames.size();
    TrialRunDriver::letGo(bench.drive().jogForward());
    SerialPort::portOpened = true;
    QVERIFY(!runUntil([&] { return bench.peer.frames.size() > sent; }, 500));
}

void TrialRunLinkLossTest::continuousRunEndsWithTheLink()
{
    TrialBench bench;
    QVERIFY(bench.waitUntilReady());
    QVERIFY(bench.enterStepThree());
    TrialRunDriver::click(bench.drive().continuous());
    TrialBench::settled();
    TrialRunDriver::click(bench.drive().runButton("Run"));
    TrialBench::settled();
    QVERIFY(bench.drive().runButton("Pause"));
    loseLink(bench);
    QCOMPARE(bench.peer.frames.last(), panel("0000"));
    QVERIFY(bench.drive().runButton("Run"));
    QVERIFY(bench.drive().once()->isEnabled());
    QVERIFY(bench.drive().jogRun()->isEnabled());
}

void TrialRunLinkLossTest::pressWithoutLinkDoesNotLeave_data()
{
    QTest::addColumn<QString>("press");
    for (const char *press : {"servo on", "run", "move"})
        QTest::newRow(press) << QString::fromLatin1(press);
}

// What stays behind the last withdrawal is all that a link that comes back would send.
void TrialRunLinkLossTest::pressWithoutLinkDoesNotLeave()
{
    QFETCH(QString, press);
    TrialBench bench;
    QVERIFY(bench.waitUntilReady());
    if (press != QLatin1String("servo on")) {
        QVERIFY(bench.enterStepThree());
        TrialRunDriver::click(press == QLatin1String("run") ? bench.drive().continuous()
                                                            : bench.drive().once());
        TrialBench::settled();
    }
    bench.peer.held = true;
    loseLink(bench);
    bench.peer.frames.clear();
    if (press == QLatin1String("servo on"))
        TrialRunDriver::click(bench.drive().servoOn());
    else if (press == QLatin1String("run"))
        TrialRunDriver::click(bench.drive().runButton("Run"));
    else
        TrialRunDriver::hold(bench.drive().moveForward());
    TrialBench::settled();
    QVERIFY(bench.peer.frames.contains(withdrawal));
    const QList<QByteArray> left = bench.peer.frames.mid(bench.peer.frames.lastIndexOf(withdrawal) + 1);
    for (const char *moving : {"0001", "0101", "0201", "0401"})
        QVERIFY(!left.contains(panel(moving)));
    QVERIFY(!bench.drive().servoOff()->isEnabled());
    QVERIFY(bench.drive().runButton("Run"));
}

void TrialRunLinkLossTest::idleWindowSendsNothing()
{
    TrialBench bench;
    QVERIFY(bench.waitUntilReady());
    loseLink(bench);
    QCOMPARE(bench.peer.frames, QList<QByteArray>{withdrawal});
}

void TrialRunLinkLossTest::stalledSequenceWaitsForTheNextAct()
{
    TrialBench bench;
    QVERIFY(bench.waitUntilReady());
    QVERIFY(bench.enterStepThree());
    bench.peer.held = true;
    TrialRunDriver::click(bench.drive().once());
    loseLink(bench);
    SerialPort::portOpened = true;
    QVERIFY(!runUntil([&] { return bench.sent().size() > 1; }, 300));
    bench.peer.frames.clear();
    bench.peer.held = false;
    TrialRunDriver::click(bench.drive().continuous());
    TrialRunDriver::click(bench.drive().once());
    TrialBench::settled();
    QCOMPARE(TrialRunDriver::cell(bench.drive().positionTable(), 0),
             QString::number(bench.peer.registers.value(0x213B)));
}

void TrialRunLinkLossTest::addresslessFrameIsNotSentTwice()
{
    TrialBench bench;
    QVERIFY(bench.waitForAddressless());
    loseLink(bench);
    SerialPort::portOpened = true;
    TrialRunDriver::type(bench.drive().positionTable(), 2, QStringLiteral("7"));
    TrialBench::settled();
    QVERIFY(!bench.peer.frames.contains(addressless));
    QCOMPARE(bench.peer.registers.value(0x23EF), quint16(7));
    QCOMPARE(bench.peer.registers.value(0x23F5), quint16(7));
}

void TrialRunLinkLossTest::typedCellIsKept()
{
    TrialBench bench;
    QVERIFY(bench.waitUntilReady());
    bench.peer.held = true;
    TrialRunDriver::type(bench.drive().jogTable(), 0, QStringLiteral("1.2"));
    loseLink(bench);
    QCOMPARE(bench.peer.frames, (QList<QByteArray>{withdrawal, wire::frame("01062007000C")}));
}

QTEST_MAIN(TrialRunLinkLossTest)
#include "tst_trialrun_linkloss.moc"
