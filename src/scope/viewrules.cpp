// SPDX-License-Identifier: GPL-3.0-or-later
#include "scope/viewrules.h"

#include <algorithm>
#include <cmath>

namespace {

// The extremes over all visible channels, 0 and 0 with none.
ValueRange visibleExtremes(const PlotExtents &data, const ViewSwitches &switches)
{
    ValueRange range;
    bool isFirst = true;
    for (int c = 0; c < plotChannels; ++c) {
        if (!switches.visible.at(c))
            continue;
        range.min = isFirst ? data.lowest(c) : std::min(range.min, data.lowest(c));
        range.max = isFirst ? data.highest(c) : std::max(range.max, data.highest(c));
        isFirst = false;
    }
    return range;
}

void setY(PlotSettings *settings, int channel, const ValueRange &range)
{
    settings->minY[channel] = range.min;
    settings->maxY[channel] = range.max;
}

ValueRange widened(double lowest, double highest, double margin)
{
    return {std::min(lowest, highest) - margin, std::max(lowest, highest) + margin};
}

ValueRange closeCommonRange(const PlotExtents &data, const ViewSwitches &switches)
{
    const ValueRange all = visibleExtremes(data, switches);
    const double margin = std::abs(all.max - all.min) / 10;
    return widened(all.min, all.max, margin == 0.0 ? 1.0 : margin);
}

double marginFor(int decimals)
{
    if (decimals == 0)
        return 1.0;
    return decimals == 1 ? 0.1 : 0.01;
}

void showWholeX(PlotSettings *settings, int channel, const PlotExtents &data)
{
    settings->minX[channel] = data.xStart[channel];
    settings->maxX[channel] = std::max(data.xEnd[channel], plotWindowX);
}

void rememberX(PlotSettings *settings, int channel)
{
    settings->lastMinX[channel] = settings->minX[channel];
    settings->lastMaxX[channel] = settings->maxX[channel];
}

// Those that a shift acts on: the selected ones, or all if none is.
bool isShifted(const ViewSwitches &switches, int channel)
{
    return switches.zoomChannel.at(channel) || !switches.zoomChannel.contains(true);
}

PlotSettings movedVertically(PlotSettings settings, const ViewSwitches &switches, int ticks)
{
    for (int c = 0; c < plotChannels; ++c)
        if (isShifted(switches, c))
            settings.scroll(0, ticks, c + 1);
    return settings;
}

// The right edge of a view does not pass the data, nor the first minute while there are less.
double rightLimit(double maxX, double xEnd)
{
    return std::min(maxX, std::max(xEnd, plotWindowX));
}

void widenX(PlotSettings *settings, int channel, const PlotExtents &data)
{
    double &minX = settings->minX[channel];
    double &maxX = settings->maxX[channel];
    const double xStart = data.xStart[channel];
    const double xEnd = data.xEnd[channel];
    if (!(xEnd > plotWindowX && xEnd < maxX && minX < xStart)) {
        const double step = std::abs(maxX - minX) / 10;
        minX -= step;
        maxX += step;
    }
    maxX = rightLimit(maxX, xEnd);
    minX = std::max(minX, xStart);
    rememberX(settings, channel);
}

} // namespace

double PlotGeometry::xAt(const PlotSettings &settings, int channel, double pixel) const
{
    const double span = settings.maxX[channel] - settings.minX[channel];
    return settings.minX[channel] + span / (w - 99) * (pixel - margin);
}

double PlotGeometry::yAt(const PlotSettings &settings, int channel, double pixel) const
{
    const double span = settings.maxY[channel] - settings.minY[channel];
    return settings.maxY[channel] - span / (h - 99) * (pixel - margin);
}

