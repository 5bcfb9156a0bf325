// SPDX-License-Identifier: GPL-3.0-or-later
#include "scope/pointchain.h"

#include <algorithm>
#include <cstdlib>
#include <limits>

namespace {

struct Extremes
{
    int lowest = 0;
    int highest = 0;
};

// Of 64ths, but only to a row. Numbers of rows are short, of which the processor takes twice as many at once.
Extremes rowExtremes(const int *ys, int count)
{
    short top = std::numeric_limits<short>::max();
    short bottom = std::numeric_limits<short>::min();
    for (int i = 0; i < count; ++i) {
        const auto row = static_cast<short>(ys[i] >> 6);
        top = std::min(top, row);
        bottom = std::max(bottom, row);
    }
    return {top * 64, bottom * 64 + 63};
}

Extremes extremes(const int *ys, int count)
{
    int lowest = ys[0];
    int highest = ys[0];
    for (int i = 1; i < count; ++i) {
        lowest = std::min(lowest, ys[i]);
        highest = std::max(highest, ys[i]);
    }
    return {lowest, highest};
}

// True when y goes one way, by 0 or 1 from sample to sample.
bool isSlow(const int *ys, int count)
{
    int fall = 0;
    int rise = 0;
    for (int i = 1; i < count; ++i) {
        fall = std::min(fall, ys[i] - ys[i - 1]);
        rise = std::max(rise, ys[i] - ys[i - 1]);
    }
    return (fall == 0 && rise <= 1) || (rise == 0 && fall >= -1);
}

} // namespace

// Most waves show by the first look that they are not slow, or by the second.
PointChain chainOf(const int *ys, int count)
{
    PointChain chain;
    chain.ys = ys;
    Extremes found = rowExtremes(ys, count);
    if (found.highest - found.lowest < count + 2 * 64) {
        found = extremes(ys, count);
        const int way = std::abs(ys[count - 1] - ys[0]);
        chain.isSlow = found.highest - found.lowest == way && way < count && (way == 0 || isSlow(ys, count));
    }
    chain.lowest = found.lowest;
    chain.highest = found.highest;
    return chain;
}
