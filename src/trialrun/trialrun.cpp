// SPDX-License-Identifier: GPL-3.0-or-later
#include "trialrun/trialrun.h"

#include "link/replies.h"
#include "link/windownames.h"
#include "trialrun/cellinput.h"
#include "trialrun/holdbutton.h"
#include "trialrun/trialframes.h"
#include "trialrun/trialrunpage.h"
#include "trialrun/trialsequence.h"
#include "trialrun/trialtable.h"
#include "widgets/indicationlable.h"
#include "widgets/labelgrop.h"
#include "widgets/messages.h"
#include "widgets/windowstate.h"

#include <QCloseEvent>
#include <QLabel>
#include <QMessageBox>
#include <QPointer>
#include <QRadioButton>
#include <QTimer>

#include <cstdlib>

namespace {

constexpr int positionReadDelay = 10; // ms after a press

// Deliberate: these two texts stand in Chinese in either language.
const QString failedTitle = QStringLiteral("失败");
const QString failedText = QStringLiteral("初始参数回写失败！");

} // namespace

TrialRun::TrialRun(QWidget *parent)
    : QScrollArea(parent)
    , sequence(new TrialSequence(this))
    , page(new TrialRunPage)
    , positionStep(sequence, page)
{
    setWindowTitle(title());
    setWidget(page);
    setWidgetResizable(true);
    connectSequence();
    connectPage();
    sequence->start();
}

QString TrialRun::title()
{
    return tr("Trial Run");
}

void TrialRun::connectSequence()
{
    connect(sequence, &TrialSequence::frameReady, this,
            [this](const QByteArray &frame) { emit writeToSerialPort(frame, trialRunLinkName); });
    connect(sequence, &TrialSequence::withdrawNeeded, this,
            [this] { emit withdrawRequests(trialRunLinkName); });
    connect(sequence, &TrialSequence::valueRead, this, &TrialRun::takeValue);
    connect(sequence, &TrialSequence::positionTold, this, &TrialRun::takePosition);
    connect(sequence, &TrialSequence::jogTableRead, this, &TrialRun::jogTableStands);
    connect(sequence, &TrialSequence::continuousTableRead, this, [this] {
        sequence->continueWith(TrialStage::Idle, mirrorFrames(page->positionTable->values()));
    });
    connect(sequence, &TrialSequence::linkMissed, this, &TrialRun::linkEnded);
    connect(sequence, &TrialSequence::motionEnded, this, &TrialRun::showMotionEnded);
    connect(sequence, &TrialSequence::restored, this, [this] { finishClosing(false); });
    connect(sequence, &TrialSequence::restoreFailed, this, [this] { finishClosing(true); });
}

void TrialRun::connectPage()
{
    connect(page->servoOnButton, &QPushButton::clicked, this, &TrialRun::servoOnSlt);
    connect(page->servoOffButton, &QPushButton::clicked, this, &TrialRun::servoOFFSlt);
    connect(page->jogForward, &HoldButton::holdBegan, this, &TrialRun::jogforewardPressedSlt);
    connect(page->jogForward, &HoldButton::holdEnded, this, &TrialRun::jogforewardReleasedSlt);
    connect(page->jogRollback, &HoldButton::holdBegan, this, &TrialRun::jogrollbackPressedSlt);
    connect(page->jogRollback, &HoldButton::holdEnded, this, &TrialRun::jogrollbackReleasedSlt);
    connect(page->jogTable, &QTableWidget::itemChanged, this, &TrialRun::jogitemChanged);
    connect(page->jogTable, &QTableWidget::cellClicked, this, &TrialRun::jogTableWidgetCellClicked);

    connect(page->onceButton, &QRadioButton::toggled, this, &TrialRun::singleBtnToggledSlt);
    connect(page->continuousButton, &QRadioButton::toggled, this, &TrialRun::continuousBtnToggledSlt);
    connect(page->moveForward, &HoldButton::holdBegan, this, &TrialRun::positionforewardPressedSlt);
    connect(page->moveForward, &HoldButton::holdEnded, this, &TrialRun::positionforewardReleasedSlt);
    connect(page->moveRollback, &HoldButton::holdBegan, this, &TrialRun::positionrollbackPressedSlt);
    connect(page->moveRollback, &HoldButton::holdEnded, this, &TrialRun::positionrollbackReleasedSlt);
    connect(page->runButton, &QPushButton::clicked, this, &TrialRun::positionPauseBtnSlt);
    connect(page->positionTable, &QTableWidget::itemChanged, this, &TrialRun::positionItemChanged);
    connect(page->positionTable, &QTableWidget::cellClicked, this,
            &TrialRun::operationTableWidgetCellClicked);

    connect(page->jogRunButton, &QPushButton::clicked, this, &TrialRun::previousStepSlt);
    connect(page->positionRunButton, &QPushButton::clicked, this, &TrialRun::nextStepSlt);
}

