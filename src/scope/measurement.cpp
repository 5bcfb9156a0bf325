// SPDX-License-Identifier: GPL-3.0-or-later
#include "scope/measurement.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace {

constexpr const char *cursorNames[] = {"x1", "x2", "y1", "y2"};
// The two rows above the plot in which the statistics stand.
constexpr int firstRowTop = 5;
constexpr int secondRowTop = 25;
constexpr int rowHeight = 15;
constexpr int labelMargin = 8; // that a large letter may need around its label

void drawLine(QPainter *painter, int left, int top, int width, const QString &text)
{
    painter->drawText(QRect(left, top, width, rowHeight), Qt::AlignLeft | Qt::AlignTop | Qt::TextDontClip,
                      text);
}

// The rows of the statistics, all across the widget.
PlotLayer statisticsLayer(const PlotContext &context)
{
    return {QRect(0, 0, context.geometry.w + 1, PlotGeometry::margin), context.pixelRatio};
}

} // namespace

void Measurement::setXOn(bool on, const PlotContext &context)
{
    xMeasureOn = on;
    if (!on) {
        xStatisticsLayer = cursors[X1].layer = cursors[X2].layer = PlotLayer();
        return;
    }
    placeAt(X1, PlotGeometry::margin, context);
    placeAt(X2, context.geometry.w - 49, context);
    statsDirty = true;
    drawXStatistics(context);
}

void Measurement::setYOn(bool on, const PlotContext &context)
{
    yMeasureOn = on;
    if (!on) {
        yStatisticsLayer = cursors[Y1].layer = cursors[Y2].layer = PlotLayer();
        return;
    }
    placeAt(Y1, cursorrules::yOfFraction(0.65, context.geometry), context);
    placeAt(Y2, cursorrules::yOfFraction(0.35, context.geometry), context);
    drawYStatistics(context);
}

void Measurement::press(const QPoint &point, const PlotContext &context)
{
    const auto grab = [this](CursorIndex first, CursorIndex second, double pixel) {
        cursors[first].isGrabbed = cursorrules::isNear(pixel, cursors[first].position);
        cursors[second].isGrabbed =
            !cursors[first].isGrabbed && cursorrules::isNear(pixel, cursors[second].position);
    };
    if (xMeasureOn && cursorrules::isInTopStrip(point, context.geometry))
        grab(X1, X2, point.x());
    if (yMeasureOn && cursorrules::isInLeftStrip(point, context.geometry))
        grab(Y1, Y2, point.y());
}

QRegion Measurement::drag(const QPoint &point, const PlotContext &context, QVector<double> *lastValue)
{
    QRegion changed;
    for (int index = X1; index <= Y2; ++index) {
        const Cursor &cursor = cursors[static_cast<size_t>(index)];
        if (!cursor.isGrabbed)
            continue;
        changed += cursor.layer.area();
        dragTo(index, point, context);
        changed += cursor.layer.area();
        if (isX(index))
            readXValues(index, context, lastValue);
        else
            readYValues(index, context, lastValue);
    }
    if (!changed.isEmpty()) {
        drawStatistics(context);
        changed += xStatisticsLayer.area();
        changed += yStatisticsLayer.area();
    }
    return changed;
}

void Measurement::release(const QPoint &point, const PlotContext &context)
{
    for (int index = X1; index <= Y2; ++index) {
        if (cursors[static_cast<size_t>(index)].isGrabbed)
            dragTo(index, point, context);
    }
    if (xMeasureOn && (cursors[X1].isGrabbed || cursors[X2].isGrabbed))
        statsDirty = true;
    letGo();
    drawStatistics(context);
}

void Measurement::letGo()
{
    for (Cursor &cursor : cursors)
        cursor.isGrabbed = false;
}

void Measurement::placeAt(int index, double position, const PlotContext &context)
{
    Cursor &cursor = cursors[static_cast<size_t>(index)];
    cursor.position = position;
    cursor.fraction = isX(index) ? cursorrules::xFraction(position, context.geometry)
                                 : cursorrules::yFraction(position, context.geometry);
    drawCursor(index, context);
}

void Measurement::dragTo(int index, const QPoint &point, const PlotContext &context)
{
    placeAt(index,
            isX(index) ? cursorrules::xPosition(point.x(), context.geometry)
                       : cursorrules::yPosition(point.y(), context.geometry),
            context);
}

