// SPDX-License-Identifier: GPL-3.0-or-later
// The torque command: the internal one, or one of four values that the inputs choose.
//
// Lives on the thread of the Drive that owns the model.
#pragma once

#include "simulator/model/digitalinputs.h"
#include "simulator/model/filters.h"
#include "simulator/model/ramp.h"

namespace kt500sim {

class TorqueCommand
{
public:
    void set(const TorqueParameters &parameters)
    {
        m_parameters = parameters;
        m_filter.setTimeConstant(parameters.filter);
    }
    void reset()
    {
        m_ramp.reset(0);
        m_filter.reset(0);
    }

    /// The command of the next sample period, Nm.
    double step(const DigitalInputs &inputs)
    {
        double torque = 0;
        double slope = 0;
        if (m_parameters.source == 1) {
            torque = m_parameters.command;
        } else if (m_parameters.source == 2) {
            const std::size_t chosen = (inputs.isOn(DigitalInput::Section2) ? 2u : 0u) +
                                       (inputs.isOn(DigitalInput::Section1) ? 1u : 0u);
            torque = m_parameters.step[chosen];
            const double time = m_parameters.stepTime[chosen];
            slope = time > 0 ? std::fabs(torque) / time : 0;
        }
        if (inputs.isOn(DigitalInput::Reverse))
            torque = -torque;
        return m_filter.step(m_ramp.step(torque, slope, 0));
    }

private:
    TorqueParameters m_parameters;
    Ramp m_ramp;
    LowPass m_filter;
};

} // namespace kt500sim
