// SPDX-License-Identifier: GPL-3.0-or-later
// The speed command: the internal one or the speed sections, with their ramps, and JOG.
//
// Lives on the thread of the Drive that owns the model.
#pragma once

#include "simulator/model/filters.h"
#include "simulator/model/positioncommand.h"
#include "simulator/model/ramp.h"

namespace kt500sim {

class SpeedCommand
{
public:
    void set(const SpeedParameters &parameters);
    /// The command is the speed at hand; sections begin anew.
    void follow(double speed);

    /// The command of the next sample period, in rad/s.
    double step(const DigitalInputs &inputs, const Prohibited &prohibited);
    /// The same for JOG.
    double stepJog(const JogParameters &jog, const DigitalInputs &inputs, const Prohibited &prohibited);
    /// Where the ramp leads, rad/s.
    double target() const { return m_target; }

private:
    struct Wish
    {
        double speed = 0, acceleration = 0, deceleration = 0;
    };
    Wish internalWish() const;
    Wish sectionWish(const DigitalInputs &inputs);
    double clamped(double speed, const DigitalInputs &inputs) const;

    SpeedParameters m_parameters;
    SectionRunner m_runner;
    bool m_sectionsStarted = false;
    std::int64_t m_held = 0; ///< sample periods that the section's speed has been held
    Ramp m_ramp;
    MovingAverage m_smoothing;
    LowPass m_filter;
    double m_target = 0;
};

} // namespace kt500sim
