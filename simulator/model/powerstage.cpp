// SPDX-License-Identifier: GPL-3.0-or-later
#include "simulator/model/powerstage.h"

#include <cmath>

namespace kt500sim {
namespace {

constexpr double capacity = 0.00082;    // F
constexpr double mainsResistance = 1.5; // Ohm, as the rectified supply shows it
constexpr double chopperVoltage = 380;  // V, at which braking sets in
constexpr double resistor = 50;         // Ohm
constexpr double resistorPower = 100;   // W, rated
constexpr double resistorWindow = 10;   // s
constexpr double standbyPower = 12;     // W
constexpr double roomTemperature = 28;  // degrees
constexpr double heating = 0.28;        // degrees for each W of loss
constexpr double moduleTime = 180;      // s

} // namespace

void PowerStage::reset()
{
    *this = PowerStage();
    m_temperature = roomTemperature + heating * standbyPower;
}

void PowerStage::step(double seconds, double power, double loss)
{
    power += standbyPower;
    double resistorUse = 0;
    if (power >= 0) {
        // The mains carries the load; the bus sags by what the supply drops.
        const double sagged = mainsVoltage - mainsResistance * power / mainsVoltage;
        const double timeConstant = mainsResistance * capacity;
        if (m_voltage > sagged)
            m_voltage -= power / (capacity * m_voltage) * seconds;
        if (m_voltage <= sagged)
            m_voltage += (sagged - m_voltage) * -std::expm1(-seconds / timeConstant);
    } else {
        const double charged = m_voltage * m_voltage - 2 * power * seconds / capacity;
        m_voltage = std::sqrt(charged);
        if (m_voltage > chopperVoltage) {
            // The chopper lets through what would lift the bus any further, as far as its resistor can.
            const double surplus = capacity * (charged - chopperVoltage * chopperVoltage) / 2 / seconds;
            resistorUse = std::fmin(surplus, m_voltage * m_voltage / resistor);
            m_voltage = std::sqrt(charged - 2 * resistorUse * seconds / capacity);
        }
    }
    const double share = -std::expm1(-seconds / resistorWindow);
    m_resistorLoad += (resistorUse / resistorPower - m_resistorLoad) * share;
    const double settled = roomTemperature + heating * (standbyPower + 0.5 * loss + 0.02 * std::fabs(power));
    m_temperature += (settled - m_temperature) * -std::expm1(-seconds / moduleTime);
}

} // namespace kt500sim
