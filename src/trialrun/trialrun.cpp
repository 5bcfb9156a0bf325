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
#include "widgets/messages.h"
#include "widgets/windowstate.h"

#include <QCloseEvent>
#include <QMessageBox>
#include <QPointer>
#include <QRadioButton>

namespace {

// Deliberate: these two texts stand in Chinese in either language.
const QString failedTitle = QStringLiteral("失败");
const QString failedText = QStringLiteral("初始参数回写失败！");

} // namespace

TrialRun::TrialRun(QWidget *parent)
    : QScrollArea(parent)
    , sequence(new TrialSequence(this))
    , page(new TrialRunPage)
    , jogStep(sequence, page)
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
    connect(sequence, &TrialSequence::positionTold, this,
            [this](const QByteArray &bytes) { jogStep.takePosition(bytes); });
    connect(sequence, &TrialSequence::jogTableRead, this, [this] { jogStep.tableStands(); });
    connect(sequence, &TrialSequence::positionTableRead, this,
            [this](TrialStage readIn) { positionStep.tableStands(readIn); });
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

// While the whole of it is there: the page's buttons would let go when the half of it that is left is hidden.
TrialRun::~TrialRun()
{
    endHolds();
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
    if (readIn == TrialStage::ReadingJog)
        jogStep.takeValue(address, bytes);
    else
        positionStep.takeValue(readIn, address, bytes);
}

void TrialRun::endHolds()
{
    for (HoldButton *button : {page->jogForward, page->jogRollback, page->moveForward, page->moveRollback})
        button->endHold();
}

void TrialRun::showMotionEnded()
{
    jogStep.showServoOff();
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
    jogStep.showServoOff();
    page->setStepEnabled(2, true);
    page->setStepEnabled(0, false);
    page->setStepEnabled(1, false);
    page->positionRunButton->setEnabled(false);
    page->jogRunButton->setEnabled(true);
    sequence->replaceReads(TrialStage::EnteringStepThree,
                           stepThreeFrames(jogStep.forward(), jogStep.rollback()));
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
    jogStep.forgetTable();
    jogStep.showServoOff();
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

void TrialRun::jogTableWidgetCellClicked(int, int column)
{
    page->jogTable->chooseTriggers(column);
}

void TrialRun::operationTableWidgetCellClicked(int, int column)
{
    page->positionTable->chooseTriggers(column);
}

void TrialRun::buttonReleasedSlt() {}

void TrialRun::servoOnSlt()
{
    if (!sequence->isRestoring())
        jogStep.servoOn();
}

void TrialRun::servoOFFSlt()
{
    endHolds();
    if (!sequence->isRestoring())
        jogStep.servoOff();
}

void TrialRun::jogforewardPressedSlt()
{
    jogStep.press(JogStep::Forward);
}

void TrialRun::jogforewardReleasedSlt()
{
    jogStep.release(JogStep::Forward);
}

void TrialRun::jogrollbackPressedSlt()
{
    jogStep.press(JogStep::Rollback);
}

void TrialRun::jogrollbackReleasedSlt()
{
    jogStep.release(JogStep::Rollback);
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
        jogStep.writeCell(item->row(), item->text());
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
