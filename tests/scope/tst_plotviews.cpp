// SPDX-License-Identifier: GPL-3.0-or-later
#include "scope/plotdata.h"
#include "scope/viewrules.h"

#include <QTest>

using List = QVector<double>;

namespace {

// Data that reach over these spans, one element a channel.
PlotExtents extents(const List &lowest, const List &highest, double xStart = 0, double xEnd = 600000)
{
    PlotExtents e;
    for (int c = 0; c < plotChannels; ++c) {
        e.channelMin[c] = lowest.at(c);
        e.channelMax[c] = highest.at(c);
        e.xStart[c] = xStart;
        e.xEnd[c] = e.curX[c] = xEnd;
    }
    return e;
}

PlotExtents spanning(double xStart, double xEnd)
{
    return extents({0, 0, 0, 0}, {0, 0, 0, 0}, xStart, xEnd);
}

PlotSettings window(double minX, double maxX, double minY = -1000, double maxY = 1000)
{
    PlotSettings s;
    for (int c = 0; c < plotChannels; ++c) {
        s.minX[c] = s.lastMinX[c] = minX;
        s.maxX[c] = s.lastMaxX[c] = maxX;
        s.minY[c] = minY;
        s.maxY[c] = maxY;
    }
    return s;
}

ViewSwitches selecting(const QVector<bool> &channels)
{
    ViewSwitches switches;
    switches.zoomChannel = channels;
    return switches;
}

} // namespace

class PlotViewsTest : public QObject
{
    Q_OBJECT

private slots:
    void stepsAreNineADecade();
    void symmetricRangeLiesStrictlyBeyondThePeak_data();
    void symmetricRangeLiesStrictlyBeyondThePeak();
    void rollingWindowStandsForAMinuteAndThenSlides();
    void rollingTakesTheCommonRangeOfWhatIsVisible_data();
    void rollingTakesTheCommonRangeOfWhatIsVisible();
    void showingAllTakesSymmetricRanges();
    void adjustingLeavesATenthOfMargin();
    void adjustingAlikeDataLeavesOne();
    void adjustingEachChannelLeavesItsDecimalsMargin();
    void commonCoordinateFollowsTheData();
    void individualCoordinateLeavesTheTime_data();
    void individualCoordinateLeavesTheTime();
    void zoomInTakesATenthFromEachEdge_data();
    void zoomInTakesATenthFromEachEdge();
    void zoomOutStopsAtTheData_data();
    void zoomOutStopsAtTheData();
    void shiftLeftStopsAtTheEnd_data();
    void shiftLeftStopsAtTheEnd();
    void shiftRightStopsAtTheStart_data();
    void shiftRightStopsAtTheStart();
    void verticalShiftMovesTheWave();
    void shiftTakesAllChannelsWhereNoneIsSelected();
    void rubberBandBecomesTheWindow_data();
    void rubberBandBecomesTheWindow();
    void firstBatchIsThrownAway();
    void channelsGoOnTogether();
    void oldestBlocksGoWhenTheLimitIsPassed();
    void extremesPassOverWhatIsNoNumber();
    void spanFollowsTheSamples();
};

void PlotViewsTest::stepsAreNineADecade()
{
    const QVector<double> &steps = viewrules::stepTable();
    QCOMPARE(steps.size(), 225);
    QCOMPARE(steps.first(), 1.0);
    QCOMPARE(steps.at(8), 9.0);
    QCOMPARE(steps.at(9), 10.0);
    QCOMPARE(steps.at(38), 30000.0);
    QCOMPARE(steps.last(), 9e24);
}

void PlotViewsTest::symmetricRangeLiesStrictlyBeyondThePeak_data()
{
    QTest::addColumn<double>("lowest");
    QTest::addColumn<double>("highest");
    QTest::addColumn<double>("reach");
    QTest::newRow("nothing") << 0.0 << 0.0 << 5.0;
    QTest::newRow("exactly five") << 0.0 << 5.0 << 10.0;
    QTest::newRow("just below five") << -4.99 << 0.0 << 5.0;
    QTest::newRow("1234 and -8000") << -8000.0 << 1234.0 << 10000.0;
    QTest::newRow("next decade") << 0.0 << 47.0 << 50.0;
    QTest::newRow("exactly fifty") << 0.0 << 50.0 << 100.0;
    QTest::newRow("last step") << 0.0 << 44e24 << 45e24;
    QTest::newRow("beyond all steps") << -45e24 << 0.0 << 450e24;
}

