// SPDX-License-Identifier: GPL-3.0-or-later
#include "monitor/control_run.h"

#include "monitor/monitorpanel.h"
#include "monitor/monitorwrites.h"
#include "monitor/polltable.h"
#include "monitor/runfields.h"
#include "widgets/messages.h"
#include "widgets/narrowcombo.h"

#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTabWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace {

constexpr int enableSize = 45; // pixels
constexpr int enableIconSize = 40;
constexpr int readWidth = 60; // pixels
constexpr int auxiliarySource = 1;
constexpr int shortestCombo = 6; // characters

QLabel *fieldLabel(const QString &text)
{
    auto *label = new QLabel(text);
    label->setWordWrap(true);
    return label;
}

QFormLayout *makeForm(QWidget *tab)
{
    auto *form = new QFormLayout(tab);
    form->setContentsMargins(4, 4, 4, 4);
    form->setVerticalSpacing(2);
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    return form;
}

} // namespace

Control_Run::Control_Run(QWidget *parent)
    : QWidget(parent)
{
    static_assert(editCount == lineEditCount && otherCount == otherComboCount);
    setFont(monitorFont());
    buildPanel();
}

void Control_Run::buildPanel()
{
    methodTabs = new QTabWidget;
    methodTabs->setObjectName(QStringLiteral("methodTabs"));
    methodTabs->addTab(buildPositionTab(), tr("Position Mode"));
    methodTabs->addTab(buildSpeedTab(), tr("Speed Mode"));
    methodTabs->addTab(buildTorqueTab(), tr("Torque Mode"));
    connect(methodTabs, &QTabWidget::currentChanged, this, &Control_Run::methodtabChangedSlot);

    auto *group = new QGroupBox(tr("Control and Run"));
    auto *inside = new QVBoxLayout(group);
    inside->setContentsMargins(2, 2, 2, 2);
    inside->setSpacing(2);
    inside->addWidget(buildHead());
    inside->addWidget(methodTabs, 1);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(group);
}

QWidget *Control_Run::buildHead()
{
    enableButton = new QPushButton;
    enableButton->setObjectName(QStringLiteral("enableButton"));
    enableButton->setCheckable(true);
    enableButton->setFixedSize(enableSize, enableSize);
    enableButton->setStyleSheet(QStringLiteral("border-radius:22px;"));
    enableButton->setIconSize(QSize(enableIconSize, enableIconSize));
    enableButton->setEnabled(false);
    setEnablePicture(false);
    connect(enableButton, &QPushButton::clicked, this, &Control_Run::EnableBtnclickedSlot);

    methodComboBox = new QComboBox;
    methodComboBox->setObjectName(QStringLiteral("methodComboBox"));
    methodComboBox->addItems({tr("0:Position Mode"), tr("1:Speed Mode"), tr("2:Torque Mode")});
    connect(methodComboBox, qOverload<int>(&QComboBox::currentIndexChanged), this,
            &Control_Run::methodComboBoxChangedSlot);

    readButton = new QPushButton(tr("Read"));
    readButton->setFixedWidth(readWidth);
    readButton->setObjectName(QStringLiteral("readButton"));
    connect(readButton, &QPushButton::clicked, this, &Control_Run::readBtnclickedSlot);

    auto *head = new QWidget;
    auto *layout = new QHBoxLayout(head);
    layout->setContentsMargins(2, 0, 2, 0);
    layout->addWidget(enableButton);
    layout->addWidget(fieldLabel(tr("Control Method:")));
    layout->addWidget(methodComboBox, 1);
    layout->addWidget(readButton);
    return head;
}

QWidget *Control_Run::buildPositionTab()
{
    auto *tab = new QWidget;
    auto *form = makeForm(tab);
    positionCombos.at(SourceCombo) =
        addCombo(form, tr("Source of position command"), QStringLiteral("positionSourceComboBox"),
                 {tr("0:Pulse command"), tr("1:Internal number given"),
                  tr("2:Internal multi-segment position command")});
    positionCombos.at(ShapeCombo) =
        addCombo(form, tr("Pulse command shape"), QStringLiteral("pulseShapeComboBox"),
                 {tr("0:Pulse+Direction"), tr("1:Foward/Reverse pulse"), tr("2:Orthogonal pulse")});
    positionCombos.at(TerminalCombo) =
        addCombo(form, tr("Pulse command input terminal selection"), QStringLiteral("pulseTerminalComboBox"),
                 {tr("0:Low speed input terminal"), tr("1:High speed input terminal")});
    positionCombos.at(WidthCombo) = addCombo(form, tr("External pulse minimum pulse width"),
                                             QStringLiteral("pulseWidthComboBox"), pulseWidths(0));
    for (QComboBox *combo : positionCombos)
        connect(combo, qOverload<int>(&QComboBox::currentIndexChanged), this,
                &Control_Run::positionComboBoxChangedSlot);
    addEdit(form, 0, tr("Internal position command set value"), QStringLiteral("10000"));
    addEdit(form, 1, tr("Electronic gear-numerator1"), QStringLiteral("131072"));
    addEdit(form, 2, tr("Electronic gear-denominator"), QStringLiteral("10000"));
    return tab;
}

