// SPDX-License-Identifier: GPL-3.0-or-later
#include "scope/spectrum.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr float sampleRate = 8000; // Hz

// Deliberate: 256 is none of them.
constexpr int sizes[] = {2,    4,    8,     16,    32,    64,     128,    512,    1024,    2048,
                         4096, 8192, 16384, 32768, 65536, 131072, 262144, 524288, 1048576, 2097152};

} // namespace

int spectrumSize(int sampleCount)
{
    const auto size = std::lower_bound(std::begin(sizes), std::end(sizes), sampleCount);
    return size == std::end(sizes) ? *(std::end(sizes) - 1) : *size;
}

Spectrum spectrumOf(const QVector<double> &samples, fft *transformer)
{
    Spectrum spectrum;
    const int count = samples.size();
    if (count == 0)
        return spectrum;
    const int n = spectrumSize(count);
    QVector<fft::Complex> values(n, {0.0, 0.0});
    for (int i = 0; i < std::min(count, n); ++i)
        values[i].first = samples.at(i);
    transformer->transform(values, n, values);
    spectrum.frequency.resize(n / 2);
    spectrum.amplitude.resize(n / 2);
    for (int i = 0; i < n / 2; ++i) {
        const double re = values.at(i).first;
        const double im = values.at(i).second;
        const double amplitude = std::sqrt(re * re + im * im) * (i == 0 ? 1 : 2) / count;
        spectrum.frequency[i] =
            static_cast<double>(static_cast<float>(i) * sampleRate / static_cast<float>(n));
        spectrum.amplitude[i] = amplitude;
    }
    return spectrum;
}
