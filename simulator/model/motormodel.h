// SPDX-License-Identifier: GPL-3.0-or-later
// The drive's model with a motor behind it: a servo that obeys its parameters and terminals, moves a load,
// and reports what really happens.
//
// Lives on the thread of the Drive that owns it. Steps of 125 us without a clock; the same input and seed
// give the same run.
#pragma once

#include "simulator/drivemodel.h"
#include "simulator/model/digitaloutputs.h"
#include "simulator/model/faultrecord.h"
#include "simulator/model/inertiaestimator.h"
#include "simulator/model/messages.h"
#include "simulator/model/minutestatistics.h"
#include "simulator/model/motioncontrol.h"
#include "simulator/model/outputfunctions.h"
#include "simulator/model/overload.h"
#include "simulator/model/powerstage.h"
#include "simulator/model/resonancefinder.h"
#include "simulator/model/statusvalues.h"
#include "simulator/model/storewrites.h"

namespace kt500sim {

class MotorModel : public DriveModel
{
public:
    explicit MotorModel(const PlantSettings &plant = {}, std::uint32_t seed = 1);

    void powerOn(RegisterFile &registers) override;
    void advance(RegisterFile &registers, std::int64_t samples) override;
    void refreshStatus(RegisterFile &registers) override;
    void registersWritten(RegisterFile &registers, int firstOffset, int count) override;
    void storedCopyWritten(RegisterFile &registers) override;
    std::int32_t scopeValue(int item) const final { return scopeItemValue(m_state, item); }
    std::chrono::milliseconds longestRest() const override;
    MotorModel *motor() override { return this; }

    // What a person at the machine can do.
    void setPlant(const PlantSettings &settings);
    const PlantSettings &plantSettings() const { return m_axis.plant().settings(); }
    /// Contacts at the inputs; bit 0 is DI1, set for a closed one.
    void setContacts(std::uint16_t contacts);
    /// One of them, 1 to 16; false for another number.
    bool setContact(int number, bool closed);
    std::uint16_t contacts() const { return m_inputs.contacts(); }
    /// False if another fault is present, or there is no such number.
    bool raiseFault(RegisterFile &registers, int number);
    void forceWarning(int number, bool on);

    /// The state as it stands.
    const DriveState &state();
    const Plant &plant() const { return m_axis.plant(); }
    ServoSequence::Phase phase() const { return m_sequence.phase(); }

private:
    void readAgain(RegisterFile &registers);
    void step(RegisterFile &registers);
    void sumUp();
    void slowStep(RegisterFile &registers, std::int64_t samples);
    void protect(RegisterFile &registers);
    void warn();
    void identify(RegisterFile &registers);
    void adaptNotches(RegisterFile &registers);
    void fault(RegisterFile &registers, int number);
    bool resetFault();
    void obeyResetRegister(RegisterFile &registers);
    bool isAtRest() const;
    void refreshState();

    Parameters m_parameters;
    ServoAxis m_axis;
    DigitalInputs m_inputs;
    DigitalOutputs m_outputs;
    OutputFunctions m_functions;
    ServoSequence m_sequence;
    MotionControl m_motion;
    Messages m_messages;
    Overload m_overload;
    PowerStage m_power;
    MinuteStatistics m_statistics;
    StoreWrites m_storeWrites;
    InertiaEstimator m_estimator;
    ResonanceFinder m_resonances;
    DriveState m_state;
    double m_perRatedTorque = 0; ///< 1/Nm

    std::int64_t m_samples = 0; ///< since power-on
    double m_hours = 0;         ///< powered, of all power-ons together
    double m_averageLoad = 0;   ///< share of the rated torque
    bool m_offlineRan = false;

    // Sums of the sample periods since the last slow step.
    double m_torqueSquares = 0; ///< of shares of the rated torque
    double m_torquePeak = 0;
    double m_work = 0; ///< W, summed
    double m_loss = 0;
    int m_summed = 0;
};

} // namespace kt500sim
