// SPDX-License-Identifier: GPL-3.0-or-later
// The views that the user moves: zoom, shift and rubber band.
#include "plotextents.h"

#include "scope/viewrules.h"

#include <QTest>

using namespace plotextents;

namespace {

ViewSwitches selecting(const QVector<bool> &channels)
{
    ViewSwitches switches;
    switches.zoomChannel = channels;
    return switches;
}

} // namespace

class PlotViewsMovesTest : public QObject
{
    Q_OBJECT

private slots:
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
};

void PlotViewsMovesTest::zoomInTakesATenthFromEachEdge_data()
{
    QTest::addColumn<bool>("time");
    QTest::addColumn<bool>("value");
    QTest::addColumn<List>("zoomed"); // minX, maxX, minY, maxY, lastMinX
    QTest::newRow("both") << true << true << List{1200, 2800, -800, 800, 1200};
    QTest::newRow("time") << true << false << List{1200, 2800, -1000, 1000, 1200};
    QTest::newRow("value") << false << true << List{1000, 3000, -800, 800, 1000};
    QTest::newRow("neither") << false << false << List{1000, 3000, -1000, 1000, 1000};
}

void PlotViewsMovesTest::zoomInTakesATenthFromEachEdge()
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

void PlotViewsMovesTest::zoomOutStopsAtTheData_data()
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

void PlotViewsMovesTest::zoomOutStopsAtTheData()
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

void PlotViewsMovesTest::shiftLeftStopsAtTheEnd_data()
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

void PlotViewsMovesTest::shiftLeftStopsAtTheEnd()
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

void PlotViewsMovesTest::shiftRightStopsAtTheStart_data()
{
    QTest::addColumn<List>("before");
    QTest::addColumn<double>("xStart");
    QTest::addColumn<List>("after");
    QTest::newRow("one tick") << List{1000, 2000} << 0.0 << List{900, 1900};
    QTest::newRow("at the start") << List{500, 2000} << 500.0 << List{500, 2000};
    QTest::newRow("down to the start") << List{550, 1550} << 500.0 << List{500, 1500};
}

void PlotViewsMovesTest::shiftRightStopsAtTheStart()
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

void PlotViewsMovesTest::verticalShiftMovesTheWave()
{
    const ViewSwitches second = selecting({false, true, false, false});
    const PlotSettings up = viewrules::movedUp(PlotSettings(), second);
    QCOMPARE((List{up.minY[1], up.maxY[1]}), (List{-1200, 800}));
    QCOMPARE(up.minY[0], -1000.0);
    const PlotSettings down = viewrules::movedDown(PlotSettings(), second);
    QCOMPARE((List{down.minY[1], down.maxY[1]}), (List{-800, 1200}));
}

void PlotViewsMovesTest::shiftTakesAllChannelsWhereNoneIsSelected()
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

void PlotViewsMovesTest::rubberBandBecomesTheWindow_data()
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

void PlotViewsMovesTest::rubberBandBecomesTheWindow()
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

QTEST_APPLESS_MAIN(PlotViewsMovesTest)
#include "tst_plotviews_moves.moc"
