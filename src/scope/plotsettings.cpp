// SPDX-License-Identifier: GPL-3.0-or-later
#include "scope/plotsettings.h"

#include <algorithm>
#include <iterator>

namespace {

void moveBy(double *min, double *max, int ticks, int tickCount)
{
    const double step = (*max - *min) / tickCount;
    *min += step * ticks;
    *max += step * ticks;
}

template <typename T>
bool same(const T (&a)[plotChannels], const T (&b)[plotChannels])
{
    return std::equal(std::begin(a), std::end(a), std::begin(b));
}

} // namespace

void PlotSettings::scroll(int dx, int dy, int which)
{
    for (int c = 0; c < plotChannels; ++c) {
        if (which != 0 && which != c + 1)
            continue;
        moveBy(&minX[c], &maxX[c], dx, numXTicks[c]);
        moveBy(&minY[c], &maxY[c], dy, numYTicks[c]);
    }
}

bool operator==(const PlotSettings &a, const PlotSettings &b)
{
    return same(a.minX, b.minX) && same(a.maxX, b.maxX) && same(a.numXTicks, b.numXTicks) &&
           same(a.minY, b.minY) && same(a.maxY, b.maxY) && same(a.numYTicks, b.numYTicks) &&
           same(a.lastMinX, b.lastMinX) && same(a.lastMaxX, b.lastMaxX);
}
