// SPDX-License-Identifier: GPL-3.0-or-later
// What the trial run is doing, and what follows from it: the table by which its sequence reads replies and
// goes on at the end of a batch of frames. Constant data; any thread.
#pragma once

enum class TrialStage {
    Idle = 0,
    Saving = 1,
    SettingUp = 2,
    Restoring = 3, // the window is closing
    ServoOn = 4,
    ServoOff = 5,
    ReadingJog = 8,
    Polling = 9, // the absolute position
    EnteringStepThree = 10,
    ReadingOnce = 11,
    ReadingContinuous = 12,
    RunForward = 14,
    RunRollback = 15,
    ContinuousRun = 16,
    ContinuousPause = 17,
    WritingCellOnce = 18,
    WritingCellContinuous = 19,
    WritingTableContinuous = 21,
    WritingTableOnce = 22,
};

// What the last reply of a batch of frames leads to.
enum class TrialEnd {
    Nothing,
    SetUp,     // everything is saved: the set-up is written
    ReadJog,   // the drive is set up: the JOG table is read
    JogRead,   // the JOG table stands
    TableRead, // the position table stands
    Mirror,    // the same, and section 2 is written as the mirror of section 1
};

struct TrialStageRule
{
    TrialStage stage;
    bool saves;        // a reply becomes a restoring write
    bool fills;        // a reply to a read is a cell of a table
    bool expectsEdits; // what changes in the position table then was typed, not filled in
    TrialEnd end;
};

// The row of a stage.
const TrialStageRule &trialStageRule(TrialStage stage);
