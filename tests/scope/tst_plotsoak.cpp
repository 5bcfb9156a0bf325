// SPDX-License-Identifier: GPL-3.0-or-later
// A simulated hour of a live run, faster than the clock.
#include "scope/plotgrid.h"
#include "scope/plotter.h"
#include "support/testdirectory.h"

#include <QFile>
#include <QTest>

using List = QVector<double>;

namespace {

// Resident memory in megabytes; 0 where the system doesn't tell.
double megabytesUsed()
{
    QFile file(QStringLiteral("/proc/self/statm"));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    return file.readAll().split(' ').value(1).toDouble() * 4096 / 1e6;
}

List batch(int tick, int channel)
{
    List values(1600);
    for (int i = 0; i < values.size(); ++i)
        values[i] = channel * 100 + (tick * 1600 + i) % 1000 - 500;
    return values;
}

} // namespace

class PlotSoakTest : public QObject
{
    Q_OBJECT

private slots:
    void hourOfARunStaysBounded();

private:
    TestDirectory directory;
};

void PlotSoakTest::hourOfARunStaysBounded()
{
    constexpr int ticks = 3600 * 5;
    Plotter plotter;
    plotter.resize(300, 200);
    plotter.receiveScopIsStopSlot(false);
    plotter.receivePlotterDataScopeSlot({}, {}, {}, {});
    double usedAfterFiveMinutes = 0;
    for (int tick = 0; tick < ticks; ++tick) {
        plotter.receivePlotterDataScopeSlot(batch(tick, 0), batch(tick, 1), batch(tick, 2), batch(tick, 3));
        for (const PointTrack &points : plotter.plotData().channelPoints)
            QVERIFY(points.size() <= 801600);
        // The picture of every tick is drawn as seldom as the test has time for; the samples all come.
        if (tick % 20 == 0)
            plotter.runTimerOutSlot();
        if (tick == 1500)
            usedAfterFiveMinutes = megabytesUsed();
    }
    plotter.runTimerOutSlot();
    QCOMPARE(plotter.plotData().curX[0], 36000000.0);
    QCOMPARE(plotter.plotData().xEnd[3], 36000000.0);
    QCOMPARE(plotter.plotData().xStart[3], 35400000.0);
    for (const PointTrack &points : plotter.plotData().channelPoints) {
        QVERIFY(points.size() > 790000);
        QCOMPARE(points.runs().size(), 1);
        QCOMPARE(points.last().x(), 36000000.0 - 1.25);
    }
    QCOMPARE(plotter.viewHistory().current().minX[0], 35400000.0);
    QCOMPARE(plotter.viewHistory().size(), 2 + ticks / 20);
    QVERIFY2(megabytesUsed() < usedAfterFiveMinutes + 20,
             QByteArray::number(megabytesUsed() - usedAfterFiveMinutes).constData());

    // Once stopped, the labels count from the first sample that is kept in the window.
    plotter.receiveScopIsStopSlot(true);
    const QVector<QColor> colors(plotChannels);
    const PlotContext context{plotter.plotData(),
                              plotter.viewHistory().current(),
                              plotter.viewSwitches(),
                              colors,
                              Qt::white,
                              Qt::black,
                              true,
                              {299, 199},
                              1,
                              plotter.font()};
    const QVector<TickLabel> labels = plotgrid::xLabels(context);
    QCOMPARE(labels.first().text, QStringLiteral("0.0"));
    QCOMPARE(labels.at(10).text, QStringLiteral("60000.0"));
    QCOMPARE(labels.at(11).text, QStringLiteral("(ms)"));
}

QTEST_MAIN(PlotSoakTest)
#include "tst_plotsoak.moc"
