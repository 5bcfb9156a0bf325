// SPDX-License-Identifier: GPL-3.0-or-later
// What the fields of gain tuning accept, and how they are written back. Constant data and pure functions; any
// thread.
#pragma once

#include <QString>
#include <QStringList>

#include <optional>

namespace gaintuning {

constexpr int fieldCount = 24;

// Field numbers of the check.
enum Field {
    FieldMaximumSpeed = 0, // the four rows of the inertia table
    FieldInertiaRatio = 4, // the seven gains
    FieldLastGain = 10,
    FieldFirstNotch = 11, // frequency, width grade, deep grade of the four notches
    FieldLastNotch = 22,
    FieldCalculated = 23
};

// Title of the warning box.
QString fieldTitle(int field);

// Name of the line edit; empty for the four rows of the table.
QString fieldWidgetName(int field);

// Register that the field shows, and what its number is multiplied by on the wire.
int fieldRegister(int field);
int fieldScale(int field);
// Field that shows a register, or -1.
int fieldOfRegister(int readRegister);

// The limits as they stand in the message, one a field.
QStringList minimumTexts();
QStringList maximumTexts();

// The message of a text that fails: it names the range.
QString rangeMessage(const QString &minimum, const QString &maximum);

// The text in its normal form when it is a number within the limits, a limit included; none when it is not.
// Numbers are read and written with a decimal point whatever the language.
std::optional<QString> normalForm(int field, const QString &text, const QString &minimum,
                                  const QString &maximum);

// What goes out for a gain: number times scale, rounded up from a half when it is above zero, and cut.
int scaledValue(const QString &text, int scale);

} // namespace gaintuning
