// SPDX-License-Identifier: GPL-3.0-or-later
// Geometry, statistics and texts of the plot's cursors and of its tag. Pure functions; any thread.
#pragma once

#include "scope/pointtrack.h"
#include "scope/viewrules.h"

#include <QPoint>
#include <QString>

struct Statistics
{
    double min = 0;
    double max = 0;
    double average = 0; // rounded to three decimals
};

namespace cursorrules {

// Handles reach this far from their cursor, in pixels.
constexpr int handleReach = 5;

// The strips outside the plot area in which vertical and horizontal cursors are picked up.
bool isInTopStrip(const QPoint &point, const PlotGeometry &geometry);
bool isInLeftStrip(const QPoint &point, const PlotGeometry &geometry);
bool isInPlotArea(const QPoint &point, const PlotGeometry &geometry);
bool isNear(double pixel, double position);

// Where a cursor stops that is dragged to this pixel.
double xPosition(double pixel, const PlotGeometry &geometry);
double yPosition(double pixel, const PlotGeometry &geometry);
double xFraction(double position, const PlotGeometry &geometry);
double yFraction(double position, const PlotGeometry &geometry);
double xOfFraction(double fraction, const PlotGeometry &geometry);
double yOfFraction(double fraction, const PlotGeometry &geometry);

// Over the samples from x1 to x2, both cut to integers; those that are no finite number are passed over.
// False, and nothing changed, if there are none.
bool computeStatistics(const PointTrack &points, double x1, double x2, Statistics *statistics);

// What a channel's row of the statistics says: channels are numbered from 1.
QString statisticText(int channel, double value, int decimals);
// Milliseconds from the first vertical cursor to the second; negative when it stands left of it.
double deltaX(double x1, double x2, const PlotSettings &settings, int channel, const PlotGeometry &geometry);
// Positive when the first horizontal cursor stands below the second.
double deltaY(double y1, double y2, const PlotSettings &settings, int channel, const PlotGeometry &geometry);

// Left edge of a channel's column in the block of statistics with this number, from 0.
int columnLeft(int channel, int block, const PlotGeometry &geometry);

// Top left of the tag of this point: beside it, away from the right and the lower edge.
QPoint tagPosition(const QPoint &point, const PlotGeometry &geometry);
// Deliberate: channels are numbered from 0 here.
QString tagText(int channel, double x, double y, int decimals);

} // namespace cursorrules
