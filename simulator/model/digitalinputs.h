// SPDX-License-Identifier: GPL-3.0-or-later
// The sixteen inputs: where each takes its level from, its filter, and the functions that are on.
//
// Lives on the thread of the Drive that owns the model.
#pragma once

#include "simulator/model/parameters.h"
#include "simulator/model/terminalplan.h"

namespace kt500sim {

class DigitalInputs
{
public:
    void setParameters(const TerminalParameters &parameters);
    /// What is wired: bit 0 is DI1, set for a closed contact.
    void setContacts(std::uint16_t contacts);
    std::uint16_t contacts() const { return m_contacts; }
    /// Forgets edges and filters: all levels are taken as they stand.
    void reset();

    /// One sample period.
    void step();

    bool isOn(DigitalInput function) const { return (m_on >> static_cast<int>(function) & 1) != 0; }
    /// Came on in this sample period.
    bool rose(DigitalInput function) const { return (m_rose >> static_cast<int>(function) & 1) != 0; }
    /// The levels taken, bit 0 for DI1.
    std::uint16_t levels() const { return m_levels; }
    /// Nothing waits for a filter, and no edge is to be seen.
    bool isSettled() const { return m_settled; }

private:
    std::uint16_t source() const;
    std::uint64_t functionsOn() const;
    bool takes(int input, bool level);

    TerminalParameters m_parameters;
    std::array<TerminalPlan, terminalCount> m_plans;
    std::uint16_t m_contacts = 0;

    std::uint16_t m_levels = 0;
    std::array<int, terminalCount> m_waited{}; ///< sample periods that another level has lasted
    std::uint64_t m_on = 0;                    ///< by function number
    std::uint64_t m_rose = 0;
    bool m_settled = false;
};

} // namespace kt500sim
