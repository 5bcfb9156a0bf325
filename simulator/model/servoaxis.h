// SPDX-License-Identifier: GPL-3.0-or-later
// Motor, encoder and load with the loops around them: takes a command each sample period and moves.
//
// Lives on the thread of the Drive that owns the model.
#pragma once

#include "simulator/model/encoder.h"
#include "simulator/model/gainswitch.h"
#include "simulator/model/plant.h"
#include "simulator/model/torquepath.h"

namespace kt500sim {

enum class AxisMode {
    Free,         ///< no current
    DynamicBrake, ///< the windings are shorted
    Torque,
    Speed,
    Position
};

struct AxisCommand
{
    AxisMode mode = AxisMode::Free;
    double position = 0;      ///< counts
    double positionSpeed = 0; ///< rad/s, at which the position command moves
    double speed = 0;         ///< rad/s
    double torque = 0;        ///< Nm
    double highestSpeed = 0;  ///< rad/s, positive and negative, whatever the mode
    double lowestSpeed = 0;
    TorqueBounds bounds;
    bool brakeHolds = false;
};

class ServoAxis
{
public:
    explicit ServoAxis(std::uint32_t seed);

    void setPlant(const PlantSettings &settings) { m_plant.set(settings); }
    const Plant &plant() const { return m_plant; }

    /// Power-on: at rest, at position zero unless the encoder is an absolute one; the direction of rotation.
    void reset(const Parameters &parameters);
    void setParameters(const Parameters &parameters);
    /// Sets the frequency of a notch filter that adapts itself.
    void setNotch(int index, const NotchSettings &settings) { m_path.setNotch(index, settings); }

    /// One sample period; leaves what it has measured and done in \a state.
    void step(const AxisCommand &command, bool gainInput, bool inPosition, DriveState *state);
    /// Counts of the encoder, in the direction of the command.
    std::int64_t counts() const { return m_reversed ? -m_encoder.counts() : m_encoder.counts(); }
    bool isAtRest() const { return m_plant.isAtRest() && m_path.torque() < 1e-6 && m_path.torque() > -1e-6; }

    const Gains &gains() const { return m_parameters.loops.gains[m_gainSwitch.isSecond() ? 1 : 0]; }

private:
    void setMode(AxisMode mode);
    void measure(DriveState *state);
    double speedCommand(const AxisCommand &command, DriveState *state);
    double torqueCommand(const AxisCommand &command, const TorqueBounds &bounds, DriveState *state);
    double feedforward(double speedCommand);
    double frictionCompensation(double speedCommand) const;
    void applyGains();
    void resetLoops();

    Parameters m_parameters;
    bool m_reversed = false;
    AxisMode m_mode = AxisMode::Free;

    Plant m_plant;
    Encoder m_encoder;
    VelocityLoop m_velocityLoop;
    TorquePath m_path;
    GainSwitch m_gainSwitch;
    MovingAverage m_speedAverage;
    LowPass m_speedFilter;
    LowPass m_shownSpeed;
    LowPass m_speedFeedforward;
    LowPass m_torqueFeedforward;
    double m_lastSpeedCommand = 0;
    bool m_secondSet = false;
};

} // namespace kt500sim
