// SPDX-License-Identifier: GPL-3.0-or-later
// The electronic gear: how many counts of the encoder a user unit is.
//
// Lives on the thread of the Drive that owns the model.
#pragma once

#include "simulator/model/digitalinputs.h"

namespace kt500sim {

class ElectronicGear
{
public:
    void set(const PositionParameters &parameters);
    /// Takes the numerator that the inputs choose.
    void select(const DigitalInputs &inputs);

    double toCounts(double userUnits) const { return userUnits * m_ratio; }
    double toUserUnits(double counts) const { return counts / m_ratio; }
    /// Between a fiftieth and a fiftieth of the encoder's counts.
    bool isWithinRange() const;

private:
    std::array<double, 4> m_ratios{1, 1, 1, 1};
    double m_ratio = 1;
    std::size_t m_selected = 0;
};

} // namespace kt500sim
