// SPDX-License-Identifier: GPL-3.0-or-later
// A motor model with its registers on the bench of a test: written to by offset, moved on by milliseconds.
//
// Lives on the thread of the test that owns it.
#pragma once

#include "simulator/model/motormodel.h"
#include "simulator/model/units.h"

#include <functional>

class MotorBench
{
public:
    explicit MotorBench(const kt500sim::PlantSettings &plant = {}, std::uint32_t seed = 1)
        : registers(kt500sim::builtInRegisterTable())
        , model(plant, seed)
    {
        model.powerOn(registers);
    }

    void write(int offset, int value)
    {
        registers.set(offset, static_cast<std::uint16_t>(value));
        model.registersWritten(registers, offset, 1);
    }
    void writePair(int offset, std::int32_t value)
    {
        registers.setPair(offset, value);
        model.registersWritten(registers, offset, 2);
    }
    void advance(int milliseconds) { model.advance(registers, milliseconds * 8); }
    void step() { model.advance(registers, 1); }

    /// Steps until \a condition holds; the time that it took in seconds, or a negative number at the limit.
    double until(double limit, const std::function<bool()> &condition)
    {
        for (int samples = 0; samples <= limit * kt500sim::samplesPerSecond; ++samples) {
            if (condition())
                return samples * kt500sim::stepTime;
            step();
        }
        return -1;
    }

    /// Inputs DI1 to DI16 by register; DI1 is the servo as it leaves the factory.
    void useAuxiliaryInputs(int levels = 0)
    {
        write(202, levels);
        write(200, 0xffff);
    }
    void servoOn(bool on = true) { write(202, on ? 1 : 0); }
    /// On, and past the time in which the brake opens.
    void run()
    {
        useAuxiliaryInputs();
        step();
        servoOn();
        advance(101);
    }

    /// JOG by DI9 and DI10, the trigger at DI11.
    void planInputs()
    {
        write(219, 0x27);
        write(220, 0x28);
        write(221, 0x25);
    }
    // On and ready for commands, with an inertia ratio that fits the plant of the factory.
    void prepareJog()
    {
        write(11, 1);
        write(602, 15);
        planInputs();
        run();
    }
    void preparePositioning()
    {
        write(300, 1);
        write(602, 15);
        planInputs();
        run();
    }
    void prepareSpeed(int tenthsOfRpm)
    {
        write(100, 1);
        write(602, 15);
        writePair(401, tenthsOfRpm);
        run();
    }

    int status(int offset)
    {
        model.refreshStatus(registers);
        return static_cast<std::int16_t>(registers.working(offset));
    }
    std::int32_t statusPair(int offset)
    {
        model.refreshStatus(registers);
        return registers.workingPair(offset);
    }
    double speed() { return kt500sim::rpm(model.state().speed); } ///< rpm
    std::int64_t counts() { return model.state().counts; }
    int fault() { return model.state().fault; }
    int warning() { return model.state().warning; }

    kt500sim::RegisterFile registers;
    kt500sim::MotorModel model;
};