void Measurement::drawCursor(int index, const PlotContext &context)
{
    Cursor &cursor = cursors[static_cast<size_t>(index)];
    const QRect area = context.geometry.plotRect();
    const int at = qRound(cursor.position);
    const QString name = QLatin1String(cursorNames[index]);
    const QRect label =
        isX(index) ? QRect(at - 10, area.top() - 15, 20, 10) : QRect(area.left() - 15, at - 5, 20, 15);
    const QLine line =
        isX(index) ? QLine(at, area.top(), at, area.bottom()) : QLine(area.left(), at, area.right(), at);
    const QRect drawn = label.adjusted(-labelMargin, -labelMargin, labelMargin, labelMargin)
                            .united(QRect(line.p1(), line.p2()));
    cursor.layer = PlotLayer(drawn, context.pixelRatio);
    PlotLayer::Painter painter(&cursor.layer, context.font);
    painter.drawLine(line);
    painter.drawText(label, (isX(index) ? Qt::AlignCenter : Qt::AlignLeft | Qt::AlignTop) | Qt::TextDontClip,
                     name);
}

void Measurement::readXValues(int index, const PlotContext &context, QVector<double> *lastValue)
{
    Cursor &cursor = cursors[static_cast<size_t>(index)];
    for (int c = 0; c < plotChannels; ++c) {
        cursor.value[c] = context.geometry.xAt(context.settings, c, cursor.position);
        // Deliberate: the first cursor reads visible channels only, the second one all of them.
        if (index == X1 && !context.switches.visible.at(c))
            continue;
        const PointTrack &points = context.data.channelPoints[static_cast<size_t>(c)];
        const int found = points.firstAtX(cursor.value[c]);
        if (found >= 0)
            (*lastValue)[c] = points.valueAt(found);
    }
}

void Measurement::readYValues(int index, const PlotContext &context, QVector<double> *lastValue)
{
    Cursor &cursor = cursors[static_cast<size_t>(index)];
    for (int c = 0; c < plotChannels; ++c) {
        const double exact = context.geometry.yAt(context.settings, c, cursor.position);
        const double shown = QString::number(exact, 'f', context.switches.decimals.at(c)).toDouble();
        cursor.value[c] = shown;
        if (!context.switches.visible.at(c) || shown < context.data.channelMin[c] ||
            shown > context.data.channelMax[c])
            continue;
        if (context.data.channelPoints[static_cast<size_t>(c)].firstOfValue(shown) >= 0)
            (*lastValue)[c] = shown;
    }
}

void Measurement::drawStatistics(const PlotContext &context)
{
    if (xMeasureOn)
        drawXStatistics(context);
    if (yMeasureOn)
        drawYStatistics(context);
}

void Measurement::drawXStatistics(const PlotContext &context)
{
    if (!context.isStopped)
        return;
    xStatisticsLayer = statisticsLayer(context);
    PlotLayer::Painter painter(&xStatisticsLayer, context.font);
    const int third = (context.geometry.w + 1) / 3;
    drawLine(&painter, 1, firstRowTop, 100, tr("Min:"));
    drawLine(&painter, 1, secondRowTop, 100, tr("Max:"));
    drawLine(&painter, third + 1, firstRowTop, 100, tr("Ave:"));
    drawLine(&painter, third + 1, secondRowTop, 100, tr("∆X:"));
    Cursor &x1 = cursors[X1];
    Cursor &x2 = cursors[X2];
    for (int c = 0; c < plotChannels; ++c) {
        x1.value[c] = context.geometry.xAt(context.settings, c, x1.position);
        x2.value[c] = context.geometry.xAt(context.settings, c, x2.position);
        if (!context.switches.visible.at(c))
            continue;
        const auto channel = static_cast<size_t>(c);
        if (statsDirty)
            cursorrules::computeStatistics(context.data.channelPoints[channel], x1.value[c], x2.value[c],
                                           &stats[channel]);
        const int decimals = context.switches.decimals.at(c);
        const int left = cursorrules::columnLeft(c, 0, context.geometry);
        const double width =
            cursorrules::deltaX(x1.position, x2.position, context.settings, c, context.geometry);
        painter.setPen(context.colors.at(c));
        drawLine(&painter, left, firstRowTop, 99,
                 cursorrules::statisticText(c, stats[channel].min, decimals));
        drawLine(&painter, left, secondRowTop, 99,
                 cursorrules::statisticText(c, stats[channel].max, decimals));
        drawLine(&painter, left + third, firstRowTop, 99,
                 cursorrules::statisticText(c, stats[channel].average, decimals));
        drawLine(&painter, left + third, secondRowTop, 99, cursorrules::statisticText(c, width, 1));
    }
    statsDirty = false;
}

