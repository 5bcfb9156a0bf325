// SPDX-License-Identifier: GPL-3.0-or-later
// The bottom layer of the plot: grid lines, ticks, labels and frame. It is drawn anew only when it would look
// different, which a live picture's seldom does. Main thread.
#pragma once

#include "scope/plotcontext.h"

#include <QColor>
#include <QFont>
#include <QPixmap>
#include <QRect>
#include <QString>
#include <QVector>

class QPainter;

struct TickLabel
{
    QRect rect;
    Qt::Alignment alignment;
    int channel = 0; // whose colour it has
    QString text;
};

bool operator==(const TickLabel &a, const TickLabel &b);

namespace plotgrid {

// Where the lines of CH1's ticks stand, in pixels.
QVector<int> xTicks(const PlotContext &context);
QVector<int> yTicks(const PlotContext &context);
// The labels of all visible channels, the units at the row's end among them.
QVector<TickLabel> xLabels(const PlotContext &context);
QVector<TickLabel> yLabels(const PlotContext &context);

} // namespace plotgrid

class GridLayer
{
public:
    void draw(const PlotContext &context);
    const QPixmap &pixmap() const { return gridPixmap; }

private:
    // All that the picture depends on.
    struct Content
    {
        PlotGeometry geometry;
        double pixelRatio = 0;
        QFont font;
        QColor background;
        QColor line;
        QVector<QColor> colors;
        bool showGrid = false;
        QVector<int> columns;
        QVector<int> rows;
        QVector<TickLabel> labels;

        bool operator==(const Content &other) const;
    };

    static Content contentOf(const PlotContext &context);
    static void drawGrid(const Content &content, QPainter *painter);

    Content drawn;
    QPixmap gridPixmap;
};
