// SPDX-License-Identifier: GPL-3.0-or-later
#include "scope/coverage.h"

#include "scope/densesegments.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

namespace {

// The logarithm that counts as opaque: less than half of a 255th is let through.
constexpr double opaque = 6.5;
// Binary places of the logarithms: in the sums, as far as they have room, and where the opacity is looked up.
constexpr int mostBits = 16;
constexpr int lookUpBits = 9;

int fixedQuotient(int a, int b)
{
    return static_cast<int>(qint64(a) * 65536 / b);
}

} // namespace

void Coverage::reset(const QSize &newSize, double maxCrossings, int newPenWidth)
{
    const bool isSame = !table.empty() && newSize == size && newPenWidth == penWidth;
    size = newSize;
    penWidth = newPenWidth;
    // The middle of the pen, and the middle of the pixel.
    xOffset = -32 * 1024 * penWidth;
    stride = size.height() + 2 * padding;
    if (isSame) {
        clearRowsInUse();
    } else {
        const int columnsKept = size.width() + 2 * padding;
        table.assign(static_cast<std::size_t>(columnsKept) * static_cast<std::size_t>(stride), 0U);
        cells = table.data() + padding * stride + padding;
        inUse.assign(static_cast<std::size_t>(columnsKept), RowRange());
        pair.reset(size.height(), padding, penWidth > 1);
    }
    pairColumn = noColumn;
    firstDirty = 0;
    lastDirty = size.width() - 1;
    int bits = mostBits;
    while (bits > 0 && opaque * maxCrossings * std::ldexp(1.0, bits) > 2147483647.0)
        --bits;
    if (bits != costBits)
        makeTables(bits);
}

void Coverage::clearRowsInUse()
{
    // A drawing that was broken off may have left something.
    pair.clear(-padding, size.height() + padding - 1);
    for (int column = -padding; column < size.width() + padding; ++column) {
        RowRange &rows = inUse.data()[column + padding];
        std::fill(at(column) + rows.top, at(column) + rows.bottom + 1, 0U);
        rows = RowRange();
    }
}

void Coverage::makeTables(int bits)
{
    costBits = bits;
    const double unit = std::ldexp(1.0, bits);
    for (int a = 0; a < 255; ++a)
        costs[a] = static_cast<uint32_t>(std::lround(-std::log(1 - a / 255.0) * unit));
    costs[255] = static_cast<uint32_t>(std::lround(opaque * unit));
    pair.setCosts(costs);
    opacityShift = std::max(0, bits - lookUpBits);
    const double step = std::ldexp(1.0, opacityShift - bits);
    opacityOf.resize(static_cast<int>(opaque / step) + 1);
    for (int i = 0; i < opacityOf.size(); ++i) {
        const double middle = opacityShift > 0 ? i + 0.5 : i;
        opacityOf[i] = i == 0 ? 0 : static_cast<uchar>(std::lround(255 * (1 - std::exp(-middle * step))));
    }
    opacityOf.last() = 255;
}

void Coverage::opacities(int column, const RowRange &rows, uchar *to, std::ptrdiff_t next) const
{
    const uint32_t *const differences = at(column);
    const uchar *const lookUp = opacityOf.constData();
    const auto last = static_cast<uint32_t>(opacityOf.size() - 1);
    const int firstInUse = std::min(rows.top, rowsInUse(column).top);
    uint32_t sum = std::accumulate(differences + firstInUse, differences + rows.top, 0U);
    for (int row = rows.top; row <= rows.bottom; ++row, to += next) {
        sum += differences[row];
        *to = lookUp[std::min(sum >> opacityShift, last)];
    }
}

void Coverage::takeDirty()
{
    firstDirty = size.width();
    lastDirty = -1;
}

RowRange Coverage::rowsAround(int y1, int y2) const
{
    const int beyond = 2 * penWidth + 2;
    return {std::max(-padding, (std::min(y1, y2) >> 6) - beyond),
            std::min(size.height() + padding - 1, (std::max(y1, y2) >> 6) + beyond)};
}

void Coverage::beginChain(int x1, int x2, int y1, int y2)
{
    chainRows = rowsAround(y1, y2);
    pairRows = pairRows.united(chainRows);
    touch(x1, x2, chainRows);
}

void Coverage::touch(int x1, int x2, const RowRange &rows)
{
    const int first = std::max(-padding, (std::min(x1, x2) >> 6) - penWidth - 1);
    const int last = std::min(size.width() + padding - 1, (std::max(x1, x2) >> 6) + penWidth + 1);
    firstDirty = std::min(firstDirty, std::max(0, first));
    lastDirty = std::max(lastDirty, std::min(size.width() - 1, last));
    for (int column = first; column <= last; ++column) {
        RowRange &known = inUse.data()[column + padding];
        known = known.united(rows);
    }
}

void Coverage::add(const FixedLine &added)
{
    line(added);
}

void Coverage::subtract(const FixedLine &taken)
{
    const auto negate = [this] {
        for (uint32_t &cost : costs)
            cost = 0U - cost;
    };
    negate();
    line(taken);
    negate();
}

