// SPDX-License-Identifier: GPL-3.0-or-later
#include "trialrun/trialrunpage.h"

#include "trialrun/holdbutton.h"
#include "trialrun/trialframes.h"
#include "trialrun/trialtable.h"
#include "widgets/indicationlable.h"
#include "widgets/labelgrop.h"

#include <QCoreApplication>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QPalette>
#include <QPushButton>
#include <QRadioButton>

namespace {

constexpr QSize pageSize{900, 600};
constexpr QSize pictureSize{48, 48};
constexpr int labelWidth = 112; // pixels
constexpr int barHeight = 46;   // pixels
constexpr int sideWidth = 210;  // pixels
constexpr QRgb disabledText = 0xFF606060;

// The colour of a step would hide that a button in it may not be used.
const QString disabledStyle = QStringLiteral("QPushButton:disabled{color:gray}");
const QString currentStyle =
    QStringLiteral("background-color:rgb(232, 238, 247);border:2px solid rgb(0, 0, 0)");
const QString otherStyle = QStringLiteral("background-color:#c3c4c4;border:2px solid rgb(0, 0, 0)");

// One picture in every mode: a button that may not be used has a picture of its own.
void draw(QPushButton *button, const QString &name)
{
    const QString file = QLatin1String(":/pic/pic/") + name + QLatin1String(".png");
    QIcon icon(file);
    icon.addFile(file, QSize(), QIcon::Disabled);
    button->setIcon(icon);
    button->setIconSize(pictureSize);
}

QStringList headers()
{
    return {QCoreApplication::translate("TrialRunPage", "Parameters"),
            QCoreApplication::translate("TrialRunPage", "Range"),
            QCoreApplication::translate("TrialRunPage", "Uint"),
            QCoreApplication::translate("TrialRunPage", "Value")};
}

template <typename Rows>
void fill(TrialTable *table, const Rows &rows)
{
    for (int row = 0; row < table->rowCount(); ++row) {
        const auto &rule = rows.at(size_t(row));
        table->setRow(row, QCoreApplication::translate("TrialRun", rule.name), QLatin1String(rule.range),
                      QLatin1String(rule.unit));
    }
}

} // namespace

TrialRunPage::TrialRunPage(QWidget *parent)
    : QWidget(parent)
{
    setMinimumSize(pageSize);
    setFont(QFont(QStringLiteral("微软雅黑")));
    auto *const grid = new QGridLayout(this);
    addStep(grid, 0, tr("Frist Step"), tr("Run JOG"));
    addStep(grid, 1, tr("Second Step"), tr("Position Pnformation(Uint: PUU)"));
    addStep(grid, 2, tr("Third Step"), tr("Position Operation"));
    buildJog();
    buildRange();
    buildPosition();
    grid->addWidget(buildFoot(), stepCount, 0, 1, 2);
    grid->setColumnStretch(1, 1);

    markOnly(0);
    setStepEnabled(0, true);
    for (const int step : {1, 2}) {
        setStepEnabled(step, false);
        setLabelEnabled(step, false);
    }
}

QGroupBox *TrialRunPage::addStep(QGridLayout *grid, int step, const QString &label, const QString &title)
{
    auto *const name = new QLabel(label);
    name->setObjectName(QStringLiteral("stepLabel%1").arg(step + 1));
    name->setAlignment(Qt::AlignCenter);
    name->setFixedWidth(labelWidth);
    // The usual colour of what is disabled can't be read on the ground of a step that is not current.
    QPalette palette = name->palette();
    palette.setColor(QPalette::Disabled, QPalette::WindowText, disabledText);
    name->setPalette(palette);
    auto *const box = new QGroupBox(title);
    box->setObjectName(QStringLiteral("stepBox%1").arg(step + 1));
    stepLabels.at(size_t(step)) = name;
    stepBoxes.at(size_t(step)) = box;
    grid->addWidget(name, step, 0);
    grid->addWidget(box, step, 1);
    return box;
}

void TrialRunPage::buildJog()
{
    jogTable = new TrialTable(headers(), jogRowCount);
    jogTable->setObjectName(QStringLiteral("jogTable"));
    fill(jogTable, jogRows);
    jogTable->setEnabled(false);
    servoOnButton = new QPushButton(tr("Servo ON"));
    servoOnButton->setStyleSheet(disabledStyle);
    servoOnButton->setObjectName(QStringLiteral("servoOnButton"));
    servoOnButton->setEnabled(false);
    servoOffButton = new QPushButton(tr("Servo OFF"));
    servoOffButton->setStyleSheet(disabledStyle);
    servoOffButton->setObjectName(QStringLiteral("servoOffButton"));
    servoOffButton->setEnabled(false);
    jogForward = new HoldButton;
    jogForward->setObjectName(QStringLiteral("jogForwardButton"));
    jogForward->setToolTip(tr("Forward: the motor turns while the button is held"));
    jogRollback = new HoldButton;
    jogRollback->setObjectName(QStringLiteral("jogRollbackButton"));
    jogRollback->setToolTip(tr("Rollback: the motor turns while the button is held"));
    setJogButtonsEnabled(false);

    auto *const side = new QWidget;
    side->setFixedWidth(sideWidth);
    auto *const grid = new QGridLayout(side);
    grid->addWidget(servoOnButton, 0, 0);
    grid->addWidget(servoOffButton, 0, 1);
    grid->addWidget(jogForward, 1, 0);
    grid->addWidget(jogRollback, 1, 1);
    auto *const layout = new QHBoxLayout(stepBoxes.at(0));
    layout->addWidget(jogTable, 1);
    layout->addWidget(side);
}

