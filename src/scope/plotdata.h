// SPDX-License-Identifier: GPL-3.0-or-later
// The samples that the plot keeps, and what is known of their extent. Main thread; owned by the plot.
#pragma once

#include "scope/plotsettings.h"
#include "scope/pointtrack.h"

#include <QVector>

#include <array>

// How far the data of each channel reach. X in plot units of 0.1 ms.
struct PlotExtents
{
    static constexpr double noMaximum = -4294967295.0;
    static constexpr double noMinimum = 4294967295.0;

    // Running extremes since the last clear.
    double channelMax[plotChannels] = {noMaximum, noMaximum, noMaximum, noMaximum};
    double channelMin[plotChannels] = {noMinimum, noMinimum, noMinimum, noMinimum};
    // The span of the data as of the last refresh tick.
    double xStart[plotChannels] = {0.0, 0.0, 0.0, 0.0};
    double xEnd[plotChannels] = {plotWindowX, plotWindowX, plotWindowX, plotWindowX};
    // X of the next sample.
    double curX[plotChannels] = {0.0, 0.0, 0.0, 0.0};

    // The extremes of a channel, 0 where it has no data.
    double lowest(int channel) const;
    double highest(int channel) const;
};

class PlotData : public PlotExtents
{
public:
    static constexpr int pointLimit = 800000;

    std::array<PointTrack, plotChannels> channelPoints;
    QVector<double> lastValue = QVector<double>(plotChannels, 0.0);
    bool isEmpty = true; // no batch since the last clear

    // Takes one batch of samples. The first one after a clear is thrown away.
    void receive(const std::array<QVector<double>, plotChannels> &batch, const QVector<bool> &visible);
    // Moves the span to the samples that have come.
    void followSpan();
    void clear();
};
