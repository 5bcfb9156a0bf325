// SPDX-License-Identifier: GPL-3.0-or-later
#include "simulator/model/motormodel.h"

#include <algorithm>

namespace kt500sim {
namespace {

constexpr int samplesPerSlowStep = 8;
constexpr double averageLoadTime = 10; // s
constexpr double hoursAtStart = 1234;  // what this drive had behind it when it was made

constexpr int auxiliaryInputs = 202;
constexpr int auxiliaryOutputs = 203;
constexpr int auxiliaryInputsAtStart = 204;
constexpr int auxiliaryOutputsAtStart = 205;
constexpr int storedAtStart = 2; // of either, what keeps the stored levels
constexpr int identificationStart = 603;
constexpr int resetRegister = 800;
constexpr int thirdNotch = 669;
constexpr int fourthNotch = 672;
constexpr int adaptiveNotchMode = 662;
constexpr int notchOff = 5000;

} // namespace

MotorModel::MotorModel(const PlantSettings &plant, std::uint32_t seed)
    : m_axis(seed)
    , m_hours(hoursAtStart)
{
    m_axis.setPlant(plant);
}

void MotorModel::powerOn(RegisterFile &registers)
{
    if (registers.working(auxiliaryInputsAtStart) != storedAtStart)
        registers.set(auxiliaryInputs, 0);
    if (registers.working(auxiliaryOutputsAtStart) != storedAtStart)
        registers.set(auxiliaryOutputs, 0);
    registers.set(identificationStart, 0);
    registers.set(resetRegister, 0);

    m_state = DriveState();
    m_messages.reset();
    m_overload.reset();
    m_power.reset();
    m_statistics.reset();
    m_storeWrites.reset();
    m_resonances.reset();
    m_functions = OutputFunctions();
    m_samples = 0;
    m_averageLoad = 0;
    m_offlineRan = false;
    m_torqueSquares = m_torquePeak = m_work = m_loss = 0;
    m_summed = 0;

    m_parameters = readParameters(registers);
    m_axis.reset(m_parameters);
    readAgain(registers);
    m_inputs.reset();
    m_sequence.reset(m_inputs.isOn(DigitalInput::ServoOn));
    m_state.counts = m_axis.counts();
    m_state.userPosition = m_motion.gear().toUserUnits(static_cast<double>(m_state.counts));
    m_motion.reset(static_cast<double>(m_state.counts));
    m_estimator.reset(m_parameters.motor.rotorInertia * m_parameters.loops.inertiaRatio);
    slowStep(registers, 0);
    refreshStatus(registers);
}

void MotorModel::readAgain(RegisterFile &registers)
{
    m_parameters = readParameters(registers);
    m_axis.setParameters(m_parameters);
    m_perRatedTorque = m_parameters.motor.ratedTorque > 0 ? 1 / m_parameters.motor.ratedTorque : 0;
    m_motion.set(m_parameters);
    m_inputs.setParameters(m_parameters.terminals);
    m_outputs.setParameters(m_parameters.terminals);
    m_estimator.setMode(m_parameters.identification.offline ? 0 : m_parameters.identification.online);
    if (m_estimator.evidence() == 0)
        m_estimator.reset(m_parameters.motor.rotorInertia * m_parameters.loops.inertiaRatio);
}

void MotorModel::registersWritten(RegisterFile &registers, int firstOffset, int count)
{
    if (firstOffset <= resetRegister && firstOffset + count > resetRegister)
        obeyResetRegister(registers);
    const bool identified = m_parameters.identification.offline;
    readAgain(registers);
    if (!identified && m_parameters.identification.offline)
        m_estimator.restart();
}

void MotorModel::storedCopyWritten(RegisterFile &registers)
{
    m_storeWrites.count();
    const ProtectionParameters &p = m_parameters.protection;
    if (p.storeWritesWatched && m_storeWrites.lastHour() > p.storeWritesPerHour)
        fault(registers, StoreWritesFault);
}

void MotorModel::obeyResetRegister(RegisterFile &registers)
{
    const int value = registers.working(resetRegister);
    registers.set(resetRegister, 0, RegisterFile::Copy::WorkingAndStored);
    if ((value & 0xf) == 1)
        resetFault();
    if ((value >> 4 & 0xf) == 1)
        clearFaultRecord(registers);
    if ((value >> 8 & 0xf) == 1 && m_sequence.phase() == ServoSequence::Phase::Off) {
        registers.powerCycle();
        powerOn(registers);
    }
}

bool MotorModel::resetFault()
{
    const int number = m_messages.fault();
    // What still holds would raise it again at once.
    if ((number == OverloadFault && m_overload.load() >= m_parameters.protection.overloadWarning) ||
        (number == TemperatureFault && m_power.temperature() > m_parameters.protection.hottest) ||
        (number == GearFault && m_motion.gearIsRefused()))
        return false;
    if (number == StoreWritesFault)
        m_storeWrites.reset();
    return m_messages.clear();
}

void MotorModel::fault(RegisterFile &registers, int number)
{
    if (!m_messages.raise(number))
        return;
    refreshState();
    recordFault(registers, number, m_state);
}

bool MotorModel::raiseFault(RegisterFile &registers, int number)
{
    if (number < 1 || number > highestMessage || m_messages.fault() != 0)
        return false;
    fault(registers, number);
    return true;
}

void MotorModel::forceWarning(int number, bool on)
{
    m_messages.forceWarning(number, on);
}

void MotorModel::setPlant(const PlantSettings &settings)
{
    m_axis.setPlant(settings);
    m_resonances.forget();
}

void MotorModel::setContacts(std::uint16_t contacts)
{
    m_inputs.setContacts(contacts);
}

bool MotorModel::setContact(int number, bool closed)
{
    if (number < 1 || number > terminalCount)
        return false;
    const unsigned bit = 1u << (number - 1);
    setContacts(static_cast<std::uint16_t>(closed ? contacts() | bit : contacts() & ~bit));
    return true;
}

bool MotorModel::isAtRest() const
{
    return m_sequence.isSettled() && m_inputs.isSettled() && m_outputs.isSettled() && m_axis.isAtRest() &&
           m_state.fault == m_messages.fault() && m_state.warning == m_messages.warning() &&
           !m_inputs.isOn(DigitalInput::ServoOn) && std::fabs(m_state.speed) < 1e-3;
}

void MotorModel::advance(RegisterFile &registers, std::int64_t samples)
{
    while (samples > 0) {
        // At rest only the slow values go on, and these know any length of time.
        if (samples >= samplesPerSlowStep && m_summed == 0 && isAtRest()) {
            const std::int64_t leap = samples - samples % samplesPerSlowStep;
            m_samples += leap;
            slowStep(registers, leap);
            samples -= leap;
            continue;
        }
        step(registers);
        --samples;
    }
}

void MotorModel::step(RegisterFile &registers)
{
    ++m_samples;
    m_inputs.step();
    if (m_inputs.rose(DigitalInput::FaultReset))
        resetFault();

    ServoSequence::Inputs wishes;
    wishes.servoOn = m_inputs.isOn(DigitalInput::ServoOn);
    wishes.emergency = m_inputs.isOn(DigitalInput::EmergencyStop);
    wishes.fault = m_messages.fault() != 0;
    wishes.faultNeedsPower = wishes.fault && m_messages.faultNeedsPower();
    wishes.speed = m_state.speed;
    const bool wasOff = m_sequence.phase() == ServoSequence::Phase::Off;
    m_sequence.step(wishes, m_parameters.stop);
    if (wasOff && m_sequence.phase() == ServoSequence::Phase::Opening && m_motion.gearIsRefused())
        fault(registers, GearFault);

    const AxisCommand command = m_motion.step(m_sequence, m_inputs, m_state);
    m_axis.step(command, m_inputs.isOn(DigitalInput::Gain), m_functions.inPosition(), &m_state);
    m_state.userPosition = m_motion.gear().toUserUnits(static_cast<double>(m_state.counts));
    m_state.userDeviation = m_motion.gear().toUserUnits(m_state.deviation);
    m_state.positionCommand = command.position;
    m_state.positionTarget = m_state.positionMode ? m_motion.positionTarget() : command.position;
    m_state.commandPresent = m_motion.commandPresent();
    m_state.fault = m_messages.fault();
    m_state.warning = m_messages.warning();
    m_state.inputs = m_inputs.levels();
    m_functions.step(m_state, m_parameters, m_sequence.brakeIsOpen());
    m_outputs.step(m_functions.on(), 1);
    m_state.outputs = m_outputs.levels();

    sumUp();
    if (m_state.energised) {
        m_estimator.step(m_state.counts, m_state.torque);
        m_resonances.step(m_state.torque, m_parameters.motor.ratedTorque, m_axis.plant());
    }
    if (++m_summed == samplesPerSlowStep)
        slowStep(registers, samplesPerSlowStep);
}

void MotorModel::sumUp()
{
    const double share = m_state.torque * m_perRatedTorque;
    m_state.torqueCommandShare = m_state.torqueCommand * m_perRatedTorque;
    m_torqueSquares += share * share;
    m_torquePeak = std::max(m_torquePeak, std::fabs(share));
    const double current = m_state.quadratureCurrent;
    const double loss = 3 * m_parameters.motor.resistance * current * current;
    m_work += m_state.torque * m_state.speed + loss;
    m_loss += loss;
}

void MotorModel::slowStep(RegisterFile &registers, std::int64_t samples)
{
    const double seconds = static_cast<double>(samples) * stepTime;
    const double squares = m_summed > 0 ? m_torqueSquares / m_summed : 0;
    const double power = m_summed > 0 ? m_work / m_summed : 0;
    const double loss = m_summed > 0 ? m_loss / m_summed : 0;
    m_hours += seconds / 3600;
    m_statistics.step(seconds, squares, m_torquePeak);
    m_averageLoad += (std::sqrt(squares) - m_averageLoad) * -std::expm1(-seconds / averageLoadTime);
    m_overload.step(seconds, squares, m_state.torque * m_perRatedTorque, m_state.speed,
                    m_parameters.protection);
    if (seconds > 0)
        m_power.step(seconds, power, loss);
    m_storeWrites.step(seconds);
    m_torqueSquares = m_torquePeak = m_work = m_loss = 0;
    m_summed = 0;
    if (!m_state.energised)
        m_estimator.interrupt();
    protect(registers);
    warn();
    identify(registers);
    refreshState();
}

void MotorModel::protect(RegisterFile &registers)
{
    const ProtectionParameters &p = m_parameters.protection;
    if (!p.overloadHidden && m_overload.load() >= 1)
        fault(registers, OverloadFault);
    if (m_overload.isBlocked())
        fault(registers, OverloadFault);
    if (p.overspeed > 0 && std::fabs(m_state.speed) > p.overspeed * m_parameters.motor.maxSpeed)
        fault(registers, OverspeedFault);
    const int deviation = m_parameters.position.excessiveDeviation;
    if (m_state.positionMode && deviation > 0 && std::fabs(m_state.deviation) > deviation)
        fault(registers, DeviationFault);
    if (m_power.busVoltage() > PowerStage::highestVoltage)
        fault(registers, OvervoltageFault);
    if (p.brakeResistorLimit > 0 && m_power.resistorLoad() > p.brakeResistorLimit)
        fault(registers, ResistorFault);
    if (p.hottest > 0 && m_power.temperature() > p.hottest)
        fault(registers, TemperatureFault);
}

void MotorModel::warn()
{
    const ProtectionParameters &p = m_parameters.protection;
    m_messages.setWarning(EmergencyWarning, m_inputs.isOn(DigitalInput::EmergencyStop));
    m_messages.setWarning(OverloadWarning, !p.overloadHidden && m_overload.load() > p.overloadWarning);
    m_messages.setWarning(ForwardOvertravelWarning, m_inputs.isOn(DigitalInput::ForwardOvertravel));
    m_messages.setWarning(ReverseOvertravelWarning, m_inputs.isOn(DigitalInput::ReverseOvertravel));
    m_messages.setWarning(ForwardLimitWarning, m_motion.forwardLimited());
    m_messages.setWarning(ReverseLimitWarning, m_motion.reverseLimited());
}

void MotorModel::identify(RegisterFile &registers)
{
    // The offline run ends by itself, and takes its start back.
    const bool runs = m_motion.offlineRun().isRunning();
    if (m_offlineRan && !runs && m_parameters.identification.offline) {
        registers.set(identificationStart, 0, RegisterFile::Copy::WorkingAndStored);
        readAgain(registers);
    }
    m_offlineRan = runs;
    adaptNotches(registers);
}

void MotorModel::adaptNotches(RegisterFile &registers)
{
    const int mode = m_parameters.identification.adaptiveNotch;
    const auto retune = [&](int offset, int frequency) {
        if (registers.working(offset) == frequency)
            return;
        registers.set(offset, static_cast<std::uint16_t>(frequency));
        readAgain(registers);
    };
    if (mode == 4) {
        retune(thirdNotch, notchOff);
        retune(fourthNotch, notchOff);
        registers.set(adaptiveNotchMode, 3);
        readAgain(registers);
    } else if ((mode == 1 || mode == 2) && m_resonances.resonance() > 0) {
        retune(thirdNotch, std::clamp(static_cast<int>(nearest(m_resonances.resonance())), 50, notchOff));
    }
}

void MotorModel::refreshState()
{
    DriveState &s = m_state;
    const MotorData &motor = m_parameters.motor;
    s.busVoltage = m_power.busVoltage();
    s.temperature = m_power.temperature();
    s.resistorLoad = m_power.resistorLoad();
    s.averageTorque = m_statistics.effective();
    s.peakTorque = m_statistics.peak();
    s.averageLoad = m_averageLoad;
    s.overload = m_overload.load();
    s.hours = m_hours;
    s.identifiedInertia =
        motor.rotorInertia > 0 ? clampTo(m_estimator.inertia() / motor.rotorInertia, 1, 120) : 1;
    s.loadInertia = (s.identifiedInertia - 1) * motor.rotorInertia;
    s.resonance1 = m_resonances.antiresonance();
    s.resonance2 = m_resonances.resonance();
    s.positionGain = m_axis.gains().position;
    s.speedGain = m_axis.gains().speed;
    s.integralTime = m_axis.gains().integralTime;
    s.outputVoltage =
        std::fabs(motor.emf * s.speed) + std::fabs(std::sqrt(3.0) * motor.resistance * s.quadratureCurrent);
    s.fault = m_messages.fault();
    s.warning = m_messages.warning();
}

const DriveState &MotorModel::state()
{
    refreshState();
    return m_state;
}

void MotorModel::refreshStatus(RegisterFile &registers)
{
    refreshState();
    for (int offset = statusStart; offset < registerSpace; ++offset) {
        const std::int32_t value = statusValue(m_state, offset);
        if (isWideStatusValue(offset)) {
            registers.setPair(offset, value);
            ++offset;
        } else {
            registers.set(offset, static_cast<std::uint16_t>(value));
        }
    }
}

std::chrono::milliseconds MotorModel::longestRest() const
{
    constexpr std::chrono::milliseconds moving(10);
    return isAtRest() ? std::chrono::milliseconds(1000) : moving;
}

} // namespace kt500sim
