// SPDX-License-Identifier: GPL-3.0-or-later
// The items that the scope can show, as the catalogue file of the language lists them. The row number is the
// number by which the drive knows the item. Plain values and free functions; any thread.
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

// Columns of a row.
namespace scopeitem {
constexpr int name = 0;
constexpr int code = 1;
constexpr int description = 2;
constexpr int min = 3;
constexpr int max = 4;
constexpr int unit = 5;
constexpr int columns = 6;
} // namespace scopeitem

using ScopeItems = QList<QStringList>;

// One row of six texts for each complete "parameter" element; an error of the XML ends the read after the
// rows before it.
ScopeItems readScopeItems(const QByteArray &xml);

// What a channel's list shows for a row: the name, and the unit in brackets if there is one.
QString scopeItemText(const QStringList &item);

// The last row that holds the text in any of its columns, or -1: what the drive is asked for.
int scopeItemNumber(const ScopeItems &items, const QString &code);

// The first row of this code; an empty list where there is none.
QStringList scopeItemOfCode(const ScopeItems &items, const QString &code);

// Line 1 of a record file, without its end: code and name of the last row of this code. Empty where there is
// none.
QString scopeRecordHeader(const ScopeItems &items, const QString &code);