void Coverage::line(const FixedLine &line)
{
    const int dx = std::abs(line.x2 - line.x1);
    const int dy = std::abs(line.y2 - line.y1);
    beginChain(line.x1, line.x2, line.y1, line.y2);
    if (dx < dy && dx <= narrow && !line.hasBeginCap && !line.hasEndCap) {
        addUpright((line.x1 + line.x2) >> 1, line.y1, line.y2);
    } else if (dx < dy) {
        steep(line);
    } else if (dx > 0) {
        flat(line);
    }
}

void Coverage::addChain(const PointChain &chain)
{
    beginChain(chain.xs[0], chain.xs[chain.groups - 1], chain.lowest, chain.highest);
    if (!chain.isDense) {
        addSparse(chain);
    } else if (chain.isSlow) {
        addSlow(chain);
    } else {
        addDense(chain);
        addFlatSteps(chain);
    }
}

void Coverage::addSparse(const PointChain &chain)
{
    const int *const xs = chain.xs;
    const int *const ys = chain.ys;
    for (int g = 0; g < chain.groups; ++g) {
        const int last = chain.begins[g + 1] - 1;
        for (int i = chain.begins[g]; i < last; ++i)
            addUpright(xs[g], ys[i], ys[i + 1]);
        if (g == chain.groups - 1)
            break;
        const int dx = xs[g + 1] - xs[g];
        const int dy = std::abs(ys[last + 1] - ys[last]);
        if (dx == 1 && dy <= 1)
            flatStep(xs[g], ys[last], ys[last + 1]);
        else if (std::abs(dx) < dy && std::abs(dx) <= narrow)
            addUpright((xs[g] + xs[g + 1]) >> 1, ys[last], ys[last + 1]);
        else if (std::abs(dx) < dy)
            steep({xs[g], ys[last], xs[g + 1], ys[last + 1]});
        else
            flat({xs[g], ys[last], xs[g + 1], ys[last + 1]});
    }
}

// Where y goes one way in steps of 1, what is between the first and the last point of a group is known.
void Coverage::addSlow(const PointChain &chain)
{
    for (int g = 0; g < chain.groups; ++g) {
        const int next = chain.begins[g + 1];
        const int y = chain.ys[next - 1];
        addUnits(chain.xs[g], chain.ys[chain.begins[g]], y);
        if (g < chain.groups - 1)
            flatStep(chain.xs[g], y, chain.ys[next]);
    }
}

// All segments as upright ones, at the place of their first point.
void Coverage::addDense(const PointChain &chain)
{
    constexpr int unit = DenseSegments::positionUnits;
    const int segments = chain.begins[chain.groups] - 1;
    // From the column on in which the chain begins: the rest of a number has room for a part of a 64th.
    // Somewhat more than the sum of what is cut off, so that a point just at a 64th doesn't fall below.
    const double left = chain.firstX - 32 * penWidth;
    const int firstColumn = static_cast<int>(std::floor(left / 64));
    const int x = static_cast<int>((left - 64 * firstColumn) * unit) + DenseSegments::most;
    const int step = std::max(1, static_cast<int>(std::lround(chain.xStep * unit)));
    DenseSegments dense;
    DenseSegments middle;
    dense.find(chain.ys, segments, x, step);
    if (pair.hasMiddle())
        middle.find(chain.ys, segments, 0, 0);
    for (int begin = 0, column = firstColumn; begin < segments; ++column) {
        const int beyond = (column + 1 - firstColumn) * 64 * unit;
        const int end = std::min(segments, (beyond - x + step - 1) / step);
        if (column != pairColumn)
            beginPair(column);
        const int *const ys = chain.ys + begin;
        pair.addSegments(ys, dense.firstEnds() + begin, dense.secondEnds() + begin, end - begin);
        if (pair.hasMiddle())
            pair.addMiddle(ys, middle.firstEnds() + begin, middle.secondEnds() + begin, end - begin);
        begin = end;
    }
}

// What the segments cover that go to the next 64th without rising or falling.
void Coverage::addFlatSteps(const PointChain &chain)
{
    for (int g = 1; g < chain.groups; ++g) {
        const int next = chain.begins[g];
        const int y1 = chain.ys[next - 1];
        const int y2 = chain.ys[next];
        if (static_cast<unsigned>(y2 - y1 + 1) <= 2)
            flatStep(chain.xs[g - 1], y1, y2);
    }
}

void Coverage::addLevel(int x1, int x2, int y)
{
    beginChain(x1, x2, y, y);
    for (int x = x1; x < x2;) {
        const int next = std::min((x | 63) + 1, x2);
        flatColumn(x >> 6, y * 1024 + xOffset, 1, static_cast<uint32_t>(next - x));
        x = next;
    }
}

void Coverage::addUnits(int x, int y1, int y2)
{
    if (y1 != y2)
        pair.addUnits(moveTo(x), std::min(y1, y2), std::max(y1, y2));
}

void Coverage::beginPair(int column)
{
    settle();
    pairColumn = column;
    pairRows = chainRows;
}

