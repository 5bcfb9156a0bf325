// SPDX-License-Identifier: GPL-3.0-or-later
#include "simulator/model/servosequence.h"

#include <cmath>

#include "simulator/model/units.h"

namespace kt500sim {
namespace {

constexpr double standstill = radiansPerSecond(5);
constexpr double stopTimeLimit = 10; // s, after which a controlled stop is given up

int samplesOf(double seconds)
{
    return static_cast<int>(std::lround(seconds * samplesPerSecond));
}

} // namespace

void ServoSequence::reset(bool servoOn)
{
    *this = ServoSequence();
    m_released = !servoOn;
}

void ServoSequence::stop(StopMode mode)
{
    m_phase = Phase::Stopping;
    m_stopMode = mode;
    m_samples = 0;
}

ServoSequence::StopMode ServoSequence::modeFor(const Inputs &inputs, const StopParameters &parameters) const
{
    if (inputs.fault) {
        if (parameters.fault == 2)
            return inputs.faultNeedsPower ? StopMode::DynamicBrake : StopMode::ZeroSpeed;
        return parameters.fault == 1 ? StopMode::DynamicBrake : StopMode::Coast;
    }
    if (inputs.emergency)
        return parameters.emergency == 1 ? StopMode::Emergency : StopMode::Coast;
    if (parameters.servoOff == 2)
        return StopMode::DynamicBrakeHeld;
    return parameters.servoOff == 1 ? StopMode::DynamicBrake : StopMode::Coast;
}

void ServoSequence::step(const Inputs &inputs, const StopParameters &parameters)
{
    const double speed = std::fabs(inputs.speed);
    const bool blocked = inputs.fault || inputs.emergency;
    if (blocked)
        m_released = false;
    else if (!inputs.servoOn)
        m_released = true;
    ++m_samples;

    switch (m_phase) {
    case Phase::Off:
        m_brakeOpen = false;
        if (inputs.servoOn && m_released && !blocked) {
            m_phase = Phase::Opening;
            m_stopMode = StopMode::Coast;
            m_brakeOpen = true;
            m_samples = 0;
        }
        break;
    case Phase::Opening:
    case Phase::Running:
        if (blocked) {
            stop(modeFor(inputs, parameters));
        } else if (!inputs.servoOn) {
            stop(modeFor(inputs, parameters));
            if (speed < standstill) {
                m_phase = Phase::Holding;
                m_brakeOpen = false;
            }
        } else if (m_phase == Phase::Opening && m_samples >= samplesOf(parameters.brakeOpening)) {
            m_phase = Phase::Running;
        }
        break;
    case Phase::Stopping:
        stepStop(inputs, parameters, speed);
        break;
    case Phase::Holding:
        if (inputs.fault || m_samples >= samplesOf(parameters.holdAfterOff))
            m_phase = Phase::Off;
        break;
    }
}

void ServoSequence::stepStop(const Inputs &inputs, const StopParameters &parameters, double speed)
{
    // A fault or an emergency that comes while another stop is under way takes over.
    const StopMode mode = modeFor(inputs, parameters);
    if ((inputs.fault || inputs.emergency) && mode != m_stopMode)
        m_stopMode = mode;
    if (speed < parameters.brakeSpeed || m_samples >= samplesOf(parameters.brakeDelay))
        m_brakeOpen = false;
    if (speed < standstill || m_samples >= samplesOf(stopTimeLimit)) {
        m_brakeOpen = false;
        m_phase = Phase::Off;
    }
}

} // namespace kt500sim
