// SPDX-License-Identifier: GPL-3.0-or-later
#include "simulator/model/faultrecord.h"

#include "simulator/model/units.h"

namespace kt500sim {
namespace {

constexpr int measuredCount = 5;

void put(RegisterFile &registers, int offset, double value)
{
    registers.set(offset, static_cast<std::uint16_t>(nearest(value)), RegisterFile::Copy::WorkingAndStored);
}

} // namespace

void recordFault(RegisterFile &registers, int fault, const DriveState &state)
{
    for (int i = faultRecordLength - 1; i > 0; --i)
        put(registers, faultRecordStart + i, registers.working(faultRecordStart + i - 1));
    put(registers, faultRecordStart, fault);
    const int measured = faultRecordStart + faultRecordLength;
    put(registers, measured, std::fabs(rpm(state.speed)));
    put(registers, measured + 1, std::fabs(state.quadratureCurrent) * 100);
    put(registers, measured + 2, state.busVoltage * 10);
    put(registers, measured + 3, state.temperature * 10);
    put(registers, measured + 4, std::fmin(std::floor(state.hours), 65535));
}

void clearFaultRecord(RegisterFile &registers)
{
    for (int i = 0; i < faultRecordLength + measuredCount; ++i)
        put(registers, faultRecordStart + i, 0);
}

} // namespace kt500sim