void Measurement::drawYStatistics(const PlotContext &context)
{
    if (!context.isStopped)
        return;
    yStatisticsLayer = statisticsLayer(context);
    PlotLayer::Painter painter(&yStatisticsLayer, context.font);
    drawLine(&painter, (2 * context.geometry.w + 2) / 3 + 1, firstRowTop, 100, tr("∆Y:"));
    Cursor &y1 = cursors[Y1];
    Cursor &y2 = cursors[Y2];
    for (int c = 0; c < plotChannels; ++c) {
        if (!context.switches.visible.at(c))
            continue;
        y1.value[c] = context.geometry.yAt(context.settings, c, y1.position);
        y2.value[c] = context.geometry.yAt(context.settings, c, y2.position);
        const double height =
            cursorrules::deltaY(y1.position, y2.position, context.settings, c, context.geometry);
        painter.setPen(context.colors.at(c));
        drawLine(&painter, cursorrules::columnLeft(c, 2, context.geometry), firstRowTop, 99,
                 cursorrules::statisticText(c, height, 2));
    }
}

QVector<double> Measurement::samplesBetween(int channel, const PlotContext &context) const
{
    const PointTrack &points = context.data.channelPoints[static_cast<size_t>(channel)];
    QVector<double> samples;
    const QVector<PointTrack::Range> ranges =
        points.between(context.geometry.xAt(context.settings, channel, cursors[X1].position),
                       context.geometry.xAt(context.settings, channel, cursors[X2].position));
    for (const PointTrack::Range &range : ranges) {
        samples.reserve(samples.size() + range.count);
        points.visit(range, [&samples](const double *values, int count) {
            std::copy_if(values, values + count, std::back_inserter(samples),
                         [](double y) { return std::isfinite(y); });
        });
    }
    return samples;
}

void Measurement::resize(const PlotContext &context)
{
    clearLayers();
    for (int index = X1; index <= Y2; ++index) {
        if (!(isX(index) ? xMeasureOn : yMeasureOn))
            continue;
        Cursor &cursor = cursors[static_cast<size_t>(index)];
        cursor.position = isX(index) ? cursorrules::xOfFraction(cursor.fraction, context.geometry)
                                     : cursorrules::yOfFraction(cursor.fraction, context.geometry);
        drawCursor(index, context);
    }
}

void Measurement::clearLayers()
{
    xStatisticsLayer = yStatisticsLayer = tagLayer = PlotLayer();
    for (Cursor &cursor : cursors)
        cursor.layer = PlotLayer();
}

void Measurement::showTag(const QPoint &point, const PlotContext &context)
{
    tagLayer = PlotLayer({0, 0, context.geometry.w + 1, context.geometry.h + 1}, context.pixelRatio);
    PlotLayer::Painter painter(&tagLayer, context.font);
    const QRect area = context.geometry.plotRect();
    painter.drawLine(point.x(), area.top(), point.x(), area.bottom());
    const QPoint corner = cursorrules::tagPosition(point, context.geometry);
    for (int c = 0; c < plotChannels; ++c) {
        const PointTrack &points = context.data.channelPoints[static_cast<size_t>(c)];
        const double x = context.geometry.xAt(context.settings, c, point.x());
        const int found = points.firstAtX(x);
        if (found >= 0)
            tagValue[c] = points.valueAt(found);
        if (!context.switches.visible.at(c))
            continue;
        const QRect box(corner + QPoint(5, 20 * c), QSize(249, 14));
        painter.setPen(Qt::darkCyan);
        painter.setBrush(QColor(80, 80, 80, 255));
        painter.drawRect(box);
        painter.setPen(context.colors.at(c));
        painter.drawText(box, Qt::AlignLeft | Qt::AlignTop | Qt::TextDontClip,
                         cursorrules::tagText(c, x, tagValue[c], context.switches.decimals.at(c)));
    }
}

void Measurement::paint(QPainter *painter) const
{
    xStatisticsLayer.paintTo(painter);
    yStatisticsLayer.paintTo(painter);
    for (const Cursor &cursor : cursors)
        cursor.layer.paintTo(painter);
    tagLayer.paintTo(painter);
}
