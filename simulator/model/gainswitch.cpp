// SPDX-License-Identifier: GPL-3.0-or-later
#include "simulator/model/gainswitch.h"

#include "simulator/model/units.h"

namespace kt500sim {
namespace {

enum Condition {
    AlwaysFirst,
    AlwaysSecond,
    Input,
    TorqueCommand,
    SpeedCommand,
    SpeedCommandChange,
    MeasuredSpeed,
    Deviation,
    CommandPresent,
    NotInPosition,
    CommandPresentOrRunning
};

} // namespace

void GainSwitch::set(const Parameters &parameters)
{
    const LoopParameters &p = parameters.loops;
    m_condition = p.gainSwitch & 0xf;
    m_switchesSet = (p.gainSwitch >> 4 & 0xf) == 1;
    m_level = p.gainSwitchLevel;
    m_hysteresis = p.gainSwitchHysteresis;
    m_delay = static_cast<int>(p.gainSwitchDelay * samplesPerSecond);
    m_ratedTorque = parameters.motor.ratedTorque > 0 ? parameters.motor.ratedTorque : 1;
}

bool GainSwitch::isMet(const DriveState &state, bool inputIsOn, bool inPosition) const
{
    // Once switched, a quantity has to fall below the level by the hysteresis.
    const double level = m_switched ? m_level - m_hysteresis : m_level;
    switch (m_condition) {
    case AlwaysSecond:
        return true;
    case Input:
        return inputIsOn;
    case TorqueCommand:
        return std::fabs(state.torqueCommand) / m_ratedTorque * 100 > level;
    case SpeedCommand:
        return std::fabs(rpm(state.speedCommand)) > level;
    case SpeedCommandChange:
        return std::fabs(rpm(state.speedCommand - state.feedbackSpeed)) > level;
    case MeasuredSpeed:
        return std::fabs(rpm(state.speed)) > level;
    case Deviation:
        return std::fabs(state.deviation) > level;
    case CommandPresent:
        return state.commandPresent;
    case NotInPosition:
        return !inPosition;
    case CommandPresentOrRunning:
        return state.commandPresent || std::fabs(rpm(state.speed)) > level;
    default:
        return false;
    }
}

void GainSwitch::step(const DriveState &state, bool inputIsOn, bool inPosition)
{
    if (m_condition == AlwaysFirst) {
        m_switched = false;
        return;
    }
    if (isMet(state, inputIsOn, inPosition)) {
        m_switched = true;
        m_unmet = 0;
    } else if (m_switched && ++m_unmet > m_delay) {
        m_switched = false;
    }
}

} // namespace kt500sim
