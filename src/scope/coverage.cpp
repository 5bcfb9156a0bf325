// SPDX-License-Identifier: GPL-3.0-or-later
#include "scope/coverage.h"

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
    size = newSize;
    penWidth = newPenWidth;
    // The middle of the pen, and the middle of the pixel.
    xOffset = -32 * 1024 * penWidth;
    stride = size.height() + 2 * padding;
    table.assign(static_cast<std::size_t>(size.width() + 2 * padding) * static_cast<std::size_t>(stride), 0U);
    cells = table.data() + padding * stride + padding;
    firstDirty = 0;
    lastDirty = size.width() - 1;
    int bits = mostBits;
    while (bits > 0 && opaque * maxCrossings * std::ldexp(1.0, bits) > 2147483647.0)
        --bits;
    if (bits != costBits)
        makeTables(bits);
}

void Coverage::makeTables(int bits)
{
    costBits = bits;
    const double unit = std::ldexp(1.0, bits);
    for (int a = 0; a < 255; ++a)
        costs[a] = static_cast<uint32_t>(std::lround(-std::log(1 - a / 255.0) * unit));
    costs[255] = static_cast<uint32_t>(std::lround(opaque * unit));
    opacityShift = std::max(0, bits - lookUpBits);
    const double step = std::ldexp(1.0, opacityShift - bits);
    opacities.resize(static_cast<int>(opaque / step));
    for (int i = 0; i < opacities.size(); ++i) {
        const double middle = opacityShift > 0 ? i + 0.5 : i;
        opacities[i] = i == 0 ? 0 : static_cast<uchar>(std::lround(255 * (1 - std::exp(-middle * step))));
    }
}

uint32_t Coverage::above(int index) const
{
    return std::accumulate(at(index) - padding, at(index), 0U);
}

void Coverage::takeDirty()
{
    firstDirty = size.width();
    lastDirty = -1;
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

void Coverage::line(FixedLine line)
{
    touch(line.x1, line.x2);
    const int dx = std::abs(line.x2 - line.x1);
    const int dy = std::abs(line.y2 - line.y1);
    if (dx < dy && dx <= narrow && !line.hasBeginCap && !line.hasEndCap)
        addNarrow(line.x1, line.y1, line.x2, line.y2);
    else if (dx < dy)
        steep(line);
    else if (dx > 0)
        flat(line);
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

// Covers penWidth + 1 rows of a column where the pen's upper edge stands at y, over part of 64 of its width.
void Coverage::flatColumn(int column, int y, int part)
{
    const int alpha = (y >> 8) & 0xff;
    const int row = y >> 16;
    const uint32_t first = costs[((255 - alpha) * part) >> 6];
    const uint32_t full = costs[(255 * part) >> 6];
    const uint32_t last = costs[(alpha * part) >> 6];
    uint32_t *const rowsOf = at(column);
    rowsOf[row] += first;
    rowsOf[row + 1] += full - first;
    rowsOf[row + penWidth] += last - full;
    rowsOf[row + penWidth + 1] -= last;
}
