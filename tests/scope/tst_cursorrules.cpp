// SPDX-License-Identifier: GPL-3.0-or-later
#include "scope/cursorrules.h"

#include <QTest>

using List = QVector<double>;

namespace {

// A widget of 800 by 600.
const PlotGeometry geometry{799, 599};

} // namespace

class CursorRulesTest : public QObject
{
    Q_OBJECT

private slots:
    void pixelsStandForValues();
    void handlesLieOutsideThePlot_data();
    void handlesLieOutsideThePlot();
    void handlesAreWithinFivePixels();
    void cursorStopsAtTheEdges_data();
    void cursorStopsAtTheEdges();
    void fractionKeepsTheCursorInPlace();
    void statisticsCoverTheSpan_data();
    void statisticsCoverTheSpan();
    void emptySpanLeavesOldStatistics();
    void samplesThatAreNoNumberDoNotCount();
    void differencesAreSigned();
    void textsAreNumberedFromOne();
    void columnsDivideTheRow();
    void tagStandsAwayFromTheEdges_data();
    void tagStandsAwayFromTheEdges();
    void tagIsNumberedFromZero();
};

void CursorRulesTest::pixelsStandForValues()
{
    PlotSettings s;
    s.minX[1] = 1000;
    s.maxX[1] = 8000;
    s.minY[1] = -250;
    s.maxY[1] = 250;
    QCOMPARE(geometry.xAt(s, 1, 50), 1000.0);
    QCOMPARE(geometry.xAt(s, 1, 750), 8000.0);
    QCOMPARE(geometry.xAt(s, 1, 150), 2000.0);
    QCOMPARE(geometry.yAt(s, 1, 50), 250.0);
    QCOMPARE(geometry.yAt(s, 1, 550), -250.0);
    QCOMPARE(geometry.yAt(s, 1, 350), -50.0);
}

void CursorRulesTest::handlesLieOutsideThePlot_data()
{
    QTest::addColumn<QPoint>("point");
    QTest::addColumn<bool>("isTop");
    QTest::addColumn<bool>("isLeft");
    QTest::addColumn<bool>("isInside");
    QTest::newRow("top, first") << QPoint(46, 31) << true << false << false;
    QTest::newRow("top, before") << QPoint(45, 40) << false << false << false;
    QTest::newRow("top, above") << QPoint(300, 30) << false << false << false;
    QTest::newRow("top, last") << QPoint(754, 49) << true << false << false;
    QTest::newRow("top, beyond") << QPoint(755, 49) << false << false << false;
    QTest::newRow("left, first") << QPoint(31, 46) << false << true << false;
    QTest::newRow("left, above") << QPoint(31, 45) << false << false << false;
    QTest::newRow("left, before") << QPoint(30, 300) << false << false << false;
    QTest::newRow("both at the corner") << QPoint(48, 47) << true << true << false;
    // The bound is the width of 799, below the widget's end of 599.
    QTest::newRow("left, at the widget's end") << QPoint(49, 599) << false << true << false;
    QTest::newRow("left, last by the width") << QPoint(49, 754) << false << true << false;
    QTest::newRow("left, beyond the width") << QPoint(49, 755) << false << false << false;
    QTest::newRow("inside, first") << QPoint(50, 50) << false << false << true;
    QTest::newRow("inside, last") << QPoint(750, 550) << false << false << true;
    QTest::newRow("right of it") << QPoint(751, 300) << false << false << false;
    QTest::newRow("below it") << QPoint(300, 551) << false << false << false;
}

void CursorRulesTest::handlesLieOutsideThePlot()
{
    QFETCH(QPoint, point);
    QFETCH(bool, isTop);
    QFETCH(bool, isLeft);
    QFETCH(bool, isInside);
    QCOMPARE(cursorrules::isInTopStrip(point, geometry), isTop);
    QCOMPARE(cursorrules::isInLeftStrip(point, geometry), isLeft);
    QCOMPARE(cursorrules::isInPlotArea(point, geometry), isInside);
}

void CursorRulesTest::handlesAreWithinFivePixels()
{
    QVERIFY(cursorrules::isNear(95, 100));
    QVERIFY(cursorrules::isNear(105, 100));
    QVERIFY(!cursorrules::isNear(94, 100));
    QVERIFY(!cursorrules::isNear(106, 100));
    QVERIFY(!cursorrules::isNear(95, 100.2));
}

void CursorRulesTest::cursorStopsAtTheEdges_data()
{
    QTest::addColumn<double>("pixel");
    QTest::addColumn<double>("x");
    QTest::addColumn<double>("y");
    QTest::newRow("before") << -20.0 << 50.0 << 50.0;
    QTest::newRow("50") << 50.0 << 50.0 << 50.0;
    QTest::newRow("51") << 51.0 << 51.0 << 51.0;
    QTest::newRow("548") << 548.0 << 548.0 << 548.0;
    QTest::newRow("lower edge") << 549.0 << 549.0 << 549.0;
    QTest::newRow("below it") << 550.0 << 550.0 << 549.0;
    QTest::newRow("right edge") << 750.0 << 750.0 << 549.0;
    QTest::newRow("beyond it") << 4000.0 << 750.0 << 549.0;
}

void CursorRulesTest::cursorStopsAtTheEdges()
{
    QFETCH(double, pixel);
    QFETCH(double, x);
    QFETCH(double, y);
    QCOMPARE(cursorrules::xPosition(pixel, geometry), x);
    QCOMPARE(cursorrules::yPosition(pixel, geometry), y);
}