void PlotViewsTest::symmetricRangeLiesStrictlyBeyondThePeak()
{
    QFETCH(double, lowest);
    QFETCH(double, highest);
    QFETCH(double, reach);
    const ValueRange range = viewrules::symmetricRange(lowest, highest);
    QCOMPARE(range.max, reach);
    QCOMPARE(range.min, -reach);
}

void PlotViewsTest::rollingWindowStandsForAMinuteAndThenSlides()
{
    const ViewSwitches switches;
    PlotSettings s = viewrules::rolled(window(1, 2), spanning(0, 600000), switches);
    QCOMPARE(s.minX[2], 1.0);
    QCOMPARE(s.maxX[2], 2.0);
    s = viewrules::rolled(window(1, 2), spanning(2000, 602000), switches);
    for (int c = 0; c < plotChannels; ++c) {
        QCOMPARE(s.minX[c], 2000.0);
        QCOMPARE(s.maxX[c], 602000.0);
        QCOMPARE(s.lastMinX[c], 2000.0);
        QCOMPARE(s.lastMaxX[c], 602000.0);
    }
}

void PlotViewsTest::rollingTakesTheCommonRangeOfWhatIsVisible_data()
{
    QTest::addColumn<QVector<bool>>("visible");
    QTest::addColumn<bool>("individual");
    QTest::addColumn<double>("maxY");
    using Flags = QVector<bool>;
    QTest::newRow("all") << Flags{true, true, true, true} << false << 10000.0;
    QTest::newRow("without the largest") << Flags{true, false, true, true} << false << 1500.0;
    QTest::newRow("none") << Flags{false, false, false, false} << false << 5.0;
    QTest::newRow("individual keeps its range") << Flags{true, true, true, true} << true << 77.0;
}

void PlotViewsTest::rollingTakesTheCommonRangeOfWhatIsVisible()
{
    QFETCH(QVector<bool>, visible);
    QFETCH(bool, individual);
    QFETCH(double, maxY);
    ViewSwitches switches;
    switches.visible = visible;
    switches.individualCoordinate = individual;
    const PlotSettings s =
        viewrules::rolled(window(0, 600000, -77, 77), extents({0, -8000, 0, 0}, {1234, 0, 1, 2}), switches);
    for (int c = 0; c < plotChannels; ++c) {
        QCOMPARE(s.maxY[c], maxY);
        QCOMPARE(s.minY[c], -maxY);
    }
}

void PlotViewsTest::showingAllTakesSymmetricRanges()
{
    const PlotExtents e = extents({0, -8000, 0, 0}, {1234, 0, 7, 0}, 100, 700000);
    ViewSwitches switches;
    PlotSettings s = viewrules::showingAll(e, switches);
    for (int c = 0; c < plotChannels; ++c) {
        QCOMPARE(s.maxY[c], 10000.0);
        QCOMPARE(s.minX[c], 100.0);
        QCOMPARE(s.lastMinX[c], 100.0);
        QCOMPARE(s.maxX[c], 700000.0);
        QCOMPARE(s.lastMaxX[c], 700000.0);
    }
    switches.individualCoordinate = true;
    s = viewrules::showingAll(e, switches);
    QCOMPARE(s.maxY[0], 1500.0);
    QCOMPARE(s.minY[1], -10000.0);
    QCOMPARE(s.maxY[2], 10.0);
    QCOMPARE(s.maxY[3], 5.0);
    s = viewrules::showingAll(spanning(0, 1000), switches);
    QCOMPARE(s.maxX[0], 600000.0);
}

void PlotViewsTest::adjustingLeavesATenthOfMargin()
{
    ViewSwitches switches;
    switches.visible[3] = false;
    const PlotSettings s =
        viewrules::adjusted(extents({0, -100, 0, -9999}, {900, 0, 7, 9999}, 50, 500000), switches);
    for (int c = 0; c < plotChannels; ++c) {
        QCOMPARE(s.minY[c], -200.0);
        QCOMPARE(s.maxY[c], 1000.0);
        QCOMPARE(s.minX[c], 50.0);
        QCOMPARE(s.maxX[c], 600000.0);
    }
}

