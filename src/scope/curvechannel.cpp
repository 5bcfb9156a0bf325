// SPDX-License-Identifier: GPL-3.0-or-later
#include "scope/curvechannel.h"

#include <algorithm>
#include <cmath>

namespace {

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
    int of(double fixed) const
    {
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

// The x of samples that stand apart alike, in 64ths of a pixel.
class Abscissae
{
public:
    Abscissae(double firstX, const CurveMapping &mapping)
        : first(firstX)
        , minX(mapping.minX)
        , scale(mapping.xScale * 64) // which changes no digit of a binary number
        , left(mapping.left * 64)
        , samplesPerStep(1 / (scale * PointTrack::sampleStep))
    {
    }
    double at(int i) const { return (first + PointTrack::sampleStep * i - minX) * scale + left; }
    int fixedAt(int i) const { return static_cast<int>(at(i)); }
    // Several samples have each x in common, and no x is left out.
    bool areDense() const { return samplesPerStep > 2; }
    // Puts samples that have their x in common together, as a chain does; returns the number of groups.
    int group(int count, int *xs, int *begins) const
    {
        return areDense() ? groupDense(count, xs, begins) : groupSparse(count, xs, begins);
    }

private:
    int groupDense(int count, int *xs, int *begins) const
    {
        const double from = at(0);
        const int x = static_cast<int>(std::floor(from));
        int groups = 0;
        for (int begin = 0; begin < count; ++groups) {
            xs[groups] = x + groups;
            begins[groups] = begin;
            // The first sample that stands at the next 64th or behind it: looked at where it may stand just
            // there, so that a track in pieces has the same groups.
            const int next = x + groups + 1;
            begin = static_cast<int>((next - from) * samplesPerStep + (1 - 1e-6));
            begin += at(begin) < next ? 1 : 0;
        }
        begins[groups] = count;
        return groups;
    }
    int groupSparse(int count, int *xs, int *begins) const
    {
        int groups = 0;
        for (int i = 0; i < count; ++i) {
            const int x = fixedAt(i);
            if (groups > 0 && x == xs[groups - 1])
                continue;
            xs[groups] = x;
            begins[groups++] = i;
        }
        begins[groups] = count;
        return groups;
    }

    double first;
    double minX;
    double scale;
    double left;
    double samplesPerStep;
};

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
    cover.settle();
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
        int at = index;
        points.visit(piece, [&](const double *values, int count) {
            addBlock(values, count, x, points.extentAround(at));
            x += PointTrack::sampleStep * count;
            at += count;
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

// At most chunk samples, the first of them at firstX, none of them beyond the extent.
void CurveChannel::addBlock(const double *values, int count, double firstX, const PointTrack::Extent &extent)
{
    const auto pixelOf = [&](int i) { return local.map({firstX + PointTrack::sampleStep * i, values[i]}); };
    const FixedRange range(clip.width());
    const Abscissae x(firstX, local);
    Block block;
    if (!range.holds(range.of(x.at(0))) || !range.holds(range.of(x.at(count - 1))) ||
        !mapValues(values, count, extent, block.ys.data())) {
        for (int i = 0; i < count; ++i)
            lineTo(pixelOf(i));
        return;
    }
    lineTo(pixelOf(0));
    PointChain chain = chainOf(block.ys.data(), count);
    if (chain.lowest == chain.highest && x.areDense()) {
        cover.addLevel(x.fixedAt(0), x.fixedAt(count - 1), chain.lowest);
    } else {
        chain.isDense = x.areDense();
        chain.firstX = x.at(0);
        chain.xStep = x.at(1) - x.at(0);
        chain.groups = x.group(count, block.xs.data(), block.begins.data());
        chain.xs = block.xs.data();
        chain.begins = block.begins.data();
        cover.addChain(chain);
    }
    pen = pixelOf(count - 1);
}

// The y of all samples. False if one of them is outside.
bool CurveChannel::mapValues(const double *values, int count, const PointTrack::Extent &extent, int *ys) const
{
    const FixedRange range(clip.height());
    const double bottom = local.bottom * 64;
    const double scale = local.yScale * 64;
    const double minY = local.minY;
    const auto fixedOf = [&](double y) { return range.of(bottom - (y - minY) * scale); };
    if (extent.nonFinite > 0)
        return false;
    // Loops apart from each other, for the compiler to take several samples at once.
    if (range.holds(fixedOf(extent.min)) && range.holds(fixedOf(extent.max))) {
        for (int i = 0; i < count; ++i)
            ys[i] = static_cast<int>(bottom - (values[i] - minY) * scale);
        return true;
    }
    for (int i = 0; i < count; ++i)
        ys[i] = fixedOf(values[i]);
    return std::all_of(ys, ys + count, [&](int y) { return range.holds(y); });
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