void CursorRulesTest::fractionKeepsTheCursorInPlace()
{
    QCOMPARE(cursorrules::xFraction(50, geometry), 0.0);
    QCOMPARE(cursorrules::xFraction(750, geometry), 1.0);
    QCOMPARE(cursorrules::yFraction(300, geometry), 0.5);
    const PlotGeometry larger{1499, 1099};
    QCOMPARE(cursorrules::xOfFraction(0.5, larger), 750.0);
    QCOMPARE(cursorrules::yOfFraction(0.25, larger), 300.0);
}

void CursorRulesTest::statisticsCoverTheSpan_data()
{
    QTest::addColumn<List>("values");
    QTest::addColumn<double>("x1");
    QTest::addColumn<double>("x2");
    QTest::addColumn<List>("expected"); // min, max, average
    QTest::newRow("all") << List{4, -2, 7, 1} << 0.0 << 100.0 << List{-2, 7, 2.5};
    QTest::newRow("one") << List{4, -2, 7, 1} << 2.0 << 2.9 << List{7, 7, 7};
    QTest::newRow("both ends count") << List{4, -2, 7, 1} << 1.0 << 3.0 << List{-2, 7, 2};
    QTest::newRow("three decimals") << List{1, 0, 0} << 0.0 << 9.0 << List{0, 1, 0.333};
    QTest::newRow("rounded up") << List{2, 2, 1} << 0.0 << 9.0 << List{1, 2, 1.667};
    QTest::newRow("all below zero") << List{-5, -3, -4} << 0.0 << 9.0 << List{-5, -3, -4};
}

void CursorRulesTest::statisticsCoverTheSpan()
{
    QFETCH(List, values);
    QFETCH(double, x1);
    QFETCH(double, x2);
    QFETCH(List, expected);
    PointTrack track;
    track.append(0.0, values);
    Statistics s;
    QVERIFY(cursorrules::computeStatistics(track, x1, x2, &s));
    QCOMPARE((List{s.min, s.max, s.average}), expected);
}

void CursorRulesTest::emptySpanLeavesOldStatistics()
{
    PointTrack track;
    track.append(0.0, {4, -2, 7, 1});
    Statistics s{1, 2, 3};
    QVERIFY(!cursorrules::computeStatistics(track, 3, 2, &s));
    QVERIFY(!cursorrules::computeStatistics(track, 50, 60, &s));
    QVERIFY(!cursorrules::computeStatistics(PointTrack(), 0, 60, &s));
    QCOMPARE((List{s.min, s.max, s.average}), (List{1, 2, 3}));
}

void CursorRulesTest::samplesThatAreNoNumberDoNotCount()
{
    PointTrack track;
    track.append(0.0, {qQNaN(), 4, qInf(), -2, -qInf()});
    Statistics s;
    QVERIFY(cursorrules::computeStatistics(track, 0, 60, &s));
    QCOMPARE((List{s.min, s.max, s.average}), (List{-2, 4, 1}));
    QVERIFY(!cursorrules::computeStatistics(track, 2, 2, &s));
}

void CursorRulesTest::differencesAreSigned()
{
    PlotSettings s;
    s.maxX[2] = 7000; // 10 units a pixel
    s.minY[2] = -250;
    s.maxY[2] = 250; // 1 a pixel
    QCOMPARE(cursorrules::deltaX(100, 300, s, 2, geometry), 200.0);
    QCOMPARE(cursorrules::deltaX(300, 100, s, 2, geometry), -200.0);
    QCOMPARE(cursorrules::deltaY(400, 150, s, 2, geometry), 250.0);
    QCOMPARE(cursorrules::deltaY(150, 400, s, 2, geometry), -250.0);
}

void CursorRulesTest::textsAreNumberedFromOne()
{
    QCOMPARE(cursorrules::statisticText(0, 12.345, 0), QStringLiteral("CH1:12"));
    QCOMPARE(cursorrules::statisticText(3, -12.345, 2), QStringLiteral("CH4:-12.35"));
}

void CursorRulesTest::columnsDivideTheRow()
{
    // A third of 800 is 266; 266 - 49 is 217.
    QCOMPARE(cursorrules::columnLeft(0, 0, geometry), 51);
    QCOMPARE(cursorrules::columnLeft(1, 0, geometry), 105);
    QCOMPARE(cursorrules::columnLeft(2, 0, geometry), 159);
    QCOMPARE(cursorrules::columnLeft(3, 0, geometry), 213);
    QCOMPARE(cursorrules::columnLeft(0, 1, geometry), 317);
    QCOMPARE(cursorrules::columnLeft(3, 2, geometry), 746);
}

void CursorRulesTest::tagStandsAwayFromTheEdges_data()
{
    QTest::addColumn<QPoint>("point");
    QTest::addColumn<QPoint>("corner");
    QTest::newRow("in the middle") << QPoint(300, 200) << QPoint(300, 200);
    QTest::newRow("right, last") << QPoint(550, 200) << QPoint(550, 200);
    QTest::newRow("right") << QPoint(551, 200) << QPoint(296, 200);
    QTest::newRow("low, last") << QPoint(300, 470) << QPoint(300, 470);
    QTest::newRow("low") << QPoint(300, 471) << QPoint(300, 391);
    QTest::newRow("both") << QPoint(750, 550) << QPoint(495, 470);
}

void CursorRulesTest::tagStandsAwayFromTheEdges()
{
    QFETCH(QPoint, point);
    QFETCH(QPoint, corner);
    QCOMPARE(cursorrules::tagPosition(point, geometry), corner);
}

void CursorRulesTest::tagIsNumberedFromZero()
{
    QCOMPARE(cursorrules::tagText(0, 1234.5, 7, 0), QStringLiteral("CH0: X:123.5 Y:7"));
    QCOMPARE(cursorrules::tagText(3, 10, -0.25, 2), QStringLiteral("CH3: X:1.0 Y:-0.25"));
}

QTEST_APPLESS_MAIN(CursorRulesTest)
#include "tst_cursorrules.moc"
