// SPDX-License-Identifier: GPL-3.0-or-later
// The groups right of the plot: Properties, Fine Tuning and Stop Condition. Main thread; owned by the scope
// window, which reaches its widgets directly.
#pragma once

#include <QFrame>

#include <array>

class QCheckBox;
class QGroupBox;
class QLineEdit;
class QRadioButton;

class ScopeSidePanel : public QFrame
{
    Q_OBJECT

public:
    // The boxes of Fine Tuning: the four channels come first.
    static constexpr int timeAxisBox = 4;
    static constexpr int valueAxisBox = 5;

    explicit ScopeSidePanel(QWidget *parent = nullptr);

    QCheckBox *gridBox = nullptr;
    QCheckBox *autoAdjustBox = nullptr;
    QCheckBox *keepRangeBox = nullptr;
    QRadioButton *individualButton = nullptr;
    QRadioButton *sameButton = nullptr;

    QCheckBox *tuningBox = nullptr;
    std::array<QCheckBox *, 6> tuningBoxes{};

    QCheckBox *stopBox = nullptr;
    std::array<QRadioButton *, 4> stopChannelButtons{};
    std::array<QRadioButton *, 3> stopOperationButtons{};
    QLineEdit *stopValueEdit = nullptr;
    QLineEdit *lastForEdit = nullptr; // ms

    // The seven radio buttons and both fields of the stop condition.
    void setStopInputsEnabled(bool enabled);
    QString stopChannelText() const;
    QString stopOperationText() const;

private:
    QGroupBox *buildProperties();
    QGroupBox *buildFineTuning();
    QGroupBox *buildStopCondition();
};
