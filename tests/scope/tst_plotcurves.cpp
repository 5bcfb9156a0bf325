// SPDX-License-Identifier: GPL-3.0-or-later
#include "curvescenes.h"
#include "scope/curverasteriser.h"

#include <QTest>

#include <limits>

namespace {

QImage drawn(const PlotInputs &in)
{
    CurveRasteriser rasteriser;
    const std::atomic<bool> isEnding{false};
    return rasteriser.draw(in, isEnding) ? rasteriser.image() : QImage();
}

void compareWithNaive(const PlotInputs &in)
{
    const QImage ours = drawn(in);
    const QImage naive = scenes::naivePicture(in);
    const scenes::Difference d = scenes::compare(ours, naive);
    if (qEnvironmentVariableIsSet("PLOT_PICTURES")) {
        const QString name = qEnvironmentVariable("PLOT_PICTURES") + QLatin1Char('/') +
                             QString::fromLatin1(QTest::currentDataTag()).replace(' ', '_');
        ours.save(name + "_ours.png");
        naive.save(name + "_naive.png");
    }
    const QByteArray figures = "largest " + QByteArray::number(d.largest) + ", visible " +
                               QByteArray::number(100 * d.visiblePart) + " %, extremes " +
                               QByteArray::number(d.lostExtremes);
    if (qEnvironmentVariableIsSet("PLOT_FIGURES"))
        qInfo("%s", figures.constData());
    QVERIFY2(d.largest <= 96 && d.visiblePart <= 0.0005 && d.lostExtremes == 0, figures.constData());
}

} // namespace

class PlotCurvesTest : public QObject
{
    Q_OBJECT

private slots:
    void pictureEqualsThatOfEverySegmentPainted_data();
    void pictureEqualsThatOfEverySegmentPainted();
    void overlappingChannelsAreStackedInTheirOrder();
    void pictureGrownTickByTickEqualsTheWholeOne_data();
    void pictureGrownTickByTickEqualsTheWholeOne();
    void samplesThatAreNoNumberArePassedOver();
    void jumpOfTheTimeIsOneSegment();
    void hiddenChannelLeavesNothing();
    void windowWithoutWidthDrawsNothing();
    void everySampleInOneColumnIsCounted();
    void pictureOfAFineScreenIsInItsPixels_data();
    void pictureOfAFineScreenIsInItsPixels();
    void spikeOfAFineScreenIsAsWideAsThePen_data();
    void spikeOfAFineScreenIsAsWideAsThePen();
    void drawingEndsWhenAsked();
};

void PlotCurvesTest::pictureEqualsThatOfEverySegmentPainted_data()
{
    QTest::addColumn<QByteArray>("kind");
    QTest::addColumn<int>("count");
    QTest::addColumn<QRectF>("window"); // x and y, in units
    const auto add = [](const char *name, int count, const QRectF &window) {
        for (const QByteArray &kind : scenes::kinds())
            QTest::newRow(kind + ", " + name) << kind << count << window;
    };
    add("full", 480000, {0, -1000, 600000, 2000});
    add("half full", 240000, {0, -1000, 600000, 2000});
    add("60 a column", 48000, {0, -1000, 60000, 2000});
    add("12 a column", 9600, {0, -1000, 12000, 2000});
    add("3 a column", 2400, {0, -1000, 3000, 2000});
    add("one a column", 800, {0, -1000, 1000, 2000});
    add("sparse", 60, {0, -1000, 75, 2000});
    add("a few of many", 48000, {30000, -1000, 20, 2000});
    add("middle of many", 480000, {200000, -1000, 100000, 2000});
    add("points outside", 48000, {10000, -200, 3000, 300});
}

void PlotCurvesTest::pictureEqualsThatOfEverySegmentPainted()
{
    QFETCH(QByteArray, kind);
    QFETCH(int, count);
    QFETCH(QRectF, window);
    compareWithNaive(scenes::inputs(scenes::wave(kind, count), window.left(), window.right(), window.top(),
                                    window.bottom()));
}

