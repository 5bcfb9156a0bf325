// SPDX-License-Identifier: GPL-3.0-or-later
#include "scope/curverasteriser.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <thread>

namespace {

constexpr int stripWidth = 16; // columns that are composed together: a cache line of pixels
// Fewer columns are not worth a second thread.
constexpr int fewColumns = 8 * stripWidth;

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

QRgb over(QRgb below, QRgb color, uint opacity)
{
    const auto scaled = [](int value, uint part) { return (static_cast<uint>(value) * part + 127) / 255; };
    const uint through = 255 - opacity;
    return qRgba(static_cast<int>(scaled(qRed(color), opacity) + scaled(qRed(below), through)),
                 static_cast<int>(scaled(qGreen(color), opacity) + scaled(qGreen(below), through)),
                 static_cast<int>(scaled(qBlue(color), opacity) + scaled(qBlue(below), through)),
                 static_cast<int>(opacity + scaled(qAlpha(below), through)));
}

// One visible channel in a strip of columns: how opaque it is there, row by row.
struct Layer
{
    QRgb color = 0;
    RowRange rows;
    QVector<uchar> opacities; // stripWidth a row
};

// True when all of a row have this opacity: 0 or 255.
bool isAll(const uchar *opacities, uchar value)
{
    std::array<quint64, stripWidth / sizeof(quint64)> eights{};
    std::memcpy(eights.data(), opacities, stripWidth);
    const quint64 eightTimes = value == 0 ? 0 : ~quint64(0);
    return std::all_of(eights.begin(), eights.end(), [=](quint64 eight) { return eight == eightTimes; });
}

// What stands below a layer that is opaque all along the row is not looked at.
void composeRow(const QVector<Layer> &layers, int row, int count, QRgb *pixels)
{
    const auto opacitiesOf = [row](const Layer &layer) {
        return layer.opacities.constData() + (row - layer.rows.top) * stripWidth;
    };
    int lowest = layers.size() - 1;
    for (; lowest >= 0; --lowest) {
        const Layer &layer = layers.at(lowest);
        if (layer.rows.holds(row) && isAll(opacitiesOf(layer), 255))
            break;
    }
    std::fill_n(pixels, count, lowest >= 0 ? layers.at(lowest).color : 0U);
    for (int l = lowest + 1; l < layers.size(); ++l) {
        const Layer &layer = layers.at(l);
        if (!layer.rows.holds(row) || isAll(opacitiesOf(layer), 0))
            continue;
        const uchar *const opacities = opacitiesOf(layer);
        for (int i = 0; i < count; ++i) {
            const uint opacity = opacities[i];
            if (opacity == 255)
                pixels[i] = layer.color;
            else if (opacity != 0)
                pixels[i] = over(pixels[i], layer.color, opacity);
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
    const int begin = first / stripWidth;
    const int end = last / stripWidth + 1;
    const int middle = (last - first) < fewColumns ? begin : (begin + end) / 2;
    // Taken here: a picture that is shared would be copied by either thread.
    uchar *const bits = picture.bits();
    if (middle == begin) {
        composeStrips(inputs, begin, end, bits);
        return;
    }
    std::thread other([&] { composeStrips(inputs, begin, middle, bits); });
    composeStrips(inputs, middle, end, bits);
    other.join();
}

void CurveRasteriser::composeStrips(const PlotInputs &inputs, int begin, int end, uchar *bits) const
{
    const RowRange allRows{0, clip.height() - 1};
    for (int strip = begin; strip < end; ++strip) {
        const int left = strip * stripWidth;
        const int count = std::min(stripWidth, clip.width() - left);
        QVector<Layer> layers;
        for (int c = 0; c < plotChannels; ++c) {
            const Coverage &coverage = channels[static_cast<size_t>(c)].coverage();
            if (!inputs.visible.at(c) || inputs.curveMap.value(c).size() < 2)
                continue;
            Layer layer;
            layer.color = inputs.colors.at(c).rgb();
            for (int i = 0; i < count; ++i)
                layer.rows = layer.rows.united(coverage.rowsInUse(left + i).intersected(allRows));
            if (layer.rows.isEmpty())
                continue;
            layer.opacities.fill(0, layer.rows.count() * stripWidth);
            for (int i = 0; i < count; ++i) {
                const RowRange rows = coverage.rowsInUse(left + i).intersected(allRows);
                if (rows.isEmpty())
                    continue;
                uchar *const first = layer.opacities.data() + (rows.top - layer.rows.top) * stripWidth + i;
                coverage.opacities(left + i, rows, first, stripWidth);
            }
            layers.append(layer);
        }
        for (int row = 0; row < clip.height(); ++row) {
            uchar *const line =
                bits + (clip.top() + row) * static_cast<std::ptrdiff_t>(picture.bytesPerLine());
            composeRow(layers, row, count, reinterpret_cast<QRgb *>(line) + clip.left() + left);
        }
    }
}
