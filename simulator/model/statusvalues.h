// SPDX-License-Identifier: GPL-3.0-or-later
// What each status register and each scope item shows, in its raw unit.
//
// Free functions, for any thread.
#pragma once

#include "simulator/model/drivestate.h"

namespace kt500sim {

/// The value of the status register at \a offset, low bits first to be cut to its width; 0 for one without a
/// meaning here.
std::int32_t statusValue(const DriveState &state, int offset);

/// A status value that takes two registers, its high word at \a offset.
bool isWideStatusValue(int offset);

/// The value of a scope item by its number; 0 for an item that is not known.
std::int32_t scopeItemValue(const DriveState &state, int item);

/// The register whose value a scope item shows; -1 for an item without one.
int offsetOfScopeItem(int item);

/// Scope items are numbered from 0 up to here.
constexpr int scopeItemCount = 50;

} // namespace kt500sim
