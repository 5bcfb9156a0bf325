// SPDX-License-Identifier: GPL-3.0-or-later
#include "scope/pointtrack.h"

#include <QTest>

#include <cmath>

using List = QVector<double>;

namespace {

List counting(int count, int from = 0)
{
    List values(count);
    for (int i = 0; i < count; ++i)
        values[i] = from + i;
    return values;
}

// The rules in their plain form: look at every sample.
int plainFirstAtX(const PointTrack &track, double v)
{
    for (int i = 0; i < track.size(); ++i)
        if (static_cast<qint64>(track.at(i).x()) == static_cast<qint64>(v))
            return i;
    return -1;
}

List plainBetween(const PointTrack &track, double v1, double v2)
{
    List values;
    for (int i = 0; i < track.size(); ++i) {
        const auto x = static_cast<qint64>(track.at(i).x());
        if (x > static_cast<qint64>(v2))
            break;
        if (x >= static_cast<qint64>(v1))
            values.append(track.at(i).y());
    }
    return values;
}

List between(const PointTrack &track, double v1, double v2)
{
    List values;
    const auto ranges = track.between(v1, v2);
    for (const PointTrack::Range &range : ranges)
        track.visit(range, [&values](const double *y, int count) {
            for (int i = 0; i < count; ++i)
                values.append(y[i]);
        });
    return values;
}

PointTrack jumping()
{
    PointTrack track;
    track.append(0.0, counting(700));
    track.append(1000.0, counting(300, 700));
    track.append(250.0, counting(500, 1000));
    track.append(0.0, counting(20, 1500));
    return track;
}

} // namespace

class PlotPointsTest : public QObject
{
    Q_OBJECT

private slots:
    void samplesStandInTheirPlaces();
    void jumpsOfTheTimeBeginARun();
    void sampleOfAPixelIsTheFirstOfItsInteger_data();
    void sampleOfAPixelIsTheFirstOfItsInteger();
    void spanEndsAtTheFirstSampleBeyond_data();
    void spanEndsAtTheFirstSampleBeyond();
    void searchesAgreeWithLookingAtEverySample();
    void valueIsFoundWhereItFirstStands();
    void removedBlocksTakeTheirRunsWithThem();
    void copyStaysWhatItWas();
};

void PlotPointsTest::samplesStandInTheirPlaces()
{
    PointTrack track;
    QVERIFY(track.isEmpty());
    track.append(0.0, counting(9999));
    track.append(9999 * 1.25, counting(3, 9999));
    QCOMPARE(track.size(), 10002);
    QCOMPARE(track.at(0), QPointF(0, 0));
    QCOMPARE(track.at(9999), QPointF(12498.75, 9999));
    QCOMPARE(track.at(10001), QPointF(12501.25, 10001));
    QCOMPARE(track.last(), track.at(10001));
    QCOMPARE(track.runs().size(), 1);
    track.clear();
    QVERIFY(track.isEmpty());
    QVERIFY(track.runs().isEmpty());
}

void PlotPointsTest::jumpsOfTheTimeBeginARun()
{
    const PointTrack track = jumping();
    const auto runs = track.runs();
    QCOMPARE(runs.size(), 4);
    QCOMPARE(runs.at(2).first, 1000);
    QCOMPARE(runs.at(2).count, 500);
    QCOMPARE(runs.at(2).x0, 250.0);
    QCOMPARE(track.at(699), QPointF(873.75, 699));
    QCOMPARE(track.at(700), QPointF(1000, 700));
    QCOMPARE(track.at(1001), QPointF(251.25, 1001));
}

void PlotPointsTest::sampleOfAPixelIsTheFirstOfItsInteger_data()
{
    QTest::addColumn<double>("x");
    QTest::addColumn<int>("index");
    QTest::newRow("first") << 0.0 << 0;
    QTest::newRow("cut to 0") << 0.99 << 0;
    QTest::newRow("cut to 0 from below") << -0.5 << 0;
    QTest::newRow("1.25") << 1.0 << 1;
    QTest::newRow("3.75") << 3.2 << 3;
    QTest::newRow("no sample at 4") << 4.9 << -1;
    QTest::newRow("5") << 5.0 << 4;
    QTest::newRow("last") << 123.0 << 99;
    QTest::newRow("beyond") << 125.0 << -1;
    QTest::newRow("before") << -3.0 << -1;
    QTest::newRow("beyond all integers") << 1e30 << -1;
}

