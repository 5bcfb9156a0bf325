// SPDX-License-Identifier: GPL-3.0-or-later
// What the axis is told each sample period: by the control method, its command source, JOG, the stop modes
// and the limits of way and torque.
//
// Lives on the thread of the Drive that owns the model.
#pragma once

#include "simulator/model/offlinerun.h"
#include "simulator/model/positioncommand.h"
#include "simulator/model/servoaxis.h"
#include "simulator/model/servosequence.h"
#include "simulator/model/speedcommand.h"
#include "simulator/model/torquecommand.h"

namespace kt500sim {

class MotionControl
{
public:
    void set(const Parameters &parameters);
    /// After power-on: no command, and the origin is where the shaft is.
    void reset(double counts);

    /// The command of the next sample period, from the state after the last one.
    AxisCommand step(const ServoSequence &sequence, const DigitalInputs &inputs, const DriveState &state);

    const ElectronicGear &gear() const { return m_position.gear(); }
    /// The electronic gear is beyond its range, and a position method wants to run by it.
    bool gearIsRefused() const;
    bool isPositioning() const { return m_activity == Activity::Position; }
    /// A position command is being run.
    bool commandPresent() const { return isPositioning() && m_position.isMoving(); }
    double positionTarget() const { return m_position.target(); }
    double positionCommand() const { return m_position.command(); }
    bool forwardLimited() const { return m_forwardLimited; }
    bool reverseLimited() const { return m_reverseLimited; }

    const OfflineRun &offlineRun() const { return m_offlineRun; }

private:
    enum class Activity { None, Position, Speed, Torque, Jog, Identification };

    Activity wantedActivity(const DigitalInputs &inputs) const;
    void change(Activity activity, const DriveState &state);
    void watchLimits(const DigitalInputs &inputs, const DriveState &state);
    void stopCommand(const ServoSequence &sequence, AxisCommand *command) const;
    void position(const DigitalInputs &inputs, const DriveState &state, AxisCommand *command);
    void torque(const DigitalInputs &inputs, AxisCommand *command);
    void speed(const DigitalInputs &inputs, const DriveState &state, AxisCommand *command);
    void whileOff(const ServoSequence &sequence, const DigitalInputs &inputs, const DriveState &state,
                  AxisCommand *command);
    void startIdentification();
    void releaseAtOvertravel(double wanted, const DriveState &state, AxisCommand *command) const;
    TorqueBounds bounds(const DigitalInputs &inputs) const;

    Parameters m_parameters;
    PositionCommand m_position;
    SpeedCommand m_speed;
    TorqueCommand m_torque;
    OfflineRun m_offlineRun;
    Activity m_activity = Activity::None;
    bool m_positionLost = false; ///< the shaft has been moved by other commands than positions
    bool m_identified = false;   ///< the offline run has been made; nothing moves until the next servo on
    bool m_halting = false;      ///< a move into a prohibited direction is being stopped
    Prohibited m_prohibited;
    bool m_forwardLimited = false; ///< by software
    bool m_reverseLimited = false;
};

} // namespace kt500sim
