// SPDX-License-Identifier: GPL-3.0-or-later
// The units of the motor model: SI inside, and how they become what registers hold.
//
// Values and free functions, for any thread.
#pragma once

#include "simulator/drivemodel.h"

#include <cmath>
#include <cstdint>

namespace kt500sim {

constexpr double pi = 3.14159265358979323846;
constexpr double stepTime = 1.0 / samplesPerSecond; ///< s
constexpr int countsPerTurn = 131072;               ///< of the 17-bit encoder
constexpr double countsPerRadian = countsPerTurn / (2 * pi);

constexpr double radiansPerSecond(double rpm)
{
    return rpm * 2 * pi / 60;
}

constexpr double rpm(double speed)
{
    return speed * 60 / (2 * pi);
}

/// To the nearest whole number, halves away from zero; 64 bits, so that every register can cut its own width.
inline std::int64_t nearest(double value)
{
    return static_cast<std::int64_t>(value + std::copysign(0.5, value));
}

inline double clampTo(double value, double low, double high)
{
    return value < low ? low : value > high ? high : value;
}

} // namespace kt500sim
