// SPDX-License-Identifier: GPL-3.0-or-later
#include "simulator/model/motioncontrol.h"

#include <algorithm>

namespace kt500sim {
namespace {

enum Method { PositionOnly, SpeedOnly, TorqueOnly, PositionSpeed, PositionTorque, SpeedTorque, AllThree };
enum LimitSource { InternalLimits, ExternalLimits, AnalogLimit, LeastOfAll };
enum OvertravelStop { CoastFree, StopLocked, StopFree };

constexpr double standstill = radiansPerSecond(5);

} // namespace

void MotionControl::set(const Parameters &parameters)
{
    m_parameters = parameters;
    m_position.set(parameters.position, parameters.loops);
    m_speed.set(parameters.speed);
    m_torque.set(parameters.torque);
}

void MotionControl::reset(double counts)
{
    change(Activity::None, DriveState());
    m_position.follow(counts);
    m_offlineRun.stop();
    m_prohibited = Prohibited();
    m_forwardLimited = false;
    m_reverseLimited = false;
}

bool MotionControl::gearIsRefused() const
{
    const int method = m_parameters.method;
    const bool positions =
        method == PositionOnly || method == PositionSpeed || method == PositionTorque || method == AllThree;
    return positions && !gear().isWithinRange();
}

MotionControl::Activity MotionControl::wantedActivity(const DigitalInputs &inputs) const
{
    if (m_offlineRun.isRunning())
        return Activity::Identification;
    if (m_identified)
        return Activity::None;
    if (m_parameters.jog.enabled)
        return Activity::Jog;
    const bool toTorque = inputs.isOn(DigitalInput::PositionOrTorque);
    const bool toSpeed = inputs.isOn(DigitalInput::PositionOrSpeed);
    switch (m_parameters.method) {
    case PositionOnly:
        return Activity::Position;
    case TorqueOnly:
        return Activity::Torque;
    case PositionSpeed:
        return toSpeed ? Activity::Speed : Activity::Position;
    case PositionTorque:
        return toTorque ? Activity::Torque : Activity::Position;
    case SpeedTorque:
        return inputs.isOn(DigitalInput::SpeedOrTorque) ? Activity::Torque : Activity::Speed;
    case AllThree:
        return toTorque ? Activity::Torque : toSpeed ? Activity::Speed : Activity::Position;
    case SpeedOnly:
        return Activity::Speed;
    default:
        return Activity::None; // a field bus commands, and there is none
    }
}

void MotionControl::change(Activity activity, const DriveState &state)
{
    if (activity == m_activity)
        return;
    m_activity = activity;
    m_halting = false;
    m_speed.follow(state.feedbackSpeed);
    m_torque.reset();
}

void MotionControl::watchLimits(const DigitalInputs &inputs, const DriveState &state)
{
    const PositionParameters &p = m_parameters.position;
    const bool watched = p.softwareLimits == 1;
    const double user = state.userPosition;
    const bool beyond = watched && !isPositioning();
    m_forwardLimited = (isPositioning() && m_position.forwardLimited()) || (beyond && user >= p.forwardLimit);
    m_reverseLimited = (isPositioning() && m_position.reverseLimited()) || (beyond && user <= p.reverseLimit);
    m_prohibited.forward = inputs.isOn(DigitalInput::ForwardOvertravel) || (beyond && m_forwardLimited);
    m_prohibited.reverse = inputs.isOn(DigitalInput::ReverseOvertravel) || (beyond && m_reverseLimited);
}

TorqueBounds MotionControl::bounds(const DigitalInputs &inputs) const
{
    const TorqueLimitParameters &p = m_parameters.torqueLimits;
    TorqueBounds result{p.internalPositive, p.internalNegative};
    // Nothing is wired to the analog input, so that a limit by it is the internal one.
    if (p.source == ExternalLimits) {
        if (inputs.isOn(DigitalInput::ForwardTorqueLimit))
            result.positive = p.externalPositive;
        if (inputs.isOn(DigitalInput::ReverseTorqueLimit))
            result.negative = p.externalNegative;
    } else if (p.source == LeastOfAll) {
        result.positive = std::min(result.positive, p.externalPositive);
        result.negative = std::min(result.negative, p.externalNegative);
    }
    return result;
}

void MotionControl::stopCommand(const ServoSequence &sequence, AxisCommand *command) const
{
    switch (sequence.stopMode()) {
    case ServoSequence::StopMode::Coast:
        command->mode = AxisMode::Free;
        break;
    case ServoSequence::StopMode::DynamicBrake:
    case ServoSequence::StopMode::DynamicBrakeHeld:
        command->mode = AxisMode::DynamicBrake;
        break;
    case ServoSequence::StopMode::ZeroSpeed:
        command->mode = AxisMode::Speed;
        break;
    case ServoSequence::StopMode::Emergency:
        command->mode = AxisMode::Speed;
        command->bounds = {m_parameters.torqueLimits.emergency, m_parameters.torqueLimits.emergency};
        break;
    }
}

void MotionControl::releaseAtOvertravel(double wanted, const DriveState &state, AxisCommand *command) const
{
    const int mode = m_parameters.stop.overtravel;
    if (mode == StopLocked || wanted != 0 || (!m_prohibited.forward && !m_prohibited.reverse))
        return;
    if (mode == CoastFree || std::fabs(state.speed) < standstill)
        command->mode = AxisMode::Free;
}

void MotionControl::position(const DigitalInputs &inputs, const DriveState &state, AxisCommand *command)
{
    const auto counts = static_cast<double>(state.counts);
    const int clearing = m_parameters.position.deviationClear;
    const bool clears = clearing == 1 ? inputs.isOn(DigitalInput::DeviationClear)
                                      : clearing >= 2 && inputs.rose(DigitalInput::DeviationClear);
    if (clears)
        m_position.clearDeviation(counts);
    m_position.step(inputs, m_prohibited, m_parameters.position.softwareLimits == 1);
    m_halting = m_halting || m_position.isBlocked();
    if (m_halting) {
        // At an overtravel switch the motor is stopped by its speed, and the rest of the way is given up.
        command->mode = AxisMode::Speed;
        releaseAtOvertravel(0, state, command);
        m_position.follow(counts);
        m_halting = std::fabs(state.speed) > standstill;
        return;
    }
    command->mode = AxisMode::Position;
    command->position = m_position.command();
    command->positionSpeed = m_position.speed();
}

void MotionControl::torque(const DigitalInputs &inputs, AxisCommand *command)
{
    const TorqueParameters &p = m_parameters.torque;
    command->mode = AxisMode::Torque;
    command->torque = m_torque.step(inputs);
    double forward = p.forwardSpeedLimit;
    double reverse = p.reverseSpeedLimit;
    if (p.speedLimitSource == 2) {
        forward = inputs.isOn(DigitalInput::Section1) ? p.reverseSpeedLimit : p.forwardSpeedLimit;
        reverse = forward;
    }
    command->highestSpeed = m_prohibited.forward ? 0 : std::min(forward, command->highestSpeed);
    command->lowestSpeed = m_prohibited.reverse ? 0 : std::max(-reverse, command->lowestSpeed);
}

AxisCommand MotionControl::step(const ServoSequence &sequence, const DigitalInputs &inputs,
                                const DriveState &state)
{
    const auto counts = static_cast<double>(state.counts);
    const double limit = std::min(m_parameters.speed.limit, m_parameters.motor.maxSpeed);
    AxisCommand command;
    command.position = counts;
    command.highestSpeed = limit;
    command.lowestSpeed = -limit;
    command.bounds = bounds(inputs);
    command.brakeHolds = !sequence.brakeIsOpen();
    watchLimits(inputs, state);

    if (sequence.phase() != ServoSequence::Phase::Running) {
        change(Activity::None, state);
        m_offlineRun.stop();
        m_identified = false;
        // The deviation outlasts servo off only by the modes that clear it by their input alone.
        if (sequence.phase() == ServoSequence::Phase::Opening)
            m_position.noteInputs(inputs);
        else if (m_parameters.position.deviationClear < 2)
            m_position.follow(counts);
        if (sequence.phase() == ServoSequence::Phase::Stopping)
            stopCommand(sequence, &command);
        else if (sequence.phase() != ServoSequence::Phase::Off)
            command.mode = AxisMode::Speed;
        else if (sequence.staysShorted())
            command.mode = AxisMode::DynamicBrake;
        return command;
    }

    const bool identifies =
        m_parameters.identification.offline && m_parameters.identification.offlineMode == 0;
    if (identifies && !m_offlineRun.isRunning() && !m_identified) {
        m_offlineRun.start(m_parameters.identification);
        m_identified = true;
    }
    change(wantedActivity(inputs), state);
    if (isPositioning()) {
        m_position.noteInputs(inputs);
        position(inputs, state, &command);
        return command;
    }
    m_position.follow(counts);
    switch (m_activity) {
    case Activity::Torque:
        torque(inputs, &command);
        break;
    case Activity::Jog:
        command.mode = AxisMode::Speed;
        command.speed = m_speed.stepJog(m_parameters.jog, inputs, m_prohibited);
        command.bounds.positive = std::min(command.bounds.positive, m_parameters.torqueLimits.jog);
        command.bounds.negative = std::min(command.bounds.negative, m_parameters.torqueLimits.jog);
        releaseAtOvertravel(m_speed.target(), state, &command);
        break;
    case Activity::Identification:
        command.mode = AxisMode::Speed;
        command.speed = m_offlineRun.step();
        break;
    case Activity::Speed:
        command.mode = AxisMode::Speed;
        command.speed = m_speed.step(inputs, m_prohibited);
        releaseAtOvertravel(m_speed.target(), state, &command);
        break;
    default:
        command.mode = AxisMode::Speed;
        break;
    }
    return command;
}

} // namespace kt500sim
