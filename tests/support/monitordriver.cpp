// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/monitordriver.h"

#include "monitor/di_do_datastatus.h"
#include "monitor/faulthistory.h"
#include "monitor/parameter_monitor.h"
#include "monitor/parameter_status.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTableWidget>
#include <QTest>

QTableWidget *MonitorDriver::table(const char *name) const
{
    return window->findChild<QTableWidget *>(QLatin1String(name));
}

QComboBox *MonitorDriver::combo(const QString &name) const
{
    return window->findChild<QComboBox *>(name);
}

QPushButton *MonitorDriver::button(const QString &name) const
{
    return window->findChild<QPushButton *>(name);
}

QLineEdit *MonitorDriver::edit(const QString &name) const
{
    return window->findChild<QLineEdit *>(name);
}

QTabWidget *MonitorDriver::tabs() const
{
    return window->findChild<QTabWidget *>(QStringLiteral("tabWidget"));
}

QString MonitorDriver::status(const QString &code) const
{
    const int row = statusCodes().indexOf(code);
    return row < 0 ? QStringLiteral("no row")
                   : table("statusTable")->item(row, Parameter_Status::ValueColumn)->text();
}

QStringList MonitorDriver::statusCodes() const
{
    const QTableWidget *const rows = table("statusTable");
    QStringList codes;
    for (int row = 0; row < rows->rowCount(); ++row)
        codes << rows->item(row, Parameter_Status::CodeColumn)->text();
    return codes;
}

QString MonitorDriver::symbol(const QString &half, int row) const
{
    return table(qPrintable(half + QLatin1String("Table")))
        ->item(row - 1, DI_DO_DataStatus::SymbolColumn)
        ->text();
}

bool MonitorDriver::isGreen(const QString &half, int row) const
{
    const QTableWidgetItem *const dot =
        table(qPrintable(half + QLatin1String("Table")))->item(row - 1, DI_DO_DataStatus::StatusColumn);
    return dot->foreground().color() == QColor(0x00, 0xFF, 0x00);
}

QStringList MonitorDriver::recordCodes() const
{
    const QTableWidget *const record = table("historyTable");
    QStringList codes;
    for (int row = 0; row < record->rowCount(); row += 2)
        codes << record->item(row, FaultHistory::CodeColumn)->text();
    codes.removeAll(QString());
    return codes;
}

void MonitorDriver::click(const QString &buttonName) const
{
    QTest::mouseClick(button(buttonName), Qt::LeftButton);
}

void MonitorDriver::type(const QString &editName, const QString &text) const
{
    QLineEdit *const line = edit(editName);
    line->setFocus();
    line->selectAll();
    QTest::keyClicks(line, text);
    QTest::keyClick(line, Qt::Key_Return);
}

void MonitorDriver::choose(const QString &comboName, int index) const
{
    combo(comboName)->setCurrentIndex(index);
}
