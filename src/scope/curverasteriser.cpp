// SPDX-License-Identifier: GPL-3.0-or-later
#include "scope/curverasteriser.h"

#include <algorithm>
#include <thread>

namespace {

constexpr int stripWidth = 16; // columns that are summed up together: a cache line of pixels

// Device pixels from one end of the plot rectangle to the other, and where it begins.
CurveMapping mappingOf(const PlotInputs &inputs, int c)
{
    const PlotSettings &s = inputs.settings;
    const QRect &rect = inputs.plotRect;
    const double ratio = inputs.pixelRatio;
    CurveMapping mapping;
    mapping.minX = s.minX[c];
    mapping.minY = s.minY[c];
    mapping.xScale = (rect.right() - rect.left()) * ratio / (s.maxX[c] - s.minX[c]);
    mapping.yScale = (rect.bottom() - rect.top()) * ratio / (s.maxY[c] - s.minY[c]);
    mapping.left = rect.left() * ratio;
    mapping.bottom = rect.bottom() * ratio;
    return mapping;
}

// One pixel inside the plot rectangle on each side.
QRect clipOf(const PlotInputs &inputs)
{
    const QRect inside = inputs.plotRect.adjusted(1, 1, -1, -1);
    const double ratio = inputs.pixelRatio;
    return QRect(QPoint(qRound(inside.left() * ratio), qRound(inside.top() * ratio)),
                 QPoint(qRound((inside.right() + 1) * ratio) - 1, qRound((inside.bottom() + 1) * ratio) - 1));
}

QRgb over(QRgb below, const QColor &color, uint opacity)
{
    const auto scaled = [](uint value, uint part) { return (value * part + 127) / 255; };
    const uint through = 255 - opacity;
    return qRgba(static_cast<int>(scaled(color.red(), opacity) + scaled(qRed(below), through)),
                 static_cast<int>(scaled(color.green(), opacity) + scaled(qGreen(below), through)),
                 static_cast<int>(scaled(color.blue(), opacity) + scaled(qBlue(below), through)),
                 static_cast<int>(opacity + scaled(qAlpha(below), through)));
}

// One visible channel while columns are summed up.
struct Layer
{
    const Coverage *coverage;
    QColor color;
    std::array<const uint32_t *, stripWidth> columns;
    std::array<uint32_t, stripWidth> sums;
};

void composeStrip(QVector<Layer> *layers, int count, const QPoint &topLeft, int rows, QImage *picture)
{
    for (int row = 0; row < rows; ++row) {
        auto *const pixels = reinterpret_cast<QRgb *>(picture->scanLine(topLeft.y() + row)) + topLeft.x();
        std::fill_n(pixels, count, 0U);
        for (Layer &layer : *layers) {
            for (int i = 0; i < count; ++i) {
                const auto column = static_cast<size_t>(i);
                const uint32_t sum = layer.sums[column] += layer.columns[column][row];
                if (sum == 0)
                    continue;
                const uint opacity = layer.coverage->opacity(sum);
                pixels[i] = opacity == 255 ? layer.color.rgb() : over(pixels[i], layer.color, opacity);
            }
        }
    }
}

} // namespace

bool CurveRasteriser::draw(const PlotInputs &inputs, const std::atomic<bool> &isEnding)
{
    const QSize size(qRound(inputs.width * inputs.pixelRatio), qRound(inputs.height * inputs.pixelRatio));
    const bool isFresh =
        picture.size() != size || picture.devicePixelRatio() != inputs.pixelRatio || clip != clipOf(inputs);
    if (isFresh)
        startAfresh(inputs, size);
    bool mustComposeAll = isFresh || inputs.colors != colors || inputs.visible != visible;
    colors = inputs.colors;
    visible = inputs.visible;
    if (!addSamples(inputs, isEnding)) {
        picture = QImage();
        return false;
    }
    int first = clip.width();
    int last = -1;
    for (int c = 0; c < plotChannels; ++c) {
        if (!visible.at(c))
            continue;
        Coverage &coverage = channels[static_cast<size_t>(c)].coverage();
        first = std::min(first, coverage.dirtyFirst());
        last = std::max(last, coverage.dirtyLast());
        coverage.takeDirty();
    }
    if (mustComposeAll)
        compose(inputs, 0, clip.width() - 1);
    else
        compose(inputs, first, last);
    return true;
}

bool CurveRasteriser::addSamples(const PlotInputs &inputs, const std::atomic<bool> &isEnding)
{
    const int penWidth = qBound(1, qRound(inputs.pixelRatio), Coverage::widestPen);
    // The channels have nothing in common but the inputs, which nobody changes.
    const auto addEverySecond = [&](int firstChannel) {
        bool isDone = true;
        for (int c = firstChannel; c < plotChannels; c += 2) {
            if (!visible.at(c))
                continue;
            CurveChannel &channel = channels[static_cast<size_t>(c)];
            const PointTrack points = inputs.curveMap.value(c);
            channel.prepare(mappingOf(inputs, c), clip, penWidth, points);
            isDone = channel.add(points, isEnding) && isDone;
        }
        return isDone;
    };
    bool isOddDone = false;
    std::thread odd([&] { isOddDone = addEverySecond(1); });
    const bool isEvenDone = addEverySecond(0);
    odd.join();
    return isEvenDone && isOddDone;
}

void CurveRasteriser::startAfresh(const PlotInputs &inputs, const QSize &size)
{
    picture = QImage(size, QImage::Format_ARGB32_Premultiplied);
    picture.setDevicePixelRatio(inputs.pixelRatio);
    picture.fill(Qt::transparent);
    clip = clipOf(inputs);
}

void CurveRasteriser::compose(const PlotInputs &inputs, int first, int last)
{
    for (int begin = first; begin <= last; begin += stripWidth) {
        const int count = std::min(stripWidth, last + 1 - begin);
        QVector<Layer> layers;
        for (int c = 0; c < plotChannels; ++c) {
            if (!inputs.visible.at(c) || inputs.curveMap.value(c).size() < 2)
                continue;
            Layer layer;
            layer.coverage = &channels[static_cast<size_t>(c)].coverage();
            layer.color = inputs.colors.at(c);
            layer.sums.fill(0);
            for (int i = 0; i < count; ++i) {
                // What a segment left in the rows above the clip rectangle counts for the sum.
                layer.columns[static_cast<size_t>(i)] = layer.coverage->column(begin + i);
                layer.sums[static_cast<size_t>(i)] = layer.coverage->above(begin + i);
            }
            layers.append(layer);
        }
        composeStrip(&layers, count, clip.topLeft() + QPoint(begin, 0), clip.height(), &picture);
    }
}
