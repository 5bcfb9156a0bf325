// SPDX-License-Identifier: GPL-3.0-or-later
// From the bytes of samples to values in engineering units, by the texts of their catalogue row. Pure
// functions; any thread.
#pragma once

#include "catalogue/scopecatalogue.h"

#include <QByteArray>
#include <QVector>

struct SampleFormat
{
    bool isSigned = false; // of 16-bit samples; 32-bit ones always are
    double factor = 1;     // engineering units a count
    int decimals = 0;      // digits behind the point when shown
};

// By the first row of the code. A code that no row has is read like a row without min, max and unit.
SampleFormat sampleFormat(const ScopeItems &items, const QString &code);

// Two bytes a sample, or four where wide, high byte first. A part sample at the end is dropped.
QVector<double> decodeSamples(const QByteArray &bytes, const SampleFormat &format, bool wide);
