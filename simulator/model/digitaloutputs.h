// SPDX-License-Identifier: GPL-3.0-or-later
// The sixteen outputs: the function of each, its delay and logic, and levels that are forced.
//
// Lives on the thread of the Drive that owns the model.
#pragma once

#include "simulator/model/parameters.h"
#include "simulator/model/terminalplan.h"

namespace kt500sim {

class DigitalOutputs
{
public:
    void setParameters(const TerminalParameters &parameters);

    /// Takes the functions that are on, by number, after \a samples sample periods.
    void step(std::uint64_t functions, std::int64_t samples);
    /// The levels put out, bit 0 for DO1.
    std::uint16_t levels() const { return m_levels; }
    bool isSettled() const { return m_settled; }

private:
    TerminalParameters m_parameters;
    std::array<TerminalPlan, terminalCount> m_plans;
    std::array<std::int64_t, terminalCount> m_lasted{}; ///< sample periods that the function has been on
    std::uint64_t m_functions = 0;
    std::uint16_t m_levels = 0;
    bool m_settled = false;
};

} // namespace kt500sim
