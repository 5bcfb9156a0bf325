// SPDX-License-Identifier: GPL-3.0-or-later
// The samples that the plot keeps, and how far they reach.
#include "scope/plotdata.h"

#include <QTest>

using List = QVector<double>;

class PlotDataTest : public QObject
{
    Q_OBJECT

private slots:
    void firstBatchIsThrownAway();
    void channelsGoOnTogether();
    void oldestBlocksGoWhenTheLimitIsPassed();
    void extremesPassOverWhatIsNoNumber();
    void spanFollowsTheSamples();
};

void PlotDataTest::firstBatchIsThrownAway()
{
    PlotData data;
    const QVector<bool> visible(4, true);
    data.receive({List{1, 2}, {}, {}, {}}, visible);
    QVERIFY(!data.isEmpty);
    QVERIFY(data.channelPoints[0].isEmpty());
    QCOMPARE(data.curX[0], 0.0);
    data.receive({List{3, 4, -5}, {}, {}, {}}, visible);
    QCOMPARE(data.channelPoints[0].size(), 3);
    QCOMPARE(data.channelPoints[0].at(2), QPointF(2.5, -5));
    QCOMPARE(data.channelMax[0], 4.0);
    QCOMPARE(data.channelMin[0], -5.0);
    data.clear();
    QVERIFY(data.isEmpty);
    QVERIFY(data.channelPoints[0].isEmpty());
    QCOMPARE(data.channelMax[0], -4294967295.0);
    QCOMPARE(data.channelMin[0], 4294967295.0);
    QCOMPARE(data.curX[0], 0.0);
    QCOMPARE(data.xEnd[0], 600000.0);
}

void PlotDataTest::channelsGoOnTogether()
{
    PlotData data;
    const QVector<bool> visible{true, true, false, true};
    data.receive({}, visible);
    data.receive({List{1, 1}, List{1, 1, 1, 1}, List(9, 1.0), {}}, visible);
    for (int c = 0; c < plotChannels; ++c)
        QCOMPARE(data.curX[c], 5.0);
    data.receive({List{2}, {}, {}, {}}, visible);
    QCOMPARE(data.channelPoints[0].last(), QPointF(5, 2));
    data.receive({List{3}, {}, {}, {}}, QVector<bool>(4, false));
    QCOMPARE(data.curX[0], 0.0);
}

void PlotDataTest::oldestBlocksGoWhenTheLimitIsPassed()
{
    PlotData data;
    const QVector<bool> visible(4, true);
    data.receive({}, visible);
    data.receive({List(800000, 1.0), {}, {}, {}}, visible);
    data.receive({List(25000, 2.0), {}, {}, {}}, visible);
    QCOMPARE(data.channelPoints[0].size(), 825000);
    data.receive({List(1, 3.0), {}, {}, {}}, visible);
    QCOMPARE(data.channelPoints[0].size(), 795001);
    QCOMPARE(data.channelPoints[0].at(0), QPointF(30000 * 1.25, 1));
    QCOMPARE(data.channelPoints[0].last(), QPointF(825000 * 1.25, 3));
}

void PlotDataTest::extremesPassOverWhatIsNoNumber()
{
    PlotData data;
    const QVector<bool> visible(4, true);
    data.receive({}, visible);
    data.receive({List{qInf(), qQNaN(), -qInf(), 4}, {}, {}, {}}, visible);
    QCOMPARE(data.channelMax[0], 4.0);
    QCOMPARE(data.channelMin[0], 4.0);
    QCOMPARE(data.channelPoints[0].size(), 4);
    QVERIFY(data.channelPoints[0].hasNonFinite());
}

void PlotDataTest::spanFollowsTheSamples()
{
    PlotData data;
    const QVector<bool> visible(4, true);
    data.receive({}, visible);
    data.receive({List{1, 2}, {}, {}, {}}, visible);
    QCOMPARE(data.xEnd[0], 600000.0);
    data.followSpan();
    QCOMPARE(data.xEnd[0], 2.5);
    QCOMPARE(data.xStart[0], 0.0);
    QCOMPARE(data.lastValue, (List{2, 0, 0, 0}));
    data.receive({List(481600, 7.0), {}, {}, {}}, visible);
    data.followSpan();
    QCOMPARE(data.xEnd[0], 602002.5);
    QCOMPARE(data.xStart[0], 2002.5);
}

QTEST_APPLESS_MAIN(PlotDataTest)
#include "tst_plotdata.moc"
