// SPDX-License-Identifier: GPL-3.0-or-later
// The speed loop: proportional and integral, scaled by the inertia that it is told to move.
//
// Lives on the thread of the Drive that owns the model.
#pragma once

#include "simulator/model/units.h"

namespace kt500sim {

struct TorqueBounds
{
    double positive = 0; ///< Nm
    double negative = 0; ///< Nm, as a size
};

class VelocityLoop
{
public:
    /// \a gain in Nm s/rad; without \a integralTime (s) the loop is proportional.
    void setGains(double gain, double integralTime)
    {
        m_gain = gain;
        m_integralShare = integralTime > 0 ? gain * stepTime / integralTime : 0;
    }
    void reset() { m_integral = 0; }
    /// Proportional alone from now on, or not; the integral is kept meanwhile.
    void setProportional(bool on) { m_proportional = on; }

    /// The torque for one sample period, within \a bounds. The integral stands still while a bound holds the
    /// torque back.
    double step(double error, double feedforward, const TorqueBounds &bounds)
    {
        const double grown = m_integral + (m_proportional ? 0 : m_integralShare * error);
        const double wanted = m_gain * error + grown + feedforward;
        const double torque = clampTo(wanted, -bounds.negative, bounds.positive);
        const bool bounded = torque != wanted;
        if (!bounded || (wanted - torque) * error < 0)
            m_integral = grown;
        m_integral = clampTo(m_integral, -bounds.negative, bounds.positive);
        return torque;
    }

private:
    double m_gain = 0;
    double m_integralShare = 0;
    double m_integral = 0;
    bool m_proportional = false;
};

} // namespace kt500sim
