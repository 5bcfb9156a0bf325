// SPDX-License-Identifier: GPL-3.0-or-later
// The amplitude spectrum of a span of samples. Any thread.
#pragma once

#include "scope/fft.h"

#include <QVector>

struct Spectrum
{
    QVector<double> frequency; // Hz
    QVector<double> amplitude; // in the unit of the samples
};

// The transform's size for this many samples: the first of the sizes in use that holds them, or the largest.
int spectrumSize(int sampleCount);

// Of samples taken 8000 times a second: no window, the mean not removed, padded with zeros. The amplitude is
// divided by the number of samples, so that a sine that fills its span reads its own. Empty for no samples.
Spectrum spectrumOf(const QVector<double> &samples, fft *transformer);
