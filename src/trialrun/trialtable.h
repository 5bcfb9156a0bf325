// SPDX-License-Identifier: GPL-3.0-or-later
// A table of the trial run: what a parameter is called, its range and unit, and its value, which alone can be
// edited. Filling it from the program reports no change.
// Main thread; owned by TrialRunPage.
#pragma once

#include <QStringList>
#include <QTableWidget>

class TrialTable : public QTableWidget
{
    Q_OBJECT

public:
    enum Column { NameColumn, RangeColumn, UnitColumn, ValueColumn, ColumnCount };

    TrialTable(const QStringList &headers, int rows, QWidget *parent = nullptr);

    void setRow(int row, const QString &name, const QString &range, const QString &unit);
    QString range(int row) const { return item(row, RangeColumn)->text(); }
    QString value(int row) const { return item(row, ValueColumn)->text(); }
    QStringList values() const;
    void setValue(int row, const QString &text);
    void clearValues();
    void setRowEditable(int row, bool editable);
    // Lets a value be edited by a double or a second click, and nothing else.
    void chooseTriggers(int column);
    // While edits are not accepted no cell opens, whatever triggers it.
    void setAcceptsEdits(bool accepted) { acceptsEdits = accepted; }

protected:
    bool edit(const QModelIndex &index, EditTrigger trigger, QEvent *event) override;
    // Wide enough for the longest number, and never narrower when blank.
    int sizeHintForColumn(int column) const override;

private:
    bool acceptsEdits = true;
};