namespace viewrules {

const QVector<double> &stepTable()
{
    static const QVector<double> table = [] {
        QVector<double> steps;
        double power = 1.0;
        for (int k = 0; k <= 24; ++k, power *= 10)
            for (int n = 1; n <= 9; ++n)
                steps.append(n * power);
        return steps;
    }();
    return table;
}

ValueRange symmetricRange(double lowest, double highest)
{
    const double peak = std::max(std::abs(lowest), std::abs(highest));
    const QVector<double> &steps = stepTable();
    const auto step = std::upper_bound(steps.cbegin(), steps.cend(), peak / 5);
    const double reach = step == steps.cend() ? 50 * steps.constLast() : 5 * *step;
    return {-reach, reach};
}

PlotSettings rolled(PlotSettings current, const PlotExtents &data, const ViewSwitches &switches)
{
    const ValueRange all = visibleExtremes(data, switches);
    for (int c = 0; c < plotChannels; ++c) {
        if (!switches.individualCoordinate)
            setY(&current, c, symmetricRange(all.min, all.max));
        if (data.curX[c] > plotWindowX) {
            current.minX[c] = data.xStart[c];
            current.maxX[c] = data.xEnd[c];
            rememberX(&current, c);
        }
    }
    return current;
}

PlotSettings showingAll(const PlotExtents &data, const ViewSwitches &switches)
{
    PlotSettings settings;
    const ValueRange all = visibleExtremes(data, switches);
    for (int c = 0; c < plotChannels; ++c) {
        showWholeX(&settings, c, data);
        rememberX(&settings, c);
        setY(&settings, c,
             switches.individualCoordinate ? symmetricRange(data.lowest(c), data.highest(c))
                                           : symmetricRange(all.min, all.max));
    }
    return settings;
}

PlotSettings adjusted(const PlotExtents &data, const ViewSwitches &switches)
{
    PlotSettings settings;
    const ValueRange common = closeCommonRange(data, switches);
    for (int c = 0; c < plotChannels; ++c) {
        showWholeX(&settings, c, data);
        setY(&settings, c,
             switches.individualCoordinate
                 ? widened(data.lowest(c), data.highest(c), marginFor(switches.decimals.at(c)))
                 : common);
    }
    return settings;
}

PlotSettings withCoordinate(PlotSettings current, const PlotData &data, const ViewSwitches &switches)
{
    const ValueRange common = closeCommonRange(data, switches);
    for (int c = 0; c < plotChannels; ++c) {
        if (!switches.individualCoordinate) {
            showWholeX(&current, c, data);
            setY(&current, c, common);
        } else if (data.isEmpty) {
            setY(&current, c, symmetricRange(-500.0, 500.0));
        } else {
            setY(&current, c, symmetricRange(data.lowest(c), data.highest(c)));
        }
    }
    return current;
}

PlotSettings zoomedIn(PlotSettings current, const ViewSwitches &switches)
{
    for (int c = 0; c < plotChannels; ++c) {
        if (!switches.zoomChannel.at(c))
            continue;
        if (switches.zoomTimeAxis) {
            const double step = std::abs(current.maxX[c] - current.minX[c]) / 10;
            current.minX[c] += step;
            current.maxX[c] -= step;
            rememberX(&current, c);
        }
        if (switches.zoomValueAxis) {
            const double step = std::abs(current.maxY[c] - current.minY[c]) / 10;
            current.minY[c] += step;
            current.maxY[c] -= step;
        }
    }
    return current;
}

PlotSettings zoomedOut(PlotSettings current, const PlotExtents &data, const ViewSwitches &switches)
{
    for (int c = 0; c < plotChannels; ++c) {
        if (!switches.zoomChannel.at(c))
            continue;
        if (switches.zoomTimeAxis)
            widenX(&current, c, data);
        if (switches.zoomValueAxis) {
            const double step = std::abs(current.maxY[c] - current.minY[c]) / 10;
            current.minY[c] -= step;
            current.maxY[c] += step;
        }
    }
    return current;
}

PlotSettings zoomedTo(const QRect &band, const PlotSettings &current, const PlotExtents &data,
                      const PlotGeometry &geometry)
{
    PlotSettings settings;
    for (int c = 0; c < plotChannels; ++c) {
        settings.minX[c] = std::max(geometry.xAt(current, c, band.left()), data.xStart[c]);
        settings.maxX[c] = rightLimit(geometry.xAt(current, c, band.right()), data.xEnd[c]);
        settings.minY[c] = geometry.yAt(current, c, band.bottom());
        settings.maxY[c] = geometry.yAt(current, c, band.top());
        rememberX(&settings, c);
    }
    return settings;
}

PlotSettings movedUp(PlotSettings current, const ViewSwitches &switches)
{
    return movedVertically(current, switches, -1);
}

PlotSettings movedDown(PlotSettings current, const ViewSwitches &switches)
{
    return movedVertically(current, switches, 1);
}

PlotSettings movedLeft(PlotSettings current, const PlotExtents &data, const ViewSwitches &switches)
{
    for (int c = 0; c < plotChannels; ++c) {
        if (!isShifted(switches, c))
            continue;
        if (data.xEnd[c] >= plotWindowX && current.maxX[c] >= data.xEnd[c])
            continue;
        const double width = current.maxX[c] - current.minX[c];
        current.scroll(1, 0, c + 1);
        const double limit = std::max(data.xEnd[c], plotWindowX);
        if (current.maxX[c] >= limit) {
            current.maxX[c] = limit;
            current.minX[c] = limit - width;
        }
        rememberX(&current, c);
    }
    return current;
}

PlotSettings movedRight(PlotSettings current, const PlotExtents &data, const ViewSwitches &switches)
{
    for (int c = 0; c < plotChannels; ++c) {
        if (!isShifted(switches, c) || data.xStart[c] >= current.minX[c])
            continue;
        const double width = current.maxX[c] - current.minX[c];
        current.scroll(-1, 0, c + 1);
        if (current.minX[c] < data.xStart[c]) {
            current.minX[c] = data.xStart[c];
            current.maxX[c] = data.xStart[c] + width;
        }
        rememberX(&current, c);
    }
    return current;
}

} // namespace viewrules
