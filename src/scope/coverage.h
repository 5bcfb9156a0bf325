// SPDX-License-Identifier: GPL-3.0-or-later
// Sums up how much of each pixel the segments of one antialiased polyline cover. A segment painted over
// another lets a part of it through; here the logarithms of these parts are added, each as two entries of a
// table of differences along its column. One thread; owned by the curve that it belongs to.
#pragma once

#include "scope/columnpair.h"
#include "scope/pointchain.h"

#include <QSize>
#include <QVector>
#include <QtGlobal>

#include <cstddef>
#include <cstdint>
#include <vector>

// A segment in 64ths of a pixel, from the top left of the table.
struct FixedLine
{
    int x1 = 0;
    int y1 = 0;
    int x2 = 0;
    int y2 = 0;
    bool hasBeginCap = false; // prolonged by half the pen's width
    bool hasEndCap = false;
};

// From top to bottom; bottom above top for none.
struct RowRange
{
    int top = 0;
    int bottom = -1;

    bool isEmpty() const { return bottom < top; }
    int count() const { return bottom - top + 1; }
    bool holds(int row) const { return row >= top && row <= bottom; }
    RowRange intersected(const RowRange &other) const
    {
        return {qMax(top, other.top), qMin(bottom, other.bottom)};
    }
    RowRange united(const RowRange &other) const
    {
        if (isEmpty())
            return other;
        return other.isEmpty() ? *this : RowRange{qMin(top, other.top), qMax(bottom, other.bottom)};
    }
};

class Coverage
{
public:
    // Coordinates outside the table by more than this, in pixels, must have been cut off before.
    static constexpr int reach = 3;

    // The pen's greatest width, in pixels.
    static constexpr int widestPen = 4;

    // Empties the table. No pixel is crossed by more than this many segments; the pen's width is in whole
    // pixels.
    void reset(const QSize &newSize, double maxCrossings, int newPenWidth);

    void add(const FixedLine &line);
    void subtract(const FixedLine &line);
    // Adds the segments between neighbours, without caps.
    void addChain(const PointChain &chain);
    // Adds segments of a length of 1, one after another from x1 to x2 at the same y.
    void addLevel(int x1, int x2, int y);
    // What was added counts once this has been called.
    void settle();

    int columns() const { return size.width(); }
    // Rows of the table that may be covered in the column.
    RowRange rowsInUse(int column) const { return inUse.data()[column + padding]; }
    // Writes how opaque the rows of a column are, from 0 to 255; next is the way from one row to the next.
    void opacities(int column, const RowRange &rows, uchar *to, std::ptrdiff_t next) const;

    // Columns touched since takeDirty(); first beyond last for none.
    int dirtyFirst() const { return firstDirty; }
    int dirtyLast() const { return lastDirty; }
    void takeDirty();

private:
    // Rows and columns around the table that a segment may reach, the pen's width and its caps included.
    static constexpr int padding = 12;
    // Segments at most this wide, in 64ths, and higher than wide count as upright.
    static constexpr int narrow = 4;
    static constexpr int noColumn = -1000;

    uint32_t *at(int index) { return cells + index * stride; }
    const uint32_t *at(int index) const { return cells + index * stride; }
    void clearRowsInUse();
    // Columns between these 64ths are about to change within these rows.
    void touch(int x1, int x2, const RowRange &rows);
    // The rows that segments between these 64ths may reach.
    RowRange rowsAround(int y1, int y2) const;

    void beginChain(int x1, int x2, int y1, int y2);
    void addSparse(const PointChain &chain);
    void addSlow(const PointChain &chain);
    void addDense(const PointChain &chain);
    void addFlatSteps(const PointChain &chain);
    // A segment with x in the middle.
    void addUpright(int x, int y1, int y2) { pair.addSegment(moveTo(x), y1, y2); }
    // Segments of a length of 1 that go from y1 to y2.
    void addUnits(int x, int y1, int y2);
    // Takes the pair of columns between which the pen covers this x; returns the place between them.
    int moveTo(int x)
    {
        const int left = x - 32 * penWidth;
        if ((left >> 6) != pairColumn)
            beginPair(left >> 6);
        return left & 63;
    }
    void beginPair(int column);
    void line(const FixedLine &line);
    void strip(int column, int alpha, int y1, int y2);
    void steep(FixedLine line);
    void steepRows(int x, int xStep, int y1, int y2, int atOnce);
    void flat(FixedLine line);
    void flatStep(int x, int y1, int y2);
    void flatColumn(int column, int y, int part, uint32_t times = 1);
    void makeTables(int bits);

    QSize size;
    int stride = 0;
    int penWidth = 1;
    int xOffset = 0;
    int costBits = -1;
    uint32_t costs[256] = {}; // of covering by so many 255ths; negated while a segment is taken back
    int opacityShift = 0;
    QVector<uchar> opacityOf; // the last one is that of all larger sums
    std::vector<uint32_t> table;
    uint32_t *cells = nullptr;   // the top left one in it
    std::vector<RowRange> inUse; // of the columns, from -padding on
    int firstDirty = 0;
    int lastDirty = -1;

    ColumnPair pair;
    int pairColumn = noColumn; // the left one
    RowRange chainRows;        // of the segments that are being added
    RowRange pairRows;         // of those that stand in the pair
};
