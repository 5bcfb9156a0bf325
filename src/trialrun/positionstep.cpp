// SPDX-License-Identifier: GPL-3.0-or-later
#include "trialrun/positionstep.h"

#include "link/replies.h"
#include "trialrun/holdbutton.h"
#include "trialrun/trialframes.h"
#include "trialrun/trialrunpage.h"
#include "trialrun/trialsequence.h"
#include "trialrun/trialtable.h"

#include <QRadioButton>

#include <cstdlib>
#include <limits>

PositionStep::PositionStep(TrialSequence *trialSequence, TrialRunPage *trialPage)
    : sequence(trialSequence)
    , page(trialPage)
{
    forgetTable();
}

// What is typed before a mode is chosen goes nowhere, and would be shown as if the drive had it.
void PositionStep::forgetTable()
{
    tableUnread = true;
    page->positionTable->setAcceptsEdits(false);
}

// A value that the drive refuses to tell stays blank. What is typed meanwhile would be shown and never
// written.
void PositionStep::readTable(TrialStage stage)
{
    page->positionTable->setAcceptsEdits(false);
    page->positionTable->clearValues();
    sequence->replaceReads(stage, stage == TrialStage::ReadingOnce ? onceReads() : continuousReads());
}

void PositionStep::tableStands(TrialStage readIn)
{
    page->positionTable->setAcceptsEdits(true);
    if (readIn == TrialStage::ReadingContinuous)
        sequence->continueWith(TrialStage::Idle, mirrorFrames(page->positionTable->values()));
}

void PositionStep::takeValue(TrialStage readIn, int address, const QByteArray &bytes)
{
    const int row = positionRowOf(address);
    if (row >= 0)
        page->positionTable->setValue(row, positionCellText(row, bytes));
    if (readIn == TrialStage::ReadingOnce && address == trialregister::movingDistance)
        movingDistance = signedNumber(bytes);
    if (address == trialregister::lastOfTable)
        tableUnread = false;
}

QStringList PositionStep::cellsToWrite()
{
    const QStringList cells = page->positionTable->values();
    if (!cells.at(distanceRow).isEmpty())
        movingDistance = cells.at(distanceRow).toInt();
    return cells;
}

void PositionStep::chooseOnce()
{
    page->positionTable->setRowEditable(waitRow, false);
    page->setMoveButtonsEnabled(true);
    page->setRunEnabled(false);
    if (tableUnread) {
        // Nothing is moved by a distance that is not shown.
        movingDistance = 0;
        readTable(TrialStage::ReadingOnce);
        return;
    }
    sequence->continueWith(TrialStage::WritingTableOnce, onceTableFrames(cellsToWrite()));
}

void PositionStep::chooseContinuous()
{
    page->positionTable->setRowEditable(waitRow, true);
    page->setMoveButtonsEnabled(false);
    page->setRunEnabled(true);
    if (tableUnread) {
        readTable(TrialStage::ReadingContinuous);
        return;
    }
    page->positionTable->setValue(waitRow, QString::number(waitTime));
    sequence->continueWith(TrialStage::WritingTableContinuous, continuousTableFrames(cellsToWrite()));
    sequence->settle(TrialStage::ServoOff, trialpanel::off);
}

// A press is refused while the table is being read, since the distance is not known yet.
void PositionStep::press(Direction direction)
{
    // The lowest number has no counterpart: as it is, it would move back on a forward press.
    if (direction == Forward)
        movingDistance = std::abs(qMax(movingDistance, -std::numeric_limits<int>::max()));
    else if (movingDistance > 0)
        movingDistance = -movingDistance;
    pressRefused = sequence->isRestoring() || sequence->isReadingTable();
    if (pressRefused)
        return;
    page->continuousButton->setEnabled(false);
    sequence->pressMove(direction == Forward ? TrialStage::RunForward : TrialStage::RunRollback,
                        movingDistance);
    draw(direction, true);
}

void PositionStep::release(Direction direction)
{
    const bool wasRefused = pressRefused;
    pressRefused = false;
    if (wasRefused || sequence->isRestoring())
        return;
    page->continuousButton->setEnabled(true);
    sequence->settle(TrialStage::Idle, trialpanel::servoOn);
    draw(direction, false);
}

void PositionStep::draw(Direction direction, bool pressed)
{
    if (direction == Forward)
        TrialRunPage::drawForward(page->moveForward, pressed);
    else
        TrialRunPage::drawRollback(page->moveRollback, pressed);
}

void PositionStep::runOrPause()
{
    sequence->writeNow(positionSource());
    const bool start = !page->isRunning();
    page->onceButton->setEnabled(!start);
    page->jogRunButton->setEnabled(!start);
    page->setRunning(start);
    if (start)
        sequence->press(TrialStage::ContinuousRun, trialpanel::servoOn);
    else
        sequence->settle(TrialStage::ContinuousPause, trialpanel::off);
}

void PositionStep::writeCell(int row, const QString &text)
{
    if (page->onceButton->isChecked()) {
        sequence->setStage(TrialStage::WritingCellOnce);
        if (row == distanceRow)
            movingDistance = text.toInt();
        sequence->writeNow(onceCellFrame(row, text));
    } else if (page->continuousButton->isChecked()) {
        if (row == waitRow)
            waitTime = text.toInt();
        sequence->continueWith(TrialStage::WritingCellContinuous, continuousCellFrames(row, text));
    }
}
