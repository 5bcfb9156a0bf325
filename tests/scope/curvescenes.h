// SPDX-License-Identifier: GPL-3.0-or-later
// Waves of all kinds, and the picture that one antialiased polyline a channel gives of them: what the
// rasteriser is compared with. For tests and benchmarks.
#pragma once

#include "scope/plotinputs.h"

#include <QImage>
#include <QPainter>
#include <QPolygonF>
#include <QVector>

#include <cmath>
#include <random>

namespace scenes {

// The kinds of wave, y from -1000 to 1000. Another seed gives another noise, and moves the wave aside and up.
inline const QVector<QByteArray> &kinds()
{
    static const QVector<QByteArray> all{"slow sine", "fast sine", "noisy sine", "noise",          "ramp",
                                         "flat",      "steps",     "spikes",     "quantised noise"};
    return all;
}

inline QVector<double> wave(const QByteArray &kind, int count, unsigned seed = 1)
{
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> uniform(-1.0, 1.0);
    QVector<double> y(count);
    for (int i = 0; i < count; ++i) {
        const double t = i / 8000.0 + 1.7 * (seed - 1);
        double v = 0;
        if (kind == "slow sine")
            v = 700 * std::sin(2 * M_PI * 0.1 * t);
        else if (kind == "fast sine")
            v = 700 * std::sin(2 * M_PI * 50 * t);
        else if (kind == "noisy sine")
            v = 600 * std::sin(2 * M_PI * 0.3 * t) + 60 * uniform(random);
        else if (kind == "noise")
            v = 900 * uniform(random);
        else if (kind == "ramp")
            v = -800 + 1600.0 * i / count;
        else if (kind == "flat")
            v = 123.4;
        else if (kind == "steps")
            v = (i / 4000) % 2 == 0 ? -400 : 500;
        else if (kind == "spikes")
            v = i % 7919 == 1234 ? 950 : 10;
        else
            v = std::round(3 * uniform(random)) * 100;
        y[i] = v + 31.0 * (seed - 1);
    }
    return y;
}

// One visible channel on a widget of this size, the window set to these x and y.
inline PlotInputs inputs(const QVector<double> &y, double minX, double maxX, double minY, double maxY,
                         const QSize &size = {900, 600}, double ratio = 1)
{
    PlotInputs in;
    in.plotRect = QRect(QPoint(50, 50), QPoint(size.width() - 51, size.height() - 51));
    in.width = size.width();
    in.height = size.height();
    in.pixelRatio = ratio;
    in.colors = {Qt::red, Qt::green, Qt::blue, Qt::magenta};
    in.visible = {true, true, true, true};
    for (int c = 0; c < plotChannels; ++c) {
        in.settings.minX[c] = minX;
        in.settings.maxX[c] = maxX;
        in.settings.minY[c] = minY;
        in.settings.maxY[c] = maxY;
    }
    PointTrack track;
    track.append(0.0, y);
    in.curveMap[0] = track;
    return in;
}

inline QPolygonF polyline(const PlotInputs &in, int c)
{
    const PointTrack &track = in.curveMap[c];
    const QRect &r = in.plotRect;
    const PlotSettings &s = in.settings;
    QPolygonF line;
    line.reserve(track.size());
    for (int i = 0; i < track.size(); ++i) {
        const QPointF p = track.at(i);
        line.append({(p.x() - s.minX[c]) * (r.right() - r.left()) / (s.maxX[c] - s.minX[c]) + r.left(),
                     r.bottom() - (p.y() - s.minY[c]) * (r.bottom() - r.top()) / (s.maxY[c] - s.minY[c])});
    }
    return line;
}

inline QImage naivePicture(const PlotInputs &in, QImage::Format format = QImage::Format_ARGB32)
{
    QImage image(QSize(in.width, in.height) * in.pixelRatio, format);
    image.setDevicePixelRatio(in.pixelRatio);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setClipRect(in.plotRect.adjusted(1, 1, -1, -1));
    for (auto it = in.curveMap.constBegin(); it != in.curveMap.constEnd(); ++it) {
        if (!in.visible.at(it.key()))
            continue;
        painter.setPen(in.colors.at(it.key()));
        painter.drawPolyline(polyline(in, it.key()));
    }
    return image;
}

struct Difference
{
    int largest = 0;        // of 255, of any component on white
    double visiblePart = 0; // of the pixels differ by more than 32
    int lostExtremes = 0;   // columns that have lost their highest or lowest row, in either picture
};

inline QImage onWhite(const QImage &image)
{
    QImage white(image.size(), QImage::Format_RGB32);
    white.fill(Qt::white);
    QPainter painter(&white);
    QImage plain = image;
    plain.setDevicePixelRatio(1);
    painter.drawImage(0, 0, plain);
    return white;
}

// True when what is clearly painted highest or lowest in this column is not to be seen in the other picture,
// within one row.
inline bool losesExtreme(const QImage &shown, const QImage &other, int x)
{
    const auto strength = [x](const QImage &image, int y) {
        const QRgb p = image.pixel(x, y);
        return 255 - qMin(qRed(p), qMin(qGreen(p), qBlue(p)));
    };
    int top = -1;
    int bottom = -1;
    for (int y = 0; y < shown.height(); ++y) {
        if (strength(shown, y) <= 96)
            continue;
        top = top < 0 ? y : top;
        bottom = y;
    }
    const auto isSeenAt = [&](int row) {
        for (int y = qMax(0, row - 1); y <= qMin(row + 1, other.height() - 1); ++y)
            if (strength(other, y) > 32)
                return true;
        return false;
    };
    return top >= 0 && (!isSeenAt(top) || !isSeenAt(bottom));
}

inline Difference compare(const QImage &first, const QImage &second)
{
    const QImage a = onWhite(first);
    const QImage b = onWhite(second);
    Difference d;
    int visible = 0;
    for (int x = 0; x < a.width(); ++x) {
        for (int y = 0; y < a.height(); ++y) {
            const QRgb p = a.pixel(x, y);
            const QRgb q = b.pixel(x, y);
            const int off =
                qMax(qAbs(qRed(p) - qRed(q)), qMax(qAbs(qGreen(p) - qGreen(q)), qAbs(qBlue(p) - qBlue(q))));
            d.largest = qMax(d.largest, off);
            visible += off > 32;
        }
        d.lostExtremes += losesExtreme(a, b, x) || losesExtreme(b, a, x);
    }
    d.visiblePart = visible / double(a.width() * a.height());
    return d;
}

} // namespace scenes
