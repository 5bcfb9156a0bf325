// SPDX-License-Identifier: GPL-3.0-or-later
#include "trialrun/jogstep.h"

#include "link/replies.h"
#include "trialrun/holdbutton.h"
#include "trialrun/trialframes.h"
#include "trialrun/trialrunpage.h"
#include "trialrun/trialsequence.h"
#include "trialrun/trialtable.h"
#include "widgets/indicationlable.h"
#include "widgets/labelgrop.h"

#include <QLabel>
#include <QTimer>

#include <cstdlib>

namespace {

constexpr int positionReadDelay = 10; // ms after a press

} // namespace

JogStep::JogStep(TrialSequence *trialSequence, TrialRunPage *trialPage)
    : sequence(trialSequence)
    , page(trialPage)
{
}

void JogStep::forgetTable()
{
    jogTableKnown = false;
    page->jogTable->setEnabled(false);
}

void JogStep::tableStands()
{
    jogTableKnown = true;
    page->jogTable->setEnabled(true);
    page->servoOnButton->setEnabled(!servoIsOn);
    page->positionRunButton->setEnabled(!page->jogRunButton->isEnabled());
}

void JogStep::takeValue(int address, const QByteArray &bytes)
{
    const int row = jogRowOf(address);
    if (row >= 0)
        page->jogTable->setValue(row, jogCellText(row, bytes));
}

void JogStep::takePosition(const QByteArray &bytes)
{
    const int value = signedNumber(bytes);
    const int forward = page->forwardLabel->valueLabel->text().toInt();
    const int rollback = page->rollbackLabel->valueLabel->text().toInt();
    page->rangeBar->currentValue = value;
    page->rangeBar->spanValue = std::abs(double(rollback)) + std::abs(double(forward));
    page->rangeBar->forwardValue = forward;
    page->rangeBar->rollbackValue = rollback;
    page->rangeBar->update();
    if (value > 0)
        forwardLimit = qMax(forwardLimit, value);
    else
        rollbackLimit = qMin(rollbackLimit, value);
    currentPosition = value;
    page->forwardLabel->valueLabel->setText(QString::number(forwardLimit));
    page->currentLabel->valueLabel->setText(QString::number(currentPosition));
    page->rollbackLabel->valueLabel->setText(QString::number(rollbackLimit));
}

void JogStep::servoOn()
{
    page->markStep(1, true);
    page->servoOnButton->setEnabled(false);
    page->servoOffButton->setEnabled(true);
    sequence->press(TrialStage::ServoOn, trialpanel::servoOn);
    sequence->readAbsolutePosition();
    servoIsOn = true;
    page->setJogButtonsEnabled(true);
    page->setStepEnabled(1, true);
    sequence->setPolling(true);
}

void JogStep::servoOff()
{
    sequence->settle(TrialStage::ServoOff, trialpanel::off);
    sequence->setPolling(false);
    showServoOff();
}

void JogStep::showServoOff()
{
    servoIsOn = false;
    page->servoOnButton->setEnabled(jogTableKnown);
    page->servoOffButton->setEnabled(false);
    page->setJogButtonsEnabled(false);
}

void JogStep::press(Direction direction)
{
    if (sequence->isRestoring())
        return;
    sequence->press(sequence->stage(),
                    direction == Forward ? trialpanel::jogForward : trialpanel::jogRollback);
    QTimer::singleShot(positionReadDelay, sequence, &TrialSequence::readAbsolutePosition);
    page->setStepEnabled(1, true);
    draw(direction, true);
}

void JogStep::release(Direction direction)
{
    sequence->settle(sequence->stage(), trialpanel::servoOn);
    draw(direction, false);
}

void JogStep::draw(Direction direction, bool pressed)
{
    if (direction == Forward)
        TrialRunPage::drawForward(page->jogForward, pressed);
    else
        TrialRunPage::drawRollback(page->jogRollback, pressed);
}

void JogStep::writeCell(int row, const QString &text)
{
    sequence->writeNow(jogCellFrame(row, text));
}
