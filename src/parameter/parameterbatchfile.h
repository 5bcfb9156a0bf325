// SPDX-License-Identifier: GPL-3.0-or-later
// The .csv file of a batch list. Values in, values out, in the system's 8-bit encoding. Pure functions; any
// thread.
#pragma once

#include <QByteArray>
#include <QList>
#include <QStringList>

#include <optional>

constexpr int batchColumnCount = 13;

// Far more than a drive has parameters: a file of more rows is no batch list.
constexpr int batchRowLimit = 10000;

struct BatchRow
{
    bool ticked = false;
    QStringList cells; // texts of the columns from the first on; the first is the code
};

// A line of the column heads, then one for each row, its code followed by "-1" when ticked, else by "-0".
QByteArray batchFile(const QStringList &heads, const QList<BatchRow> &rows);

// The rows of a file: every line with a code and a comma in it. The last field of a line is none, and fields
// beyond the columns are left out; a row may have fewer cells than there are columns, but has its code. None
// when no line is usable, that of the heads included, or there are too many.
std::optional<QList<BatchRow>> readBatchFile(const QByteArray &file);
