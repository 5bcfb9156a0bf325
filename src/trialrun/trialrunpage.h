// SPDX-License-Identifier: GPL-3.0-or-later
// The page of the trial run: three steps, one below the other, and how each is drawn. Knows no drive.
// Main thread; owned by TrialRun, which works its widgets.
#pragma once

#include <QWidget>

#include <array>

class HoldButton;
class IndicationLable;
class LabelGrop;
class QGridLayout;
class QGroupBox;
class QLabel;
class QPushButton;
class QRadioButton;
class TrialTable;

class TrialRunPage : public QWidget
{
    Q_OBJECT

public:
    explicit TrialRunPage(QWidget *parent = nullptr);

    // Steps count from 0.
    void setStepEnabled(int step, bool enabled);
    void markStep(int step, bool current);
    void setLabelEnabled(int step, bool enabled);
    void markOnly(int step);

    // The direction buttons of step one: usable ones are drawn plain.
    void setJogButtonsEnabled(bool enabled);
    // Those of step three.
    void setMoveButtonsEnabled(bool enabled);
    void setRunEnabled(bool enabled);
    // The state of the run button, which is its object name.
    void setRunning(bool running);
    bool isRunning() const;
    static void drawForward(HoldButton *button, bool pressed);
    static void drawRollback(HoldButton *button, bool pressed);

    TrialTable *jogTable = nullptr;
    QPushButton *servoOnButton = nullptr;
    QPushButton *servoOffButton = nullptr;
    HoldButton *jogForward = nullptr;
    HoldButton *jogRollback = nullptr;

    LabelGrop *forwardLabel = nullptr;
    LabelGrop *currentLabel = nullptr;
    LabelGrop *rollbackLabel = nullptr;
    IndicationLable *rangeBar = nullptr;

    TrialTable *positionTable = nullptr;
    QRadioButton *onceButton = nullptr;
    QRadioButton *continuousButton = nullptr;
    HoldButton *moveForward = nullptr;
    HoldButton *moveRollback = nullptr;
    QPushButton *runButton = nullptr;

    QPushButton *jogRunButton = nullptr;
    QPushButton *positionRunButton = nullptr;

private:
    void buildJog();
    void buildRange();
    void buildPosition();
    QWidget *buildFoot();
    QGroupBox *addStep(QGridLayout *grid, int step, const QString &label, const QString &title);

    static constexpr int stepCount = 3;
    std::array<QLabel *, stepCount> stepLabels{};
    std::array<QGroupBox *, stepCount> stepBoxes{};
};
