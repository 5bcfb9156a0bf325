// SPDX-License-Identifier: GPL-3.0-or-later
// The encoder: the shaft's angle as whole counts, with the noise of its last digit.
//
// Lives on the thread of the Drive that owns the model.
#pragma once

#include "simulator/model/noise.h"
#include "simulator/model/units.h"

namespace kt500sim {

class Encoder
{
public:
    explicit Encoder(std::uint32_t seed)
        : m_noise(seed)
    {
    }

    /// Takes the shaft's angle in radians, and says how many counts it went on.
    std::int64_t read(double angle)
    {
        const double place = angle * countsPerRadian + 0.5 + noiseHeight * m_noise.next();
        // A reading holds until the shaft has left its count for good, as a still shaft shows a still number.
        const double fromCount = place - static_cast<double>(m_counts);
        if (fromCount > -hysteresis && fromCount < 1 + hysteresis)
            return 0;
        const auto counts = static_cast<std::int64_t>(std::floor(place));
        const std::int64_t moved = counts - m_counts;
        m_counts = counts;
        return moved;
    }
    std::int64_t counts() const { return m_counts; }
    void reset() { m_counts = 0; }

private:
    static constexpr double noiseHeight = 0.2; // counts
    static constexpr double hysteresis = 0.1;  // counts

    Noise m_noise;
    std::int64_t m_counts = 0;
};

} // namespace kt500sim
