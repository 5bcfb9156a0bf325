// SPDX-License-Identifier: GPL-3.0-or-later
// The list of registers that the drive has, read from comma-separated text.
//
// Plain values, for any thread; a Drive keeps the table that it was made with.
#pragma once

#include <QString>

#include <cstdint>
#include <optional>
#include <vector>

namespace kt500sim {

/// Offsets run from 0 to this, exclusive: twelve parameter groups of 100, a gap, the status group at 1500.
constexpr int registerSpace = 1600;
/// The first offset of the status registers, which the drive refreshes by itself.
constexpr int statusStart = 1500;

/// One entry of the table: a value of one or two registers.
struct RegisterEntry
{
    int offset = 0;
    int words = 1; ///< 1, or 2 for a 32-bit value with its high word at \a offset
    bool readOnly = false;
    std::uint32_t factory = 0; ///< raw value; the low 16 bits count when words is 1
};

/// The entries in the order of the text; no two cover the same offset.
using RegisterTable = std::vector<RegisterEntry>;

/// Reads the format that the head of registers.csv describes. On a fault returns nothing and sets \a error
/// (if given) to a text that names the line.
std::optional<RegisterTable> parseRegisterTable(const QString &text, QString *error = nullptr);

/// The table that is compiled into the library.
RegisterTable builtInRegisterTable();

} // namespace kt500sim
