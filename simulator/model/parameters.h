// SPDX-License-Identifier: GPL-3.0-or-later
// What the model takes from the registers, in its own units; read again whenever a client has written.
//
// Plain values, for any thread.
#pragma once

#include "simulator/registerfile.h"

#include <array>

namespace kt500sim {

constexpr int sections = 16;

struct MotorData
{
    double ratedTorque = 0;    ///< Nm
    double ratedCurrent = 0;   ///< A, effective value
    double torqueConstant = 0; ///< Nm/A
    double ratedSpeed = 0;     ///< rad/s
    double maxSpeed = 0;       ///< rad/s
    double emf = 0;            ///< V s/rad, effective value between lines
    double resistance = 0;     ///< Ohm
    double rotorInertia = 0;   ///< kg m2
};

/// One set of gains of the loops.
struct Gains
{
    double position = 0;     ///< 1/s
    double speed = 0;        ///< Hz
    double integralTime = 0; ///< s
};

struct NotchSettings
{
    int frequency = 0; ///< Hz
    int width = 0;     ///< grade
    int depth = 0;     ///< grade
};

struct LoopParameters
{
    double inertiaRatio = 1;
    std::array<Gains, 2> gains;
    int gainSwitch = 0; ///< the raw parameter: condition and what is switched
    double gainSwitchLevel = 0;
    double gainSwitchHysteresis = 0;
    double gainSwitchDelay = 0;       ///< s
    double torqueFilter = 0;          ///< s
    double secondFilterFrequency = 0; ///< Hz
    double secondFilterQuality = 0;
    std::array<NotchSettings, 4> notches;
    int speedFeedforward = 0;        ///< source
    double speedFeedforwardGain = 0; ///< 0 to 1
    double speedFeedforwardFilter = 0;
    int torqueFeedforward = 0; ///< source
    double torqueFeedforwardGain = 0;
    double torqueFeedforwardFilter = 0;
    int speedAverage = 0;           ///< samples
    double speedFeedbackFilter = 0; ///< s
    double positionAverage = 0;     ///< s, of the position command
    double positionFilter = 0;      ///< s
    double steadyTorque = 0;        ///< of a vertical axis, Nm
    double forwardFriction = 0;     ///< compensation, Nm
    double reverseFriction = 0;     ///< Nm
};

struct TorqueLimitParameters
{
    int source = 0;
    double internalPositive = 0, internalNegative = 0; ///< Nm, all of them
    double externalPositive = 0, externalNegative = 0;
    double emergency = 0;
    double jog = 0;
};

struct JogParameters
{
    bool enabled = false;
    double speed = 0;        ///< rad/s
    double acceleration = 0; ///< rad/s2; 0: without a ramp
    double deceleration = 0;
};

/// A piece of way.
struct MoveParameters
{
    std::int32_t distance = 0; ///< user units
    double speed = 0;          ///< rad/s
    double acceleration = 0;   ///< rad/s2; 0: without a ramp
    double pause = 0;          ///< s, behind it
};

struct SpeedSection
{
    double speed = 0; ///< rad/s
    double acceleration = 0, deceleration = 0;
    double time = 0; ///< s
};

struct PositionParameters
{
    int source = 0;
    MoveParameters move;
    bool absolute = false;
    bool interruptible = false;
    std::array<std::int32_t, 4> gearNumerators{};
    std::int32_t gearDenominator = 1;
    int deviationClear = 0;
    int inPositionCondition = 0;
    int inPositionRange = 0;    ///< counts
    int nearRange = 0;          ///< counts
    int excessiveDeviation = 0; ///< counts; 0: not watched
    int softwareLimits = 0;
    std::int32_t forwardLimit = 0, reverseLimit = 0; ///< user units
    int sectionMode = 0;
    int lastSection = 1;
    bool sectionsAbsolute = false;
    std::array<MoveParameters, sections> section;
};

struct SpeedParameters
{
    int source = 0;
    double command = 0;
    double acceleration = 0, deceleration = 0;
    double smoothing = 0; ///< s
    double filter = 0;    ///< s
    double limit = 0;
    int zeroClamp = 0;
    double clampThreshold = 0;
    double zeroThreshold = 0; ///< both in rad/s
    double arrivedThreshold = 0;
    int sectionMode = 0;
    int lastSection = 1;
    std::array<SpeedSection, sections> section;
};

struct TorqueParameters
{
    int source = 0;
    double command = 0; ///< Nm
    double filter = 0;  ///< s
    int speedLimitSource = 0;
    double limitWindow = 0; ///< s
    double forwardSpeedLimit = 0, reverseSpeedLimit = 0;
    double arrivedBase = 0, arrivedOn = 0, arrivedOff = 0; ///< shares of the rated torque
    std::array<double, 4> step{};                          ///< Nm
    std::array<double, 4> stepTime{};                      ///< s
};

struct StopParameters
{
    int servoOff = 0, overtravel = 0, emergency = 0, fault = 0; ///< stop modes
    double brakeOpening = 0;                                    ///< s
    double holdAfterOff = 0;                                    ///< s
    double brakeSpeed = 0;                                      ///< rad/s
    double brakeDelay = 0;                                      ///< s
};

struct ProtectionParameters
{
    double overloadGain = 1;
    bool overloadHidden = false;
    double overloadWarning = 0; ///< share
    bool stallWatched = false;
    double stallTime = 0;   ///< s
    double stallTorque = 0; ///< share of the rated torque
    double stallSpeed = 0;
    double overspeed = 0;          ///< of the motor's highest speed
    double brakeResistorLimit = 0; ///< share
    double hottest = 0;            ///< degrees
    bool storeWritesWatched = false;
    int storeWritesPerHour = 0;
};

struct IdentificationParameters
{
    int online = 0; ///< mode
    bool offline = false;
    int offlineMode = 0;
    double speed = 0; ///< rad/s
    double rampTime = 0;
    double turns = 0;
    double pause = 0;
    int adaptiveNotch = 0;
};

struct TerminalParameters
{
    std::uint16_t auxiliaryInputs = 0; ///< which inputs obey the auxiliary levels
    std::uint16_t inputLevels = 0;
    std::uint16_t auxiliaryOutputs = 0;
    std::uint16_t outputLevels = 0;
    double inputFilter = 0;                    ///< s
    std::array<std::uint16_t, 16> inputPlan{}; ///< the raw parameters
    std::array<std::uint16_t, 16> outputPlan{};
};

struct Parameters
{
    MotorData motor;
    int method = 0;
    bool reversed = false; ///< a positive command turns the shaft the other way round
    bool absoluteEncoder = false;
    LoopParameters loops;
    TorqueLimitParameters torqueLimits;
    JogParameters jog;
    PositionParameters position;
    SpeedParameters speed;
    TorqueParameters torque;
    StopParameters stop;
    ProtectionParameters protection;
    IdentificationParameters identification;
    TerminalParameters terminals;
};

/// From the working copy.
Parameters readParameters(const RegisterFile &registers);

} // namespace kt500sim
