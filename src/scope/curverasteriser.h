// SPDX-License-Identifier: GPL-3.0-or-later
// Draws the curves of all channels as one antialiased polyline each would, and leaves out no sample, at a
// cost that hardly grows with the height of a swing. Instead of painting segment over segment, it adds up for
// each pixel the logarithm of what each segment lets through: a segment that crosses many rows of a column is
// two entries of a table of differences, and the table is summed up once. One thread; owned by the plot's
// thread.
#pragma once

#include "scope/curvechannel.h"
#include "scope/plotinputs.h"

#include <QImage>

#include <array>
#include <atomic>

class CurveRasteriser
{
public:
    // Draws what has changed since the last call. False, and the image unfinished, if isEnding came
    // meanwhile; the next call then starts afresh.
    bool draw(const PlotInputs &inputs, const std::atomic<bool> &isEnding);

    // Premultiplied, of the widget's size in device pixels, transparent beside the curves.
    const QImage &image() const { return picture; }

private:
    using Channels = std::array<CurveChannel, plotChannels>;

    void startAfresh(const PlotInputs &inputs, const QSize &size);
    // Two channels a thread: the other thread is one of the pool.
    bool addSamples(const PlotInputs &inputs, const std::atomic<bool> &isEnding);
    // Sums up the columns from first to last of the clip rectangle into the image, many of them by two
    // threads.
    void compose(const PlotInputs &inputs, int first, int last);
    // The strips from begin on and before end, into the image's bits.
    void composeStrips(const PlotInputs &inputs, int begin, int end, uchar *bits) const;

    QImage picture;
    QRect clip; // in device pixels
    Channels channels;
    QVector<QColor> colors;
    QVector<bool> visible;
};
