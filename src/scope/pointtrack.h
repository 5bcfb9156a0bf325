// SPDX-License-Identifier: GPL-3.0-or-later
// The samples that the plot keeps of one channel. Only y is stored: samples stand sampleStep apart, so x
// follows from the index within a run of samples without a jump. One thread appends and removes. A copy costs
// nothing and is a picture of the moment: it shares the samples, which never move, and another thread may
// read it meanwhile. A copy is not appended to.
#pragma once

#include <QPointF>
#include <QVector>

#include <array>
#include <memory>

class PointTrack
{
public:
    static constexpr double sampleStep = 1.25; // plot units of 0.1 ms
    static constexpr int blockSize = 10000;

    // Neighbouring samples that stand sampleStep apart, the first one at x0.
    struct Run
    {
        int first = 0;
        int count = 0;
        double x0 = 0;
    };
    struct Range
    {
        int first = 0;
        int count = 0;
    };
    // Of the finite ones among some samples.
    struct Extent
    {
        double min = 0;
        double max = 0;
        int nonFinite = 0;
    };

    void append(double x, const QVector<double> &values);
    // Removes the oldest blockSize samples; there must be as many.
    void removeOldestBlock();
    void clear();

    int size() const { return count; }
    bool isEmpty() const { return count == 0; }
    QPointF at(int index) const;
    QPointF last() const { return at(count - 1); }
    double valueAt(int index) const;
    // True when a sample is kept that is no finite number.
    bool hasNonFinite() const { return nonFinite > 0; }
    // Of all samples that lie in one block with this one.
    const Extent &extentAround(int index) const { return extents.at(index / blockSize); }

    // In the order of arrival. More than one only where x has jumped.
    QVector<Run> runs() const;
    // Index of the first sample whose x, cut to an integer, equals v, cut likewise; -1 if there is none.
    int firstAtX(double v) const;
    // Index of the first sample of exactly this y, -1 if there is none.
    int firstOfValue(double y) const;
    // The samples with x, cut to an integer, from v1 to v2, both cut likewise. The search goes through the
    // samples in order and ends at the first one beyond.
    QVector<Range> between(double v1, double v2) const;

    // Calls visitor(const double *values, int count) for each piece of the range that lies in one block.
    template <typename Visitor>
    void visit(const Range &range, Visitor &&visitor) const
    {
        int index = range.first;
        int left = range.count;
        while (left > 0) {
            const int offset = index % blockSize;
            const int piece = qMin(left, blockSize - offset);
            visitor(blocks.at(index / blockSize)->values.data() + offset, piece);
            index += piece;
            left -= piece;
        }
    }

    // Two pictures of one track: of the same id, the later one holds what the earlier one held, less what
    // removedCount() says, and what came since.
    quint64 id() const { return trackId; }
    qint64 removedCount() const { return removed; }

private:
    struct Block
    {
        std::array<double, blockSize> values;
    };
    struct Start
    {
        qint64 first = 0; // counted from the first sample ever appended
        double x0 = 0;
    };

    void appendValue(double y);
    double xOf(const Start &start, int index) const;
    // The samples of a run that reach and those that do not pass this integer part.
    static int countBelow(const Run &run, double whole);

    QVector<std::shared_ptr<Block>> blocks; // all but the last one full
    QVector<Extent> extents;                // of the blocks
    QVector<Start> starts;
    int count = 0;
    int nonFinite = 0;
    qint64 removed = 0;
    quint64 trackId = 0;
    double nextX = 0;
};