void Coverage::settle()
{
    if (pairColumn == noColumn)
        return;
    pair.addOuterTo(at(pairColumn), at(pairColumn + penWidth), pairRows.top, pairRows.bottom);
    for (int c = 1; c < penWidth; ++c)
        pair.addMiddleTo(at(pairColumn + c), pairRows.top, pairRows.bottom);
    pair.clear(pairRows.top, pairRows.bottom);
    pairColumn = noColumn;
}

// Covers a column from y1 to y2, y1 <= y2, by alpha of 255.
void Coverage::strip(int column, int alpha, int y1, int y2)
{
    uint32_t *const rowsOf = at(column);
    const int top = y1 >> 6;
    const int bottom = y2 >> 6;
    if (top == bottom) {
        const uint32_t part = costs[(alpha * (y2 - y1)) >> 6];
        rowsOf[top] += part;
        rowsOf[top + 1] -= part;
        return;
    }
    const uint32_t first = costs[(alpha * (64 - (y1 & 63))) >> 6];
    const uint32_t full = costs[alpha];
    const uint32_t last = costs[(alpha * (y2 & 63)) >> 6];
    rowsOf[top] += first;
    rowsOf[top + 1] += full - first;
    rowsOf[bottom] += last - full;
    rowsOf[bottom + 1] -= last;
}

void Coverage::steep(FixedLine line)
{
    if (line.y1 > line.y2) {
        std::swap(line.x1, line.x2);
        std::swap(line.y1, line.y2);
        std::swap(line.hasBeginCap, line.hasEndCap);
    }
    const int xStep = fixedQuotient(line.x2 - line.x1, line.y2 - line.y1);
    // x in the middle of the first row.
    int x = line.x1 * 1024 + xOffset - ((((line.y1 & 63) - 32) * xStep) >> 6);
    if (line.hasBeginCap) {
        line.y1 -= 32 * penWidth;
        x -= (xStep * penWidth) >> 1;
    }
    if (line.hasEndCap)
        line.y2 += 32 * penWidth;
    // Long segments go in steps of several rows, within which their place between two columns hardly changes.
    // A row is never split: its parts would cover less than the whole.
    const qint64 rowCount = (line.y2 - line.y1) >> 6;
    const int width = std::abs(line.x2 - line.x1);
    const qint64 atOnce = width > narrow ? rowCount * narrow / width : rowCount;
    steepRows(x, xStep, line.y1, line.y2, std::max(1, static_cast<int>(atOnce)));
}

// From y1 to y2, so many rows at once; x is that of the first row.
void Coverage::steepRows(int x, int xStep, int y1, int y2, int atOnce)
{
    while (y1 < y2) {
        const int next = std::min(((y1 >> 6) + atOnce) * 64, y2);
        const int middle = x + static_cast<int>(qint64(xStep) * (((next - 1) >> 6) - (y1 >> 6)) / 2);
        const int alpha = (middle >> 8) & 0xff;
        const int column = middle >> 16;
        strip(column, 255 - alpha, y1, next);
        for (int c = 1; c < penWidth; ++c)
            strip(column + c, 255, y1, next);
        strip(column + penWidth, alpha, y1, next);
        x += xStep * atOnce;
        y1 = next;
    }
}

void Coverage::flat(FixedLine line)
{
    if (line.x1 > line.x2) {
        std::swap(line.x1, line.x2);
        std::swap(line.y1, line.y2);
        std::swap(line.hasBeginCap, line.hasEndCap);
    }
    const int yStep = fixedQuotient(line.y2 - line.y1, line.x2 - line.x1);
    int y = line.y1 * 1024 + xOffset - ((((line.x1 & 63) - 32) * yStep) >> 6);
    if (line.hasBeginCap) {
        line.x1 -= 32 * penWidth;
        y -= (yStep * penWidth) >> 1;
    }
    if (line.hasEndCap)
        line.x2 += 32 * penWidth;
    for (int x = line.x1; x < line.x2; y += yStep) {
        const int next = std::min((x | 63) + 1, line.x2);
        flatColumn(x >> 6, y, next - x);
        x = next;
    }
}

// flat() from x to the next 64th, which dense samples that change slowly consist of.
void Coverage::flatStep(int x, int y1, int y2)
{
    flatColumn(x >> 6, y1 * 1024 + xOffset - ((x & 63) - 32) * (y2 - y1) * 1024, 1);
}

// Covers penWidth + 1 rows of a column where the pen's upper edge stands at y, over part of 64 of its width,
// so many times.
void Coverage::flatColumn(int column, int y, int part, uint32_t times)
{
    const int alpha = (y >> 8) & 0xff;
    const int row = y >> 16;
    const uint32_t first = times * costs[((255 - alpha) * part) >> 6];
    const uint32_t full = times * costs[(255 * part) >> 6];
    const uint32_t last = times * costs[(alpha * part) >> 6];
    uint32_t *const rowsOf = at(column);
    rowsOf[row] += first;
    rowsOf[row + 1] += full - first;
    rowsOf[row + penWidth] += last - full;
    rowsOf[row + penWidth + 1] -= last;
}
