// SPDX-License-Identifier: GPL-3.0-or-later
#include "scope/columnpair.h"

#include <algorithm>

void ColumnPair::reset(int rows, int padding, bool hasMiddle)
{
    offset = padding;
    isWide = hasMiddle;
    const int room = rows + 2 * padding;
    sums.assign(static_cast<std::size_t>(room), 0U);
    middleSums.assign(hasMiddle ? sums.size() : 0, 0U);
}

void ColumnPair::setCosts(const uint32_t *costs)
{
    for (int half = 0; half < alphas; ++half) {
        const int alpha = 2 * half;
        uint64_t *const row = weights.data() + half * shares;
        for (int share = 0; share < shares; ++share)
            row[share] = costs[((255 - alpha) * share) >> 6] |
                         static_cast<uint64_t>(costs[(alpha * share) >> 6]) << 32;
    }
    for (int share = 0; share < shares; ++share)
        middleWeights[static_cast<std::size_t>(share)] = costs[(255 * share) >> 6];
}

void ColumnPair::addUnits(int alpha, int low, int high)
{
    const uint64_t cost = weights.data()[(alpha / 2) * shares + 1];
    while (low < high) {
        const int row = low >> 6;
        const int next = std::min((row + 1) * 64, high);
        const auto count = static_cast<unsigned>(next - low);
        cells()[row] += count * cost;
        cells()[row + 1] -= count * cost;
        if (isWide) {
            middleCells()[row] += count * middleWeights[1];
            middleCells()[row + 1] -= count * middleWeights[1];
        }
        low = next;
    }
}

void ColumnPair::addLeftTo(uint32_t *column, int top, int bottom) const
{
    for (int row = top; row <= bottom; ++row)
        column[row] += static_cast<uint32_t>(cells()[row]);
}

void ColumnPair::addRightTo(uint32_t *column, int top, int bottom) const
{
    for (int row = top; row <= bottom; ++row) {
        const uint64_t sum = cells()[row];
        const uint32_t lent = static_cast<uint32_t>(sum) >> 31;
        column[row] += static_cast<uint32_t>(sum >> 32) + lent;
    }
}

void ColumnPair::addMiddleTo(uint32_t *column, int top, int bottom) const
{
    for (int row = top; row <= bottom; ++row)
        column[row] += middleCells()[row];
}

void ColumnPair::clear(int top, int bottom)
{
    std::fill(cells() + top, cells() + bottom + 1, 0U);
    if (isWide)
        std::fill(middleCells() + top, middleCells() + bottom + 1, 0U);
}