void TrialRun::handleTrialRun(QByteArray b)
{
    sequence->handleReply(b);
}

// The hold ends first, so that nothing follows the zero with which the sequence ends all motion.
void TrialRun::linkEnded()
{
    endHolds();
    sequence->linkEnded();
}

void TrialRun::saveInitValue()
{
    sequence->saveInitValue();
}

void TrialRun::initWrite()
{
    sequence->initWrite();
}

void TrialRun::readJogValues()
{
    sequence->readJogValues();
}

void TrialRun::readAbsolutePosition()
{
    sequence->readAbsolutePosition();
}

void TrialRun::takeValue(TrialStage readIn, int address, const QByteArray &bytes)
{
    if (readIn == TrialStage::Saving) {
        if (address == trialregister::waitTime)
            positionStep.setWaitTime(signedNumber(bytes));
        return;
    }
    if (readIn == TrialStage::ReadingJog) {
        const int row = jogRowOf(address);
        if (row >= 0)
            page->jogTable->setValue(row, jogCellText(row, bytes));
        return;
    }
    positionStep.takeValue(readIn, address, bytes);
}

void TrialRun::takePosition(const QByteArray &bytes)
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

// Only now has everything been saved and set up that the controls of step one work with.
void TrialRun::jogTableStands()
{
    jogTableKnown = true;
    page->jogTable->setEnabled(true);
    page->servoOnButton->setEnabled(!servoIsOn);
    page->positionRunButton->setEnabled(!page->jogRunButton->isEnabled());
}

void TrialRun::endHolds()
{
    for (HoldButton *button : {page->jogForward, page->jogRollback, page->moveForward, page->moveRollback})
        button->endHold();
}

void TrialRun::showServoOff()
{
    servoIsOn = false;
    page->servoOnButton->setEnabled(jogTableKnown);
    page->servoOffButton->setEnabled(false);
    page->setJogButtonsEnabled(false);
}

void TrialRun::showMotionEnded()
{
    showServoOff();
    if (!page->isRunning())
        return;
    page->setRunning(false);
    page->onceButton->setEnabled(true);
    page->jogRunButton->setEnabled(true);
}

void TrialRun::nextStepSlt()
{
    endHolds();
    if (sequence->isRestoring())
        return;
    sequence->setPolling(false);
    showServoOff();
    page->setStepEnabled(2, true);
    page->setStepEnabled(0, false);
    page->setStepEnabled(1, false);
    page->positionRunButton->setEnabled(false);
    page->jogRunButton->setEnabled(true);
    sequence->replaceReads(TrialStage::EnteringStepThree, stepThreeFrames(forwardLimit, rollbackLimit));
    page->markOnly(2);
    page->jogTable->clearValues();
    positionStep.forgetTable();
}

void TrialRun::previousStepSlt()
{
    endHolds();
    if (sequence->isRestoring())
        return;
    sequence->settle(TrialStage::ServoOff, trialpanel::off);
    jogTableKnown = false;
    page->jogTable->setEnabled(false);
    showServoOff();
    page->setStepEnabled(0, true);
    page->positionRunButton->setEnabled(true);
    page->jogRunButton->setEnabled(false);
    page->markOnly(0);
    page->setLabelEnabled(1, false);
    page->setLabelEnabled(2, false);
    for (QRadioButton *mode : {page->onceButton, page->continuousButton}) {
        mode->setEnabled(true);
        mode->setCheckable(false);
        mode->setCheckable(true);
    }
    page->setRunning(false);
    page->setRunEnabled(false);
    page->setMoveButtonsEnabled(false);
    page->setStepEnabled(2, false);
    initWrite();
}

// What is typed while the drive's values fill a table would be shown and never written.
void TrialRun::jogTableWidgetCellClicked(int, int column)
{
    page->jogTable->chooseTriggers(column, !sequence->isReadingTable());
}

void TrialRun::operationTableWidgetCellClicked(int, int column)
{
    page->positionTable->chooseTriggers(column, !sequence->isReadingTable());
}

void TrialRun::buttonReleasedSlt() {}

void TrialRun::servoOnSlt()
{
    if (sequence->isRestoring())
        return;
    page->markStep(1, true);
    page->servoOnButton->setEnabled(false);
    page->servoOffButton->setEnabled(true);
    sequence->press(TrialStage::ServoOn, trialpanel::servoOn);
    readAbsolutePosition();
    servoIsOn = true;
    page->setJogButtonsEnabled(true);
    page->setStepEnabled(1, true);
    sequence->setPolling(true);
}

void TrialRun::servoOFFSlt()
{
    endHolds();
    if (sequence->isRestoring())
        return;
    sequence->settle(TrialStage::ServoOff, trialpanel::off);
    sequence->setPolling(false);
    showServoOff();
}

