// SPDX-License-Identifier: GPL-3.0-or-later
// The cursors of a stopped picture with their statistics, and the tag at a right-clicked point: where they
// stand, what they measure, and the layers that show them. Main thread; owned by the plot.
#pragma once

#include "scope/cursorrules.h"
#include "scope/plotcontext.h"
#include "scope/plotlayer.h"

#include <QCoreApplication>
#include <QPainter>
#include <QPoint>
#include <QRegion>
#include <QVector>

#include <array>

class Measurement
{
    Q_DECLARE_TR_FUNCTIONS(Measurement)

public:
    enum CursorIndex { X1, X2, Y1, Y2 };

    struct Cursor
    {
        double position = PlotGeometry::margin; // in pixels
        double fraction = 0;                    // within the plot area; keeps the cursor in place on a resize
        bool isGrabbed = false;
        double value[plotChannels] = {0, 0, 0, 0}; // in the window of each channel
        PlotLayer layer;
    };

    bool isXOn() const { return xMeasureOn; }
    bool isYOn() const { return yMeasureOn; }
    const Cursor &cursor(CursorIndex index) const { return cursors[index]; }
    const Statistics &statistics(int channel) const { return stats[static_cast<size_t>(channel)]; }

    // Switching on puts the two cursors of that axis at their start.
    void setXOn(bool on, const PlotContext &context);
    void setYOn(bool on, const PlotContext &context);
    // Grabs the cursor whose handle is there, if any.
    void press(const QPoint &point, const PlotContext &context);
    // Moves a grabbed cursor and stores the values under it in lastValue. Gives the part of the picture that
    // has changed, in pixels: an empty one if no cursor is grabbed.
    QRegion drag(const QPoint &point, const PlotContext &context, QVector<double> *lastValue);
    // Leaves a grabbed cursor where the button was released, and computes its statistics.
    void release(const QPoint &point, const PlotContext &context);
    void letGo();
    // The statistics are computed anew when they are drawn next.
    void markDirty() { statsDirty = true; }
    // Draws the statistics that are switched on.
    void drawStatistics(const PlotContext &context);
    // The finite samples between the vertical cursors.
    QVector<double> samplesBetween(int channel, const PlotContext &context) const;
    // New layers of the widget's new size, the cursors at their place in it.
    void resize(const PlotContext &context);
    // Empties all layers; the switches and positions stay.
    void clearLayers();

    void showTag(const QPoint &point, const PlotContext &context);
    void clearTag() { tagLayer = PlotLayer(); }

    void paint(QPainter *painter) const;

private:
    static bool isX(int index) { return index == X1 || index == X2; }
    void placeAt(int index, double position, const PlotContext &context);
    // Within the plot area, by the coordinate that the cursor goes along.
    void dragTo(int index, const QPoint &point, const PlotContext &context);
    void drawCursor(int index, const PlotContext &context);
    void readXValues(int index, const PlotContext &context, QVector<double> *lastValue);
    void readYValues(int index, const PlotContext &context, QVector<double> *lastValue);
    void drawXStatistics(const PlotContext &context);
    void drawYStatistics(const PlotContext &context);

    bool xMeasureOn = false;
    bool yMeasureOn = false;
    std::array<Cursor, 4> cursors;
    std::array<Statistics, plotChannels> stats;
    bool statsDirty = false;
    double tagValue[plotChannels] = {0, 0, 0, 0};
    PlotLayer xStatisticsLayer;
    PlotLayer yStatisticsLayer;
    PlotLayer tagLayer;
};
