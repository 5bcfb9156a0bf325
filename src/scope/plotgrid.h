// SPDX-License-Identifier: GPL-3.0-or-later
// The bottom layer of the plot: grid lines, ticks, labels and frame. Main thread.
#pragma once

#include "scope/plotcontext.h"

#include <QPixmap>
#include <QRect>
#include <QString>
#include <QVector>

struct TickLabel
{
    QRect rect;
    Qt::Alignment alignment;
    int channel = 0; // whose colour it has
    QString text;
};

namespace plotgrid {

// Where the lines of CH1's ticks stand, in pixels.
QVector<int> xTicks(const PlotContext &context);
QVector<int> yTicks(const PlotContext &context);
// The labels of all visible channels, the units at the row's end among them.
QVector<TickLabel> xLabels(const PlotContext &context);
QVector<TickLabel> yLabels(const PlotContext &context);

QPixmap draw(const PlotContext &context);

} // namespace plotgrid
