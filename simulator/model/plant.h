// SPDX-License-Identifier: GPL-3.0-or-later
// The mechanics: the rotor, an elastic shaft, a load behind it, friction, and a torque that the load exerts.
//
// Lives on the thread of the Drive that owns the model.
#pragma once

#include <array>
#include <cstddef>

namespace kt500sim {

/// What is coupled to the motor.
struct PlantSettings
{
    double inertiaRatio = 1.5; ///< rotor and load together over the rotor alone, at least 1
    double stiffness = 900;    ///< of the shaft, Nm/rad; 0: rigid
    double damping = 0.02;     ///< in the shaft, Nm s/rad
    double viscous = 0.0002;   ///< at the motor, Nm s/rad
    double coulomb = 0.05;     ///< at the motor, Nm
    double loadTorque = 0;     ///< of the load, Nm; positive turns it back
};

class Plant
{
public:
    Plant();

    void set(const PlantSettings &settings);
    const PlantSettings &settings() const { return m_settings; }
    void setRotorInertia(double inertia);

    /// At rest at position zero.
    void reset();
    /// At rest where it is.
    void halt();
    /// Moves on by one sample period under a steady torque of the motor. \a brakeTorque, like friction, only
    /// holds or slows.
    void step(double motorTorque, double brakeTorque = 0);

    double position() const { return m_position; } ///< of the motor, rad
    double speed() const { return m_state[MotorSpeed]; }
    double loadSpeed() const { return m_state[LoadSpeed]; }
    /// Of motion and twist, J.
    double energy() const;
    bool isAtRest() const;

    bool isRigid() const;
    /// Hz, without damping; 0 for a rigid plant.
    double resonance() const;
    double antiresonance() const;
    double totalInertia() const { return m_rotorInertia * m_settings.inertiaRatio; }

private:
    enum State : std::size_t { Twist, MotorSpeed, LoadSpeed, stateCount };
    using Vector = std::array<double, stateCount>;

    void discretise();
    void discretiseHeld();
    void stepHeld();
    double loadInertia() const { return m_rotorInertia * (m_settings.inertiaRatio - 1); }

    PlantSettings m_settings;
    double m_rotorInertia = 0.00013; ///< kg m2

    // The exact step: next = transition * state + byMotor * motor torque + byLoad * load torque; the last row
    // of each is the way that the motor goes meanwhile.
    std::array<Vector, stateCount + 1> m_transition{};
    std::array<double, stateCount + 1> m_byMotor{};
    std::array<double, stateCount + 1> m_byLoad{};

    // The same for twist and load speed while friction holds the motor.
    std::array<std::array<double, 2>, 2> m_heldTransition{};
    std::array<double, 2> m_heldByLoad{};

    Vector m_state{};
    double m_position = 0;
};

} // namespace kt500sim
