// SPDX-License-Identifier: GPL-3.0-or-later
#include "scope/plotgrid.h"

#include <QTest>

// What a plot of 800 by 600 is drawn from.
struct GridScene
{
    PlotContext context() const
    {
        return {data,      settings,  switches,   colors,     Qt::white,
                lineColor, isStopped, {799, 599}, pixelRatio, {}};
    }

    PlotData data;
    PlotSettings settings;
    ViewSwitches switches;
    QVector<QColor> colors{Qt::red, Qt::green, Qt::blue, Qt::magenta};
    QColor lineColor = Qt::black;
    bool isStopped = true;
    double pixelRatio = 1;
};

class PlotGridTest : public QObject
{
    Q_OBJECT

private slots:
    void liveTimeLabelsStandStillWhateverTheWindowShows();
    void stoppedTimeLabelsCountFromTheFirstSampleKept();
    void valueLabelsHaveTheChannelsDecimals();
    void hiddenChannelHasNoLabels();
    void sameContentIsNotDrawnAgain();
    void otherContentIsDrawn_data();
    void otherContentIsDrawn();
};

namespace {

QStringList texts(const QVector<TickLabel> &labels, int channel)
{
    QStringList all;
    for (const TickLabel &label : labels)
        if (label.channel == channel)
            all.append(label.text);
    return all;
}

} // namespace

void PlotGridTest::liveTimeLabelsStandStillWhateverTheWindowShows()
{
    GridScene scene;
    scene.isStopped = false;
    const QStringList expected{"0.0",     "6000.0",  "12000.0", "18000.0", "24000.0", "30000.0",
                               "36000.0", "42000.0", "48000.0", "54000.0", "60000.0", "(ms)"};
    QCOMPARE(texts(plotgrid::xLabels(scene.context()), 0), expected);
    scene.settings.minX[0] = 1234567;
    scene.settings.maxX[0] = 1834567;
    scene.data.xStart[0] = 1234567;
    QCOMPARE(texts(plotgrid::xLabels(scene.context()), 0), expected);
}

void PlotGridTest::stoppedTimeLabelsCountFromTheFirstSampleKept()
{
    GridScene scene;
    scene.settings.minX[2] = 400000;
    scene.settings.maxX[2] = 402000;
    scene.data.xStart[2] = 390000;
    const QStringList labels = texts(plotgrid::xLabels(scene.context()), 2);
    QCOMPARE(labels.first(), QString("1000.0"));
    QCOMPARE(labels.at(5), QString("1100.0"));
    QCOMPARE(labels.at(10), QString("1200.0"));
}

void PlotGridTest::valueLabelsHaveTheChannelsDecimals()
{
    GridScene scene;
    scene.switches.decimals[1] = 2;
    scene.settings.minY[1] = -1;
    scene.settings.maxY[1] = 1;
    const QVector<TickLabel> labels = plotgrid::yLabels(scene.context());
    QCOMPARE(texts(labels, 0).first(), QString("-1000"));
    QCOMPARE(texts(labels, 1).first(), QString("-1.00"));
    QCOMPARE(texts(labels, 1).at(4), QString("-0.20"));
}

void PlotGridTest::hiddenChannelHasNoLabels()
{
    GridScene scene;
    scene.switches.visible[3] = false;
    QCOMPARE(texts(plotgrid::xLabels(scene.context()), 3), QStringList());
    QCOMPARE(texts(plotgrid::yLabels(scene.context()), 3), QStringList());
    QCOMPARE(texts(plotgrid::yLabels(scene.context()), 2).size(), 11);
}

void PlotGridTest::sameContentIsNotDrawnAgain()
{
    GridScene scene;
    scene.isStopped = false;
    GridLayer layer;
    layer.draw(scene.context());
    const qint64 first = layer.pixmap().cacheKey();
    // A live window that rolls looks the same.
    scene.settings.minX[0] = 2000;
    scene.settings.maxX[0] = 602000;
    layer.draw(scene.context());
    QCOMPARE(layer.pixmap().cacheKey(), first);
}

void PlotGridTest::otherContentIsDrawn_data()
{
    QTest::addColumn<int>("change");
    const char *const names[] = {"range", "color", "line", "grid", "stop", "ratio", "decimals", "visible"};
    for (int i = 0; i < 8; ++i)
        QTest::newRow(names[i]) << i;
}

void PlotGridTest::otherContentIsDrawn()
{
    QFETCH(int, change);
    GridScene scene;
    GridLayer layer;
    layer.draw(scene.context());
    const QImage before = layer.pixmap().toImage();
    if (change == 0)
        scene.settings.maxY[0] = 2000;
    else if (change == 1)
        scene.colors[2] = Qt::cyan;
    else if (change == 2)
        scene.lineColor = Qt::gray;
    else if (change == 3)
        scene.switches.showGrid = false;
    else if (change == 4)
        scene.isStopped = false;
    else if (change == 5)
        scene.pixelRatio = 2;
    else if (change == 6)
        scene.switches.decimals[0] = 1;
    else
        scene.switches.visible[0] = false;
    layer.draw(scene.context());
    GridLayer fresh;
    fresh.draw(scene.context());
    QCOMPARE(layer.pixmap().toImage(), fresh.pixmap().toImage());
    // Stopped at the first minute the labels say the same as live.
    QCOMPARE(layer.pixmap().toImage() == before, change == 4);
}

QTEST_MAIN(PlotGridTest)
#include "tst_plotgrid.moc"
