// SPDX-License-Identifier: GPL-3.0-or-later
// What may be typed into a cell of the trial run's tables. Pure functions; any thread.
#pragma once

#include <QString>

// A number of ASCII digits; whole for a range without a point, with one digit behind the point otherwise.
bool isWellFormedCell(const QString &rangeText, const QString &cellText);

struct CellRange
{
    double min = 0;
    double max = 0;
};
// The ends of a text "min~max".
CellRange cellRange(const QString &rangeText);
