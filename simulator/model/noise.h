// SPDX-License-Identifier: GPL-3.0-or-later
// Noise that is the same at every run of the same seed.
//
// Lives on the thread of the Drive that owns the model.
#pragma once

#include <cstdint>

namespace kt500sim {

class Noise
{
public:
    explicit Noise(std::uint32_t seed)
        : m_state(seed * 2654435761u + 1)
    {
    }

    /// Between -1 and 1.
    double next()
    {
        m_state = m_state * 1664525u + 1013904223u;
        return static_cast<double>(static_cast<std::int32_t>(m_state)) * (1.0 / 2147483648.0);
    }

private:
    std::uint32_t m_state;
};

} // namespace kt500sim
