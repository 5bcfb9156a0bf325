// SPDX-License-Identifier: GPL-3.0-or-later
#include "simulator/model/servoaxis.h"

#include <algorithm>

namespace kt500sim {
namespace {

constexpr double overloadCapacity = 3;     // times the rated torque, what the power stage can give
constexpr double shownSpeedFilter = 0.001; // s
constexpr double brakeTorqueShare = 4;     // of the holding brake, times the rated torque
constexpr double dynamicBrakeShare = 0.01; // Nm s/rad for each Nm of rated torque

} // namespace

ServoAxis::ServoAxis(std::uint32_t seed)
    : m_encoder(seed)
{
    m_shownSpeed.setTimeConstant(shownSpeedFilter);
}

void ServoAxis::reset(const Parameters &parameters)
{
    if (parameters.absoluteEncoder) {
        m_plant.halt();
    } else {
        m_plant.reset();
        m_encoder.reset();
    }
    m_reversed = parameters.reversed;
    m_path.drive(0);
    m_mode = AxisMode::Free;
    m_shownSpeed.reset(0);
    setParameters(parameters);
    resetLoops();
}

void ServoAxis::setParameters(const Parameters &parameters)
{
    m_parameters = parameters;
    const LoopParameters &loops = parameters.loops;
    m_plant.setRotorInertia(parameters.motor.rotorInertia);
    m_path.set(loops);
    m_gainSwitch.set(parameters);
    m_speedAverage.setLength(loops.speedAverage);
    m_speedFilter.setTimeConstant(loops.speedFeedbackFilter);
    m_speedFeedforward.setTimeConstant(loops.speedFeedforwardFilter);
    m_torqueFeedforward.setTimeConstant(loops.torqueFeedforwardFilter);
    applyGains();
}

void ServoAxis::applyGains()
{
    const double inertia = m_parameters.motor.rotorInertia * m_parameters.loops.inertiaRatio;
    m_velocityLoop.setGains(2 * pi * gains().speed * inertia, gains().integralTime);
    m_velocityLoop.setProportional(m_gainSwitch.isProportional());
    m_secondSet = m_gainSwitch.isSecond();
}

void ServoAxis::resetLoops()
{
    m_velocityLoop.reset();
    m_path.reset();
    m_speedFeedforward.reset(0);
    m_torqueFeedforward.reset(0);
    m_lastSpeedCommand = 0;
}

void ServoAxis::measure(DriveState *state)
{
    std::int64_t moved = m_encoder.read(m_plant.position());
    if (m_reversed)
        moved = -moved;
    const double raw = static_cast<double>(moved) * (samplesPerSecond / countsPerRadian);
    state->counts = counts();
    state->feedbackSpeed = m_speedFilter.step(m_speedAverage.step(raw));
    state->speed = m_shownSpeed.step(raw);
}

double ServoAxis::speedCommand(const AxisCommand &command, DriveState *state)
{
    double speed = command.speed;
    if (command.mode == AxisMode::Position) {
        state->deviation = command.position - static_cast<double>(state->counts);
        speed = gains().position * state->deviation / countsPerRadian;
        if (m_parameters.loops.speedFeedforward == 1)
            speed += m_speedFeedforward.step(command.positionSpeed) * m_parameters.loops.speedFeedforwardGain;
    }
    const double bounded = clampTo(speed, command.lowestSpeed, command.highestSpeed);
    state->speedLimited = bounded != speed;
    return bounded;
}

double ServoAxis::feedforward(double speedCommand)
{
    const LoopParameters &loops = m_parameters.loops;
    const double acceleration = (speedCommand - m_lastSpeedCommand) * samplesPerSecond;
    m_lastSpeedCommand = speedCommand;
    double torque = loops.steadyTorque + frictionCompensation(speedCommand);
    if (loops.torqueFeedforward == 1)
        torque += m_torqueFeedforward.step(acceleration) * loops.torqueFeedforwardGain *
                  m_parameters.motor.rotorInertia * loops.inertiaRatio;
    return torque;
}

double ServoAxis::frictionCompensation(double speedCommand) const
{
    constexpr double standstill = 0.1; // rad/s
    if (speedCommand > standstill)
        return m_parameters.loops.forwardFriction;
    return speedCommand < -standstill ? -m_parameters.loops.reverseFriction : 0;
}

double ServoAxis::torqueCommand(const AxisCommand &command, const TorqueBounds &bounds, DriveState *state)
{
    if (command.mode == AxisMode::Torque) {
        // The speed limits bound the torque by a proportional speed loop each.
        const double gain =
            2 * pi * gains().speed * m_parameters.motor.rotorInertia * m_parameters.loops.inertiaRatio;
        const double most = gain * (command.highestSpeed - state->feedbackSpeed);
        const double least = gain * (command.lowestSpeed - state->feedbackSpeed);
        const double torque = clampTo(command.torque, std::min(least, most), std::max(least, most));
        state->speedLimited = torque != command.torque;
        state->speedCommand = command.torque < 0 ? command.lowestSpeed : command.highestSpeed;
        return torque;
    }
    state->speedCommand = speedCommand(command, state);
    return m_velocityLoop.step(state->speedCommand - state->feedbackSpeed, feedforward(state->speedCommand),
                               bounds);
}

void ServoAxis::setMode(AxisMode mode)
{
    if (mode == m_mode)
        return;
    const bool wasOff = m_mode == AxisMode::Free || m_mode == AxisMode::DynamicBrake;
    const bool isOff = mode == AxisMode::Free || mode == AxisMode::DynamicBrake;
    if (wasOff || isOff)
        resetLoops();
    m_mode = mode;
}

void ServoAxis::step(const AxisCommand &command, bool gainInput, bool inPosition, DriveState *state)
{
    const MotorData &motor = m_parameters.motor;
    measure(state);
    setMode(command.mode);
    m_gainSwitch.step(*state, gainInput, inPosition);
    if (m_secondSet != m_gainSwitch.isSecond())
        applyGains();
    m_velocityLoop.setProportional(m_gainSwitch.isProportional());

    state->energised = m_mode != AxisMode::Free && m_mode != AxisMode::DynamicBrake;
    state->positionMode = m_mode == AxisMode::Position;
    state->speedLimited = false;
    if (!state->positionMode)
        state->deviation = 0;
    double torque = 0;
    if (state->energised) {
        const double capacity = overloadCapacity * motor.ratedTorque;
        const TorqueBounds bounds{std::min(command.bounds.positive, capacity),
                                  std::min(command.bounds.negative, capacity)};
        const double wanted = torqueCommand(command, bounds, state);
        torque = m_path.shape(clampTo(wanted, -bounds.negative, bounds.positive), bounds);
        state->torqueLimited = wanted >= bounds.positive || wanted <= -bounds.negative;
    } else {
        state->torqueLimited = false;
        state->speedCommand = 0;
    }
    state->torqueCommand = torque;
    state->torque = m_path.drive(torque);

    double shaftTorque = state->torque;
    if (m_mode == AxisMode::DynamicBrake)
        shaftTorque -= dynamicBrakeShare * motor.ratedTorque * state->speed;
    const double perAmpere = motor.torqueConstant > 0 ? 1 / motor.torqueConstant : 0;
    state->quadratureCommand = torque * perAmpere;
    state->quadratureCurrent = shaftTorque * perAmpere;
    m_plant.step(m_reversed ? -shaftTorque : shaftTorque,
                 command.brakeHolds ? brakeTorqueShare * motor.ratedTorque : 0);
}

} // namespace kt500sim
