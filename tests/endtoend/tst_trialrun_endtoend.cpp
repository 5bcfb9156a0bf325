// SPDX-License-Identifier: GPL-3.0-or-later
// The trial run at a simulated drive with a motor: it moves while it is held, and the drive is given back as
// it was, whatever the user and the line do.
#include "trialplace.h"

#include <QMdiArea>
#include <QMdiSubWindow>

using namespace trialplace;

class TrialRunEndToEndTest : public QObject
{
    Q_OBJECT

private slots:
    void wholeTrialRunMovesAndGivesTheDriveBack();
    void letGoStopsTheMotorOnABadLine_data();
    void letGoStopsTheMotorOnABadLine();
    void lostLinkStopsTheMotorForGood_data();
    void lostLinkStopsTheMotorForGood();
    void restoreGoesOnWhenTheLinkComesBack();
    void deadLinkLeavesTheSetUpBehind();
    void mainWindowWaitsForTheTrialRun();

private:
    static bool jogTo(const TrialRunDriver &drive, HoldButton *button,
                      const std::function<bool(int)> &reached);
};

bool TrialRunEndToEndTest::jogTo(const TrialRunDriver &drive, HoldButton *button,
                                 const std::function<bool(int)> &reached)
{
    TrialRunDriver::hold(button);
    const bool there = runUntil([&] { return reached(drive.currentPosition().toInt()); }, 20000);
    TrialRunDriver::letGo(button);
    return there;
}

void TrialRunEndToEndTest::wholeTrialRunMovesAndGivesTheDriveBack()
{
    ModalAnswers boxes;
    Workplace place;
    QVERIFY(connectTo(place, usb));
    const kt500sim::RegisterSnapshot before = place.drive->registers();
    const QPointer<TrialRun> window = open(place);
    QVERIFY(isReady(window));
    const TrialRunDriver drive(window);
    TrialRunDriver::type(drive.jogTable(), 0, QStringLiteral("300.0"));
    TrialRunDriver::click(drive.servoOn());

    const int start = position(place);
    QVERIFY(jogTo(drive, drive.jogForward(), [&](int now) { return now > start + 20000; }));
    QVERIFY(standsStill(place));
    QVERIFY(jogTo(drive, drive.jogRollback(), [&](int now) { return now < -20000; }));
    QVERIFY(standsStill(place));
    QVERIFY(drive.forwardLimit().toInt() > 20000);
    QVERIFY(drive.rollbackLimit().toInt() < -20000);

    TrialRunDriver::click(drive.positionRun());
    TrialRunDriver::click(drive.once());
    QVERIFY(runUntil([&] { return TrialRunDriver::opensForTyping(drive.positionTable(), 0); }, 3000));
    QVERIFY(!TrialRunDriver::cell(drive.positionTable(), 6).isEmpty());
    QCOMPARE(place.drive->readPair(818).value_or(0), drive.forwardLimit().toInt());
    QCOMPARE(place.drive->readPair(820).value_or(0), drive.rollbackLimit().toInt());
    TrialRunDriver::type(drive.positionTable(), 0, QStringLiteral("5000"));
    TrialRunDriver::type(drive.positionTable(), 1, QStringLiteral("300.0"));
    QVERIFY(standsStill(place));
    for (HoldButton *button : {drive.moveForward(), drive.moveRollback()}) {
        const int from = position(place);
        const int to = button == drive.moveForward() ? from + 5000 : from - 5000;
        TrialRunDriver::hold(button);
        QVERIFY(runUntil([&] { return std::abs(position(place) - to) < 100; }, 10000));
        TrialRunDriver::letGo(button);
        QVERIFY(standsStill(place));
    }

    TrialRunDriver::click(drive.continuous());
    QVERIFY(runUntil([&] { return place.drive->readPair(1010).value_or(0) == -5000; }, 3000));
    const int from = position(place);
    TrialRunDriver::click(drive.runButton("Run"));
    QVERIFY(runUntil([&] { return std::abs(position(place) - from) > 3000; }, 10000));
    TrialRunDriver::click(drive.runButton("Pause"));
    QVERIFY(standsStill(place));

    TrialRunDriver::click(drive.jogRun());
    QVERIFY(isReady(window));
    window->parentWidget()->close();
    QVERIFY(runUntil([&] { return window.isNull(); }, 5000));
    QVERIFY(
        runUntil([&] { return place.window()->findChild<QMdiArea *>()->subWindowList().isEmpty(); }, 2000));
    QCOMPARE(difference(place, before), QString());
}

void TrialRunEndToEndTest::letGoStopsTheMotorOnABadLine_data()
{
    addFaultRows(true);
    QTest::newRow("stream on") << int(passingFaults().size());
}

void TrialRunEndToEndTest::letGoStopsTheMotorOnABadLine()
{
    QFETCH(int, fault);
    ModalAnswers boxes;
    Workplace place;
    QVERIFY(connectTo(place, rs485));
    const QPointer<TrialRun> window = open(place);
    QVERIFY(isReady(window));
    const TrialRunDriver drive(window);
    TrialRunDriver::click(drive.servoOn());
    const int start = position(place);
    TrialRunDriver::hold(drive.jogForward());
    QVERIFY(runUntil([&] { return position(place) > start + 2000; }, 10000));
    if (fault == passingFaults().size())
        place.drive->setFault(QStringLiteral("stream on"));
    else if (fault >= 0)
        strike(place, passingFaults().at(fault));
    TrialRunDriver::letGo(drive.jogForward());
    QVERIFY(runUntil([&] { return place.drive->readRegister(panelOffset) == 1; }, 3000));
    QVERIFY(standsStill(place));
    QCOMPARE(int(place.drive->readRegister(panelOffset).value_or(0)), 1);
    close(window);
    QVERIFY(runUntil([&] { return window.isNull(); }, 8000));
}

