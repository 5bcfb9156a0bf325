// SPDX-License-Identifier: GPL-3.0-or-later
// The record of the last ten faults, with what was measured at the last one; it outlives a power cycle.
//
// Free functions over the registers, for the thread of the Drive that owns them.
#pragma once

#include "simulator/model/drivestate.h"
#include "simulator/registerfile.h"

namespace kt500sim {

constexpr int faultRecordStart = 850;
constexpr int faultRecordLength = 10;

/// Puts \a fault in front, with speed, current, bus voltage, temperature and running time as they are.
void recordFault(RegisterFile &registers, int fault, const DriveState &state);
void clearFaultRecord(RegisterFile &registers);

} // namespace kt500sim
