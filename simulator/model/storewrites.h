// SPDX-License-Identifier: GPL-3.0-or-later
// Counts the writes to the stored copy within an hour.
//
// Lives on the thread of the Drive that owns the model.
#pragma once

#include <array>
#include <cstddef>

namespace kt500sim {

class StoreWrites
{
public:
    void reset() { *this = StoreWrites(); }
    void count() { ++m_minutes[m_at]; }
    void step(double seconds)
    {
        for (m_seconds += seconds; m_seconds >= 60; m_seconds -= 60) {
            m_at = (m_at + 1) % m_minutes.size();
            m_minutes[m_at] = 0;
        }
    }
    int lastHour() const
    {
        int sum = 0;
        for (const int minute : m_minutes)
            sum += minute;
        return sum;
    }

private:
    std::array<int, 60> m_minutes{};
    std::size_t m_at = 0;
    double m_seconds = 0;
};

} // namespace kt500sim
