// SPDX-License-Identifier: GPL-3.0-or-later
// What can be seen of the drive at one moment: the one place that status registers, scope items, outputs and
// protection take their values from.
//
// Plain values, for any thread.
#pragma once

#include <cstdint>

namespace kt500sim {

struct DriveState
{
    // The axis; a positive value is the positive direction of the command.
    std::int64_t counts = 0;       ///< of the encoder since power-on
    double positionCommand = 0;    ///< counts, as the position loop takes it
    double positionTarget = 0;     ///< counts, where the present command ends
    double deviation = 0;          ///< counts
    double speed = 0;              ///< rad/s, measured and smoothed
    double feedbackSpeed = 0;      ///< rad/s, as the speed loop takes it
    double speedCommand = 0;       ///< rad/s
    double torqueCommand = 0;      ///< Nm
    double torqueCommandShare = 0; ///< of the rated torque
    double torque = 0;             ///< Nm
    double quadratureCommand = 0;  ///< A, effective
    double quadratureCurrent = 0;  ///< A, effective
    double directCurrent = 0;      ///< A, effective
    bool torqueLimited = false;
    bool speedLimited = false;
    bool positionMode = false; ///< the position loop is closed
    bool energised = false;
    bool commandPresent = false; ///< a position command is being run

    // Terminals and messages.
    std::uint16_t inputs = 0;
    std::uint16_t outputs = 0;
    int warning = 0;
    int fault = 0;

    // Power stage and load.
    double busVoltage = 0;    ///< V
    double outputVoltage = 0; ///< V, effective between lines
    double temperature = 0;   ///< degrees
    double resistorLoad = 0;  ///< share
    double averageTorque = 0; ///< share of the rated torque, effective over the last minute
    double peakTorque = 0;    ///< share, over the last minute
    double averageLoad = 0;   ///< share
    double overload = 0;      ///< share of what the motor bears
    double hours = 0;         ///< powered since it was made

    // What the drive has found out.
    double identifiedInertia = 1;                          ///< load and rotor over the rotor
    double resonance1 = 0, resonance2 = 0, resonance3 = 0; ///< Hz; 0: not found
    double positionGain = 0;                               ///< 1/s
    double speedGain = 0;                                  ///< Hz
    double integralTime = 0;                               ///< s
    double loadInertia = 0;                                ///< kg m2, by the identified ratio
    double userPosition = 0;                               ///< user units
    double userDeviation = 0;                              ///< user units
};

} // namespace kt500sim
