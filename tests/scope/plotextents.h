// SPDX-License-Identifier: GPL-3.0-or-later
// Spans of data and views of the plot, for the rules of its views. Any thread.
#pragma once

#include "scope/plotdata.h"

namespace plotextents {

using List = QVector<double>;

// Data that reach over these spans, one element a channel.
inline PlotExtents extents(const List &lowest, const List &highest, double xStart = 0, double xEnd = 600000)
{
    PlotExtents e;
    for (int c = 0; c < plotChannels; ++c) {
        e.channelMin[c] = lowest.at(c);
        e.channelMax[c] = highest.at(c);
        e.xStart[c] = xStart;
        e.xEnd[c] = e.curX[c] = xEnd;
    }
    return e;
}

inline PlotExtents spanning(double xStart, double xEnd)
{
    return extents({0, 0, 0, 0}, {0, 0, 0, 0}, xStart, xEnd);
}

inline PlotSettings window(double minX, double maxX, double minY = -1000, double maxY = 1000)
{
    PlotSettings s;
    for (int c = 0; c < plotChannels; ++c) {
        s.minX[c] = s.lastMinX[c] = minX;
        s.maxX[c] = s.lastMaxX[c] = maxX;
        s.minY[c] = minY;
        s.maxY[c] = maxY;
    }
    return s;
}

} // namespace plotextents