void TrialRunPage::buildRange()
{
    forwardLabel = new LabelGrop(tr("Forward limit position"));
    forwardLabel->setObjectName(QStringLiteral("forwardLabel"));
    currentLabel = new LabelGrop(tr("Current position"));
    currentLabel->setObjectName(QStringLiteral("currentLabel"));
    rollbackLabel = new LabelGrop(tr("Rollback limit position"));
    rollbackLabel->setObjectName(QStringLiteral("rollbackLabel"));
    rangeBar = new IndicationLable;
    rangeBar->setObjectName(QStringLiteral("rangeBar"));
    rangeBar->setFixedHeight(barHeight);
    auto *const grid = new QGridLayout(stepBoxes.at(1));
    grid->setSpacing(0);
    grid->addWidget(forwardLabel, 0, 0);
    grid->addWidget(currentLabel, 0, 1);
    grid->addWidget(rollbackLabel, 0, 2);
    grid->addWidget(rangeBar, 1, 0, 1, 3);
}

void TrialRunPage::buildPosition()
{
    positionTable = new TrialTable(headers(), positionRowCount);
    positionTable->setObjectName(QStringLiteral("positionTable"));
    fill(positionTable, positionRows);
    positionTable->setRowEditable(waitRow, false);
    onceButton = new QRadioButton(tr("Once"));
    onceButton->setObjectName(QStringLiteral("onceButton"));
    continuousButton = new QRadioButton(tr("Continuous"));
    continuousButton->setObjectName(QStringLiteral("continuousButton"));
    moveForward = new HoldButton;
    moveForward->setObjectName(QStringLiteral("moveForwardButton"));
    moveForward->setToolTip(tr("Forward: one move for each press"));
    moveRollback = new HoldButton;
    moveRollback->setObjectName(QStringLiteral("moveRollbackButton"));
    moveRollback->setToolTip(tr("Rollback: one move for each press"));
    runButton = new QPushButton;
    runButton->setFlat(true);
    runButton->setToolTip(tr("Run and pause"));
    setRunning(false);
    setMoveButtonsEnabled(false);
    setRunEnabled(false);

    auto *const side = new QWidget;
    side->setFixedWidth(sideWidth);
    auto *const grid = new QGridLayout(side);
    grid->addWidget(onceButton, 0, 0, 1, 3);
    grid->addWidget(continuousButton, 1, 0, 1, 3);
    grid->addWidget(moveForward, 2, 0);
    grid->addWidget(runButton, 2, 1);
    grid->addWidget(moveRollback, 2, 2);
    auto *const layout = new QHBoxLayout(stepBoxes.at(2));
    layout->addWidget(positionTable, 1);
    layout->addWidget(side);
}

QWidget *TrialRunPage::buildFoot()
{
    jogRunButton = new QPushButton(tr("JOG RUN"));
    jogRunButton->setObjectName(QStringLiteral("jogRunButton"));
    jogRunButton->setEnabled(false);
    positionRunButton = new QPushButton(tr("Position RUN"));
    positionRunButton->setObjectName(QStringLiteral("positionRunButton"));
    positionRunButton->setEnabled(false);
    auto *const foot = new QWidget;
    auto *const layout = new QHBoxLayout(foot);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addStretch(1);
    layout->addWidget(jogRunButton);
    layout->addStretch(1);
    layout->addWidget(positionRunButton);
    layout->addStretch(1);
    return foot;
}

void TrialRunPage::setStepEnabled(int step, bool enabled)
{
    QGroupBox *const box = stepBoxes.at(size_t(step));
    box->setEnabled(enabled);
    box->setStyleSheet(enabled ? QStringLiteral("color:black") : QStringLiteral("color:gray"));
}

void TrialRunPage::markStep(int step, bool current)
{
    stepLabels.at(size_t(step))->setStyleSheet(current ? currentStyle : otherStyle);
    if (current)
        setLabelEnabled(step, true);
}

void TrialRunPage::setLabelEnabled(int step, bool enabled)
{
    stepLabels.at(size_t(step))->setEnabled(enabled);
}

void TrialRunPage::markOnly(int step)
{
    for (int other = 0; other < stepCount; ++other)
        markStep(other, other == step);
}

void TrialRunPage::setJogButtonsEnabled(bool enabled)
{
    jogForward->setEnabled(enabled);
    jogRollback->setEnabled(enabled);
    drawForward(jogForward, !enabled);
    drawRollback(jogRollback, !enabled);
}

void TrialRunPage::setMoveButtonsEnabled(bool enabled)
{
    moveForward->setEnabled(enabled);
    moveRollback->setEnabled(enabled);
    drawForward(moveForward, !enabled);
    drawRollback(moveRollback, !enabled);
}

void TrialRunPage::setRunEnabled(bool enabled)
{
    runButton->setEnabled(enabled);
    draw(runButton, enabled ? QStringLiteral("run") : QStringLiteral("runPressed"));
}

void TrialRunPage::setRunning(bool running)
{
    runButton->setObjectName(running ? QStringLiteral("Pause") : QStringLiteral("Run"));
    draw(runButton, running ? QStringLiteral("pause") : QStringLiteral("run"));
}

bool TrialRunPage::isRunning() const
{
    return runButton->objectName() == QLatin1String("Pause");
}

void TrialRunPage::drawForward(HoldButton *button, bool pressed)
{
    draw(button, pressed ? QStringLiteral("forewardPressed") : QStringLiteral("foreward"));
}

void TrialRunPage::drawRollback(HoldButton *button, bool pressed)
{
    draw(button, pressed ? QStringLiteral("rollbackPressed") : QStringLiteral("rollback"));
}
