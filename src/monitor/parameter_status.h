// SPDX-License-Identifier: GPL-3.0-or-later
// The table of all that the drive reports of itself, a row a register.
// Main thread; owned by Parameter_Monitor, which hands it every register that was read.
#pragma once

#include <QByteArray>
#include <QList>
#include <QMultiHash>
#include <QStringList>
#include <QWidget>

class QTableWidget;

class Parameter_Status : public QWidget
{
    Q_OBJECT

public:
    enum Column { CodeColumn, NameColumn, UnitColumn, ValueColumn };

    explicit Parameter_Status(QWidget *parent = nullptr);

public slots:
    // Two bytes, or four of a 32-bit item, as they stand on the wire; address is their register.
    void handleParameterMonitorSlot(QByteArray bytes, int address);

private:
    void loadDoubleAddressList();
    void loadCatalogue();
    void buildTable();

    QStringList doubleAddressList; // codes of 32-bit registers
    QList<QStringList> statusRows; // name, code, unit
    QMultiHash<int, int> rowsByAddress;
    QTableWidget *table = nullptr;
};
