// SPDX-License-Identifier: GPL-3.0-or-later
// Which of the two sets of gains applies.
//
// Lives on the thread of the Drive that owns the model.
#pragma once

#include "simulator/model/drivestate.h"
#include "simulator/model/parameters.h"

namespace kt500sim {

class GainSwitch
{
public:
    void set(const Parameters &parameters);
    /// Looks at the state after each sample period; \a inputIsOn is the input GAIN.
    void step(const DriveState &state, bool inputIsOn, bool inPosition);

    /// The second set applies.
    bool isSecond() const { return m_switched && m_switchesSet; }
    /// The speed loop is proportional alone.
    bool isProportional() const { return m_switched && !m_switchesSet; }

private:
    bool isMet(const DriveState &state, bool inputIsOn, bool inPosition) const;

    int m_condition = 0;
    bool m_switchesSet = false;
    double m_level = 0;
    double m_hysteresis = 0;
    int m_delay = 0; ///< sample periods
    double m_ratedTorque = 1;

    bool m_switched = false;
    int m_unmet = 0; ///< sample periods since the condition has gone
};

} // namespace kt500sim
