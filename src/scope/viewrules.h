// SPDX-License-Identifier: GPL-3.0-or-later
// The next view of the plot: what showing all data, rolling, zooming and shifting make of the view in use.
// Pure functions; any thread.
#pragma once

#include "scope/plotdata.h"
#include "scope/plotsettings.h"

#include <QRect>
#include <QVector>

// What the user has switched on and off.
struct ViewSwitches
{
    // One element a channel.
    QVector<bool> visible = QVector<bool>(plotChannels, true);
    QVector<bool> zoomChannel = QVector<bool>(plotChannels, false); // zoom and shift act on it
    QVector<int> decimals = QVector<int>(plotChannels, 0);
    bool zoomTimeAxis = true;
    bool zoomValueAxis = true;
    bool showGrid = true;
    bool individualCoordinate = false; // each channel has a y range of its own
    bool autoAdjust = false;           // the live view follows the extremes
};

struct ValueRange
{
    double min = 0;
    double max = 0;
};

// The widget's pixels. w and h are its width and height less 1; the plot rectangle lies 50 pixels inside.
struct PlotGeometry
{
    static constexpr int margin = 50;

    int w = 0;
    int h = 0;

    bool isDrawable() const { return w - margin >= margin && h - margin >= margin; }
    QRect plotRect() const { return {QPoint(margin, margin), QPoint(w - margin, h - margin)}; }
    // What a pixel stands for in the window of a channel.
    // Deliberate: the denominators are one pixel larger than those with which the curves are drawn.
    double xAt(const PlotSettings &settings, int channel, double pixel) const;
    double yAt(const PlotSettings &settings, int channel, double pixel) const;
};

namespace viewrules {

// n times 10 to the power k for k from 0 to 24 and n from 1 to 9, ascending.
const QVector<double> &stepTable();
// -5 to 5 times the first step above a fifth of the larger absolute value.
ValueRange symmetricRange(double lowest, double highest);

// The live view one refresh tick later.
PlotSettings rolled(PlotSettings current, const PlotExtents &data, const ViewSwitches &switches);
PlotSettings showingAll(const PlotExtents &data, const ViewSwitches &switches);
// Showing all with y ranges close around the data.
PlotSettings adjusted(const PlotExtents &data, const ViewSwitches &switches);
// After a change of switches.individualCoordinate.
PlotSettings withCoordinate(PlotSettings current, const PlotData &data, const ViewSwitches &switches);

PlotSettings zoomedIn(PlotSettings current, const ViewSwitches &switches);
PlotSettings zoomedOut(PlotSettings current, const PlotExtents &data, const ViewSwitches &switches);
// A rubber band, in pixels.
PlotSettings zoomedTo(const QRect &band, const PlotSettings &current, const PlotExtents &data,
                      const PlotGeometry &geometry);

// One tick; directions are those of the wave. Left stops at the end of the data, right at their start.
PlotSettings movedUp(PlotSettings current, const ViewSwitches &switches);
PlotSettings movedDown(PlotSettings current, const ViewSwitches &switches);
PlotSettings movedLeft(PlotSettings current, const PlotExtents &data, const ViewSwitches &switches);
PlotSettings movedRight(PlotSettings current, const PlotExtents &data, const ViewSwitches &switches);

} // namespace viewrules
