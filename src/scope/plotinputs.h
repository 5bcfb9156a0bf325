// SPDX-License-Identifier: GPL-3.0-or-later
// What a picture of the curves is drawn from. A plain value; a copy shares the samples, so that another
// thread may draw while the plot goes on.
#pragma once

#include "scope/plotsettings.h"
#include "scope/pointtrack.h"

#include <QColor>
#include <QMap>
#include <QRect>
#include <QVector>

struct PlotInputs
{
    QRect plotRect; // in pixels of the widget
    PlotSettings settings;
    int width = 0; // of the whole widget
    int height = 0;
    double pixelRatio = 1; // device pixels to a pixel of the widget
    QMap<int, PointTrack> curveMap;
    QVector<QColor> colors;
    QVector<bool> visible;
};
