// SPDX-License-Identifier: GPL-3.0-or-later
// The drive's sixteen inputs and sixteen outputs: the function of each, and a dot for its level.
// Main thread; owned by Parameter_Monitor.
#pragma once

#include "catalogue/didocatalogue.h"

#include <QByteArray>
#include <QList>
#include <QWidget>

class QGroupBox;
class QTableWidget;

class DI_DO_DataStatus : public QWidget
{
    Q_OBJECT

public:
    enum Column { SequenceColumn, SymbolColumn, FunctionColumn, StatusColumn };

    explicit DI_DO_DataStatus(QWidget *parent = nullptr);

public slots:
    // The levels of all inputs or outputs; row 1 is bit 0.
    void handleDIDOStatusSlot(QByteArray bytes, int address);
    // The function register of one input or output.
    void handleDIDOFunctionSlot(QByteArray bytes, int address);

private:
    QGroupBox *buildHalf(const QString &title, const QString &prefix, QTableWidget **table);

    QList<DidoFunction> diFunctionList;
    QList<DidoFunction> doFunctionList;
    QTableWidget *diTable = nullptr;
    QTableWidget *doTable = nullptr;
};
