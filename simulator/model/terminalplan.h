// SPDX-License-Identifier: GPL-3.0-or-later
// How a terminal is planned: its function, its logic and its delay, as one register holds them.
//
// Values and free functions, for any thread.
#pragma once

#include <cstdint>

namespace kt500sim {

struct TerminalPlan
{
    int function = 0;      ///< number; 0 for none and for what is no decimal number
    bool inverted = false; ///< on at an open contact, or conducting while the function is off
    int delay = 0;         ///< ms
};

TerminalPlan terminalPlan(std::uint16_t plan);

/// The functions of the inputs by number.
enum class DigitalInput {
    None = 0,
    ServoOn = 1,
    EmergencyStop = 2,
    FaultReset = 3,
    ForwardOvertravel = 4,
    ReverseOvertravel = 5,
    ForwardTorqueLimit = 6,
    ReverseTorqueLimit = 7,
    ZeroClamp = 9,
    PositionOrSpeed = 10,
    PositionOrTorque = 11,
    SpeedOrTorque = 12,
    Gain = 13,
    Gear1 = 15,
    Gear2 = 16,
    DeviationClear = 18,
    Section1 = 19,
    Section2 = 20,
    Section3 = 21,
    Section4 = 22,
    SectionDirection = 24,
    Trigger = 25,
    Reverse = 26,
    JogForward = 27,
    JogReverse = 28
};

/// The functions of the outputs by number.
enum class DigitalOutput {
    None = 0,
    Ready = 1,
    Running = 2,
    BrakeOpen = 3,
    Warning = 4,
    Fault = 5,
    InPosition = 6,
    NearPosition = 7,
    ZeroSpeed = 8,
    SpeedArrived = 9,
    SpeedLimited = 10,
    TorqueArrived = 11,
    TorqueLimited = 12
};

constexpr int terminalCount = 16;

} // namespace kt500sim
