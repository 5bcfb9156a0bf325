// SPDX-License-Identifier: GPL-3.0-or-later
// Finds the inertia that the motor moves out of its torque and its speed: a recursive least-squares fit of
// torque = inertia * acceleration + viscous * speed + friction * direction.
//
// Lives on the thread of the Drive that owns the model.
#pragma once

#include <array>
#include <cstdint>

namespace kt500sim {

class InertiaEstimator
{
public:
    /// How fast old samples are forgotten, by the mode of the online identification, 1 to 3; 0 forgets none.
    void setMode(int mode);
    /// Knows nothing but a first guess, in kg m2.
    void reset(double inertia);
    /// Drops what is known of the friction and of the spread, and keeps the inertia as the first guess.
    void restart() { reset(m_fit[0] * inertiaScale); }

    /// One sample period: counts of the encoder and torque of the motor (Nm).
    void step(std::int64_t counts, double torque);
    /// The motor has not moved for a while: samples before and after do not belong together.
    void interrupt()
    {
        m_blocks = 0;
        m_samples = 0;
        m_torqueSum = 0;
    }

    double inertia() const { return m_fit[0] * inertiaScale; } ///< kg m2
    /// Blocks of samples that have told something.
    int evidence() const { return m_evidence; }

private:
    static constexpr double inertiaScale = 1e-3;

    void takeBlock(double speed, double torque);
    void fit(const std::array<double, 3> &input, double torque);

    double m_forgetting = 1;
    std::array<double, 3> m_fit{}; ///< in units of their scales
    std::array<std::array<double, 3>, 3> m_spread{};
    int m_evidence = 0;

    std::int64_t m_blockStart = 0; ///< counts
    double m_torqueSum = 0;
    int m_samples = 0;
    int m_blocks = 0; ///< that follow one another without a gap
    double m_lastSpeed = 0;
    double m_lastTorque = 0;
};

} // namespace kt500sim
