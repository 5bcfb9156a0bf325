// SPDX-License-Identifier: GPL-3.0-or-later
// How the servo comes on and goes off: the holding brake, the stop modes, and what must be gone before it may
// come on again.
//
// Lives on the thread of the Drive that owns the model.
#pragma once

#include "simulator/model/parameters.h"

namespace kt500sim {

class ServoSequence
{
public:
    enum class Phase {
        Off,     ///< no current, the brake holds
        Opening, ///< energised; the brake opens, commands are not taken yet
        Running,
        Stopping, ///< by the stop mode that its cause has
        Holding   ///< at standstill, energised until the brake holds
    };
    enum class StopMode { Coast, DynamicBrake, DynamicBrakeHeld, ZeroSpeed, Emergency };

    struct Inputs
    {
        bool servoOn = false;
        bool emergency = false;
        bool fault = false;
        bool faultNeedsPower = false; ///< the fault allows no controlled stop
        double speed = 0;             ///< rad/s
    };

    /// At power-on. An input that is on already must go off first: a motor that starts with the mains is a
    /// danger.
    void reset(bool servoOn);
    /// One sample period.
    void step(const Inputs &inputs, const StopParameters &parameters);

    Phase phase() const { return m_phase; }
    StopMode stopMode() const { return m_stopMode; }
    bool takesCommands() const { return m_phase == Phase::Running; }
    bool brakeIsOpen() const { return m_brakeOpen; }
    /// The windings stay shorted although the servo is off.
    bool staysShorted() const { return m_phase == Phase::Off && m_stopMode == StopMode::DynamicBrakeHeld; }
    /// Off, and nothing under way.
    bool isSettled() const { return m_phase == Phase::Off; }

private:
    void stop(StopMode mode);
    StopMode modeFor(const Inputs &inputs, const StopParameters &parameters) const;
    void stepStop(const Inputs &inputs, const StopParameters &parameters, double speed);

    Phase m_phase = Phase::Off;
    StopMode m_stopMode = StopMode::Coast;
    bool m_brakeOpen = false;
    bool m_released = true; ///< the servo-on input has been off since the last stop that was not its own
    int m_samples = 0;      ///< in this phase
};

} // namespace kt500sim
