// SPDX-License-Identifier: GPL-3.0-or-later
#include "scope/cursorrules.h"

#include <algorithm>
#include <cmath>

namespace cursorrules {

bool isInTopStrip(const QPoint &point, const PlotGeometry &geometry)
{
    return point.x() >= 46 && point.x() <= geometry.w - 45 && point.y() >= 31 && point.y() <= 49;
}

bool isInLeftStrip(const QPoint &point, const PlotGeometry &geometry)
{
    // Deliberate: the lower bound is the widget's width, not its height.
    return point.x() >= 31 && point.x() <= 49 && point.y() > 45 && point.y() < geometry.w - 44;
}

bool isInPlotArea(const QPoint &point, const PlotGeometry &geometry)
{
    return point.x() >= 50 && point.x() <= geometry.w - 49 && point.y() >= 50 && point.y() <= geometry.h - 49;
}

bool isNear(double pixel, double position)
{
    return std::abs(pixel - position) <= handleReach;
}

double xPosition(double pixel, const PlotGeometry &geometry)
{
    if (pixel >= geometry.w - 49)
        return geometry.w - 49;
    return pixel < 51 ? 50 : pixel;
}

double yPosition(double pixel, const PlotGeometry &geometry)
{
    if (pixel >= geometry.h - 50)
        return geometry.h - 50;
    return pixel < 51 ? 50 : pixel;
}

double xFraction(double position, const PlotGeometry &geometry)
{
    return (position - 50) / (geometry.w - 99);
}

double yFraction(double position, const PlotGeometry &geometry)
{
    return (position - 50) / (geometry.h - 99);
}

double xOfFraction(double fraction, const PlotGeometry &geometry)
{
    return fraction * (geometry.w - 99) + 50;
}

double yOfFraction(double fraction, const PlotGeometry &geometry)
{
    return fraction * (geometry.h - 99) + 50;
}

bool computeStatistics(const PointTrack &points, double x1, double x2, Statistics *statistics)
{
    double lowest = 0;
    double highest = 0;
    double sum = 0;
    qint64 taken = 0;
    const bool mayBeNonFinite = points.hasNonFinite();
    const auto take = [&](const double *values, int count) {
        if (taken == 0)
            lowest = HUGE_VAL, highest = -HUGE_VAL;
        for (int i = 0; i < count; ++i) {
            const double y = values[i];
            if (mayBeNonFinite && !std::isfinite(y))
                continue;
            lowest = y < lowest ? y : lowest;
            highest = y > highest ? y : highest;
            sum += y;
            ++taken;
        }
    };
    const QVector<PointTrack::Range> ranges = points.between(x1, x2);
    for (const PointTrack::Range &range : ranges)
        points.visit(range, take);
    if (taken == 0)
        return false;
    statistics->min = lowest;
    statistics->max = highest;
    statistics->average = QString::number(sum / static_cast<double>(taken), 'f', 3).toDouble();
    return true;
}

QString statisticText(int channel, double value, int decimals)
{
    return QStringLiteral("CH%1:%2").arg(channel + 1).arg(QString::number(value, 'f', decimals));
}

double deltaX(double x1, double x2, const PlotSettings &settings, int channel, const PlotGeometry &geometry)
{
    return (x2 - x1) * (settings.maxX[channel] - settings.minX[channel]) / (geometry.w - 99) / 10;
}

double deltaY(double y1, double y2, const PlotSettings &settings, int channel, const PlotGeometry &geometry)
{
    return (y1 - y2) * (settings.maxY[channel] - settings.minY[channel]) / (geometry.h - 99);
}

int columnLeft(int channel, int block, const PlotGeometry &geometry)
{
    const int third = (geometry.w + 1) / 3;
    return 51 + channel * (third - 49) / 4 + block * (geometry.w + 1) / 3;
}

QPoint tagPosition(const QPoint &point, const PlotGeometry &geometry)
{
    return {point.x() > geometry.w - 249 ? point.x() - 255 : point.x(),
            point.y() > geometry.h - 129 ? point.y() - 80 : point.y()};
}

QString tagText(int channel, double x, double y, int decimals)
{
    return QStringLiteral("CH%1: X:%2 Y:%3")
        .arg(channel)
        .arg(QString::number(x / 10, 'f', 1), QString::number(y, 'f', decimals));
}

} // namespace cursorrules
