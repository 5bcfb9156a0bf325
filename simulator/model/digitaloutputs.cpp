// SPDX-License-Identifier: GPL-3.0-or-later
#include "simulator/model/digitaloutputs.h"

#include "simulator/model/units.h"

namespace kt500sim {
namespace {

constexpr int samplesPerMillisecond = samplesPerSecond / 1000;

} // namespace

void DigitalOutputs::setParameters(const TerminalParameters &parameters)
{
    m_parameters = parameters;
    for (std::size_t i = 0; i < m_plans.size(); ++i)
        m_plans[i] = terminalPlan(parameters.outputPlan[i]);
    m_settled = false;
}

void DigitalOutputs::step(std::uint64_t functions, std::int64_t samples)
{
    if (m_settled && functions == m_functions)
        return;
    m_functions = functions;
    m_settled = true;
    std::uint16_t levels = 0;
    for (std::size_t i = 0; i < m_plans.size(); ++i) {
        const TerminalPlan &plan = m_plans[i];
        const bool on = plan.function > 0 && plan.function < 64 && (functions >> plan.function & 1) != 0;
        const int delay = plan.delay * samplesPerMillisecond;
        m_lasted[i] = on ? m_lasted[i] + samples : 0;
        const bool lasted = on && m_lasted[i] >= delay;
        if (on && !lasted)
            m_settled = false;
        if (plan.function > 0 && lasted != plan.inverted)
            levels = static_cast<std::uint16_t>(levels | 1u << i);
    }
    const std::uint16_t forced = m_parameters.auxiliaryOutputs;
    m_levels = static_cast<std::uint16_t>((levels & ~forced) | (m_parameters.outputLevels & forced));
}

} // namespace kt500sim
