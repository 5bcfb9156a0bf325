// SPDX-License-Identifier: GPL-3.0-or-later
// Where the fields of gain tuning stand in the window, and the check that tells the user what is wrong with
// one. Main thread; a member of GainTuning.
#pragma once

#include <QString>
#include <QStringList>

class QLineEdit;
class QTableWidget;
class QTableWidgetItem;
class QWidget;

class GainFieldWidgets
{
public:
    // Finds the fields by their names below the window; the first four are rows of the table.
    GainFieldWidgets(QWidget *gainWindow, QTableWidget *rowTable);

    static constexpr int valueColumn = 3;

    // None for a row of the table.
    QLineEdit *setting(int field) const;
    QLineEdit *current(int field) const;
    // The drive's value, wherever the field shows it.
    void show(int field, const QString &text) const;
    void setEditable(int field, bool isEditable) const;

    // Writes a text that passes back in its normal form. Any other is told and emptied, and the result false.
    bool check(int field) const;
    // The same for a run of fields, until one fails.
    bool checkAll(int first, int last) const;

private:
    QTableWidgetItem *cell(int field) const;

    QWidget *window;
    QTableWidget *table;
    QStringList minimumList;
    QStringList maximumList;
};
