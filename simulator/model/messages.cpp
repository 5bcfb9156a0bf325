// SPDX-License-Identifier: GPL-3.0-or-later
#include "simulator/model/messages.h"

#include <algorithm>
#include <array>

namespace kt500sim {
namespace {

// Hardware and encoder: cleared by switching the control power off and on alone.
constexpr std::array<int, 18> lasting{4, 5, 6, 14, 17, 19, 20, 29, 30, 31, 32, 33, 34, 39, 40, 45, 60, 70};

// The power stage or the encoder can't be relied on any more.
constexpr std::array<int, 12> powerless{1, 4, 5, 6, 9, 10, 17, 19, 20, 27, 29, 30};

template <std::size_t N>
bool holds(const std::array<int, N> &numbers, int number)
{
    return std::find(numbers.begin(), numbers.end(), number) != numbers.end();
}

} // namespace

void Messages::put(Set &set, int number, bool on)
{
    if (number < 1 || number > highestMessage)
        return;
    const std::uint64_t bit = std::uint64_t{1} << (number % 64);
    std::uint64_t &word = set[number / 64];
    word = on ? word | bit : word & ~bit;
}

void Messages::setWarning(int number, bool on)
{
    put(m_warnings, number, on);
}

void Messages::forceWarning(int number, bool on)
{
    put(m_forced, number, on);
}

int Messages::warning() const
{
    if ((m_warnings[0] | m_forced[0] | m_warnings[1] | m_forced[1]) == 0)
        return 0;
    for (int number = 1; number <= highestMessage; ++number) {
        if (((m_warnings[number / 64] | m_forced[number / 64]) >> (number % 64) & 1) != 0)
            return number;
    }
    return 0;
}

bool Messages::raise(int fault)
{
    if (m_fault != 0 || fault < 1 || fault > highestMessage)
        return false;
    m_fault = fault;
    return true;
}

bool Messages::faultNeedsPower() const
{
    return holds(powerless, m_fault);
}

bool Messages::clear()
{
    if (holds(lasting, m_fault))
        return false;
    m_fault = 0;
    return true;
}

} // namespace kt500sim
