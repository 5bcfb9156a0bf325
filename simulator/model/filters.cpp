// SPDX-License-Identifier: GPL-3.0-or-later
#include "simulator/model/filters.h"

#include "simulator/model/units.h"

#include <algorithm>

namespace kt500sim {
namespace {

constexpr double highestFrequency = 0.45 * samplesPerSecond;

} // namespace

void LowPass::setTimeConstant(double seconds)
{
    m_gain = seconds > 0 ? -std::expm1(-stepTime / seconds) : 1;
}

Biquad Biquad::notch(double frequency, double width, double depth)
{
    Biquad section;
    if (frequency <= 0 || frequency >= highestFrequency || width <= 0)
        return section;
    const double t = std::tan(pi * frequency * stepTime);
    const double denominator = 1 + width * t + t * t;
    section.m_active = true;
    section.m_b0 = (1 + depth * width * t + t * t) / denominator;
    section.m_b1 = 2 * (t * t - 1) / denominator;
    section.m_b2 = (1 - depth * width * t + t * t) / denominator;
    section.m_a1 = section.m_b1;
    section.m_a2 = (1 - width * t + t * t) / denominator;
    return section;
}

Biquad Biquad::lowPass(double frequency, double quality)
{
    Biquad section;
    if (frequency <= 0 || frequency >= highestFrequency || quality <= 0)
        return section;
    const double t = std::tan(pi * frequency * stepTime);
    const double denominator = 1 + t / quality + t * t;
    section.m_active = true;
    section.m_b0 = t * t / denominator;
    section.m_b1 = 2 * section.m_b0;
    section.m_b2 = section.m_b0;
    section.m_a1 = 2 * (t * t - 1) / denominator;
    section.m_a2 = (1 - t / quality + t * t) / denominator;
    return section;
}

void Biquad::retune(const Biquad &other)
{
    const double z1 = m_z1;
    const double z2 = m_z2;
    *this = other;
    m_z1 = m_active ? z1 : 0;
    m_z2 = m_active ? z2 : 0;
}

void Biquad::reset(double value)
{
    // Both kinds have a gain of 1 for a steady input.
    m_z1 = m_active ? (1 - m_b0) * value : 0;
    m_z2 = m_active ? (m_b2 - m_a2) * value : 0;
}

void MovingAverage::setLength(int samples)
{
    const auto length = static_cast<std::size_t>(std::max(samples, 1));
    if (length == std::max<std::size_t>(m_samples.size(), 1))
        return;
    const double value = m_samples.empty() ? 0 : m_sum / static_cast<double>(m_samples.size());
    m_samples.assign(length > 1 ? length : 0, 0);
    reset(value);
}

void MovingAverage::reset(double value)
{
    std::fill(m_samples.begin(), m_samples.end(), value);
    m_sum = value * static_cast<double>(m_samples.size());
    m_at = 0;
}

double MovingAverage::step(double input)
{
    if (m_samples.empty())
        return input;
    m_sum += input - m_samples[m_at];
    m_samples[m_at] = input;
    if (++m_at == m_samples.size()) {
        // Summed anew at every turn, so that rounding never adds up.
        m_at = 0;
        m_sum = 0;
        for (const double sample : m_samples)
            m_sum += sample;
    }
    return m_sum / static_cast<double>(m_samples.size());
}

} // namespace kt500sim
