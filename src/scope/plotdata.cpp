// SPDX-License-Identifier: GPL-3.0-or-later
#include "scope/plotdata.h"

#include <algorithm>
#include <cmath>

double PlotExtents::lowest(int channel) const
{
    return channelMin[channel] <= channelMax[channel] ? channelMin[channel] : 0.0;
}

double PlotExtents::highest(int channel) const
{
    return channelMin[channel] <= channelMax[channel] ? channelMax[channel] : 0.0;
}

void PlotData::receive(const std::array<QVector<double>, plotChannels> &batch, const QVector<bool> &visible)
{
    if (isEmpty) {
        isEmpty = false;
        return;
    }
    double latest = 0.0;
    for (int c = 0; c < plotChannels; ++c) {
        PointTrack &points = channelPoints[static_cast<size_t>(c)];
        const QVector<double> &values = batch[static_cast<size_t>(c)];
        while (points.size() > pointLimit)
            points.removeOldestBlock();
        points.append(curX[c], values);
        curX[c] += PointTrack::sampleStep * values.size();
        for (const double y : values) {
            if (!std::isfinite(y))
                continue;
            channelMax[c] = std::max(channelMax[c], y);
            channelMin[c] = std::min(channelMin[c], y);
        }
        if (visible.at(c))
            latest = std::max(latest, curX[c]);
    }
    std::fill(std::begin(curX), std::end(curX), latest);
}

void PlotData::followSpan()
{
    for (int c = 0; c < plotChannels; ++c) {
        xEnd[c] = curX[c];
        xStart[c] = xEnd[c] > plotWindowX ? xEnd[c] - plotWindowX : 0.0;
        const PointTrack &points = channelPoints[static_cast<size_t>(c)];
        if (!points.isEmpty())
            lastValue[c] = points.valueAt(points.size() - 1);
    }
}

void PlotData::clear()
{
    *this = PlotData();
}
