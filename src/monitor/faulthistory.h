// SPDX-License-Identifier: GPL-3.0-or-later
// The last ten faults that the drive has stored, in words. Main thread; owned by Parameter_Monitor.
#pragma once

#include <QByteArray>
#include <QList>
#include <QStringList>
#include <QWidget>

class QTableWidget;

class FaultHistory : public QWidget
{
    Q_OBJECT

public:
    enum Column { EntryColumn, CodeColumn, NameColumn, CauseColumn, CorrectiveColumn };

    explicit FaultHistory(QWidget *parent = nullptr);

public slots:
    // The whole reply to the read of the record, newest fault first.
    void handleFaultHistorySlot(QByteArray reply);
    void receiveFaultInformation(QList<QStringList> information);

private:
    void buildTable();

    QList<QStringList> faultInformation; // code, name, cause, corrective
    QStringList faultCodes;              // of the reply in hand
    QTableWidget *table = nullptr;
};
