// SPDX-License-Identifier: GPL-3.0-or-later
#include "scope/columnpair.h"

#include <algorithm>

void ColumnPair::reset(int rows, int padding, bool hasMiddle)
{
    // A row more on top: what stands there counts in the next one.
    offset = padding + 1;
    isWide = hasMiddle;
    const int room = rows + 2 * padding + 1;
    sums.assign(static_cast<std::size_t>(room), PairSums());
    middleSums.assign(hasMiddle ? sums.size() : 0, PairSums());
}

void ColumnPair::addSegments(const int *ys, const int *firstEnds, const int *secondEnds, int count,
                             PairSums *rows)
{
    const PairSums *const costs = table.data();
    PairSums before;
    for (int i = 0; i < count; ++i) {
        PairSums &row = rows[ys[i] >> 6];
        row = row + (before + costs[firstEnds[i]]);
        before = costs[secondEnds[i]];
    }
    PairSums &last = rows[ys[count] >> 6];
    last = last + before;
}

void ColumnPair::addUnits(int place, int low, int high)
{
    while (low < high) {
        const int row = low >> 6;
        const int next = std::min((row + 1) * 64, high);
        const auto count = static_cast<uint32_t>(next - low);
        cells()[row] = cells()[row] + table.unit(place) * count;
        if (isWide)
            middleCells()[row] = middleCells()[row] + table.unit(0) * count;
        low = next;
    }
}

void ColumnPair::addOuterTo(uint32_t *leftColumn, uint32_t *rightColumn, int top, int bottom) const
{
    const PairSums *const rows = cells();
    for (int row = top; row <= bottom; ++row) {
        leftColumn[row] += rows[row].left + rows[row - 1].leftBelow;
        rightColumn[row] += rows[row].right + rows[row - 1].rightBelow;
    }
}

void ColumnPair::addMiddleTo(uint32_t *column, int top, int bottom) const
{
    const PairSums *const rows = middleCells();
    for (int row = top; row <= bottom; ++row)
        column[row] += rows[row].left + rows[row - 1].leftBelow;
}

void ColumnPair::clear(int top, int bottom)
{
    std::fill(cells() + top, cells() + bottom + 1, PairSums());
    if (isWide)
        std::fill(middleCells() + top, middleCells() + bottom + 1, PairSums());
}
