// SPDX-License-Identifier: GPL-3.0-or-later
// Warnings and faults: what is present, and when a fault may be reset.
//
// Lives on the thread of the Drive that owns the model.
#pragma once

#include <cstdint>

namespace kt500sim {

enum Warning {
    EmergencyWarning = 1,
    OverloadWarning = 2,
    ForwardOvertravelWarning = 3,
    ReverseOvertravelWarning = 4,
    ForwardLimitWarning = 7,
    ReverseLimitWarning = 8
};

enum FaultNumber {
    OverloadFault = 3,
    ResistorFault = 8,
    OvervoltageFault = 10,
    OverspeedFault = 11,
    TemperatureFault = 12,
    StoreWritesFault = 13,
    DeviationFault = 16,
    GearFault = 22
};

/// The highest number of either kind that the registers are made for.
constexpr int highestMessage = 99;

class Messages
{
public:
    void reset() { *this = Messages(); }

    void setWarning(int number, bool on);
    /// The lowest number among those present; 0 for none.
    int warning() const;
    /// One set from outside stays until it is taken back.
    void forceWarning(int number, bool on);

    /// False if another fault is present already: the first one is the cause, and stays.
    bool raise(int fault);
    int fault() const { return m_fault; }
    /// The fault allows no controlled stop.
    bool faultNeedsPower() const;
    /// Clears the fault, unless it is one of hardware or encoder: these last until the next power-on.
    bool clear();

private:
    using Set = std::uint64_t[2];
    static void put(Set &set, int number, bool on);

    Set m_warnings{};
    Set m_forced{};
    int m_fault = 0;
};

} // namespace kt500sim
