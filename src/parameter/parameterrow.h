// SPDX-License-Identifier: GPL-3.0-or-later
// The texts of one parameter, as every window has them: where each stands, the record that is made of them,
// and whether a write takes it. Pure functions; main thread, where the language is that of the interface.
#pragma once

#include <QString>
#include <QStringList>

// Places in a row's texts: the code, then the columns of the table.
enum RowValue {
    CodeValue,
    ReadOnlyValue,
    ServoOffValue,
    RepowerValue,
    VolatileValue,
    HexValue,
    TextValue,
    UnitValue,
    MinValue,
    MaxValue,
    DefaultValue,
    NameValue,
    RowValueCount
};

// Code, H mark, value, unit, min and max: the form in which a parameter travels.
QStringList writeRecord(const QStringList &rowValues);
// The same with another text for the value.
QStringList writeRecord(const QStringList &rowValues, const QString &text);

// The name that rows carry which nobody is to write, in the language of the interface.
QString reservedName();

// True for a row that a write of many leaves out: read-only, or named as reserved.
bool isLeftOutOfWrites(const QStringList &rowValues);
