// SPDX-License-Identifier: GPL-3.0-or-later
// Sums up the segments of dense samples, which stand nearly upright between two columns, before they go into
// the coverage's table. What a sample costs in the left and in the right column is added at once, and the
// rows in use stay in the processor's nearest memory. One thread; owned by the coverage.
#pragma once

#include "scope/endcosts.h"

#include <cstdint>
#include <vector>

class ColumnPair
{
public:
    // Room for rows from -padding on. hasMiddle: the pen is wider than a pixel and covers columns between the
    // two wholly.
    void reset(int rows, int padding, bool hasMiddle);
    // The costs of covering a pixel by so many 255ths.
    void setCosts(const uint32_t *costs) { table.set(costs); }

    // A segment in 64ths of a pixel, at its place between the columns.
    void addSegment(int place, int y1, int y2)
    {
        addSegment(place, y1, y2, cells());
        if (isWide)
            addSegment(0, y1, y2, middleCells());
    }
    // The same for segments of a length of 1, one after another from low to high.
    void addUnits(int place, int low, int high);

    bool hasMiddle() const { return isWide; }
    // count segments, one after another: entries of the table for the two ends of each.
    void addSegments(const int *ys, const int *firstEnds, const int *secondEnds, int count)
    {
        addSegments(ys, firstEnds, secondEnds, count, cells());
    }
    // The same for the columns in the middle, which they cover wholly: the entries are those of place 0.
    void addMiddle(const int *ys, const int *firstEnds, const int *secondEnds, int count)
    {
        addSegments(ys, firstEnds, secondEnds, count, middleCells());
    }

    // Differences down the column, as the coverage keeps them: adds those of the rows from top to bottom.
    void addOuterTo(uint32_t *leftColumn, uint32_t *rightColumn, int top, int bottom) const;
    void addMiddleTo(uint32_t *column, int top, int bottom) const;
    void clear(int top, int bottom);

private:
    void addSegment(int place, int y1, int y2, PairSums *rows);
    void addSegments(const int *ys, const int *firstEnds, const int *secondEnds, int count, PairSums *rows);
    PairSums *cells() { return sums.data() + offset; }
    const PairSums *cells() const { return sums.data() + offset; }
    PairSums *middleCells() { return middleSums.data() + offset; }
    const PairSums *middleCells() const { return middleSums.data() + offset; }

    EndCosts table;
    std::vector<PairSums> sums;
    std::vector<PairSums> middleSums; // its left column alone; empty without a middle
    int offset = 0;
    bool isWide = false;
};

inline void ColumnPair::addSegment(int place, int y1, int y2, PairSums *rows)
{
    PairSums &first = rows[y1 >> 6];
    first = first + table.at(place, EndCosts::firstEnd(y1, y2));
    PairSums &second = rows[y2 >> 6];
    second = second + table.at(place, EndCosts::secondEnd(y1, y2));
}
