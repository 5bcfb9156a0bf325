// SPDX-License-Identifier: GPL-3.0-or-later
#include "monitor/di_do_datastatus.h"

#include "link/replies.h"
#include "monitor/monitorpanel.h"
#include "monitor/polltable.h"

#include <QGroupBox>
#include <QHeaderView>
#include <QTableWidget>
#include <QVBoxLayout>

namespace {

constexpr int sequenceWidth = 60; // pixels
constexpr int symbolWidth = 60;   // pixels
constexpr int statusWidth = 80;   // pixels
constexpr int dotSize = 11;       // points

const QColor highColour(0x00, 0xFF, 0x00);
const QColor lowColour(0x96, 0x96, 0x96);

void setColour(QTableWidgetItem *item, const QColor &colour)
{
    if (item->foreground().color() != colour)
        item->setForeground(colour);
}

} // namespace

DI_DO_DataStatus::DI_DO_DataStatus(QWidget *parent)
    : QWidget(parent)
{
    setFont(monitorFont());
    const DidoCatalogue catalogue = readDidoCatalogue(loadMonitorCatalogue(
        this, QStringLiteral(":/parameter/parameter/DIDO"),
        {tr("Open Failed"), tr("File does not exist"), tr("Failed opening DIDOFunction XLM!")}));
    diFunctionList = catalogue.inputs;
    doFunctionList = catalogue.outputs;
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    layout->addWidget(buildHalf(tr("Data Input"), QStringLiteral("DI"), &diTable));
    layout->addWidget(buildHalf(tr("Data Output"), QStringLiteral("DO"), &doTable));
}

QGroupBox *DI_DO_DataStatus::buildHalf(const QString &title, const QString &prefix, QTableWidget **table)
{
    auto *half = new QTableWidget(terminalCount, StatusColumn + 1);
    half->setObjectName(prefix.toLower() + QLatin1String("Table"));
    half->setHorizontalHeaderLabels({tr("Sequence"), tr("Symbol"), tr("Function Description"), tr("Status")});
    // The longest head loses its end where the column is narrow, and not both ends.
    half->horizontalHeaderItem(FunctionColumn)->setTextAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    makePanelTable(half);
    half->verticalHeader()->hide();
    QHeaderView *const header = half->horizontalHeader();
    header->setSectionResizeMode(QHeaderView::Fixed);
    header->setSectionResizeMode(FunctionColumn, QHeaderView::Stretch);
    header->resizeSection(SequenceColumn, sequenceWidth);
    header->resizeSection(SymbolColumn, symbolWidth);
    header->resizeSection(StatusColumn, statusWidth);
    for (int row = 0; row < terminalCount; ++row) {
        half->setItem(row, SequenceColumn, centredItem(prefix + QString::number(row + 1)));
        half->setItem(row, SymbolColumn, centredItem(QStringLiteral("Null ")));
        half->setItem(row, FunctionColumn, centredItem(tr("NO fuction")));
        QTableWidgetItem *const dot = centredItem(QStringLiteral("●"));
        dot->setFont(QFont(QStringLiteral("黑体"), dotSize));
        dot->setForeground(lowColour);
        half->setItem(row, StatusColumn, dot);
    }
    *table = half;

    auto *group = new QGroupBox(title);
    auto *inside = new QVBoxLayout(group);
    inside->setContentsMargins(2, 2, 2, 2);
    inside->addWidget(half);
    return group;
}

void DI_DO_DataStatus::handleDIDOStatusSlot(QByteArray bytes, int address)
{
    QTableWidget *table = nullptr;
    if (address == monitorregister::diStatus)
        table = diTable;
    else if (address == monitorregister::doStatus)
        table = doTable;
    else
        return;
    const quint32 levels = unsignedNumber(bytes);
    for (int row = 0; row < terminalCount; ++row)
        setColour(table->item(row, StatusColumn), levels >> row & 1 ? highColour : lowColour);
}

void DI_DO_DataStatus::handleDIDOFunctionSlot(QByteArray bytes, int address)
{
    const std::optional<Terminal> terminal = terminalOf(address);
    if (!terminal)
        return;
    const QList<DidoFunction> &functions = terminal->isInput ? diFunctionList : doFunctionList;
    const QTableWidget *const table = terminal->isInput ? diTable : doTable;
    const DidoFunction function = functions.value(indexOfFunction(functions, bytes));
    QTableWidgetItem *const text = table->item(terminal->row, FunctionColumn);
    setItemText(table->item(terminal->row, SymbolColumn), function.symbol);
    setItemText(text, function.function);
    // The column is narrower than many of its texts.
    if (text->toolTip() != function.function)
        text->setToolTip(function.function);
}
