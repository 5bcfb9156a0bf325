// SPDX-License-Identifier: GPL-3.0-or-later
// The wall clock of the simulated line: monotonic, the one that the terminal's waits are measured by.
#pragma once

#include <chrono>

namespace kt500sim {

using Clock = std::chrono::steady_clock;
using TimePoint = Clock::time_point;
using std::chrono::microseconds;
using std::chrono::milliseconds;
using std::chrono::nanoseconds;

} // namespace kt500sim
