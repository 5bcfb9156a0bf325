// SPDX-License-Identifier: GPL-3.0-or-later
#include "simulator/model/overload.h"

#include <cmath>

namespace kt500sim {

void Overload::step(double seconds, double currentSquared, double torque, double speed,
                    const ProtectionParameters &parameters)
{
    const double settled = currentSquared / (permanentCurrent * permanentCurrent);
    const double timeConstant = windingTime * (parameters.overloadGain > 0 ? parameters.overloadGain : 1);
    m_load += (settled - m_load) * -std::expm1(-seconds / timeConstant);

    const bool stands = parameters.stallWatched && std::fabs(torque) > parameters.stallTorque &&
                        std::fabs(speed) < parameters.stallSpeed;
    m_blockedFor = stands ? m_blockedFor + seconds : 0;
    m_blocked = stands && m_blockedFor >= parameters.stallTime;
}

} // namespace kt500sim
