// SPDX-License-Identifier: GPL-3.0-or-later
// The effective and the highest torque of the last minute.
//
// Lives on the thread of the Drive that owns the model.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

namespace kt500sim {

class MinuteStatistics
{
public:
    void reset() { *this = MinuteStatistics(); }

    /// \a seconds during which the square of the torque was \a squared in the mean and its size \a peak at
    /// most.
    void step(double seconds, double squared, double peak)
    {
        while (seconds > 0) {
            Bucket &bucket = m_buckets[m_at];
            const double taken = std::min(seconds, 1 - bucket.seconds);
            bucket.seconds += taken;
            bucket.squares += squared * taken;
            bucket.peak = std::max(bucket.peak, peak);
            seconds -= taken;
            if (bucket.seconds < 1 - 1e-9)
                break;
            m_at = (m_at + 1) % m_buckets.size();
            m_buckets[m_at] = Bucket();
            sumUp();
        }
    }
    double effective() const
    {
        const Bucket &bucket = m_buckets[m_at];
        const double seconds = m_full.seconds + bucket.seconds;
        return seconds > 0 ? std::sqrt((m_full.squares + bucket.squares) / seconds) : 0;
    }
    double peak() const { return std::max(m_full.peak, m_buckets[m_at].peak); }

private:
    struct Bucket
    {
        double seconds = 0, squares = 0, peak = 0;
    };

    /// All buckets but the one that is being filled, which is empty.
    void sumUp()
    {
        m_full = Bucket();
        for (const Bucket &bucket : m_buckets) {
            m_full.seconds += bucket.seconds;
            m_full.squares += bucket.squares;
            m_full.peak = std::max(m_full.peak, bucket.peak);
        }
    }

    std::array<Bucket, 60> m_buckets; ///< of a second each
    std::size_t m_at = 0;
    Bucket m_full;
};

} // namespace kt500sim
