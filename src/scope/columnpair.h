// SPDX-License-Identifier: GPL-3.0-or-later
// Sums up the segments of dense samples, which stand nearly upright between two columns, before they go into
// the coverage's table. What a segment costs in the left and in the right column is one number of 64 bits,
// and the rows in use stay in the processor's nearest memory. One thread; owned by the coverage.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

class ColumnPair
{
public:
    // Room for rows from -padding on. hasMiddle: the pen is wider than a pixel and covers columns between the
    // two wholly.
    void reset(int rows, int padding, bool hasMiddle);
    // The costs of covering a pixel by so many 255ths.
    void setCosts(const uint32_t *costs);

    // count segments from ys[0] on, in 64ths of a pixel, that leave the right column alpha of 255, an even
    // number, and the left one the rest.
    void add(int alpha, const int *ys, int count)
    {
        addSegments(weights.data() + (alpha / 2) * shares, cells(), ys, count);
        if (isWide)
            addSegments(middleWeights.data(), middleCells(), ys, count);
    }

    // The same for segments of a length of 1, one after another from low to high.
    void addUnits(int alpha, int low, int high);

    // Differences down the column, as the coverage keeps them: adds those of the rows from top to bottom.
    void addLeftTo(uint32_t *column, int top, int bottom) const;
    void addRightTo(uint32_t *column, int top, int bottom) const;
    void addMiddleTo(uint32_t *column, int top, int bottom) const;
    void clear(int top, int bottom);

private:
    static constexpr int shares = 65;  // of a pixel's height, in 64ths
    static constexpr int alphas = 128; // even ones

    template <typename Sum>
    static void addSegments(const Sum *costs, Sum *rows, const int *ys, int count);
    template <typename Sum>
    static void addCrossing(const Sum *costs, Sum *rows, int low, int high);
    uint64_t *cells() { return sums.data() + offset; }
    const uint64_t *cells() const { return sums.data() + offset; }
    uint32_t *middleCells() { return middleSums.data() + offset; }
    const uint32_t *middleCells() const { return middleSums.data() + offset; }

    // The left column is the lower half, which lends from the upper one when it falls below zero.
    std::vector<uint64_t> weights = std::vector<uint64_t>(std::size_t(alphas) * shares);
    std::vector<uint64_t> sums;
    std::vector<uint32_t> middleWeights = std::vector<uint32_t>(shares);
    std::vector<uint32_t> middleSums; // empty without a middle
    int offset = 0;
    bool isWide = false;
};

// A segment that crosses rows costs its share of the first and of the last and the whole of those between; as
// differences that is two entries at each end.
template <typename Sum>
inline void ColumnPair::addCrossing(const Sum *costs, Sum *rows, int low, int high)
{
    Sum *const top = rows + (low >> 6);
    Sum *const bottom = rows + (high >> 6);
    const Sum full = costs[64];
    const Sum first = costs[64 - (low & 63)];
    const Sum last = costs[high & 63];
    top[0] += first;
    top[1] += full - first;
    bottom[0] += last - full;
    bottom[1] -= last;
}

// A segment within a row is one cost there; those of neighbours are written down together.
template <typename Sum>
inline void ColumnPair::addSegments(const Sum *costs, Sum *rows, const int *ys, int count)
{
    Sum inRow = 0;
    int y1 = ys[0];
    const auto writeRow = [&] {
        Sum *const row = rows + (y1 >> 6);
        row[0] += inRow;
        row[1] -= inRow;
    };
    for (int i = 1; i <= count; ++i) {
        const int y2 = ys[i];
        const int sign = (y2 - y1) >> 31; // all ones for a negative difference
        if (((y1 ^ y2) & ~63) == 0) {
            inRow += costs[((y2 - y1) ^ sign) - sign];
        } else {
            if (inRow != 0)
                writeRow();
            inRow = 0;
            // Without a jump, which nobody could foresee in noise.
            const int fall = (y2 - y1) & sign;
            addCrossing(costs, rows, y1 + fall, y2 - fall);
        }
        y1 = y2;
    }
    if (inRow != 0)
        writeRow();
}
