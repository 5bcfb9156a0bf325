// SPDX-License-Identifier: GPL-3.0-or-later
#include "simulator/model/electronicgear.h"

#include "simulator/model/units.h"

namespace kt500sim {

void ElectronicGear::set(const PositionParameters &parameters)
{
    for (std::size_t i = 0; i < m_ratios.size(); ++i)
        m_ratios[i] = static_cast<double>(parameters.gearNumerators[i]) / parameters.gearDenominator;
    m_ratio = m_ratios[m_selected];
}

void ElectronicGear::select(const DigitalInputs &inputs)
{
    m_selected = (inputs.isOn(DigitalInput::Gear2) ? 2u : 0u) + (inputs.isOn(DigitalInput::Gear1) ? 1u : 0u);
    m_ratio = m_ratios[m_selected];
}

bool ElectronicGear::isWithinRange() const
{
    return m_ratio >= 1.0 / 50 && m_ratio <= countsPerTurn / 50.0;
}

} // namespace kt500sim
