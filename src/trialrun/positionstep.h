// SPDX-License-Identifier: GPL-3.0-or-later
// Step three of the trial run: both modes with the values that they share, moves by a held button, and the
// continuous run. Main thread; a member of TrialRun, which hands its slots on.
#pragma once

#include "trialrun/trialstage.h"

#include <QByteArray>
#include <QString>

class TrialRunPage;
class TrialSequence;

class PositionStep
{
public:
    enum Direction { Forward, Rollback };

    PositionStep(TrialSequence *trialSequence, TrialRunPage *trialPage);

    // The table holds no values of the drive any more: the next choice of a mode reads it.
    void forgetTable();
    void setWaitTime(int time) { waitTime = time; }
    // The reply to a read of the table.
    void takeValue(TrialStage readIn, int address, const QByteArray &bytes);
    // All of them are in.
    void tableStands(TrialStage readIn);

    void chooseOnce();
    void chooseContinuous();
    void press(Direction direction);
    void release(Direction direction);
    void runOrPause();
    // A cell that has been typed and has passed its check.
    void writeCell(int row, const QString &text);

private:
    void draw(Direction direction, bool pressed);
    void readTable(TrialStage stage);
    // The cells of the table, whose distance is that of the next move too.
    QStringList cellsToWrite();

    TrialSequence *sequence;
    TrialRunPage *page;
    bool tableUnread = true; // the table has no values of the drive yet
    bool pressRefused = false;
    int movingDistance = 0; // PUU, with the sign of the last direction
    int waitTime = 0;       // ms
};