void PlotCurvesTest::overlappingChannelsAreStackedInTheirOrder()
{
    PlotInputs in = scenes::inputs(scenes::wave("noisy sine", 48000), 0, 60000, -1000, 1000);
    int c = 1;
    for (const char *kind : {"noise", "steps", "fast sine"}) {
        PointTrack track;
        track.append(0.0, scenes::wave(kind, 48000));
        in.curveMap[c++] = track;
    }
    compareWithNaive(in);
}

void PlotCurvesTest::pictureGrownTickByTickEqualsTheWholeOne_data()
{
    QTest::addColumn<QByteArray>("kind");
    QTest::addColumn<int>("count");
    QTest::addColumn<double>("width"); // in units
    QTest::addColumn<QSize>("size");
    for (const QByteArray &kind : scenes::kinds()) {
        QTest::newRow(kind) << kind << 24000 << 60000.0 << QSize(900, 600);
        QTest::newRow(kind + ", dense") << kind << 120000 << 600000.0 << QSize(200, 160);
    }
}

void PlotCurvesTest::pictureGrownTickByTickEqualsTheWholeOne()
{
    QFETCH(QByteArray, kind);
    QFETCH(int, count);
    QFETCH(double, width);
    QFETCH(QSize, size);
    const QVector<double> y = scenes::wave(kind, count);
    PlotInputs in = scenes::inputs({}, 0, width, -1000, 1000, size);
    CurveRasteriser rasteriser;
    const std::atomic<bool> isEnding{false};
    PointTrack track;
    for (int from = 0; from < y.size(); from += 1601) {
        track.append(PointTrack::sampleStep * from, y.mid(from, 1601));
        in.curveMap[0] = track;
        QVERIFY(rasteriser.draw(in, isEnding));
    }
    QCOMPARE(rasteriser.image(), drawn(in));
    QCOMPARE(rasteriser.image(), drawn(scenes::inputs(y, 0, width, -1000, 1000, size)));
}

void PlotCurvesTest::samplesThatAreNoNumberArePassedOver()
{
    QVector<double> y = scenes::wave("fast sine", 2000);
    const PlotInputs whole = scenes::inputs(y, 0, 2500, -1000, 1000);
    y[700] = std::numeric_limits<double>::quiet_NaN();
    y[900] = std::numeric_limits<double>::infinity();
    y[1999] = -std::numeric_limits<double>::infinity();
    const PlotInputs holed = scenes::inputs(y, 0, 2500, -1000, 1000);
    const scenes::Difference d = scenes::compare(drawn(holed), drawn(whole));
    QVERIFY(d.largest > 0);
    QVERIFY2(d.visiblePart < 0.0005, QByteArray::number(d.visiblePart).constData());
}

void PlotCurvesTest::jumpOfTheTimeIsOneSegment()
{
    PlotInputs in = scenes::inputs({}, 0, 60000, -1000, 1000);
    PointTrack track;
    track.append(0.0, scenes::wave("noisy sine", 8000));
    track.append(30000.0, scenes::wave("fast sine", 8000));
    track.append(20000.0, scenes::wave("steps", 4000));
    in.curveMap[0] = track;
    compareWithNaive(in);
}

void PlotCurvesTest::hiddenChannelLeavesNothing()
{
    PlotInputs in = scenes::inputs(scenes::wave("noise", 4000), 0, 60000, -1000, 1000);
    CurveRasteriser rasteriser;
    const std::atomic<bool> isEnding{false};
    QVERIFY(rasteriser.draw(in, isEnding));
    const QImage shown = rasteriser.image().copy();
    QImage empty = shown.copy();
    empty.fill(Qt::transparent);
    QVERIFY(shown != empty);
    in.visible[0] = false;
    QVERIFY(rasteriser.draw(in, isEnding));
    QCOMPARE(rasteriser.image(), empty);
    in.visible[0] = true;
    QVERIFY(rasteriser.draw(in, isEnding));
    QCOMPARE(rasteriser.image(), shown);
}

void PlotCurvesTest::windowWithoutWidthDrawsNothing()
{
    const QVector<double> y = scenes::wave("noise", 4000);
    const QImage noWidth = drawn(scenes::inputs(y, 100, 100, -1000, 1000));
    const QImage noHeight = drawn(scenes::inputs(y, 0, 60000, 5, 5));
    QImage empty = noWidth.copy();
    empty.fill(Qt::transparent);
    QCOMPARE(noWidth, empty);
    QCOMPARE(noHeight, empty);
}

