// SPDX-License-Identifier: GPL-3.0-or-later
// The views that the plot chooses from the data: rolling, showing all, adjusting.
#include "plotextents.h"

#include "scope/plotdata.h"
#include "scope/viewrules.h"

#include <QTest>

using namespace plotextents;

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

QTEST_APPLESS_MAIN(PlotViewsTest)
#include "tst_plotviews.moc"
