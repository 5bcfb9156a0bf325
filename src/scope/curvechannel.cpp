// SPDX-License-Identifier: GPL-3.0-or-later
#include "scope/curvechannel.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace {

constexpr int chunk = 1000;

// 64ths of a pixel, cut as the paint engine cuts them. One less than lowest and one more than highest stand
// for all that is beyond.
struct FixedRange
{
    explicit FixedRange(int pixels)
        : lowest(-Coverage::reach * 64)
        , highest((pixels + Coverage::reach) * 64)
        , below(lowest - 1)
        , above(highest + 1)
    {
    }
    int of(double pixel) const
    {
        const double fixed = pixel * 64.0;
        const double raised = fixed > below ? fixed : below;
        return static_cast<int>(raised < above ? raised : above);
    }
    bool holds(int fixed) const { return fixed >= lowest && fixed <= highest; }

    int lowest;
    int highest;
    double below;
    double above;
};

// Narrows the part from *begin to *end of a segment to where start + part * delta lies from low to high.
bool cutAxis(double start, double delta, double low, double high, double *begin, double *end)
{
    if (delta == 0.0)
        return start >= low && start <= high;
    double enter = (low - start) / delta;
    double leave = (high - start) / delta;
    if (enter > leave)
        std::swap(enter, leave);
    *begin = std::max(*begin, enter);
    *end = std::min(*end, leave);
    return *begin <= *end;
}

} // namespace

bool CurveMapping::isUsable() const
{
    return std::isfinite(xScale) && std::isfinite(yScale) && xScale != 0.0 && std::isfinite(minX) &&
           std::isfinite(minY);
}

bool operator==(const CurveMapping &a, const CurveMapping &b)
{
    return a.minX == b.minX && a.minY == b.minY && a.xScale == b.xScale && a.yScale == b.yScale &&
           a.left == b.left && a.bottom == b.bottom;
}

void CurveChannel::prepare(const CurveMapping &newMapping, const QRect &newClip, int newPenWidth,
                           const PointTrack &points)
{
    const bool isSame = !isVoid && newMapping == mapping && newClip == clip && newPenWidth == penWidth &&
                        points.id() == trackId && points.removedCount() == removed && points.size() >= next;
    mapping = newMapping;
    local = newMapping;
    local.left -= newClip.left();
    local.bottom -= newClip.top();
    clip = newClip;
    penWidth = newPenWidth;
    if (isSame && crossings(points) <= crossingLimit)
        return;
    // Twice what there is now, so that a growing track seldom starts again.
    crossingLimit = 2 * crossings(points) + 1000;
    cover.reset(clip.size(), crossingLimit, penWidth);
    trackId = points.id();
    removed = points.removedCount();
    next = 0;
    isVoid = isDown = isBegin = hasEnd = false;
}

// At most this many segments cross one pixel.
double CurveChannel::crossings(const PointTrack &points) const
{
    const double samplesPerColumn = std::abs(1 / (mapping.xScale * PointTrack::sampleStep));
    const double perRun = std::min<double>(points.size(), 2 * samplesPerColumn + 4);
    return perRun * points.runs().size() * (penWidth + 1);
}

bool CurveChannel::add(const PointTrack &points, const std::atomic<bool> &isEnding)
{
    if (points.size() == next + 1 && next > 0 && hasEnd)
        return true;
    if (hasEnd)
        cover.subtract(end);
    hasEnd = false;
    const int permanent = points.size() - 1;
    const QVector<PointTrack::Run> runs = points.runs();
    for (const PointTrack::Run &run : runs) {
        if (!addRun(points, run, std::min(run.first + run.count, permanent), isEnding)) {
            isVoid = true;
            return false;
        }
    }
    next = std::max(next, permanent);
    if (mapping.isUsable())
        setEnd(points);
    return true;
}

bool CurveChannel::addRun(const PointTrack &points, const PointTrack::Run &run, int end_,
                          const std::atomic<bool> &isEnding)
{
    int index = std::max(run.first, next);
    if (index >= end_ || !mapping.isUsable())
        return true;
    int first = 0;
    int last = -1;
    findVisible(run, &first, &last);
    last = std::min(last, end_ - 1);
    if (index == 0) {
        moveTo(points, 0);
        isBegin = isDown;
        index = 1;
    } else if (index == run.first) {
        lineTo(local.map(points.at(index)));
        ++index;
    }
    if (first > index) {
        isBegin = false;
        moveTo(points, std::min(first, end_ - 1));
        index = first + 1;
    }
    while (index <= last) {
        if (isEnding)
            return false;
        const PointTrack::Range piece{index, std::min(chunk, last + 1 - index)};
        double x = run.x0 + PointTrack::sampleStep * (index - run.first);
        points.visit(piece, [&](const double *values, int count) {
            addBlock(points, values, count, x);
            x += PointTrack::sampleStep * count;
        });
        index += piece.count;
    }
    if (index < end_) {
        isBegin = false;
        moveTo(points, end_ - 1);
    }
    return true;
}

