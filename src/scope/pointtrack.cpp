// SPDX-License-Identifier: GPL-3.0-or-later
#include "scope/pointtrack.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <limits>

namespace {

quint64 freshId()
{
    static std::atomic<quint64> last{0};
    return ++last;
}

} // namespace

void PointTrack::append(double x, const QVector<double> &values)
{
    if (values.isEmpty())
        return;
    if (trackId == 0)
        trackId = freshId();
    if (starts.isEmpty() || x != nextX)
        starts.append({removed + count, x});
    for (const double value : values)
        appendValue(value);
    // Exact: both addends are multiples of a quarter.
    nextX = x + sampleStep * values.size();
}

void PointTrack::appendValue(double y)
{
    if (count == blocks.size() * blockSize) {
        blocks.append(std::make_shared<Block>());
        extents.append({std::numeric_limits<double>::max(), std::numeric_limits<double>::lowest(), 0});
    }
    blocks.constLast()->values[static_cast<size_t>(count % blockSize)] = y;
    Extent &extent = extents.last();
    if (std::isfinite(y)) {
        extent.min = std::min(extent.min, y);
        extent.max = std::max(extent.max, y);
    } else {
        ++extent.nonFinite;
        ++nonFinite;
    }
    ++count;
}

void PointTrack::removeOldestBlock()
{
    Q_ASSERT(count >= blockSize);
    nonFinite -= extents.constFirst().nonFinite;
    blocks.removeFirst();
    extents.removeFirst();
    count -= blockSize;
    removed += blockSize;
    const auto startsBefore = [this](const Start &start) { return start.first <= removed; };
    const auto kept = std::find_if_not(starts.cbegin(), starts.cend(), startsBefore);
    // Counted first: begin() takes the list apart from the copies that the plot thread holds.
    const int before = static_cast<int>(kept - starts.cbegin());
    starts.erase(starts.begin(), starts.begin() + std::max(0, before - 1));
}

void PointTrack::clear()
{
    *this = PointTrack();
}

double PointTrack::xOf(const Start &start, int index) const
{
    return start.x0 + sampleStep * static_cast<double>(removed + index - start.first);
}

QPointF PointTrack::at(int index) const
{
    const auto after = [this, index](const Start &start) { return start.first > removed + index; };
    const auto next = std::find_if(starts.crbegin(), starts.crend(),
                                   [&after](const Start &start) { return !after(start); });
    return {xOf(*next, index), valueAt(index)};
}

double PointTrack::valueAt(int index) const
{
    return blocks.at(index / blockSize)->values[static_cast<size_t>(index % blockSize)];
}

QVector<PointTrack::Run> PointTrack::runs() const
{
    QVector<Run> all;
    for (int i = 0; i < starts.size(); ++i) {
        Run run;
        run.first = static_cast<int>(std::max(starts.at(i).first - removed, qint64(0)));
        const int end = i + 1 < starts.size() ? static_cast<int>(starts.at(i + 1).first - removed) : count;
        run.count = end - run.first;
        run.x0 = xOf(starts.at(i), run.first);
        if (run.count > 0)
            all.append(run);
    }
    return all;
}

int PointTrack::countBelow(const Run &run, double whole)
{
    // x is never negative, so that cutting it to an integer is rounding down. A quotient of quarters that is
    // no integer is too far from one to be rounded to it.
    const double samples = std::ceil((whole - run.x0) / sampleStep);
    return static_cast<int>(std::min<double>(std::max(samples, 0.0), run.count));
}

int PointTrack::firstAtX(double v) const
{
    const double whole = std::trunc(v);
    const QVector<Run> all = runs();
    for (const Run &run : all) {
        const int index = countBelow(run, whole);
        if (index < run.count && std::trunc(run.x0 + sampleStep * index) == whole)
            return run.first + index;
    }
    return -1;
}

int PointTrack::firstOfValue(double y) const
{
    for (int b = 0; b < blocks.size(); ++b) {
        if (!(extents.at(b).min <= y && y <= extents.at(b).max))
            continue;
        const double *const begin = blocks.at(b)->values.data();
        const double *const end = begin + std::min(blockSize, count - b * blockSize);
        const double *const found = std::find(begin, end, y);
        if (found != end)
            return b * blockSize + static_cast<int>(found - begin);
    }
    return -1;
}

QVector<PointTrack::Range> PointTrack::between(double v1, double v2) const
{
    const double from = std::trunc(v1);
    const double beyond = std::trunc(v2) + 1;
    QVector<Range> ranges;
    const QVector<Run> all = runs();
    for (const Run &run : all) {
        const int begin = countBelow(run, from);
        const int end = countBelow(run, beyond);
        if (end > begin)
            ranges.append({run.first + begin, end - begin});
        if (end < run.count)
            break;
    }
    return ranges;
}