void PlotViewsTest::adjustingAlikeDataLeavesOne()
{
    const PlotSettings s = viewrules::adjusted(extents({7, 7, 7, 7}, {7, 7, 7, 7}), ViewSwitches());
    QCOMPARE(s.minY[0], 6.0);
    QCOMPARE(s.maxY[0], 8.0);
    // Channels without data count as 0.
    const PlotSettings empty = viewrules::adjusted(PlotExtents(), ViewSwitches());
    QCOMPARE(empty.minY[0], -1.0);
    QCOMPARE(empty.maxY[0], 1.0);
}

void PlotViewsTest::adjustingEachChannelLeavesItsDecimalsMargin()
{
    ViewSwitches switches;
    switches.individualCoordinate = true;
    switches.decimals = {0, 1, 2, 0};
    const PlotSettings s = viewrules::adjusted(extents({-3, 2, 4, 0}, {5, 2.5, 4.5, 0}), switches);
    const List minY{-4, 1.9, 3.99, -1};
    const List maxY{6, 2.6, 4.51, 1};
    for (int c = 0; c < plotChannels; ++c) {
        QCOMPARE(s.minY[c], minY.at(c));
        QCOMPARE(s.maxY[c], maxY.at(c));
    }
}

void PlotViewsTest::commonCoordinateFollowsTheData()
{
    PlotData data;
    static_cast<PlotExtents &>(data) = extents({0, 0, 0, 0}, {90, 100, 0, 0}, 300, 700000);
    data.isEmpty = false;
    const PlotSettings s = viewrules::withCoordinate(window(5, 6), data, ViewSwitches());
    QCOMPARE(s.minX[1], 300.0);
    QCOMPARE(s.maxX[1], 700000.0);
    QCOMPARE(s.lastMinX[1], 5.0);
    QCOMPARE(s.minY[1], -10.0);
    QCOMPARE(s.maxY[1], 110.0);
}

void PlotViewsTest::individualCoordinateLeavesTheTime_data()
{
    QTest::addColumn<bool>("isEmpty");
    QTest::addColumn<List>("maxY");
    QTest::newRow("data") << false << List{100, 150, 5, 5};
    QTest::newRow("none yet") << true << List{1000, 1000, 1000, 1000};
}

void PlotViewsTest::individualCoordinateLeavesTheTime()
{
    QFETCH(bool, isEmpty);
    QFETCH(List, maxY);
    PlotData data;
    static_cast<PlotExtents &>(data) = extents({0, 0, 0, 0}, {90, 100, 0, 0}, 300, 700000);
    data.isEmpty = isEmpty;
    ViewSwitches switches;
    switches.individualCoordinate = true;
    const PlotSettings s = viewrules::withCoordinate(window(5, 6), data, switches);
    for (int c = 0; c < plotChannels; ++c) {
        QCOMPARE(s.minX[c], 5.0);
        QCOMPARE(s.maxX[c], 6.0);
        QCOMPARE(s.maxY[c], maxY.at(c));
        QCOMPARE(s.minY[c], -maxY.at(c));
    }
}

void PlotViewsTest::zoomInTakesATenthFromEachEdge_data()
{
    QTest::addColumn<bool>("time");
    QTest::addColumn<bool>("value");
    QTest::addColumn<List>("zoomed"); // minX, maxX, minY, maxY, lastMinX
    QTest::newRow("both") << true << true << List{1200, 2800, -800, 800, 1200};
    QTest::newRow("time") << true << false << List{1200, 2800, -1000, 1000, 1200};
    QTest::newRow("value") << false << true << List{1000, 3000, -800, 800, 1000};
    QTest::newRow("neither") << false << false << List{1000, 3000, -1000, 1000, 1000};
}

void PlotViewsTest::zoomInTakesATenthFromEachEdge()
{
    QFETCH(bool, time);
    QFETCH(bool, value);
    QFETCH(List, zoomed);
    ViewSwitches switches = selecting({false, true, false, false});
    switches.zoomTimeAxis = time;
    switches.zoomValueAxis = value;
    const PlotSettings s = viewrules::zoomedIn(window(1000, 3000), switches);
    QCOMPARE((List{s.minX[1], s.maxX[1], s.minY[1], s.maxY[1], s.lastMinX[1]}), zoomed);
    QCOMPARE((List{s.minX[0], s.maxX[0], s.minY[0], s.maxY[0], s.lastMinX[0]}),
             (List{1000, 3000, -1000, 1000, 1000}));
}

