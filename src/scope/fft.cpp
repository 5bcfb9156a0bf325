// SPDX-License-Identifier: GPL-3.0-or-later
#include "scope/fft.h"

#include <QDebug>

#include <algorithm>
#include <cmath>

namespace {

using Complex = fft::Complex;

// Elements that the first stages work through while they stay in the processor's cache.
constexpr int cachedElements = 1 << 14;

// The side of the squares in which large inputs are permuted: two squares fit into the innermost cache.
constexpr int sideBits = 5;
constexpr int side = 1 << sideBits;

bool isPowerOfTwo(int n)
{
    return (n & (n - 1)) == 0;
}

int reversedBits(int index, int bits)
{
    int reversed = 0;
    for (int bit = 0; bit < bits; ++bit)
        reversed |= ((index >> bit) & 1) << (bits - 1 - bit);
    return reversed;
}

// Copies with the index's bits reversed.
void permuteSmall(const Complex *input, int bits, Complex *output)
{
    for (int i = 0; i < 1 << bits; ++i)
        output[reversedBits(i, bits)] = input[i];
}

// The same through a square of those elements whose middle bits agree: both reading and writing then go along
// whole lines of it, where the plain way touches another line of memory with every element.
void permuteLarge(const Complex *input, int bits, Complex *output)
{
    const int middleBits = bits - 2 * sideBits;
    const int rowBits = bits - sideBits;
    int reversedSide[side];
    for (int i = 0; i < side; ++i)
        reversedSide[i] = reversedBits(i, sideBits);
    Complex square[side][side];
    for (int middle = 0; middle < 1 << middleBits; ++middle) {
        for (int high = 0; high < side; ++high) {
            const Complex *const from = input + (high << rowBits) + (middle << sideBits);
            for (int low = 0; low < side; ++low)
                square[reversedSide[low]][reversedSide[high]] = from[low];
        }
        const int reversedMiddle = reversedBits(middle, middleBits) << sideBits;
        for (int row = 0; row < side; ++row)
            std::copy(square[row], square[row] + side, output + (row << rowBits) + reversedMiddle);
    }
}

Complex product(const Complex &a, const Complex &b)
{
    return {a.first * b.first - a.second * b.second, a.first * b.second + a.second * b.first};
}

void butterfly(Complex *upper, Complex *lower, const Complex &twiddle)
{
    const Complex turned = product(twiddle, *lower);
    *lower = {upper->first - turned.first, upper->second - turned.second};
    *upper = {upper->first + turned.first, upper->second + turned.second};
}

// The stage of this half over count elements, in groups of two halves.
void combine(Complex *values, int count, int half, const Complex *twiddles)
{
    const Complex *const w = twiddles + half;
    for (int group = 0; group < count; group += 2 * half)
        for (int j = 0; j < half; ++j)
            butterfly(values + group + j, values + group + half + j, w[j]);
}

// That stage and the next one at once: every element is fetched once for both.
void combineTwo(Complex *values, int count, int half, const Complex *twiddles)
{
    const Complex *const w = twiddles + half;
    const Complex *const next = twiddles + 2 * half;
    for (int group = 0; group < count; group += 4 * half) {
        for (int j = 0; j < half; ++j) {
            Complex *const at = values + group + j;
            Complex a = at[0];
            Complex b = at[half];
            Complex c = at[2 * half];
            Complex d = at[3 * half];
            butterfly(&a, &b, w[j]);
            butterfly(&c, &d, w[j]);
            butterfly(&a, &c, next[j]);
            butterfly(&b, &d, next[half + j]);
            at[0] = a;
            at[half] = b;
            at[2 * half] = c;
            at[3 * half] = d;
        }
    }
}

// The stages from this half to that of count elements.
void combineAll(Complex *values, int count, int half, const Complex *twiddles)
{
    for (; 2 * half < count; half *= 4)
        combineTwo(values, count, half, twiddles);
    if (half < count)
        combine(values, count, half, twiddles);
}

} // namespace

bool fft::transform(const QVector<Complex> &input, int n, QVector<Complex> &output)
{
    if (n < 2 || !isPowerOfTwo(n) || input.size() < n || output.size() < n)
        return false;
    qDebug() << "come in";
    prepareTwiddles(n);
    QVector<Complex> work(n); // the output may be the input
    Complex *const values = work.data();
    int bits = 0;
    while (1 << bits < n)
        ++bits;
    if (bits < 2 * sideBits)
        permuteSmall(input.constData(), bits, values);
    else
        permuteLarge(input.constData(), bits, values);

    const int cached = std::min(n, cachedElements);
    for (int begin = 0; begin < n; begin += cached)
        combineAll(values + begin, cached, 1, twiddles.constData());
    combineAll(values, n, cached, twiddles.constData());
    if (output.size() == n)
        output.swap(work);
    else
        std::copy(work.cbegin(), work.cend(), output.begin());
    return true;
}

void fft::prepareTwiddles(int n)
{
    if (twiddles.size() == n)
        return;
    twiddles.resize(n);
    for (int k = 0; k < n / 2; ++k) {
        // Deliberate: two pi is cut after nine decimals.
        const double angle = k * (-6.283185306 / n);
        twiddles[n / 2 + k] = {std::cos(angle), std::sin(angle)};
    }
    // Half as many turns of half as many: every second one of the stage above.
    for (int i = n / 2 - 1; i > 0; --i)
        twiddles[i] = twiddles.at(2 * i);
}
