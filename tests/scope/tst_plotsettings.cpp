// SPDX-License-Identifier: GPL-3.0-or-later
#include "scope/plotsettings.h"
#include "scope/viewhistory.h"

#include <QTest>

namespace {

PlotSettings marked(double mark)
{
    PlotSettings settings;
    settings.minX[0] = mark;
    return settings;
}

} // namespace

class PlotSettingsTest : public QObject
{
    Q_OBJECT

private slots:
    void defaultsShowAMinute();
    void scrollMovesByWholeTicks_data();
    void scrollMovesByWholeTicks();
    void everyFieldCountsForEquality();
    void pushDropsWhatStoodBehind();
    void stepsStopAtTheEnds();
    void resetMakesAnOnlyEntry();
    void clearLeavesTheOldestEntry();
    void historyIsBoundedAndKeepsItsOldestEntry();
};

void PlotSettingsTest::defaultsShowAMinute()
{
    const PlotSettings s;
    for (int c = 0; c < 4; ++c) {
        QCOMPARE(s.minX[c], 0.0);
        QCOMPARE(s.maxX[c], 600000.0);
        QCOMPARE(s.numXTicks[c], 10);
        QCOMPARE(s.minY[c], -1000.0);
        QCOMPARE(s.maxY[c], 1000.0);
        QCOMPARE(s.numYTicks[c], 10);
        QCOMPARE(s.lastMinX[c], 0.0);
        QCOMPARE(s.lastMaxX[c], 600000.0);
    }
}

void PlotSettingsTest::scrollMovesByWholeTicks_data()
{
    QTest::addColumn<int>("dx");
    QTest::addColumn<int>("dy");
    QTest::addColumn<int>("which");
    QTest::addColumn<QVector<double>>("minX");
    QTest::addColumn<QVector<double>>("maxY");
    using List = QVector<double>;
    QTest::newRow("all, right") << 1 << 0 << 0 << List{60000, 60000, 60000, 60000}
                                << List{1000, 1000, 1000, 1000};
    QTest::newRow("all, down two") << 0 << -2 << 0 << List{0, 0, 0, 0} << List{600, 600, 600, 600};
    QTest::newRow("CH1 alone") << -1 << 1 << 1 << List{-60000, 0, 0, 0} << List{1200, 1000, 1000, 1000};
    QTest::newRow("CH4 alone") << 3 << 0 << 4 << List{0, 0, 0, 180000} << List{1000, 1000, 1000, 1000};
}

void PlotSettingsTest::scrollMovesByWholeTicks()
{
    QFETCH(int, dx);
    QFETCH(int, dy);
    QFETCH(int, which);
    QFETCH(QVector<double>, minX);
    QFETCH(QVector<double>, maxY);
    PlotSettings s;
    s.scroll(dx, dy, which);
    for (int c = 0; c < 4; ++c) {
        QCOMPARE(s.minX[c], minX.at(c));
        QCOMPARE(s.maxX[c], minX.at(c) + 600000);
        QCOMPARE(s.maxY[c], maxY.at(c));
        QCOMPARE(s.minY[c], maxY.at(c) - 2000);
        QCOMPARE(s.lastMinX[c], 0.0);
    }
}

void PlotSettingsTest::everyFieldCountsForEquality()
{
    const PlotSettings plain;
    QVERIFY(plain == PlotSettings());
    for (int field = 0; field < 8; ++field) {
        PlotSettings s;
        double *const doubles[] = {s.minX, s.maxX, s.minY, s.maxY, s.lastMinX, s.lastMaxX};
        if (field < 6)
            doubles[field][3] += 1;
        else
            (field == 6 ? s.numXTicks : s.numYTicks)[3] += 1;
        QVERIFY2(s != plain, QByteArray::number(field).constData());
    }
}

void PlotSettingsTest::pushDropsWhatStoodBehind()
{
    ViewHistory history;
    history.push(marked(1));
    history.push(marked(2));
    history.goBack();
    QVERIFY(history.canAdvance());
    history.push(marked(3));
    QCOMPARE(history.size(), 3);
    QCOMPARE(history.index(), 2);
    QCOMPARE(history.current().minX[0], 3.0);
    QVERIFY(!history.canAdvance());
    history.goBack();
    QCOMPARE(history.current().minX[0], 1.0);
}

void PlotSettingsTest::stepsStopAtTheEnds()
{
    ViewHistory history;
    history.push(marked(1));
    history.advance();
    QCOMPARE(history.index(), 1);
    history.goBack();
    history.goBack();
    QCOMPARE(history.index(), 0);
    QVERIFY(!history.canGoBack());
}

void PlotSettingsTest::resetMakesAnOnlyEntry()
{
    ViewHistory history;
    history.push(marked(1));
    history.reset(marked(7));
    QCOMPARE(history.size(), 1);
    QCOMPARE(history.current().minX[0], 7.0);
}

void PlotSettingsTest::clearLeavesTheOldestEntry()
{
    ViewHistory history;
    history.reset(marked(7));
    history.push(marked(8));
    history.clear();
    QCOMPARE(history.size(), 1);
    QCOMPARE(history.index(), 0);
    QCOMPARE(history.current().minX[0], 7.0);
}

void PlotSettingsTest::historyIsBoundedAndKeepsItsOldestEntry()
{
    ViewHistory history;
    history.reset(marked(-1));
    for (int i = 0; i < 100010; ++i)
        history.push(marked(i));
    QCOMPARE(history.size(), 100000);
    QCOMPARE(history.index(), 99999);
    QCOMPARE(history.current().minX[0], 100009.0);
    while (history.index() > 1)
        history.goBack();
    QCOMPARE(history.current().minX[0], 11.0);
    history.goBack();
    QCOMPARE(history.current().minX[0], -1.0);
}

QTEST_APPLESS_MAIN(PlotSettingsTest)
#include "tst_plotsettings.moc"