void PlotPointsTest::sampleOfAPixelIsTheFirstOfItsInteger()
{
    QFETCH(double, x);
    QFETCH(int, index);
    PointTrack track;
    track.append(0.0, counting(100));
    QCOMPARE(track.firstAtX(x), index);
}

void PlotPointsTest::spanEndsAtTheFirstSampleBeyond_data()
{
    QTest::addColumn<double>("x1");
    QTest::addColumn<double>("x2");
    QTest::addColumn<List>("values");
    QTest::newRow("all") << 0.0 << 1e9 << counting(9);
    QTest::newRow("integers count") << 2.9 << 5.1 << List{2, 3, 4};
    QTest::newRow("one") << 5.0 << 5.0 << List{4};
    QTest::newRow("between two samples") << 4.0 << 4.9 << List{};
    QTest::newRow("reversed") << 5.0 << 2.0 << List{};
    QTest::newRow("before all") << -9.0 << -2.0 << List{};
    QTest::newRow("beyond all") << 100.0 << 200.0 << List{};
}

void PlotPointsTest::spanEndsAtTheFirstSampleBeyond()
{
    QFETCH(double, x1);
    QFETCH(double, x2);
    QFETCH(List, values);
    PointTrack track;
    track.append(0.0, counting(9));
    QCOMPARE(between(track, x1, x2), values);
}

void PlotPointsTest::searchesAgreeWithLookingAtEverySample()
{
    const PointTrack track = jumping();
    for (double v = 0; v < 1500; v += 0.75)
        QCOMPARE(track.firstAtX(v), plainFirstAtX(track, v));
    for (double v1 = 0; v1 < 1400; v1 += 33.3)
        for (double v2 = 0; v2 < 1400; v2 += 47.1)
            QCOMPARE(between(track, v1, v2), plainBetween(track, v1, v2));
}

void PlotPointsTest::valueIsFoundWhereItFirstStands()
{
    PointTrack track;
    List values = counting(25000);
    values[12] = values[23456] = -7;
    values[3] = qQNaN();
    track.append(0.0, values);
    QCOMPARE(track.firstOfValue(-7), 12);
    QCOMPARE(track.firstOfValue(23455), 23455);
    QCOMPARE(track.firstOfValue(0.5), -1);
    QCOMPARE(track.firstOfValue(30000), -1);
    QCOMPARE(track.firstOfValue(qQNaN()), -1);
    QVERIFY(track.hasNonFinite());
}

void PlotPointsTest::removedBlocksTakeTheirRunsWithThem()
{
    PointTrack track;
    track.append(0.0, counting(4000));
    track.append(90000.0, counting(12000, 4000));
    track.append(7.5, counting(9000, 16000));
    QCOMPARE(track.runs().size(), 3);
    track.removeOldestBlock();
    QCOMPARE(track.size(), 15000);
    QCOMPARE(track.removedCount(), qint64(10000));
    QCOMPARE(track.runs().size(), 2);
    QCOMPARE(track.at(0), QPointF(97500, 10000));
    QCOMPARE(track.at(6000), QPointF(7.5, 16000));
    QCOMPARE(track.firstAtX(97500), 0);
    track.removeOldestBlock();
    QCOMPARE(track.runs().size(), 1);
    QCOMPARE(track.at(0), QPointF(7.5 + 4000 * 1.25, 20000));
    track.append(track.last().x() + 1.25, {1});
    QCOMPARE(track.runs().size(), 1);
}

void PlotPointsTest::copyStaysWhatItWas()
{
    PointTrack track;
    track.append(0.0, counting(15000));
    const PointTrack copy = track;
    track.append(15000 * 1.25, counting(20000, 15000));
    track.removeOldestBlock();
    QCOMPARE(copy.size(), 15000);
    QCOMPARE(copy.at(14999), QPointF(18748.75, 14999));
    QCOMPARE(copy.at(0).y(), 0.0);
    QCOMPARE(copy.id(), track.id());
    track.clear();
    track.append(0.0, {1});
    QVERIFY(copy.id() != track.id());
}

QTEST_APPLESS_MAIN(PlotPointsTest)
#include "tst_plotpoints.moc"