QWidget *Control_Run::buildSpeedTab()
{
    auto *tab = new QWidget;
    auto *form = makeForm(tab);
    addOther(
        form, 0, tr("Source of speed command"),
        {tr("0:External analog inout(V_REF)"), tr("1:Internal digtal given"), tr("2:Internal multi-speed")});
    addEdit(form, 3, tr("Internal speed command set value"), QStringLiteral("100.0"));
    addEdit(form, 4, tr("Speed command accelerates time"), QString());
    addEdit(form, 5, tr("Speed command decelerates time"), QString());
    addEdit(form, 6, tr("Maximum speed limit"), QStringLiteral("5000.0"));
    return tab;
}

QWidget *Control_Run::buildTorqueTab()
{
    auto *tab = new QWidget;
    auto *form = makeForm(tab);
    addOther(form, 1, tr("Source of torque command"),
             {tr("0:External analog input(T_REF)"), tr("1:Internal digital given"),
              tr("2:Internal multi-torque")});
    addEdit(form, 7, tr("Internal torque command set value"), QString());
    addOther(form, 2, tr("Torque mode speed limit source"),
             {tr("0:Internal positive and negative speed limit"), tr("1:Analog input V_REF for control"),
              tr("2:Select the first or second speed limit input with DI function")});
    addEdit(form, 8, tr("Torque control forward speed limit value"), QStringLiteral("3000.0"));
    addEdit(form, 9, tr("Torque control reverse speed limit value"), QStringLiteral("3000.0"));
    return tab;
}

QComboBox *Control_Run::addCombo(QFormLayout *form, const QString &label, const QString &name,
                                 const QStringList &items)
{
    auto *combo = new QComboBox;
    combo->setObjectName(name);
    combo->addItems(items);
    makeNarrow(combo, shortestCombo);
    form->addRow(fieldLabel(label), combo);
    return combo;
}

void Control_Run::addOther(QFormLayout *form, int index, const QString &label, const QStringList &items)
{
    QComboBox *const combo =
        addCombo(form, label, QStringLiteral("otherComboBox") + QString::number(index), items);
    connect(combo, qOverload<int>(&QComboBox::currentIndexChanged), this,
            &Control_Run::otherComboBoxChangedSlot);
    otherCombos.at(std::size_t(index)) = combo;
}

void Control_Run::addEdit(QFormLayout *form, int index, const QString &label, const QString &text)
{
    auto *edit = new QLineEdit(text);
    edit->setObjectName(QStringLiteral("lineEdit") + QString::number(index));
    form->addRow(fieldLabel(label), edit);
    connect(edit, &QLineEdit::textChanged, this, &Control_Run::LineEditChangedSlot);
    connect(edit, &QLineEdit::editingFinished, this, &Control_Run::LineEditeditingFinishSlot);
    lineEdits.at(std::size_t(index)) = edit;
}

QStringList Control_Run::pulseWidths(int terminal)
{
    if (terminal == 1)
        return {tr("0:150ns(3.33M)"), tr("1:600ns(0.83M)"), tr("2:1.2us(416K)"), tr("3:2.4us(208K)"),
                tr("4:No filtering")};
    return {tr("0:600ns(830K)"), tr("1:2.4us(208K)"), tr("2:4.8us(104K)"), tr("3:9.6us(52K)"),
            tr("4:No filtering")};
}

// The list is the terminal's; the choice keeps its number.
void Control_Run::fillPulseWidths()
{
    QComboBox *const width = positionCombos.at(WidthCombo);
    const QSignalBlocker blocker(width);
    const int index = width->currentIndex();
    width->clear();
    width->addItems(pulseWidths(positionCombos.at(TerminalCombo)->currentIndex()));
    width->setCurrentIndex(index);
}

void Control_Run::methodComboBoxChangedSlot(int index)
{
    if (index < 0)
        return;
    const QSignalBlocker blocker(methodTabs);
    methodTabs->setCurrentIndex(index);
    emit methodComboBoxchangedSignal(index);
}

void Control_Run::methodtabChangedSlot(int index)
{
    if (index < 0)
        return;
    const QSignalBlocker blocker(methodComboBox);
    methodComboBox->setCurrentIndex(index);
    emit methodComboBoxchangedSignal(index);
}

// A box that stands on no item has nothing to say of its digit, so none of the four is sent.
void Control_Run::positionComboBoxChangedSlot(int index)
{
    if (sender() == positionCombos.at(TerminalCombo) && index >= 0)
        fillPulseWidths();
    int value = 0;
    for (int i = PositionComboCount - 1; i >= 0; --i) {
        const int digit = positionCombos.at(std::size_t(i))->currentIndex();
        if (digit < 0)
            return;
        value = value * 10 + digit;
    }
    pn300Value = value;
    emit Pn300ComboBoxChangedSignal(pn300Value);
}