void TrialRunEndToEndTest::lostLinkStopsTheMotorForGood_data()
{
    QTest::addColumn<bool>("pull");
    QTest::newRow("silent drive") << false;
    QTest::newRow("unplugged") << true;
}

void TrialRunEndToEndTest::lostLinkStopsTheMotorForGood()
{
    QFETCH(bool, pull);
    ModalAnswers boxes;
    boxes.expectPassing(linkFailed);
    Workplace place;
    QVERIFY(connectTo(place, usb));
    const kt500sim::RegisterSnapshot before = place.drive->registers();
    const QPointer<TrialRun> window = open(place);
    QVERIFY(isReady(window));
    const TrialRunDriver drive(window);
    TrialRunDriver::click(drive.servoOn());
    TrialRunDriver::hold(drive.jogForward());
    const int start = position(place);
    QVERIFY(runUntil([&] { return position(place) > start + 2000; }, 10000));
    if (pull)
        place.drive->hangUp(kt500sim::milliseconds(1500));
    else
        QVERIFY(place.drive->setFault(QStringLiteral("silence 1500")));
    QVERIFY(runUntil([&] { return !place.isShownOnline(); }, 10000));
    QVERIFY(runUntil([&] { return drive.servoOn()->isEnabled(); }, 2000));
    QVERIFY(!drive.jogForward()->isHeld());
    QVERIFY(runUntil([&] { return place.isShownOnline() && boxes.isDone(); }, 15000));
    QVERIFY(runUntil([&] { return place.drive->readRegister(panelOffset) == 0; }, 3000));
    QVERIFY(standsStill(place));
    TrialRunDriver::letGo(drive.jogForward());
    QCOMPARE(int(place.drive->readRegister(panelOffset).value_or(1)), 0);
    // A new press moves it again.
    TrialRunDriver::click(drive.servoOn());
    const int stopped = position(place);
    QVERIFY(jogTo(drive, drive.jogForward(), [&](int now) { return now > stopped + 2000; }));
    window->parentWidget()->close();
    QVERIFY(runUntil([&] { return window.isNull(); }, 8000));
    QCOMPARE(difference(place, before), QString());
}

void TrialRunEndToEndTest::restoreGoesOnWhenTheLinkComesBack()
{
    ModalAnswers boxes;
    boxes.expectPassing(linkFailed);
    Workplace place;
    QVERIFY(connectTo(place, usb));
    const kt500sim::RegisterSnapshot before = place.drive->registers();
    const QPointer<TrialRun> window = open(place);
    QVERIFY(isReady(window));
    atFrame(window, 8, [&] { place.drive->setFault(QStringLiteral("silence 1200")); });
    window->parentWidget()->close();
    QVERIFY(runUntil([&] { return window.isNull(); }, 15000));
    QVERIFY(runUntil([&] { return boxes.isDone(); }, 5000));
    QCOMPARE(difference(place, before), QString());
}

// What can't be restored: the drive keeps the set-up, and nothing of it is sent behind the user's back.
void TrialRunEndToEndTest::deadLinkLeavesTheSetUpBehind()
{
    ModalAnswers boxes;
    boxes.expectPassing(linkFailed);
    Workplace place;
    QVERIFY(connectTo(place, usb));
    const QPointer<TrialRun> window = open(place);
    QVERIFY(isReady(window));
    place.drive->hangUp(kt500sim::milliseconds(0));
    TrialRunDriver::type(TrialRunDriver(window).jogTable(), 1, QStringLiteral("77"));
    QVERIFY(runUntil([&] { return !place.isShownOnline(); }, 10000));
    const kt500sim::RegisterSnapshot left = place.drive->registers();
    window->parentWidget()->close();
    QVERIFY(runUntil([&] { return window.isNull(); }, 2000));
    place.drive->clearFaults();
    QVERIFY(runUntil([&] { return place.isShownOnline() && boxes.isDone(); }, 15000));
    QCOMPARE(difference(place, left), QString());
    QCOMPARE(int(place.drive->readRegister(200).value_or(0)), 0x0701);
    QCOMPARE(int(place.drive->readRegister(11).value_or(0)), 1);
    QCOMPARE(int(place.drive->readRegister(panelOffset).value_or(1)), 0);
}

void TrialRunEndToEndTest::mainWindowWaitsForTheTrialRun()
{
    ModalAnswers boxes;
    Workplace place;
    QVERIFY(connectTo(place, usb));
    const QPointer<TrialRun> window = open(place);
    QVERIFY(isReady(window));
    QCOMPARE(open(place), window.data());
    boxes.expect(QStringLiteral("Please close \"Trial Run\" window frist"));
    QVERIFY(!place.window()->close());
    window->parentWidget()->close();
    QVERIFY(runUntil([&] { return window.isNull(); }, 5000));
    QVERIFY(place.window()->close());
}

QTEST_MAIN(TrialRunEndToEndTest)
#include "tst_trialrun_endtoend.moc"
