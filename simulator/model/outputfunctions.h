// SPDX-License-Identifier: GPL-3.0-or-later
// Which functions of the outputs are on.
//
// Lives on the thread of the Drive that owns the model.
#pragma once

#include "simulator/model/drivestate.h"
#include "simulator/model/parameters.h"

namespace kt500sim {

class OutputFunctions
{
public:
    /// After each sample period; \a brakeOpen as the servo's sequence has it.
    void step(const DriveState &state, const Parameters &parameters, bool brakeOpen);
    /// By function number.
    std::uint64_t on() const { return m_on; }
    bool inPosition() const { return m_inPosition; }

private:
    bool torqueArrived(const DriveState &state, const Parameters &parameters);

    std::uint64_t m_on = 0;
    bool m_inPosition = false;
    bool m_torqueArrived = false;
    int m_limitedFor = 0; ///< sample periods that the speed has been held back
};

} // namespace kt500sim
