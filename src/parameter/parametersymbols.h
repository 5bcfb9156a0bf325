// SPDX-License-Identifier: GPL-3.0-or-later
// The five flag symbols of a parameter, as the table, the legend and the setting helper show them.
// Constant data; main thread.
#pragma once

#include <QColor>
#include <QFont>
#include <QString>

#include <array>

struct ParameterSymbol
{
    QString symbol;
    int flagRow; // row of the catalogue's flags, whose mark is the row number as text
    QColor colour;
    QFont font;
    QString legend; // in the language of the user interface
};

// The symbol of a row that is only read.
QString readOnlyMark();

constexpr int parameterSymbolCount = 5;

// In the order of the table's columns: read-only, servo off, re-power, volatile, hexadecimal.
std::array<ParameterSymbol, parameterSymbolCount> parameterSymbols();