void PlotViewsTest::zoomOutStopsAtTheData_data()
{
    QTest::addColumn<List>("before"); // minX, maxX
    QTest::addColumn<List>("data");   // xStart, xEnd
    QTest::addColumn<List>("after");  // minX, maxX
    QTest::newRow("inside") << List{200000, 300000} << List{0, 800000} << List{190000, 310000};
    QTest::newRow("right edge at the end") << List{700000, 790000} << List{0, 800000} << List{691000, 799000};
    QTest::newRow("beyond the end") << List{700000, 795000} << List{0, 800000} << List{690500, 800000};
    QTest::newRow("less than a minute") << List{0, 590000} << List{0, 1000} << List{0, 600000};
    QTest::newRow("left edge at the start")
        << List{200100, 300000} << List{200000, 800000} << List{200000, 309990};
    // Wider than the data on both sides: it is not widened, but clamped all the same.
    QTest::newRow("all and more") << List{100, 900000} << List{200, 800000} << List{200, 800000};
}

void PlotViewsTest::zoomOutStopsAtTheData()
{
    QFETCH(List, before);
    QFETCH(List, data);
    QFETCH(List, after);
    const PlotSettings s =
        viewrules::zoomedOut(window(before.at(0), before.at(1)), spanning(data.at(0), data.at(1)),
                             selecting({false, false, true, false}));
    QCOMPARE((List{s.minX[2], s.maxX[2]}), after);
    QCOMPARE((List{s.lastMinX[2], s.lastMaxX[2]}), after);
    QCOMPARE((List{s.minY[2], s.maxY[2]}), (List{-1200, 1200}));
    QCOMPARE((List{s.minX[0], s.maxX[0], s.maxY[0]}), (List{before.at(0), before.at(1), 1000}));
}

void PlotViewsTest::shiftLeftStopsAtTheEnd_data()
{
    QTest::addColumn<List>("before");
    QTest::addColumn<double>("xEnd");
    QTest::addColumn<List>("after");
    QTest::newRow("one tick") << List{1000, 2000} << 800000.0 << List{1100, 2100};
    QTest::newRow("at the end") << List{700000, 800000} << 800000.0 << List{700000, 800000};
    QTest::newRow("beyond the end") << List{700000, 900000} << 800000.0 << List{700000, 900000};
    QTest::newRow("up to the end") << List{700000, 795000} << 800000.0 << List{705000, 800000};
    QTest::newRow("less than a minute") << List{500000, 595000} << 1000.0 << List{505000, 600000};
    QTest::newRow("exactly a minute, at its end") << List{0, 600000} << 600000.0 << List{0, 600000};
    QTest::newRow("less than a minute, whole") << List{0, 600000} << 1000.0 << List{0, 600000};
}

void PlotViewsTest::shiftLeftStopsAtTheEnd()
{
    QFETCH(List, before);
    QFETCH(double, xEnd);
    QFETCH(List, after);
    const PlotSettings s = viewrules::movedLeft(window(before.at(0), before.at(1)), spanning(0, xEnd),
                                                selecting({true, false, false, false}));
    QCOMPARE((List{s.minX[0], s.maxX[0]}), after);
    QCOMPARE((List{s.lastMinX[0], s.lastMaxX[0]}), after);
    QCOMPARE((List{s.minX[1], s.maxX[1]}), before);
}

void PlotViewsTest::shiftRightStopsAtTheStart_data()
{
    QTest::addColumn<List>("before");
    QTest::addColumn<double>("xStart");
    QTest::addColumn<List>("after");
    QTest::newRow("one tick") << List{1000, 2000} << 0.0 << List{900, 1900};
    QTest::newRow("at the start") << List{500, 2000} << 500.0 << List{500, 2000};
    QTest::newRow("down to the start") << List{550, 1550} << 500.0 << List{500, 1500};
}

