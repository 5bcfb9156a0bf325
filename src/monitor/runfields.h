// SPDX-License-Identifier: GPL-3.0-or-later
// The fields of the control panel as data: which texts go to the drive as which numbers, and how what was
// read back is shown. Pure functions; any thread.
#pragma once

#include <QString>
#include <QStringList>

#include <optional>

// Number for the drive out of the text of a line edit, 0 to 9: the fields in tenths times ten, rounded, all
// others cut to an integer. Nothing for a text that is no number.
std::optional<int> lineEditNumber(int index, const QString &text);

// Choice that a decimal digit of the text stands for, 0 the ones, 1 the tens and so on; the last digit asked
// for, 3, is all that is in front of the hundreds. -1 for a text with a hexadecimal letter, or for none.
int digitOf(const QString &text, int place);

// Text of the field behind a value that was read, as hexadecimal text; empty for an empty one.
enum class RunValue {
    General,      // signed 32-bit, six digits in the general format
    SignedPair,   // signed 32-bit integer
    PairTenths,   // signed 32-bit, shown in units of ten
    SignedWord,   // signed 16-bit integer
    UnsignedWord, // 16-bit integer
    WordTenths,   // 16-bit, shown in units of ten
};
QString runText(RunValue kind, const QString &hex);
