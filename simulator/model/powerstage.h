// SPDX-License-Identifier: GPL-3.0-or-later
// The power stage: the bus that motoring loads and braking charges, the braking resistor, and the heat of the
// module.
//
// Lives on the thread of the Drive that owns the model.
#pragma once

namespace kt500sim {

class PowerStage
{
public:
    void reset();
    /// Moves on by \a seconds in which the motor takes \a power (W, electrical; negative while it brakes) and
    /// the windings lose \a loss (W).
    void step(double seconds, double power, double loss);

    double busVoltage() const { return m_voltage; }        ///< V
    double temperature() const { return m_temperature; }   ///< degrees
    double resistorLoad() const { return m_resistorLoad; } ///< share of its rated power, over ten seconds

    static constexpr double highestVoltage = 420; ///< V, above which the stage protects itself
    static constexpr double mainsVoltage = 311;   ///< V

private:
    double m_voltage = mainsVoltage;
    double m_temperature = 0;
    double m_resistorLoad = 0;
};

} // namespace kt500sim