void PlotViewsTest::shiftRightStopsAtTheStart()
{
    QFETCH(List, before);
    QFETCH(double, xStart);
    QFETCH(List, after);
    const PlotSettings s = viewrules::movedRight(window(before.at(0), before.at(1)), spanning(xStart, 800000),
                                                 selecting({false, false, false, true}));
    QCOMPARE((List{s.minX[3], s.maxX[3]}), after);
    QCOMPARE((List{s.lastMinX[3], s.lastMaxX[3]}), after);
    QCOMPARE((List{s.minX[1], s.maxX[1]}), before);
}

void PlotViewsTest::verticalShiftMovesTheWave()
{
    const ViewSwitches second = selecting({false, true, false, false});
    const PlotSettings up = viewrules::movedUp(PlotSettings(), second);
    QCOMPARE((List{up.minY[1], up.maxY[1]}), (List{-1200, 800}));
    QCOMPARE(up.minY[0], -1000.0);
    const PlotSettings down = viewrules::movedDown(PlotSettings(), second);
    QCOMPARE((List{down.minY[1], down.maxY[1]}), (List{-800, 1200}));
}

void PlotViewsTest::shiftTakesAllChannelsWhereNoneIsSelected()
{
    const ViewSwitches none;
    const PlotSettings up = viewrules::movedUp(window(1000, 2000), none);
    const PlotSettings left = viewrules::movedLeft(window(1000, 2000), spanning(0, 800000), none);
    const PlotSettings right = viewrules::movedRight(window(1000, 2000), spanning(0, 800000), none);
    for (int c = 0; c < plotChannels; ++c) {
        QCOMPARE(up.maxY[c], 800.0);
        QCOMPARE(left.minX[c], 1100.0);
        QCOMPARE(right.minX[c], 900.0);
    }
}

void PlotViewsTest::rubberBandBecomesTheWindow_data()
{
    QTest::addColumn<QRect>("band");
    QTest::addColumn<double>("xStart");
    QTest::addColumn<double>("xEnd");
    QTest::addColumn<List>("after"); // minX, maxX, minY, maxY
    // A widget of 600 by 400: 500 and 300 pixels of window, 1 unit a pixel.
    const auto band = [](int left, int top, int right, int bottom) {
        return QRect(QPoint(left, top), QPoint(right, bottom));
    };
    QTest::newRow("inside") << band(150, 100, 250, 200) << 0.0 << 800000.0 << List{1100, 1200, 50, 150};
    QTest::newRow("before the start")
        << band(20, 100, 250, 200) << 1000.0 << 800000.0 << List{1000, 1200, 50, 150};
    QTest::newRow("beyond a minute") << band(150, 60, 250, 340) << 0.0 << 500.0 << List{1100, 1200, -90, 190};
}

void PlotViewsTest::rubberBandBecomesTheWindow()
{
    QFETCH(QRect, band);
    QFETCH(double, xStart);
    QFETCH(double, xEnd);
    QFETCH(List, after);
    const PlotGeometry geometry{599, 399};
    const PlotSettings s =
        viewrules::zoomedTo(band, window(1000, 1500, -100, 200), spanning(xStart, xEnd), geometry);
    for (int c = 0; c < plotChannels; ++c) {
        QCOMPARE((List{s.minX[c], s.maxX[c], s.minY[c], s.maxY[c]}), after);
        QCOMPARE((List{s.lastMinX[c], s.lastMaxX[c]}), after.mid(0, 2));
    }
    // The right edge stops at the end of long data, or at the first minute.
    const auto rightOf = [&](double end) {
        return viewrules::zoomedTo(QRect(QPoint(60, 60), QPoint(540, 300)), window(599000, 604000),
                                   spanning(0, end), geometry)
            .maxX[0];
    };
    QCOMPARE(rightOf(602000), 602000.0);
    QCOMPARE(rightOf(1000), 600000.0);
    QCOMPARE(rightOf(700000), 603900.0);
}

void PlotViewsTest::firstBatchIsThrownAway()
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

void PlotViewsTest::channelsGoOnTogether()
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

void PlotViewsTest::oldestBlocksGoWhenTheLimitIsPassed()
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

void PlotViewsTest::extremesPassOverWhatIsNoNumber()
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

void PlotViewsTest::spanFollowsTheSamples()
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

QTEST_APPLESS_MAIN(PlotViewsTest)
#include "tst_plotviews.moc"
