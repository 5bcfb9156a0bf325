// SPDX-License-Identifier: GPL-3.0-or-later
#include "simulator/model/plant.h"

#include "simulator/model/matrixexponential.h"
#include "simulator/model/units.h"

namespace kt500sim {
namespace {

// Below this share of the rotor's inertia the load is part of the rotor.
constexpr double leastLoadShare = 0.001;

constexpr double restSpeed = 1e-4; // rad/s
constexpr double restTwist = 1e-7; // rad from the twist that the load torque makes

} // namespace

Plant::Plant()
{
    discretise();
}

void Plant::set(const PlantSettings &settings)
{
    m_settings = settings;
    m_settings.inertiaRatio = std::fmax(1, settings.inertiaRatio);
    discretise();
}

void Plant::setRotorInertia(double inertia)
{
    if (inertia <= 0 || inertia == m_rotorInertia)
        return;
    m_rotorInertia = inertia;
    discretise();
}

void Plant::reset()
{
    halt();
    m_position = 0;
}

void Plant::halt()
{
    m_state = Vector{};
}

bool Plant::isRigid() const
{
    return m_settings.stiffness <= 0 || m_settings.inertiaRatio < 1 + leastLoadShare;
}

void Plant::discretise()
{
    // Twist, motor speed, load speed, motor position; then the two torques, constant during a step.
    constexpr std::size_t position = stateCount;
    constexpr std::size_t motorTorque = 4;
    constexpr std::size_t loadTorque = 5;
    Matrix<6> rates{};
    const PlantSettings &s = m_settings;
    if (isRigid()) {
        const double inertia = totalInertia();
        for (const std::size_t speed : {MotorSpeed, LoadSpeed}) {
            rates[speed][MotorSpeed] = -s.viscous / inertia;
            rates[speed][motorTorque] = 1 / inertia;
            rates[speed][loadTorque] = -1 / inertia;
        }
        m_state[Twist] = 0;
        m_state[LoadSpeed] = m_state[MotorSpeed];
    } else {
        rates[Twist][MotorSpeed] = 1;
        rates[Twist][LoadSpeed] = -1;
        rates[MotorSpeed][Twist] = -s.stiffness / m_rotorInertia;
        rates[MotorSpeed][MotorSpeed] = -(s.viscous + s.damping) / m_rotorInertia;
        rates[MotorSpeed][LoadSpeed] = s.damping / m_rotorInertia;
        rates[MotorSpeed][motorTorque] = 1 / m_rotorInertia;
        rates[LoadSpeed][Twist] = s.stiffness / loadInertia();
        rates[LoadSpeed][MotorSpeed] = s.damping / loadInertia();
        rates[LoadSpeed][LoadSpeed] = -s.damping / loadInertia();
        rates[LoadSpeed][loadTorque] = -1 / loadInertia();
    }
    rates[position][MotorSpeed] = 1;
    for (auto &row : rates) {
        for (double &rate : row)
            rate *= stepTime;
    }

    const Matrix<6> exact = exponential(rates);
    for (std::size_t row = 0; row <= stateCount; ++row) {
        for (std::size_t column = 0; column < stateCount; ++column)
            m_transition[row][column] = exact[row][column];
        m_byMotor[row] = exact[row][motorTorque];
        m_byLoad[row] = exact[row][loadTorque];
    }
    discretiseHeld();
}

void Plant::discretiseHeld()
{
    m_heldTransition = {};
    m_heldByLoad = {};
    if (isRigid())
        return;
    constexpr std::size_t twist = 0;
    constexpr std::size_t speed = 1;
    constexpr std::size_t loadTorque = 2;
    Matrix<3> rates{};
    rates[twist][speed] = -stepTime;
    rates[speed][twist] = m_settings.stiffness / loadInertia() * stepTime;
    rates[speed][speed] = -m_settings.damping / loadInertia() * stepTime;
    rates[speed][loadTorque] = -stepTime / loadInertia();
    const Matrix<3> exact = exponential(rates);
    for (std::size_t row = 0; row < 2; ++row) {
        m_heldTransition[row] = {exact[row][twist], exact[row][speed]};
        m_heldByLoad[row] = exact[row][loadTorque];
    }
}

void Plant::stepHeld()
{
    const double twist = m_state[Twist];
    const double speed = m_state[LoadSpeed];
    m_state[Twist] = m_heldTransition[0][0] * twist + m_heldTransition[0][1] * speed +
                     m_heldByLoad[0] * m_settings.loadTorque;
    m_state[LoadSpeed] = m_heldTransition[1][0] * twist + m_heldTransition[1][1] * speed +
                         m_heldByLoad[1] * m_settings.loadTorque;
}

void Plant::step(double motorTorque, double brakeTorque)
{
    std::array<double, stateCount + 1> next;
    for (std::size_t row = 0; row <= stateCount; ++row) {
        next[row] = m_transition[row][Twist] * m_state[Twist] +
                    m_transition[row][MotorSpeed] * m_state[MotorSpeed] +
                    m_transition[row][LoadSpeed] * m_state[LoadSpeed] + m_byMotor[row] * motorTorque +
                    m_byLoad[row] * m_settings.loadTorque;
    }
    // Friction is as large as it takes to stop the motor within this step, and no larger than it can be: so
    // it sticks without a threshold and never drives.
    const double most = m_settings.coulomb + brakeTorque;
    const double friction = clampTo(-next[MotorSpeed] / m_byMotor[MotorSpeed], -most, most);
    const bool holds = friction > -most && friction < most;
    if (holds && m_state[MotorSpeed] == 0) {
        stepHeld();
        return;
    }
    for (std::size_t row = 0; row < stateCount; ++row)
        m_state[row] = next[row] + m_byMotor[row] * friction;
    if (holds)
        m_state[MotorSpeed] = 0; // to the last digit
    m_position += next[stateCount] + m_byMotor[stateCount] * friction;
}

double Plant::energy() const
{
    const double motorSpeed = m_state[MotorSpeed];
    if (isRigid())
        return totalInertia() * motorSpeed * motorSpeed / 2;
    return (m_rotorInertia * motorSpeed * motorSpeed +
            loadInertia() * m_state[LoadSpeed] * m_state[LoadSpeed] +
            m_settings.stiffness * m_state[Twist] * m_state[Twist]) /
           2;
}

bool Plant::isAtRest() const
{
    const double settled = isRigid() ? 0 : m_settings.loadTorque / m_settings.stiffness;
    return std::fabs(m_state[MotorSpeed]) < restSpeed && std::fabs(m_state[LoadSpeed]) < restSpeed &&
           std::fabs(m_state[Twist] - settled) < restTwist;
}

double Plant::resonance() const
{
    if (isRigid())
        return 0;
    return std::sqrt(m_settings.stiffness * (1 / m_rotorInertia + 1 / loadInertia())) / (2 * pi);
}

double Plant::antiresonance() const
{
    return isRigid() ? 0 : std::sqrt(m_settings.stiffness / loadInertia()) / (2 * pi);
}

} // namespace kt500sim
