// SPDX-License-Identifier: GPL-3.0-or-later
// The filters of the loops, each stepped once a sample period.
//
// Live on the thread of the Drive that owns the model.
#pragma once

#include <cstddef>
#include <vector>

namespace kt500sim {

/// A first-order lag, exact for an input that is steady during a period.
class LowPass
{
public:
    /// 0 lets the input through.
    void setTimeConstant(double seconds);
    void reset(double value) { m_value = value; }
    double step(double input)
    {
        m_value += m_gain * (input - m_value);
        return m_value;
    }
    double value() const { return m_value; }

private:
    double m_gain = 1;
    double m_value = 0;
};

/// A second-order section by the bilinear transform, true at its own frequency.
class Biquad
{
public:
    Biquad() = default;
    /// Passes all but a band about \a frequency (Hz). \a width is the band between the points of 3 dB over
    /// the frequency, \a depth the gain that is left in the centre. Above the range of the sample rate it is
    /// off.
    static Biquad notch(double frequency, double width, double depth);
    /// Off above the range of the sample rate.
    static Biquad lowPass(double frequency, double quality);

    /// Takes the coefficients of \a other and keeps what has passed through.
    void retune(const Biquad &other);
    void reset(double value);
    double step(double input)
    {
        if (!m_active)
            return input;
        const double output = m_b0 * input + m_z1;
        m_z1 = m_b1 * input - m_a1 * output + m_z2;
        m_z2 = m_b2 * input - m_a2 * output;
        return output;
    }
    bool isActive() const { return m_active; }

private:
    bool m_active = false;
    double m_b0 = 1, m_b1 = 0, m_b2 = 0, m_a1 = 0, m_a2 = 0;
    double m_z1 = 0, m_z2 = 0;
};

/// The mean of the last samples.
class MovingAverage
{
public:
    /// In sample periods; 1 or less lets the input through.
    void setLength(int samples);
    void reset(double value);
    double step(double input);

private:
    std::vector<double> m_samples;
    std::size_t m_at = 0;
    double m_sum = 0;
};

} // namespace kt500sim
