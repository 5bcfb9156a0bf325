// SPDX-License-Identifier: GPL-3.0-or-later
#include "monitor/io_control.h"

#include "monitor/monitorpanel.h"
#include "monitor/polltable.h"
#include "widgets/narrowcombo.h"

#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include <algorithm>

namespace {

constexpr int buttonWidth = 24;  // pixels
constexpr int buttonHeight = 22; // pixels
constexpr int shortestCombo = 6; // characters
constexpr int auxiliarySource = 1;
constexpr int enableFunction = 1; // "Enabled Servo", both the number and the row of the catalogue
constexpr int columnsPerHalf = 3; // name, function, level

QIcon levelIcon(bool isHigh)
{
    return QIcon(isHigh ? QStringLiteral(":/pic/pic/on.png") : QStringLiteral(":/pic/pic/off.png"));
}

QComboBox *makeFunctionCombo(const QStringList &functions)
{
    auto *combo = new QComboBox;
    combo->addItems(functions);
    makeNarrow(combo, shortestCombo);
    return combo;
}

QPushButton *makeLevelButton()
{
    auto *button = new QPushButton;
    button->setCheckable(true);
    button->setFixedSize(buttonWidth, buttonHeight);
    button->setIconSize(QSize(buttonWidth, buttonHeight));
    button->setStyleSheet(QStringLiteral("border-radius: 5px;"));
    button->setIcon(levelIcon(false));
    button->setEnabled(false);
    return button;
}

} // namespace

io_control::io_control(QWidget *parent)
    : QWidget(parent)
{
    static_assert(rowCount == terminalCount);
    setFont(monitorFont());
    const DidoCatalogue catalogue = readDidoCatalogue(loadMonitorCatalogue(
        this, QStringLiteral(":/parameter/parameter/DIDO"),
        {tr("Open Failed"), tr("File does not exist"), tr("Failed opening DIDOFunction XLM!")}));
    diFunctionRows = catalogue.inputs;
    doFunctionRows = catalogue.outputs;

    auto *group = new QGroupBox(tr("I/O Control"));
    auto *grid = new QGridLayout(group);
    grid->setContentsMargins(4, 2, 4, 2);
    grid->setSpacing(2);
    buildHalf(&inputs, grid, 0, QStringLiteral("DI"), diFunctionRows,
              {tr("0:External hardware terminal control"), tr("1:Auxiliary input control")});
    buildHalf(&outputs, grid, columnsPerHalf, QStringLiteral("DO"), doFunctionRows,
              {tr("0:Internal program control"), tr("1:Auxiliary output control")});
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(group);
}

void io_control::buildHalf(Half *half, QGridLayout *grid, int column, const QString &name,
                           const QList<DidoFunction> &rows, const QStringList &sources)
{
    const bool isInput = half == &inputs;
    const QString prefix = name.toLower();
    half->source = new QComboBox;
    half->source->setObjectName(prefix + QLatin1String("SourceComboBox"));
    half->source->addItems(sources);
    makeNarrow(half->source, shortestCombo);
    connect(half->source, qOverload<int>(&QComboBox::currentIndexChanged), this,
            &io_control::ComboBoxChangedSlot);
    auto *head = new QLabel(isInput ? tr("DI control") : tr("DO control"));
    head->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    grid->addWidget(head, 0, column, 1, columnsPerHalf);
    grid->addWidget(half->source, 1, column, 1, columnsPerHalf);

    QStringList functions;
    for (int i = 0; i < rows.size(); ++i)
        functions.append(QString::number(i) + QLatin1Char(':') + rows.at(i).function);
    for (int row = 0; row < rowCount; ++row) {
        const QString number = QString::number(row + 1);
        QComboBox *const combo = makeFunctionCombo(functions);
        combo->setObjectName(prefix + QLatin1String("FunctionComboBox") + number);
        connect(combo, qOverload<int>(&QComboBox::currentIndexChanged), this,
                &io_control::ComboBoxChangedSlot);
        QPushButton *const button = makeLevelButton();
        button->setObjectName(prefix + QLatin1String("LevelButton") + number);
        connect(button, &QPushButton::clicked, this,
                isInput ? &io_control::DIBtnclickedSlot : &io_control::DOBtnclickedSlot);
        grid->addWidget(new QLabel(name + number), row + 2, column);
        grid->addWidget(combo, row + 2, column + 1);
        grid->addWidget(button, row + 2, column + 2);
        half->functions.at(std::size_t(row)) = combo;
        half->buttons.at(std::size_t(row)) = button;
    }
    grid->setColumnStretch(column + 1, 1);
    // The heads keep their height, the rows share the rest.
    for (int row = 0; row < rowCount; ++row)
        grid->setRowStretch(row + 2, 1);
}

