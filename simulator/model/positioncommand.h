// SPDX-License-Identifier: GPL-3.0-or-later
// The position command: the internal command that a trigger starts, and the displacement sections.
//
// Lives on the thread of the Drive that owns the model.
#pragma once

#include "simulator/model/electronicgear.h"
#include "simulator/model/filters.h"
#include "simulator/model/sectionrunner.h"
#include "simulator/model/trapezoid.h"

#include <cmath>

namespace kt500sim {

/// Directions in which nothing may move.
struct Prohibited
{
    bool forward = false;
    bool reverse = false;
};

class PositionCommand
{
public:
    void set(const PositionParameters &parameters, const LoopParameters &loops);
    const ElectronicGear &gear() const { return m_gear; }

    /// The command is where the shaft is; moves and triggers are forgotten.
    void follow(double counts);
    /// Clears the deviation, and with it the present move.
    void clearDeviation(double counts);
    /// Looks for a trigger, also while the servo is only just coming on.
    void noteInputs(const DigitalInputs &inputs);

    /// One sample period while commands are taken. \a watchesLimits says that software limits hold.
    void step(const DigitalInputs &inputs, const Prohibited &prohibited, bool watchesLimits);
    /// The present move would go where nothing may move.
    bool isBlocked() const { return m_blocked; }

    double command() const { return m_smoothed; } ///< counts
    double speed() const { return m_speed; }      ///< rad/s
    double target() const { return m_target; }    ///< counts
    bool isMoving() const { return m_profile.isActive() || std::fabs(m_raw - m_smoothed) > 0.5; }
    /// A target lay beyond a software limit and was cut; until a target lies within again.
    bool forwardLimited() const { return m_forwardLimited; }
    bool reverseLimited() const { return m_reverseLimited; }

private:
    void stepInternal();
    void stepSections(const DigitalInputs &inputs);
    void move(const MoveParameters &move, bool absolute, bool reversed, bool interrupts);

    PositionParameters m_parameters;
    ElectronicGear m_gear;
    Trapezoid m_profile;
    SectionRunner m_runner;
    MovingAverage m_average;
    LowPass m_filter;
    double m_raw = 0; ///< counts, before the filters
    double m_smoothed = 0;
    double m_speed = 0;
    double m_target = 0; ///< a whole count
    double m_exact = 0;  ///< the same with the fraction of a count that the gear leaves
    bool m_triggered = false;
    bool m_sectionsStarted = false;
    std::int64_t m_pause = 0; ///< sample periods left
    Prohibited m_prohibited;
    bool m_watchesLimits = false;
    bool m_blocked = false;
    bool m_forwardLimited = false;
    bool m_reverseLimited = false;
};

} // namespace kt500sim
