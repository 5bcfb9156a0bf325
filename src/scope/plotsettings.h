// SPDX-License-Identifier: GPL-3.0-or-later
// What part of the wave the plot shows: the view window and the tick counts of each channel. A plain value;
// any thread.
#pragma once

constexpr int plotChannels = 4;
// The window of a view that nobody has changed: 60 s in plot units of 0.1 ms.
constexpr double plotWindowX = 600000.0;

struct PlotSettings
{
    // One element a channel, CH1 to CH4. X in plot units of 0.1 ms, y in engineering units.
    double minX[plotChannels] = {0.0, 0.0, 0.0, 0.0};
    double maxX[plotChannels] = {plotWindowX, plotWindowX, plotWindowX, plotWindowX};
    int numXTicks[plotChannels] = {10, 10, 10, 10};
    double minY[plotChannels] = {-1000.0, -1000.0, -1000.0, -1000.0};
    double maxY[plotChannels] = {1000.0, 1000.0, 1000.0, 1000.0};
    int numYTicks[plotChannels] = {10, 10, 10, 10};
    // The x window as of the last horizontal move.
    double lastMinX[plotChannels] = {0.0, 0.0, 0.0, 0.0};
    double lastMaxX[plotChannels] = {plotWindowX, plotWindowX, plotWindowX, plotWindowX};

    // Moves by whole ticks: all channels with which 0, with 1 to 4 that channel alone.
    void scroll(int dx, int dy, int which = 0);
};

bool operator==(const PlotSettings &a, const PlotSettings &b);
inline bool operator!=(const PlotSettings &a, const PlotSettings &b)
{
    return !(a == b);
}
