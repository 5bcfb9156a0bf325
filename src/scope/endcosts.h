// SPDX-License-Identifier: GPL-3.0-or-later
// What the ends of an upright segment add to the differences of two neighbouring columns: a table by the
// segment's place between the columns and by the end's place in its row. A chain of segments is added without
// a jump: each sample of it adds the end of one segment and the beginning of the next. A plain value; owned
// by the column pair.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

// Of the left and the right column, and of both in the row below. So large that a processor adds all at once.
struct alignas(16) PairSums
{
    uint32_t left = 0;
    uint32_t right = 0;
    uint32_t leftBelow = 0;
    uint32_t rightBelow = 0;
};

inline PairSums operator+(const PairSums &a, const PairSums &b)
{
    return {a.left + b.left, a.right + b.right, a.leftBelow + b.leftBelow, a.rightBelow + b.rightBelow};
}

inline PairSums operator*(const PairSums &sums, uint32_t times)
{
    return {sums.left * times, sums.right * times, sums.leftBelow * times, sums.rightBelow * times};
}

class EndCosts
{
public:
    // In 64ths of a pixel; a segment at place 0 covers the left column alone.
    static constexpr int places = 64;
    static constexpr int perPlace = 3 * 64; // upper ends, lower ends, segments within a row

    // The costs of covering a pixel by so many 255ths.
    void set(const uint32_t *costs);

    // Where the two ends of a segment stand in the part of a place. A segment within a row is charged to its
    // second end.
    static int firstEnd(int y1, int y2)
    {
        return crosses(y1, y2) ? (y1 & 63) | (upward(y1, y2) & lowerEnds) : withinRow;
    }
    static int secondEnd(int y1, int y2)
    {
        const int up = upward(y1, y2);
        return crosses(y1, y2) ? (y2 & 63) | (~up & lowerEnds) : withinRow + (((y2 - y1) ^ up) - up);
    }

    const PairSums *data() const { return entries.data(); }
    const PairSums &at(int place, int end) const { return data()[place * perPlace + end]; }
    const PairSums &unit(int place) const { return at(place, withinRow + 1); }

private:
    // The upper ends stand first.
    static constexpr int lowerEnds = 64;
    static constexpr int withinRow = 2 * 64;

    static bool crosses(int y1, int y2) { return ((y1 ^ y2) & ~63) != 0; }
    static int upward(int y1, int y2) { return (y2 - y1) >> 31; } // all ones, or 0

    std::vector<PairSums> entries = std::vector<PairSums>(std::size_t(places) * perPlace);
};