void TrialRun::jogPressed(int panelValue)
{
    if (sequence->isRestoring())
        return;
    sequence->press(sequence->stage(), panelValue);
    QTimer::singleShot(positionReadDelay, this, [this] { readAbsolutePosition(); });
    page->setStepEnabled(1, true);
}

void TrialRun::jogReleased()
{
    sequence->settle(sequence->stage(), trialpanel::servoOn);
}

void TrialRun::jogforewardPressedSlt()
{
    jogPressed(trialpanel::jogForward);
    TrialRunPage::drawForward(page->jogForward, true);
}

void TrialRun::jogforewardReleasedSlt()
{
    jogReleased();
    TrialRunPage::drawForward(page->jogForward, false);
}

void TrialRun::jogrollbackPressedSlt()
{
    jogPressed(trialpanel::jogRollback);
    TrialRunPage::drawRollback(page->jogRollback, true);
}

void TrialRun::jogrollbackReleasedSlt()
{
    jogReleased();
    TrialRunPage::drawRollback(page->jogRollback, false);
}

bool TrialRun::checkCellInput(const QString &rangeText, const QString &cellText)
{
    if (isWellFormedCell(rangeText, cellText))
        return true;
    QMessageBox::critical(this, QString(), tr("Paramter Value Input Error!"));
    return false;
}

// True for a value that may be written; any other is told, and its cell is blank afterwards.
bool TrialRun::checkCell(TrialTable *table, const QTableWidgetItem *item)
{
    const int row = item->row();
    const QString range = table->range(row);
    const QString text = item->text();
    const QPointer<TrialRun> self(this);
    bool good = checkCellInput(range, text);
    if (good) {
        const CellRange ends = cellRange(range);
        const double value = text.toDouble();
        good = value >= ends.min && value <= ends.max;
        if (value > ends.max)
            showMessage(
                tr("Input value execteeds the range!\n \nMax:%1").arg(QString::number(ends.max, 'g', 6)));
        else if (value < ends.min)
            showMessage(
                tr("Input value execteeds the range!\n \nMin:%1").arg(QString::number(ends.min, 'g', 6)));
    }
    if (!good && self)
        table->setValue(row, QString());
    return good;
}

void TrialRun::jogitemChanged(QTableWidgetItem *item)
{
    if (item->column() != TrialTable::ValueColumn || item->text().isEmpty() ||
        sequence->stage() == TrialStage::ReadingJog || sequence->isRestoring())
        return;
    if (checkCell(page->jogTable, item))
        sequence->writeNow(jogCellFrame(item->row(), item->text()));
}

void TrialRun::singleBtnToggledSlt(bool checked)
{
    if (checked && !sequence->isRestoring())
        positionStep.chooseOnce();
}

void TrialRun::continuousBtnToggledSlt(bool checked)
{
    if (!checked || sequence->isRestoring())
        return;
    endHolds();
    positionStep.chooseContinuous();
}

void TrialRun::positionforewardPressedSlt()
{
    positionStep.press(PositionStep::Forward);
}

void TrialRun::positionforewardReleasedSlt()
{
    positionStep.release(PositionStep::Forward);
}

void TrialRun::positionrollbackPressedSlt()
{
    positionStep.press(PositionStep::Rollback);
}

void TrialRun::positionrollbackReleasedSlt()
{
    positionStep.release(PositionStep::Rollback);
}

void TrialRun::positionPauseBtnSlt()
{
    if (!sequence->isRestoring())
        positionStep.runOrPause();
}

void TrialRun::positionItemChanged(QTableWidgetItem *item)
{
    if (item->column() != TrialTable::ValueColumn || item->text().isEmpty() ||
        !trialStageRule(sequence->stage()).expectsEdits)
        return;
    if (checkCell(page->positionTable, item))
        positionStep.writeCell(item->row(), item->text());
}

void TrialRun::changeEvent(QEvent *event)
{
    QScrollArea::changeEvent(event);
    if (event->type() == QEvent::WindowStateChange)
        emit windowStateChanged(reportedWindowState(this, isClosing));
}

void TrialRun::hideEvent(QHideEvent *event)
{
    QScrollArea::hideEvent(event);
    emit windowStateChanged(QString());
}

void TrialRun::closeEvent(QCloseEvent *event)
{
    endHolds();
    if (sequence->requestClose() == TrialSequence::Closing::WhenRestored) {
        page->setEnabled(false);
        event->ignore();
        return;
    }
    isClosing = true;
    QScrollArea::closeEvent(event);
}

void TrialRun::finishClosing(bool failed)
{
    const QPointer<TrialRun> self(this);
    emit closeTrialRunWindow();
    if (failed)
        QMessageBox::critical(this, failedTitle, failedText);
    if (self)
        close();
}
