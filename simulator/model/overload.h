// SPDX-License-Identifier: GPL-3.0-or-later
// The heat of the motor by its current: what overload protection goes by.
//
// Lives on the thread of the Drive that owns the model.
#pragma once

#include "simulator/model/parameters.h"

namespace kt500sim {

class Overload
{
public:
    /// Current that the motor bears for ever, over the rated one.
    static constexpr double permanentCurrent = 1.1;
    /// Time constant of the winding at a gain of 100 %, s.
    static constexpr double windingTime = 30;

    void reset() { *this = Overload(); }
    /// Moves on by \a seconds of a mean \a currentSquared, over the square of the rated current; \a torque
    /// over the rated one and \a speed (rad/s) tell a blocked motor.
    void step(double seconds, double currentSquared, double torque, double speed,
              const ProtectionParameters &parameters);

    /// Share of the heat that trips; from 1 on the motor is overloaded.
    double load() const { return m_load; }
    bool isBlocked() const { return m_blocked; }

private:
    double m_load = 0;
    double m_blockedFor = 0; ///< s
    bool m_blocked = false;
};

} // namespace kt500sim
