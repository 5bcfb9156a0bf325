// SPDX-License-Identifier: GPL-3.0-or-later
// Sums up how much of each pixel the segments of one antialiased polyline cover. A segment painted over
// another lets a part of it through; here the logarithms of these parts are added, each as two entries of a
// table of differences along its column. One thread; owned by the curve that it belongs to.
#pragma once

#include <QSize>
#include <QVector>
#include <QtGlobal>

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
    // Tells that columns between these 64ths are about to change, for addNarrow().
    void touch(int x1, int x2)
    {
        firstDirty = qMin(firstDirty, qMax(0, (qMin(x1, x2) >> 6) - penWidth - 1));
        lastDirty = qMax(lastDirty, qMin(size.width() - 1, (qMax(x1, x2) >> 6) + penWidth + 1));
    }
    // Adds what most segments of dense samples are: without caps, at most narrow units wide, higher than
    // wide.
    void addNarrow(int x1, int y1, int x2, int y2)
    {
        const int x = (x1 + x2) * 512 + xOffset;
        const int alpha = (x >> 8) & 0xff;
        const int column = x >> 16;
        if (y1 > y2)
            qSwap(y1, y2);
        strip(column, 255 - alpha, y1, y2);
        for (int c = 1; c < penWidth; ++c)
            strip(column + c, 255, y1, y2);
        strip(column + penWidth, alpha, y1, y2);
    }
    static constexpr int narrow = 4;

    int columns() const { return size.width(); }
    int rows() const { return size.height(); }
    // Differences down the column: what stands in a row is their sum down to that row, and above(index).
    const uint32_t *column(int index) const { return at(index); }
    uint32_t above(int index) const;
    // Opacity from 0 to 255 of such a sum.
    uint opacity(uint32_t sum) const
    {
        const uint32_t index = sum >> opacityShift;
        return index < static_cast<uint32_t>(opacities.size()) ? opacities[static_cast<int>(index)] : 255U;
    }

    // Columns touched since takeDirty(); first beyond last for none.
    int dirtyFirst() const { return firstDirty; }
    int dirtyLast() const { return lastDirty; }
    void takeDirty();

private:
    // Rows and columns around the table that a segment may reach, the pen's width and its caps included.
    static constexpr int padding = 12;

    uint32_t *at(int index) { return cells + index * stride; }
    const uint32_t *at(int index) const { return cells + index * stride; }
    // Covers a column from y1 to y2, y1 <= y2, by alpha of 255.
    void strip(int column, int alpha, int y1, int y2)
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
    void line(FixedLine line);
    void steep(FixedLine line);
    void steepRows(int x, int xStep, int y1, int y2, int atOnce);
    void flat(FixedLine line);
    void flatColumn(int column, int y, int part);
    void makeTables(int bits);

    QSize size;
    int stride = 0;
    int penWidth = 1;
    int xOffset = 0;
    int costBits = -1;
    uint32_t costs[256] = {}; // of covering by so many 255ths; negated while a segment is taken back
    int opacityShift = 0;
    QVector<uchar> opacities;
    std::vector<uint32_t> table;
    uint32_t *cells = nullptr; // the top left one in it
    int firstDirty = 0;
    int lastDirty = -1;
};