void Control_Run::otherComboBoxChangedSlot(int index)
{
    const auto found = std::find(otherCombos.begin(), otherCombos.end(), sender());
    if (found != otherCombos.end() && index >= 0)
        emit otherComboBoxChangedSignal(int(found - otherCombos.begin()), index);
}

// Only remembers: the frame goes out once, at the end of the editing.
void Control_Run::LineEditChangedSlot(QString LineStr)
{
    const auto found = std::find(lineEdits.begin(), lineEdits.end(), sender());
    if (found == lineEdits.end())
        return;
    const int index = int(found - lineEdits.begin());
    const std::optional<int> number = lineEditNumber(index, LineStr);
    lineEditDirty = number.has_value();
    lineEditIndexChanged = index;
    lineEditValueChanged = number.value_or(0);
}

void Control_Run::LineEditeditingFinishSlot()
{
    if (!lineEditDirty)
        return;
    lineEditDirty = false;
    emit LineEditChangedSignal(lineEditIndexChanged, lineEditValueChanged);
}

void Control_Run::readBtnclickedSlot()
{
    readButton->setEnabled(false);
    emit readBtnclickedSignal();
}

void Control_Run::handleReadFinishSlot(int index, QStringList readList)
{
    {
        const QSignalBlocker comboBlocker(methodComboBox);
        const QSignalBlocker tabBlocker(methodTabs);
        // A method that is none of the three leaves the box blank and the tab where it is.
        methodComboBox->setCurrentIndex(index < methodComboBox->count() ? index : -1);
        methodTabs->setCurrentIndex(index);
    }
    if (index == 0)
        showPosition(readList);
    else if (index == 1)
        showSpeed(readList);
    else if (index == 2)
        showTorque(readList);
    readButton->setEnabled(true);
}

void Control_Run::showPosition(const QStringList &values)
{
    // The width comes last: its list is that of the terminal.
    for (int i = 0; i < PositionComboCount; ++i) {
        QComboBox *const combo = positionCombos.at(std::size_t(i));
        const QSignalBlocker blocker(combo);
        const int digit = digitOf(values.value(0), i);
        if (i == WidthCombo)
            fillPulseWidths();
        combo->setCurrentIndex(digit < combo->count() ? digit : -1);
    }
    showEdit(0, runText(RunValue::General, values.value(1)));
    showEdit(1, runText(RunValue::SignedPair, values.value(2)));
    showEdit(2, runText(RunValue::SignedPair, values.value(3)));
}

void Control_Run::showSpeed(const QStringList &values)
{
    showOther(0, values.value(0));
    showEdit(3, runText(RunValue::PairTenths, values.value(1)));
    showEdit(4, runText(RunValue::UnsignedWord, values.value(2)));
    showEdit(5, runText(RunValue::UnsignedWord, values.value(3)));
    showEdit(6, runText(RunValue::WordTenths, values.value(4)));
}

void Control_Run::showTorque(const QStringList &values)
{
    showOther(1, values.value(0));
    showEdit(7, runText(RunValue::SignedWord, values.value(1)));
    showOther(2, values.value(2));
    showEdit(8, runText(RunValue::WordTenths, values.value(3)));
    showEdit(9, runText(RunValue::WordTenths, values.value(4)));
}

void Control_Run::showOther(int index, const QString &value)
{
    QComboBox *const combo = otherCombos.at(std::size_t(index));
    const QSignalBlocker blocker(combo);
    const int digit = digitOf(value, 0);
    combo->setCurrentIndex(digit < combo->count() ? digit : -1);
}

// What was read replaces what was being typed, and the end of that typing sends nothing.
void Control_Run::showEdit(int index, const QString &text)
{
    QLineEdit *const edit = lineEdits.at(std::size_t(index));
    const QSignalBlocker blocker(edit);
    edit->setText(text);
    if (lineEditIndexChanged == index)
        lineEditDirty = false;
}

void Control_Run::EnableBtnclickedSlot(bool status)
{
    if (enableDINumber < terminalCount) {
        setEnablePicture(status);
        emit BtnEnableSignal(enableDINumber, status);
        return;
    }
    setEnablePicture(false);
    showMessage(tr("Failed to enable the servo \nPlease select a DI to Enabled Servo"));
}

void Control_Run::DIEnableSlot(bool status)
{
    setEnablePicture(status);
}

void Control_Run::DIEnableNumSlot(int index)
{
    enableDINumber = index;
}

void Control_Run::DIDOsourceChangedSlot(int index)
{
    enableButton->setEnabled(index == auxiliarySource);
}

void Control_Run::showLevels(int levels)
{
    setEnablePicture(enableDINumber >= 0 && enableDINumber < terminalCount && (levels >> enableDINumber & 1));
}

// Whether the button is pressed in follows its picture.
void Control_Run::setEnablePicture(bool isOn)
{
    const QSignalBlocker blocker(enableButton);
    enableButton->setChecked(isOn);
    enableButton->setIcon(
        QIcon(isOn ? QStringLiteral(":/pic/pic/stop.png") : QStringLiteral(":/pic/pic/start.png")));
}