void PlotCurvesTest::everySampleInOneColumnIsCounted()
{
    // All of 800,000 samples within one pixel: the sums must not run over.
    const QImage image = drawn(scenes::inputs(scenes::wave("steps", 800000), -1e9, 1e9, -1000, 1000));
    const QRect r(50, 50, 800, 500);
    int painted = 0;
    for (int y = r.top(); y < r.bottom(); ++y)
        for (int x = r.left(); x < r.right(); ++x)
            painted += qAlpha(image.pixel(x, y)) > 0;
    // Two columns, from -400 to 500 of 2000 over 500 pixels, and up to two rows of caps.
    QVERIFY2(painted >= 2 * 224 && painted <= 2 * 230, QByteArray::number(painted).constData());
}

void PlotCurvesTest::pictureOfAFineScreenIsInItsPixels_data()
{
    QTest::addColumn<QByteArray>("kind");
    QTest::addColumn<int>("count");
    QTest::addColumn<QSize>("size");
    QTest::newRow("slow sine") << QByteArray("slow sine") << 48000 << QSize(900, 600);
    QTest::newRow("dense noise") << QByteArray("noise") << 60000 << QSize(200, 160);
    QTest::newRow("dense noisy sine") << QByteArray("noisy sine") << 60000 << QSize(200, 160);
}

void PlotCurvesTest::pictureOfAFineScreenIsInItsPixels()
{
    QFETCH(QByteArray, kind);
    QFETCH(int, count);
    QFETCH(QSize, size);
    const QVector<double> y = scenes::wave(kind, count);
    const PlotInputs in = scenes::inputs(y, 0, count * PointTrack::sampleStep, -1000, 1000, size, 2);
    const QImage ours = drawn(in);
    QCOMPARE(ours.size(), 2 * size);
    QCOMPARE(ours.devicePixelRatio(), 2.0);
    // The pen is twice as wide, measured along an axis: a slanted line is somewhat thinner than the paint
    // engine's.
    const scenes::Difference d = scenes::compare(ours, scenes::naivePicture(in));
    QVERIFY2(d.lostExtremes == 0 && d.visiblePart < 0.004,
             (QByteArray::number(d.largest) + " " + QByteArray::number(d.visiblePart)).constData());
}

void PlotCurvesTest::spikeOfAFineScreenIsAsWideAsThePen_data()
{
    QTest::addColumn<int>("place"); // in samples, of which 300 stand in a pixel
    for (int place : {0, 75, 150, 225})
        QTest::newRow(QByteArray::number(place)) << place;
}

void PlotCurvesTest::spikeOfAFineScreenIsAsWideAsThePen()
{
    QFETCH(int, place);
    QVector<double> y(60000, 0.0);
    y[30000 + place] = 900;
    const PlotInputs in = scenes::inputs(y, 0, 75000, -1000, 1000, {200, 160}, 2);
    const auto widthOf = [](const QImage &image) {
        double width = 0;
        for (int x = 0; x < image.width(); ++x)
            width += qAlpha(image.pixel(x, 130)) / 255.0;
        return width;
    };
    const double ours = widthOf(drawn(in));
    const double naive = widthOf(scenes::naivePicture(in));
    QVERIFY(naive > 1.9);
    // At the edges, segments over each other let something through that one outline of both doesn't.
    QVERIFY2(qAbs(ours - naive) < 0.6,
             (QByteArray::number(ours) + " " + QByteArray::number(naive)).constData());
}

void PlotCurvesTest::drawingEndsWhenAsked()
{
    CurveRasteriser rasteriser;
    const PlotInputs in = scenes::inputs(scenes::wave("noise", 48000), 0, 60000, -1000, 1000);
    std::atomic<bool> isEnding{true};
    QVERIFY(!rasteriser.draw(in, isEnding));
    isEnding = false;
    QVERIFY(rasteriser.draw(in, isEnding));
    QCOMPARE(rasteriser.image(), drawn(in));
}

QTEST_MAIN(PlotCurvesTest)
#include "tst_plotcurves.moc"
