// SPDX-License-Identifier: GPL-3.0-or-later
#include "monitor/faulthistory.h"

#include "catalogue/alarmcatalogue.h"
#include "link/replies.h"
#include "monitor/monitorpanel.h"

#include <QGroupBox>
#include <QHeaderView>
#include <QTableWidget>
#include <QVBoxLayout>

namespace {

constexpr int rowsPerEntry = 2;
constexpr int rowCount = 20;
constexpr int codeWidth = 80; // pixels

} // namespace

FaultHistory::FaultHistory(QWidget *parent)
    : QWidget(parent)
{
    setFont(monitorFont());
    buildTable();
}

void FaultHistory::buildTable()
{
    table = new QTableWidget(rowCount, CorrectiveColumn + 1);
    table->setObjectName(QStringLiteral("historyTable"));
    // Deliberate: "Cauese" is so spelt.
    table->setHorizontalHeaderLabels(
        {tr("Historical Fault"), tr("Code"), tr("Name"), tr("Cauese"), tr("Corrective")});
    makePanelTable(table);
    table->setFrameShape(QFrame::NoFrame);
    table->verticalHeader()->hide();
    table->verticalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    QHeaderView *const header = table->horizontalHeader();
    header->setSectionResizeMode(QHeaderView::Stretch);
    header->setSectionResizeMode(EntryColumn, QHeaderView::ResizeToContents);
    header->setSectionResizeMode(CodeColumn, QHeaderView::Fixed);
    header->resizeSection(CodeColumn, codeWidth);
    for (int row = 0; row < rowCount; row += rowsPerEntry) {
        const int entry = row / rowsPerEntry;
        const QString label =
            entry == 0 ? tr("Last Fault") : tr("Historical Fault ") + QString::number(entry);
        for (int column = EntryColumn; column <= CorrectiveColumn; ++column) {
            table->setSpan(row, column, rowsPerEntry, 1);
            table->setItem(row, column, centredItem(column == EntryColumn ? label : QString()));
        }
    }

    auto *group = new QGroupBox(tr("Historical Fault"));
    auto *inside = new QVBoxLayout(group);
    inside->setContentsMargins(2, 2, 2, 2);
    inside->addWidget(table);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(group);
}

void FaultHistory::receiveFaultInformation(QList<QStringList> information)
{
    if (!faultInformation.isSharedWith(information))
        faultInformation = information;
}

// Codes without a row take no entry, and what is beyond the last one stays as a former read has left it.
void FaultHistory::handleFaultHistorySlot(QByteArray reply)
{
    const QByteArray payload =
        isExceptionReply(reply) ? QByteArray() : payloadFromBack(reply, replyByteCount(reply));
    for (int place = 0; place + 2 <= payload.size(); place += 2)
        faultCodes.append(faultCode(int(unsignedNumber(payload.mid(place, 2)))));
    int row = 0;
    for (const QString &code : qAsConst(faultCodes)) {
        for (const QStringList &fault : qAsConst(faultInformation)) {
            if (fault.value(0) != code || row >= rowCount)
                continue;
            for (int column = CodeColumn; column <= CorrectiveColumn; ++column)
                table->item(row, column)->setText(fault.value(column - CodeColumn));
            row += rowsPerEntry;
        }
    }
    faultCodes.clear();
}
