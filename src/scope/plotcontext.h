// SPDX-License-Identifier: GPL-3.0-or-later
// What the layers over the curves are drawn from. Made by the plot for one call; main thread.
#pragma once

#include "scope/plotdata.h"
#include "scope/plotsettings.h"
#include "scope/viewrules.h"

#include <QColor>
#include <QFont>
#include <QVector>

struct PlotContext
{
    const PlotData &data;
    const PlotSettings &settings;
    const ViewSwitches &switches;
    const QVector<QColor> &colors;
    QColor backgroundColor;
    QColor lineColor;
    bool isStopped = true;
    PlotGeometry geometry;
    double pixelRatio = 1; // device pixels to a pixel of the widget
    QFont font;
};