void CurveChannel::findVisible(const PointTrack::Run &run, int *first, int *last) const
{
    const auto indexAt = [&](double pixel) {
        const double x = (pixel - mapping.left) / mapping.xScale + mapping.minX;
        return (x - run.x0) / PointTrack::sampleStep;
    };
    const double beyond = Coverage::reach + penWidth;
    double from = indexAt(clip.left() - beyond);
    double to = indexAt(clip.right() + 1 + beyond);
    if (from > to)
        std::swap(from, to);
    const double highest = run.count - 1;
    *first = run.first + static_cast<int>(std::min(std::max(std::floor(from) - 1, 0.0), highest + 1));
    *last = run.first + static_cast<int>(std::max(std::min(std::ceil(to) + 1, highest), -1.0));
}

// At most chunk samples, the first of them at firstX.
void CurveChannel::addBlock(const PointTrack &points, const double *values, int count, double firstX)
{
    std::array<int, chunk> xs;
    std::array<int, chunk> ys;
    const FixedRange xRange(clip.width());
    const FixedRange yRange(clip.height());
    const CurveMapping m = local;
    for (int i = 0; i < count; ++i) {
        const double x = firstX + PointTrack::sampleStep * i;
        xs[static_cast<size_t>(i)] = xRange.of((x - m.minX) * m.xScale + m.left);
        ys[static_cast<size_t>(i)] = yRange.of(m.bottom - (values[i] - m.minY) * m.yScale);
    }
    bool isInside = !points.hasNonFinite();
    for (int i = 0; i < count; ++i)
        isInside &= xRange.holds(xs[static_cast<size_t>(i)]) && yRange.holds(ys[static_cast<size_t>(i)]);
    const auto pixelOf = [&](int i) { return m.map({firstX + PointTrack::sampleStep * i, values[i]}); };
    if (!isInside) {
        for (int i = 0; i < count; ++i)
            lineTo(pixelOf(i));
        return;
    }
    lineTo(pixelOf(0));
    addInside(xs.data(), ys.data(), count);
    pen = pixelOf(count - 1);
}

// Segments that need not be cut, in 64ths of a pixel.
void CurveChannel::addInside(const int *xs, const int *ys, int count)
{
    cover.touch(xs[0], xs[count - 1]);
    int x1 = xs[0];
    int y1 = ys[0];
    for (int i = 1; i < count; ++i) {
        const int x2 = xs[i];
        const int y2 = ys[i];
        const int dx = std::abs(x2 - x1);
        const int dy = std::abs(y2 - y1);
        if (dx < dy && dx <= Coverage::narrow)
            cover.addNarrow(x1, y1, x2, y2);
        else if (dx != 0)
            cover.add({x1, y1, x2, y2});
        x1 = x2;
        y1 = y2;
    }
}

void CurveChannel::moveTo(const PointTrack &points, int index)
{
    const QPointF pixel = local.map(points.at(index));
    isDown = std::isfinite(pixel.y());
    if (isDown)
        pen = pixel;
}

// A sample that is no finite number is passed over: the segment goes on to the next one.
void CurveChannel::lineTo(const QPointF &pixel)
{
    if (!std::isfinite(pixel.y()))
        return;
    FixedLine line;
    if (isDown && !isBeyond(pen, pixel) && cut(pen, pixel, &line)) {
        line.hasBeginCap = isBegin;
        cover.add(line);
    }
    isBegin = isBegin && !isDown;
    pen = pixel;
    isDown = true;
}

void CurveChannel::setEnd(const PointTrack &points)
{
    if (points.size() < 2 || !isDown)
        return;
    const QPointF pixel = local.map(points.last());
    if (!std::isfinite(pixel.y()) || !cut(pen, pixel, &end))
        return;
    end.hasBeginCap = isBegin;
    end.hasEndCap = true;
    hasEnd = true;
    cover.add(end);
}

// True when both stand above or both below what can be seen.
bool CurveChannel::isBeyond(const QPointF &from, const QPointF &to) const
{
    const double bottom = clip.height() + Coverage::reach;
    return (from.y() < -Coverage::reach && to.y() < -Coverage::reach) ||
           (from.y() > bottom && to.y() > bottom);
}

bool CurveChannel::cut(const QPointF &from, const QPointF &to, FixedLine *line) const
{
    double begin = 0;
    double stop = 1;
    const QPointF delta = to - from;
    const double beyond = Coverage::reach;
    if (!cutAxis(from.x(), delta.x(), -beyond, clip.width() + beyond, &begin, &stop) ||
        !cutAxis(from.y(), delta.y(), -beyond, clip.height() + beyond, &begin, &stop))
        return false;
    const QPointF a = begin > 0 ? from + begin * delta : from;
    const QPointF b = stop < 1 ? from + stop * delta : to;
    line->x1 = static_cast<int>(a.x() * 64.0);
    line->y1 = static_cast<int>(a.y() * 64.0);
    line->x2 = static_cast<int>(b.x() * 64.0);
    line->y2 = static_cast<int>(b.y() * 64.0);
    return true;
}