int io_control::rowOf(const Half &half, const QObject *button)
{
    return int(std::find(half.buttons.begin(), half.buttons.end(), button) - half.buttons.begin());
}

int io_control::rowOfFunction(const Half &half, const QObject *combo)
{
    return int(std::find(half.functions.begin(), half.functions.end(), combo) - half.functions.begin());
}

void io_control::setLevel(Half *half, int row, bool isHigh)
{
    QPushButton *const button = half->buttons.at(std::size_t(row));
    const QSignalBlocker blocker(button);
    button->setChecked(isHigh);
    button->setIcon(levelIcon(isHigh));
    const quint32 bit = 1U << row;
    half->levels = isHigh ? half->levels | bit : half->levels & ~bit;
}

void io_control::DIBtnclickedSlot(bool status)
{
    const int row = rowOf(inputs, sender());
    if (row == rowCount)
        return;
    setLevel(&inputs, row, status);
    if (inputs.functions.at(std::size_t(row))->currentIndex() == enableFunction)
        emit DIEnableSignal(status);
    emit DIBtnclickedSignal(int(inputs.levels));
}

void io_control::DOBtnclickedSlot(bool status)
{
    const int row = rowOf(outputs, sender());
    if (row == rowCount)
        return;
    setLevel(&outputs, row, status);
    emit DOBtnclickedSignal(int(outputs.levels));
}

void io_control::handleBtnEnableSlot(int index, bool status)
{
    if (index < 0 || index >= rowCount)
        return;
    setLevel(&inputs, index, status);
    emit DIBtnclickedSignal(int(inputs.levels));
}

void io_control::restore(Half *half, int levels)
{
    for (int row = 0; row < rowCount; ++row)
        setLevel(half, row, levels >> row & 1);
}

void io_control::restoreDILevels(int levels)
{
    restore(&inputs, levels);
}

void io_control::restoreDOLevels(int levels)
{
    restore(&outputs, levels);
}

// A box that stands on no item has nothing to send.
void io_control::ComboBoxChangedSlot(int index)
{
    if (index < 0)
        return;
    for (Half *half : {&inputs, &outputs}) {
        const bool isInput = half == &inputs;
        if (sender() == half->source) {
            for (QPushButton *button : half->buttons)
                button->setEnabled(index == auxiliarySource);
            if (isInput)
                emit DIsourceChangedSignal(index);
            else
                emit DOsourceChangedSignal(index);
            return;
        }
        const int row = rowOfFunction(*half, sender());
        if (row == rowCount)
            continue;
        if (isInput)
            emit DIfunctionChangedSignal(row, index);
        else
            emit DOfunctionChangedSignal(row, index);
        return;
    }
}

void io_control::handleio_DIDOFuncSlot(QByteArray bytes, int address)
{
    const std::optional<Terminal> terminal = terminalOf(address);
    if (!terminal)
        return;
    const Half &half = terminal->isInput ? inputs : outputs;
    QComboBox *const combo = half.functions.at(std::size_t(terminal->row));
    const int index = indexOfFunction(terminal->isInput ? diFunctionRows : doFunctionRows, bytes);
    const int shown = index < combo->count() ? index : -1;
    if (combo->currentIndex() != shown) {
        const QSignalBlocker blocker(combo);
        combo->setCurrentIndex(shown);
    }
    if (terminal->isInput && terminal->row == rowCount - 1)
        reportEnableRow();
}

// Of several inputs that enable the servo, the first counts; 16 for none.
void io_control::reportEnableRow()
{
    const auto found =
        std::find_if(inputs.functions.begin(), inputs.functions.end(),
                     [](const QComboBox *combo) { return combo->currentIndex() == enableFunction; });
    emit DIEnableNumSignal(int(found - inputs.functions.begin()));
}
