// SPDX-License-Identifier: GPL-3.0-or-later
#include "simulator/model/parameters.h"

#include "simulator/model/rigiditytable.h"
#include "simulator/model/units.h"

#include <algorithm>

namespace kt500sim {
namespace {

/// Reads by offset; the group of a code counts hundreds, its last two digits ones.
class Reader
{
public:
    explicit Reader(const RegisterFile &registers)
        : m_registers(registers)
    {
    }
    int word(int offset) const { return m_registers.working(offset); }
    int number(int offset) const { return static_cast<std::int16_t>(m_registers.working(offset)); }
    std::int32_t pair(int offset) const { return m_registers.workingPair(offset); }
    double scaled(int offset, double unit) const { return word(offset) * unit; }
    double milliseconds(int offset) const { return scaled(offset, 1e-3); }
    double hundredths(int offset) const { return scaled(offset, 1e-5); } ///< of a millisecond, as seconds
    double speed(int offset) const { return radiansPerSecond(scaled(offset, 0.1)); }
    double speedPair(int offset) const { return radiansPerSecond(pair(offset) * 0.1); }

private:
    const RegisterFile &m_registers;
};

/// The slope of a ramp that takes \a seconds between standstill and rated speed; 0 for none.
double slope(const MotorData &motor, double seconds)
{
    return seconds > 0 ? motor.ratedSpeed / seconds : 0;
}

MotorData motorData(const Reader &in)
{
    MotorData motor;
    motor.ratedCurrent = in.scaled(21, 0.01);
    motor.ratedTorque = in.scaled(22, 0.01);
    motor.ratedSpeed = radiansPerSecond(in.word(24));
    motor.maxSpeed = radiansPerSecond(in.word(25));
    motor.resistance = in.scaled(29, 0.01);
    motor.torqueConstant = in.scaled(30, 0.01);
    motor.emf = in.scaled(31, 0.1) / radiansPerSecond(1000);
    motor.rotorInertia = in.scaled(32, 1e-6);
    return motor;
}

Gains gains(const Reader &in, int offset)
{
    return {in.scaled(offset, 0.1), in.scaled(offset + 1, 0.1), in.scaled(offset + 2, 1e-4)};
}

LoopParameters loops(const Reader &in, const MotorData &motor)
{
    LoopParameters p;
    p.inertiaRatio = std::max(in.scaled(602, 0.1), 0.1);
    p.gains = {gains(in, 610), gains(in, 620)};
    p.torqueFilter = in.hundredths(502);
    if (in.word(600) != 0) {
        const RigidityGrade grade = rigidityGrade(in.word(601));
        p.gains[0] = grade.gains;
        p.torqueFilter = grade.torqueFilter;
    }
    p.gainSwitch = in.word(651);
    p.gainSwitchLevel = in.pair(652);
    p.gainSwitchHysteresis = in.word(654);
    p.gainSwitchDelay = in.scaled(656, 1e-4);
    p.secondFilterFrequency = in.word(643);
    p.secondFilterQuality = in.scaled(644, 0.01);
    for (int i = 0; i < 4; ++i)
        p.notches[static_cast<std::size_t>(i)] = {in.word(663 + 3 * i), in.word(664 + 3 * i),
                                                  in.word(665 + 3 * i)};
    p.speedFeedforward = in.word(636);
    p.speedFeedforwardGain = in.scaled(637, 0.001);
    p.speedFeedforwardFilter = in.hundredths(638);
    p.torqueFeedforward = in.word(639);
    p.torqueFeedforwardGain = in.scaled(640, 0.001);
    p.torqueFeedforwardFilter = in.hundredths(641);
    p.speedAverage = 1 << std::min(in.word(408), 4);
    p.speedFeedbackFilter = in.hundredths(409);
    p.positionAverage = in.scaled(302, 1e-4);
    p.positionFilter = in.scaled(303, 1e-4);
    p.steadyTorque = in.number(691) * 0.01 * motor.ratedTorque;
    p.forwardFriction = in.scaled(692, 0.01) * motor.ratedTorque;
    p.reverseFriction = in.scaled(693, 0.01) * motor.ratedTorque;
    return p;
}

TorqueLimitParameters torqueLimits(const Reader &in, const MotorData &motor)
{
    const auto torque = [&](int offset) { return in.scaled(offset, 0.01) * motor.ratedTorque; };
    TorqueLimitParameters p;
    p.source = in.word(504);
    p.internalPositive = torque(505);
    p.internalNegative = torque(506);
    p.externalPositive = torque(507);
    p.externalNegative = torque(508);
    p.emergency = torque(516);
    p.jog = torque(10);
    return p;
}

MoveParameters section(const Reader &in, const MotorData &motor, int offset)
{
    return {in.pair(offset), in.speed(offset + 2), slope(motor, in.milliseconds(offset + 3)),
            in.pair(offset + 4) * 1e-3};
}

PositionParameters position(const Reader &in, const MotorData &motor)
{
    PositionParameters p;
    p.source = in.word(300) & 0xf;
    p.move = {in.pair(314), in.speed(316), slope(motor, in.milliseconds(317)), 0};
    p.absolute = (in.word(318) & 0xf) == 1;
    p.interruptible = (in.word(318) >> 4 & 0xf) == 1;
    for (int i = 0; i < 4; ++i)
        p.gearNumerators[static_cast<std::size_t>(i)] = std::max(in.pair(304 + 2 * i), 1);
    p.gearDenominator = std::max(in.pair(312), 1);
    p.deviationClear = in.word(321);
    p.inPositionCondition = in.word(326);
    p.inPositionRange = in.pair(327);
    p.nearRange = in.pair(329);
    p.excessiveDeviation = in.pair(807);
    p.softwareLimits = in.word(817);
    p.forwardLimit = in.pair(818);
    p.reverseLimit = in.pair(820);
    p.sectionMode = in.word(1000);
    p.lastSection = std::clamp(in.word(1001), 1, sections);
    p.sectionsAbsolute = in.word(1002) == 1;
    for (int i = 0; i < sections; ++i)
        p.section[static_cast<std::size_t>(i)] = section(in, motor, 1004 + 6 * i);
    return p;
}

SpeedParameters speed(const Reader &in, const MotorData &motor)
{
    SpeedParameters p;
    p.source = in.word(400);
    p.command = in.speedPair(401);
    p.acceleration = slope(motor, in.milliseconds(403));
    p.deceleration = slope(motor, in.milliseconds(404));
    p.smoothing = in.milliseconds(405);
    p.filter = in.hundredths(410);
    p.limit = in.speed(411);
    p.zeroClamp = in.word(416);
    p.clampThreshold = in.speed(417);
    p.zeroThreshold = in.speed(420);
    p.arrivedThreshold = in.speed(421);
    p.sectionMode = in.word(1100);
    p.lastSection = std::clamp(in.word(1101), 1, sections);
    const double unit = in.word(1102) == 1 ? 1 : 1e-3;
    for (int i = 0; i < sections; ++i) {
        const int at = 1106 + 5 * i;
        p.section[static_cast<std::size_t>(i)] = {in.speedPair(at), slope(motor, in.milliseconds(at + 2)),
                                                  slope(motor, in.milliseconds(at + 3)),
                                                  in.scaled(at + 4, unit)};
    }
    return p;
}

TorqueParameters torque(const Reader &in, const MotorData &motor)
{
    TorqueParameters p;
    p.source = in.word(500);
    p.command = in.number(501) * 0.01 * motor.ratedTorque;
    p.filter = in.hundredths(503);
    p.speedLimitSource = in.word(509);
    p.limitWindow = in.scaled(510, 1e-4);
    p.forwardSpeedLimit = in.speed(511);
    p.reverseSpeedLimit = in.speed(512);
    p.arrivedBase = in.scaled(513, 0.01);
    p.arrivedOn = in.scaled(514, 0.01);
    p.arrivedOff = in.scaled(515, 0.01);
    for (int i = 0; i < 4; ++i) {
        p.step[static_cast<std::size_t>(i)] = in.number(1188 + 2 * i) * 0.01 * motor.ratedTorque;
        p.stepTime[static_cast<std::size_t>(i)] = in.milliseconds(1189 + 2 * i);
    }
    return p;
}

ProtectionParameters protection(const Reader &in)
{
    ProtectionParameters p;
    p.overloadGain = in.scaled(802, 0.01);
    p.overloadHidden = in.word(803) == 1;
    p.overloadWarning = in.scaled(831, 0.01);
    p.stallWatched = in.word(804) == 1;
    p.stallTime = in.milliseconds(805);
    p.stallTorque = in.scaled(835, 0.01);
    p.stallSpeed = in.speed(836);
    p.overspeed = in.scaled(809, 0.1);
    p.brakeResistorLimit = in.scaled(832, 0.01);
    p.hottest = in.scaled(826, 0.1);
    p.storeWritesWatched = in.word(833) == 1;
    p.storeWritesPerHour = in.word(834);
    return p;
}

IdentificationParameters identification(const Reader &in)
{
    IdentificationParameters p;
    p.online = in.word(686);
    p.offline = in.word(603) == 1;
    p.offlineMode = in.word(604);
    p.speed = radiansPerSecond(in.word(605));
    p.rampTime = std::max(in.milliseconds(606), 0.001);
    p.turns = in.word(607);
    p.pause = in.milliseconds(608);
    p.adaptiveNotch = in.word(662);
    return p;
}

TerminalParameters terminals(const Reader &in)
{
    TerminalParameters p;
    p.auxiliaryInputs = static_cast<std::uint16_t>(in.word(200));
    p.auxiliaryOutputs = static_cast<std::uint16_t>(in.word(201));
    p.inputLevels = static_cast<std::uint16_t>(in.word(202));
    p.outputLevels = static_cast<std::uint16_t>(in.word(203));
    p.inputFilter = in.milliseconds(208);
    for (int i = 0; i < 16; ++i) {
        p.inputPlan[static_cast<std::size_t>(i)] = static_cast<std::uint16_t>(in.word(211 + i));
        p.outputPlan[static_cast<std::size_t>(i)] = static_cast<std::uint16_t>(in.word(231 + i));
    }
    return p;
}

} // namespace

Parameters readParameters(const RegisterFile &registers)
{
    const Reader in(registers);
    Parameters p;
    p.motor = motorData(in);
    p.method = in.word(100);
    p.reversed = in.word(101) == 1;
    p.absoluteEncoder = in.word(16) != 0;
    p.loops = loops(in, p.motor);
    p.torqueLimits = torqueLimits(in, p.motor);
    p.jog = {in.word(11) == 1, in.speed(7), slope(p.motor, in.milliseconds(8)),
             slope(p.motor, in.milliseconds(9))};
    p.position = position(in, p.motor);
    p.speed = speed(in, p.motor);
    p.torque = torque(in, p.motor);
    p.stop = {in.word(103),         in.word(104),         in.word(105),  in.word(106),
              in.milliseconds(108), in.milliseconds(109), in.speed(110), in.milliseconds(111)};
    p.protection = protection(in);
    p.identification = identification(in);
    p.terminals = terminals(in);
    return p;
}

} // namespace kt500sim
