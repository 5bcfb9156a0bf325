// SPDX-License-Identifier: GPL-3.0-or-later
// The registers of the drive in two copies: the working copy that it runs by, and the stored copy that
// outlives a power cycle.
//
// Lives on the thread of the Drive that owns it; not safe for two threads at once.
#pragma once

#include "simulator/registertable.h"

#include <array>
#include <bitset>

namespace kt500sim {

class RegisterFile
{
public:
    /// Which copy a write reaches: the working one alone, or both.
    enum class Copy { Working, WorkingAndStored };

    /// The 16-bit registers of one copy, by offset; offsets without a register hold 0.
    using Words = std::array<std::uint16_t, registerSpace>;

    explicit RegisterFile(const RegisterTable &table);

    /// False as well for offsets outside the register space.
    bool exists(int offset) const;
    bool isReadOnly(int offset) const;

    /// 0 where no register exists.
    std::uint16_t working(int offset) const;
    std::uint16_t stored(int offset) const;
    /// A pair read as one signed number, high word at \a offset.
    std::int32_t workingPair(int offset) const;

    /// Sets a register whatever its access, as the drive itself may; ignores offsets without a register.
    void set(int offset, std::uint16_t value, Copy copy = Copy::Working);
    void setPair(int offset, std::int32_t value, Copy copy = Copy::Working);

    /// The working copy becomes what is stored.
    void powerCycle();
    /// Both copies become the factory values.
    void factoryReset();

    const Words &workingWords() const { return m_working; }
    const Words &storedWords() const { return m_stored; }

private:
    Words m_working{};
    Words m_stored{};
    Words m_factory{};
    std::bitset<registerSpace> m_exists;
    std::bitset<registerSpace> m_readOnly;
};

} // namespace kt500sim
