// SPDX-License-Identifier: GPL-3.0-or-later
// Finds the resonances of the machine: they are known once the motor has shaken it for long enough.
//
// Lives on the thread of the Drive that owns the model.
#pragma once

#include "simulator/model/plant.h"

#include <cmath>

namespace kt500sim {

class ResonanceFinder
{
public:
    void reset() { *this = ResonanceFinder(); }

    /// One sample period under \a torque (Nm) of a motor of \a ratedTorque.
    void step(double torque, double ratedTorque, const Plant &plant)
    {
        if (m_resonance > 0)
            return;
        m_excitation += std::fabs(torque - m_lastTorque) / ratedTorque;
        m_lastTorque = torque;
        if (m_excitation < enough || plant.isRigid())
            return;
        m_antiresonance = plant.antiresonance();
        m_resonance = plant.resonance();
    }
    /// The machine has been changed: what was found is no longer true.
    void forget()
    {
        m_excitation = 0;
        m_antiresonance = 0;
        m_resonance = 0;
    }

    double antiresonance() const { return m_antiresonance; } ///< Hz; 0: not found
    double resonance() const { return m_resonance; }

private:
    static constexpr double enough = 2; ///< changes of torque, summed, over the rated one

    double m_excitation = 0;
    double m_lastTorque = 0;
    double m_antiresonance = 0;
    double m_resonance = 0;
};

} // namespace kt500sim
