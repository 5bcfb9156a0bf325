// SPDX-License-Identifier: GPL-3.0-or-later
// A value that follows its target no faster than two slopes allow.
//
// Lives on the thread of the Drive that owns the model.
#pragma once

#include "simulator/model/units.h"

namespace kt500sim {

class Ramp
{
public:
    void reset(double value) { m_value = value; }
    double value() const { return m_value; }

    /// One sample period. \a rise is the slope away from zero, \a fall that towards it, each per second; 0
    /// stands for a jump. A reversal first falls to zero.
    double step(double target, double rise, double fall)
    {
        const bool crosses = m_value * target < 0;
        const bool falls = crosses || std::fabs(target) < std::fabs(m_value);
        const double aim = crosses ? 0 : target;
        const double slope = falls ? fall : rise;
        const double change = slope * stepTime;
        if (slope <= 0 || std::fabs(aim - m_value) <= change)
            m_value = aim;
        else
            m_value += aim > m_value ? change : -change;
        return m_value;
    }

private:
    double m_value = 0;
};

} // namespace kt500sim
