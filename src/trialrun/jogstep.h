// SPDX-License-Identifier: GPL-3.0-or-later
// Steps one and two of the trial run: the servo, the direction buttons, the JOG table, and the range that the
// motor has been seen in. Main thread; a member of TrialRun, which hands its slots on.
#pragma once

#include <QByteArray>
#include <QString>

class TrialRunPage;
class TrialSequence;

class JogStep
{
public:
    enum Direction { Forward, Rollback };

    JogStep(TrialSequence *trialSequence, TrialRunPage *trialPage);

    // The furthest points seen, in PUU.
    int forward() const { return forwardLimit; }
    int rollback() const { return rollbackLimit; }

    // The table holds no values of the drive any more, and its controls wait until it is read.
    void forgetTable();
    // Only now has everything been saved and set up that the controls work with.
    void tableStands();
    // The reply to a read of the table, and to a look at the position.
    void takeValue(int address, const QByteArray &bytes);
    void takePosition(const QByteArray &bytes);

    void servoOn();
    void servoOff();
    void showServoOff();
    void press(Direction direction);
    void release(Direction direction);
    // A cell that has been typed and has passed its check.
    void writeCell(int row, const QString &text);

private:
    void draw(Direction direction, bool pressed);

    TrialSequence *sequence;
    TrialRunPage *page;
    bool servoIsOn = false; // the last servo command sent was ON
    bool jogTableKnown = false;
    int forwardLimit = 0;    // PUU
    int rollbackLimit = 0;   // PUU
    int currentPosition = 0; // PUU
};
