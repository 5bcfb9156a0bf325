// SPDX-License-Identifier: GPL-3.0-or-later
#include "scope/plotgrid.h"

#include <QPainter>

namespace {

constexpr int margin = PlotGeometry::margin;
constexpr int tickLength = 5;

// What the tick with this number says, in milliseconds from the first sample kept.
double xLabelValue(const PlotContext &context, int channel, int tick)
{
    // Deliberate: while live, the labels stand still whatever the window shows.
    if (!context.isStopped)
        return tick * 6000;
    const PlotSettings &s = context.settings;
    return (s.minX[channel] - context.data.xStart[channel] +
            (s.maxX[channel] - s.minX[channel]) * tick / s.numXTicks[channel]) /
           10;
}

// CH1 and CH3 stand left of the plot, CH2 and CH4 right of it; the first two above the others.
QRect yLabelRect(const PlotGeometry &geometry, int channel, int y)
{
    const bool isLeft = channel % 2 == 0;
    const int top = channel < 2 ? y - 15 : y - 5;
    return isLeft ? QRect(0, top, 45, 20) : QRect(geometry.w - 45, top, 45, 20);
}

} // namespace

namespace plotgrid {

QVector<int> xTicks(const PlotContext &context)
{
    QVector<int> ticks;
    const int count = context.settings.numXTicks[0];
    for (int i = 0; i <= count; ++i)
        ticks.append(margin + i * (context.geometry.w - 2 * margin) / count);
    return ticks;
}

QVector<int> yTicks(const PlotContext &context)
{
    QVector<int> ticks;
    const int count = context.settings.numYTicks[0];
    for (int j = 0; j <= count; ++j)
        ticks.append(context.geometry.h - margin - j * (context.geometry.h - 2 * margin) / count);
    return ticks;
}

QVector<TickLabel> xLabels(const PlotContext &context)
{
    QVector<TickLabel> labels;
    const QVector<int> ticks = xTicks(context);
    for (int c = 0; c < plotChannels; ++c) {
        if (!context.switches.visible.at(c))
            continue;
        const int top = context.geometry.h - 40 + 10 * c;
        for (int i = 0; i < ticks.size(); ++i)
            labels.append({QRect(ticks.at(i) - 35, top, 70, 15), Qt::AlignHCenter | Qt::AlignTop, c,
                           QString::number(xLabelValue(context, c, i), 'f', 1)});
        labels.append({QRect(context.geometry.w - 50, top, 70, 15), Qt::AlignHCenter | Qt::AlignTop, c,
                       QStringLiteral("(ms)")});
    }
    return labels;
}

QVector<TickLabel> yLabels(const PlotContext &context)
{
    QVector<TickLabel> labels;
    const QVector<int> ticks = yTicks(context);
    const PlotSettings &s = context.settings;
    for (int c = 0; c < plotChannels; ++c) {
        if (!context.switches.visible.at(c))
            continue;
        const Qt::Alignment side = c % 2 == 0 ? Qt::AlignRight : Qt::AlignLeft;
        for (int j = 0; j < ticks.size(); ++j) {
            const double value = s.minY[c] + j * (s.maxY[c] - s.minY[c]) / s.numYTicks[c];
            labels.append({yLabelRect(context.geometry, c, ticks.at(j)), side | Qt::AlignVCenter, c,
                           QString::number(value, 'f', context.switches.decimals.at(c))});
        }
    }
    return labels;
}

} // namespace plotgrid

bool operator==(const TickLabel &a, const TickLabel &b)
{
    return a.rect == b.rect && a.alignment == b.alignment && a.channel == b.channel && a.text == b.text;
}

bool GridLayer::Content::operator==(const Content &other) const
{
    return geometry.w == other.geometry.w && geometry.h == other.geometry.h &&
           pixelRatio == other.pixelRatio && font == other.font && background == other.background &&
           line == other.line && colors == other.colors && showGrid == other.showGrid &&
           columns == other.columns && rows == other.rows && labels == other.labels;
}

GridLayer::Content GridLayer::contentOf(const PlotContext &context)
{
    Content content;
    content.geometry = context.geometry;
    content.pixelRatio = context.pixelRatio;
    content.font = context.font;
    content.background = context.backgroundColor;
    content.line = context.lineColor;
    content.colors = context.colors;
    content.showGrid = context.switches.showGrid;
    content.columns = plotgrid::xTicks(context);
    content.rows = plotgrid::yTicks(context);
    content.labels = plotgrid::xLabels(context) + plotgrid::yLabels(context);
    return content;
}

void GridLayer::draw(const PlotContext &context)
{
    const Content content = contentOf(context);
    if (!gridPixmap.isNull() && content == drawn)
        return;
    drawn = content;
    gridPixmap = QPixmap(qRound((context.geometry.w + 1) * context.pixelRatio),
                         qRound((context.geometry.h + 1) * context.pixelRatio));
    gridPixmap.setDevicePixelRatio(context.pixelRatio);
    gridPixmap.fill(context.backgroundColor);
    if (!context.geometry.isDrawable())
        return;
    QPainter painter(&gridPixmap);
    drawGrid(content, &painter);
}

void GridLayer::drawGrid(const Content &content, QPainter *painter)
{
    const PlotGeometry &g = content.geometry;
    painter->setFont(content.font);
    if (content.showGrid) {
        painter->setPen(QPen(content.line, 1, Qt::DashLine));
        for (const int x : content.columns)
            painter->drawLine(x, margin, x, g.h - margin);
        for (const int y : content.rows)
            painter->drawLine(margin, y, g.w - margin, y);
    }
    painter->setPen(QPen(content.line));
    for (const int x : content.columns)
        painter->drawLine(x, g.h - margin, x, g.h - margin + tickLength);
    for (const int y : content.rows)
        painter->drawLine(margin - tickLength, y, margin, y);
    for (const TickLabel &label : content.labels) {
        painter->setPen(content.colors.at(label.channel));
        painter->drawText(label.rect, static_cast<int>(label.alignment) | Qt::TextDontClip, label.text);
    }
    painter->setPen(QPen(content.line));
    painter->drawRect(
        QRect(QPoint(margin, margin), QPoint(g.w - margin, g.h - margin)).adjusted(0, 0, -1, -1));
}
