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
    m_positionLost = false;
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

void MotionControl::whileOff(const ServoSequence &sequence, const DigitalInputs &inputs,
                             const DriveState &state, AxisCommand *command)
{
    change(Activity::None, state);
    m_offlineRun.stop();
    m_identified = false;
    // The deviation outlasts servo off only by the modes that clear it by their input alone.
    if (sequence.phase() == ServoSequence::Phase::Opening)
        m_position.noteInputs(inputs);
    else if (m_parameters.position.deviationClear < 2)
        m_position.follow(static_cast<double>(state.counts));
    if (sequence.phase() == ServoSequence::Phase::Stopping)
        stopCommand(sequence, command);
    else if (sequence.phase() != ServoSequence::Phase::Off)
        command->mode = AxisMode::Speed;
    else if (sequence.staysShorted())
        command->mode = AxisMode::DynamicBrake;
}

void MotionControl::startIdentification()
{
    const IdentificationParameters &p = m_parameters.identification;
    if (!p.offline || p.offlineMode != 0 || m_identified || m_offlineRun.isRunning())
        return;
    m_offlineRun.start(p);
    m_identified = true;
}

void MotionControl::speed(const DigitalInputs &inputs, const DriveState &state, AxisCommand *command)
{
    command->mode = AxisMode::Speed;
    if (m_activity == Activity::Identification) {
        command->speed = m_offlineRun.step();
        return;
    }
    if (m_activity == Activity::None)
        return;
    if (m_activity == Activity::Jog) {
        command->speed = m_speed.stepJog(m_parameters.jog, inputs, m_prohibited);
        command->bounds.positive = std::min(command->bounds.positive, m_parameters.torqueLimits.jog);
        command->bounds.negative = std::min(command->bounds.negative, m_parameters.torqueLimits.jog);
    } else {
        command->speed = m_speed.step(inputs, m_prohibited);
    }
    releaseAtOvertravel(m_speed.target(), state, command);
}

AxisCommand MotionControl::step(const ServoSequence &sequence, const DigitalInputs &inputs,
                                const DriveState &state)
{
    const double limit = std::min(m_parameters.speed.limit, m_parameters.motor.maxSpeed);
    AxisCommand command;
    command.position = static_cast<double>(state.counts);
    command.highestSpeed = limit;
    command.lowestSpeed = -limit;
    command.bounds = bounds(inputs);
    command.brakeHolds = !sequence.brakeIsOpen();
    watchLimits(inputs, state);
    if (!sequence.takesCommands()) {
        whileOff(sequence, inputs, state, &command);
        return command;
    }

    startIdentification();
    change(wantedActivity(inputs), state);
    if (isPositioning()) {
        // What moved the shaft meanwhile is not to be taken back.
        if (m_positionLost)
            m_position.follow(command.position);
        m_positionLost = false;
        m_position.noteInputs(inputs);
        position(inputs, state, &command);
        return command;
    }
    m_positionLost = true;
    if (m_activity == Activity::Torque)
        torque(inputs, &command);
    else
        speed(inputs, state, &command);
    return command;
}

} // namespace kt500sim
