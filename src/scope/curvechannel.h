// SPDX-License-Identifier: GPL-3.0-or-later
// The curve of one channel on its way into the picture: maps samples to pixels, cuts segments to what can be
// seen and adds them to the coverage. While the view stands still, only the samples that have come since are
// added. One thread; owned by the rasteriser.
#pragma once

#include "scope/coverage.h"
#include "scope/pointtrack.h"

#include <QPointF>
#include <QRect>

#include <array>
#include <atomic>

// Samples to device pixels: px = (x - minX) * xScale + left, py = bottom - (y - minY) * yScale.
struct CurveMapping
{
    double minX = 0;
    double minY = 0;
    double xScale = 0;
    double yScale = 0;
    double left = 0;
    double bottom = 0;

    bool isUsable() const;
    QPointF map(const QPointF &point) const
    {
        return {(point.x() - minX) * xScale + left, bottom - (point.y() - minY) * yScale};
    }
};

bool operator==(const CurveMapping &a, const CurveMapping &b);

class CurveChannel
{
public:
    // Starts again with an empty coverage if the mapping, the clip rectangle or the pen differs from what has
    // been drawn so far, or if the track is another one or has lost samples.
    void prepare(const CurveMapping &newMapping, const QRect &newClip, int newPenWidth,
                 const PointTrack &points);
    // Adds the samples that came since. False if isEnding came meanwhile; what was drawn is void then.
    bool add(const PointTrack &points, const std::atomic<bool> &isEnding);
    void forget() { isVoid = true; }

    const Coverage &coverage() const { return cover; }
    Coverage &coverage() { return cover; }

private:
    static constexpr int chunk = 250; // divides the track's blocks

    // What a chain points at.
    struct Block
    {
        std::array<int, chunk> ys;
        std::array<int, chunk> xs;
        std::array<int, chunk + 1> begins;
    };

    double crossings(const PointTrack &points) const;
    // Indices of the run's samples that can be seen, with one neighbour on either side; last below first for
    // none.
    void findVisible(const PointTrack::Run &run, int *first, int *last) const;
    bool addRun(const PointTrack &points, const PointTrack::Run &run, int end,
                const std::atomic<bool> &isEnding);
    void addBlock(const double *values, int count, double firstX, const PointTrack::Extent &extent);
    bool mapValues(const double *values, int count, const PointTrack::Extent &extent, int *ys) const;
    void moveTo(const PointTrack &points, int index);
    void lineTo(const QPointF &pixel);
    void setEnd(const PointTrack &points);
    bool isBeyond(const QPointF &from, const QPointF &to) const;
    bool cut(const QPointF &from, const QPointF &to, FixedLine *line) const;

    CurveMapping mapping;
    CurveMapping local; // the same from the top left of the clip rectangle
    QRect clip;         // in device pixels
    int penWidth = 1;
    bool isVoid = true;
    double crossingLimit = 0;
    quint64 trackId = 0;
    qint64 removed = 0;

    Coverage cover;
    int next = 0; // the first sample that has not been drawn
    QPointF pen;  // the last one that has been, from the clip rectangle's top left
    bool isDown = false;
    bool isBegin = false; // no segment has left the first sample yet
    // The last segment has a cap, which goes when the next sample comes.
    FixedLine end;
    bool hasEnd = false;
};
