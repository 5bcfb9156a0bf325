// SPDX-License-Identifier: GPL-3.0-or-later
#include "simulator/model/outputfunctions.h"

#include "simulator/model/terminalplan.h"
#include "simulator/model/units.h"

namespace kt500sim {

bool OutputFunctions::torqueArrived(const DriveState &state, const Parameters &parameters)
{
    const TorqueParameters &p = parameters.torque;
    const double above = std::fabs(state.torque) / parameters.motor.ratedTorque - p.arrivedBase;
    if (above >= p.arrivedOn)
        m_torqueArrived = true;
    else if (above < p.arrivedOff)
        m_torqueArrived = false;
    return m_torqueArrived && state.energised;
}

void OutputFunctions::step(const DriveState &state, const Parameters &parameters, bool brakeOpen)
{
    const double speed = std::fabs(state.speed);
    const double deviation = std::fabs(state.deviation);
    const PositionParameters &position = parameters.position;
    const bool positioning = state.positionMode && state.energised;
    m_inPosition = positioning && deviation <= position.inPositionRange;
    if (position.inPositionCondition == 3)
        m_inPosition = m_inPosition && speed < parameters.speed.zeroThreshold;
    else if (position.inPositionCondition != 0)
        m_inPosition = m_inPosition && !state.commandPresent;
    const int window = static_cast<int>(parameters.torque.limitWindow * samplesPerSecond);
    m_limitedFor = state.speedLimited ? m_limitedFor + (m_limitedFor <= window ? 1 : 0) : 0;

    m_on = 0;
    const auto put = [this](DigitalOutput function, bool on) {
        m_on |= static_cast<std::uint64_t>(on ? 1 : 0) << static_cast<int>(function);
    };
    put(DigitalOutput::Ready, state.fault == 0);
    put(DigitalOutput::Running, state.energised);
    put(DigitalOutput::BrakeOpen, brakeOpen);
    put(DigitalOutput::Warning, state.warning != 0);
    put(DigitalOutput::Fault, state.fault != 0);
    put(DigitalOutput::InPosition, m_inPosition);
    put(DigitalOutput::NearPosition, positioning && deviation <= position.nearRange);
    put(DigitalOutput::ZeroSpeed, speed < parameters.speed.zeroThreshold);
    put(DigitalOutput::SpeedArrived, speed > parameters.speed.arrivedThreshold);
    put(DigitalOutput::SpeedLimited, m_limitedFor > window);
    put(DigitalOutput::TorqueArrived, torqueArrived(state, parameters));
    put(DigitalOutput::TorqueLimited, state.torqueLimited);
}

} // namespace kt500sim
