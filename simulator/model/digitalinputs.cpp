// SPDX-License-Identifier: GPL-3.0-or-later
#include "simulator/model/digitalinputs.h"

#include "simulator/model/units.h"

namespace kt500sim {
namespace {

constexpr int filteredInputs = 8; // the inputs that the common filter serves
constexpr int samplesPerMillisecond = samplesPerSecond / 1000;

} // namespace

void DigitalInputs::setParameters(const TerminalParameters &parameters)
{
    m_parameters = parameters;
    for (std::size_t i = 0; i < m_plans.size(); ++i)
        m_plans[i] = terminalPlan(parameters.inputPlan[i]);
    m_settled = false;
}

void DigitalInputs::setContacts(std::uint16_t contacts)
{
    m_contacts = contacts;
    m_settled = false;
}

std::uint16_t DigitalInputs::source() const
{
    const std::uint16_t auxiliary = m_parameters.auxiliaryInputs;
    return static_cast<std::uint16_t>((m_parameters.inputLevels & auxiliary) | (m_contacts & ~auxiliary));
}

void DigitalInputs::reset()
{
    m_levels = source();
    m_waited.fill(0);
    m_on = functionsOn();
    m_rose = 0;
    m_settled = false;
}

std::uint64_t DigitalInputs::functionsOn() const
{
    std::uint64_t on = 0;
    for (std::size_t i = 0; i < m_plans.size(); ++i) {
        const bool level = (m_levels >> i & 1) != 0;
        if (m_plans[i].function > 0 && m_plans[i].function < 64 && level != m_plans[i].inverted)
            on |= std::uint64_t{1} << m_plans[i].function;
    }
    return on;
}

bool DigitalInputs::takes(int input, bool level)
{
    const auto at = static_cast<std::size_t>(input);
    const bool present = (m_levels >> input & 1) != 0;
    if (level == present) {
        m_waited[at] = 0;
        return true;
    }
    // A level written over the line has no bounce to be filtered.
    const bool wired = (m_parameters.auxiliaryInputs >> input & 1) == 0;
    int filter = m_plans[at].delay * samplesPerMillisecond;
    if (input < filteredInputs)
        filter += static_cast<int>(m_parameters.inputFilter * samplesPerSecond);
    if (wired && m_waited[at]++ < filter)
        return false;
    m_waited[at] = 0;
    m_levels = static_cast<std::uint16_t>(m_levels ^ (1u << input));
    return true;
}

void DigitalInputs::step()
{
    if (m_settled)
        return;
    const std::uint16_t wanted = source();
    bool all = true;
    for (int i = 0; i < terminalCount; ++i)
        all = takes(i, (wanted >> i & 1) != 0) && all;
    const std::uint64_t on = functionsOn();
    m_rose = on & ~m_on;
    m_on = on;
    m_settled = all && m_rose == 0;
}

} // namespace kt500sim
