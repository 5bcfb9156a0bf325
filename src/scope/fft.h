// SPDX-License-Identifier: GPL-3.0-or-later
// The forward Fourier transform of the scope. Any thread; made by the caller for as many transforms as it
// needs.
#pragma once

#include <QObject>
#include <QPair>
#include <QVector>

class fft : public QObject
{
    Q_OBJECT

public:
    using Complex = QPair<double, double>; // real part first

    // Fills the first n values of output with the transform of the first n of input, unscaled, the exponent
    // negative: radix 2, decimation in time. False, and nothing done, when n is below 2 or no power of two,
    // or when a vector is empty or shorter than n.
    bool transform(const QVector<Complex> &input, int n, QVector<Complex> &output);

private:
    void prepareTwiddles(int n);

    // Of the last size, in the order in which the stages take them: those of the stage with this half begin
    // at its number.
    QVector<Complex> twiddles;
};
