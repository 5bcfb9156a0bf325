// SPDX-License-Identifier: GPL-3.0-or-later
#include "monitor/parameter_status.h"

#include "catalogue/doubleaddress.h"
#include "catalogue/monitorcatalogue.h"
#include "monitor/monitorpanel.h"
#include "monitor/polltable.h"
#include "monitor/statusvalue.h"
#include "widgets/fittedheader.h"

#include <QCoreApplication>
#include <QGroupBox>
#include <QHeaderView>
#include <QTableWidget>
#include <QVBoxLayout>

namespace {

constexpr int codeWidth = 70; // pixels

// Words without meaning behind the 32-bit running time.
bool isLeftOut(const QString &code)
{
    static const QStringList codes{QStringLiteral("Pn-F30"), QStringLiteral("Pn-F31"),
                                   QStringLiteral("Pn-F39")};
    return codes.contains(code);
}

} // namespace

Parameter_Status::Parameter_Status(QWidget *parent)
    : QWidget(parent)
{
    setFont(monitorFont());
    loadDoubleAddressList();
    loadCatalogue();
    buildTable();
}

// Timers and the signals of the link go on meanwhile; what the user clicks waits until the window stands.
void Parameter_Status::loadDoubleAddressList()
{
    const QStringList codes =
        readDoubleAddressList(QStringLiteral(":/config/config/monitor_double_address.txt"));
    for (const QString &code : codes) {
        doubleAddressList.append(code);
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    }
}

void Parameter_Status::loadCatalogue()
{
    const QByteArray xml = loadMonitorCatalogue(
        this, QStringLiteral(":/parameter/parameter/ParameterMonitor"),
        {tr("Open Failed"), tr("File does not exist"), tr("Failed opening parameter XML!")});
    const QList<MonitorItem> items = readMonitorItems(xml);
    for (const MonitorItem &item : items) {
        if (!isLeftOut(item.code))
            statusRows.append({item.name, item.code, item.unit});
    }
}

void Parameter_Status::buildTable()
{
    table = new QTableWidget(statusRows.size(), ValueColumn + 1);
    table->setObjectName(QStringLiteral("statusTable"));
    table->setHorizontalHeader(new FittedHeader(ValueColumn, table));
    table->horizontalHeader()->setSectionsClickable(true);
    table->setHorizontalHeaderLabels({tr("Parameter"), tr("Description"), tr("Unit"), tr("Value")});
    makePanelTable(table);
    table->setFrameShape(QFrame::NoFrame);
    table->verticalHeader()->hide();
    QHeaderView *const header = table->horizontalHeader();
    header->setSectionResizeMode(CodeColumn, QHeaderView::Fixed);
    header->resizeSection(CodeColumn, codeWidth);
    header->setSectionResizeMode(NameColumn, QHeaderView::Stretch);
    header->setSectionResizeMode(UnitColumn, QHeaderView::ResizeToContents);
    header->setSectionResizeMode(ValueColumn, QHeaderView::ResizeToContents);
    // To all rows, in view or not: the columns stay when the table is scrolled.
    header->setResizeContentsPrecision(-1);
    for (int row = 0; row < statusRows.size(); ++row) {
        const QStringList &status = statusRows.at(row);
        table->setItem(row, CodeColumn, centredItem(status.at(1)));
        table->setItem(row, NameColumn, centredItem(status.at(0)));
        table->item(row, NameColumn)->setToolTip(status.at(0));
        table->setItem(row, UnitColumn, centredItem(status.at(2)));
        table->setItem(row, ValueColumn, centredItem(QString()));
        rowsByAddress.insert(readAddress(status.at(1)), row);
    }

    auto *group = new QGroupBox(tr("Status Parameter"));
    auto *inside = new QVBoxLayout(group);
    inside->setContentsMargins(2, 2, 2, 2);
    inside->addWidget(table);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(group);
}

void Parameter_Status::handleParameterMonitorSlot(QByteArray bytes, int address)
{
    const QList<int> rows = rowsByAddress.values(address);
    for (const int row : rows) {
        const bool isPair = doubleAddressList.contains(table->item(row, CodeColumn)->text());
        const QString unit = table->item(row, UnitColumn)->text();
        setItemText(table->item(row, ValueColumn), statusText(bytes, address, unit, isPair));
    }
}
