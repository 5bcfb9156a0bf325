// SPDX-License-Identifier: GPL-3.0-or-later
// Time and truth of the scope's picture: four channels drawn by the product, by one antialiased polyline a
// channel, by QCustomPlot and by Qwt, in one run; a live tick; and the spectrum and the statistics of all
// that the plot keeps. Processor time of all threads counts, which other work on the machine hardly changes;
// the ratio of the time that passed stands beside it.
#include "../tests/scope/curvescenes.h"
#include "benchmain.h"
#include "report.h"
#include "scope/cursorrules.h"
#include "scope/curverasteriser.h"
#include "scope/spectrum.h"

#include <QElapsedTimer>

#include <qcustomplot.h>
#include <qwt_plot_curve.h>
#include <qwt_scale_map.h>

#include <functional>

namespace {

constexpr int samples = 480000;
constexpr int rounds = 5;

// Milliseconds.
struct Cost
{
    double processor = 0; // of all threads
    double passed = 0;
};

Cost costOf(const std::function<void()> &work)
{
    QElapsedTimer timer;
    timer.start();
    const double before = processSeconds();
    work();
    return {1e3 * (processSeconds() - before), static_cast<double>(timer.nsecsElapsed()) / 1e6};
}

struct Costs
{
    QVector<double> processor;
    QVector<double> passed;

    void append(const Cost &cost)
    {
        processor.append(cost.processor);
        passed.append(cost.passed);
    }
};

PlotInputs fourChannels(const QByteArray &kind, int count)
{
    PlotInputs in = scenes::inputs(scenes::wave(kind, count), 0, 600000, -1000, 1000);
    for (unsigned c = 1; c < plotChannels; ++c) {
        PointTrack track;
        track.append(0.0, scenes::wave(kind, count, c + 1));
        in.curveMap[static_cast<int>(c)] = track;
    }
    return in;
}

QVector<double> xValues(int count)
{
    QVector<double> x(count);
    for (int i = 0; i < count; ++i)
        x[i] = PointTrack::sampleStep * i;
    return x;
}

class CustomPlot
{
public:
    explicit CustomPlot(const PlotInputs &in)
    {
        plot.resize(in.width, in.height);
        plot.setViewport(QRect(0, 0, in.width, in.height));
        plot.plotLayout()->setMargins({0, 0, 0, 0});
        plot.axisRect()->setAutoMargins(QCP::msNone);
        plot.axisRect()->setMargins({50, 50, 50, 50});
        plot.setNotAntialiasedElements(QCP::aeNone);
        plot.setAntialiasedElements(QCP::aePlottables);
        for (int c = 0; c < plotChannels; ++c) {
            const PointTrack &track = in.curveMap[c];
            QVector<double> y;
            track.visit({0, track.size()}, [&y](const double *values, int count) {
                std::copy(values, values + count, std::back_inserter(y));
            });
            QCPGraph *graph = plot.addGraph();
            graph->setData(xValues(track.size()), y, true);
            graph->setPen(QPen(in.colors.at(c)));
        }
        plot.xAxis->setRange(in.settings.minX[0], in.settings.maxX[0]);
        plot.yAxis->setRange(in.settings.minY[0], in.settings.maxY[0]);
    }

    Cost draw(bool isAdaptive)
    {
        for (int c = 0; c < plotChannels; ++c)
            plot.graph(c)->setAdaptiveSampling(isAdaptive);
        return costOf([this] { plot.replot(QCustomPlot::rpImmediateRefresh); });
    }

private:
    QCustomPlot plot;
};

// Qwt's curves with its own ways of leaving points out switched on.
Cost drawQwt(const PlotInputs &in)
{
    QImage image(in.width, in.height, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QVector<QVector<QPointF>> points(plotChannels);
    for (int c = 0; c < plotChannels; ++c)
        for (int i = 0; i < in.curveMap[c].size(); ++i)
            points[c].append(in.curveMap[c].at(i));
    return costOf([&] {
        QPainter painter(&image);
        const QRect &r = in.plotRect;
        painter.setClipRect(r);
        for (int c = 0; c < plotChannels; ++c) {
            QwtPlotCurve curve;
            curve.setPen(QPen(in.colors.at(c)));
            curve.setRenderHint(QwtPlotItem::RenderAntialiased);
            curve.setPaintAttribute(QwtPlotCurve::FilterPoints);
            curve.setPaintAttribute(QwtPlotCurve::ClipPolygons);
            curve.setSamples(points.at(c));
            painter.setRenderHint(QPainter::Antialiasing);
            QwtScaleMap xMap;
            xMap.setScaleInterval(in.settings.minX[c], in.settings.maxX[c]);
            xMap.setPaintInterval(r.left(), r.right());
            QwtScaleMap yMap;
            yMap.setScaleInterval(in.settings.minY[c], in.settings.maxY[c]);
            yMap.setPaintInterval(r.bottom(), r.top());
            curve.draw(&painter, xMap, yMap, r);
        }
    });
}

QStringList measurePicture(const QByteArray &kind)
{
    const PlotInputs in = fourChannels(kind, samples);
    // The other window makes the next round draw everything again.
    PlotInputs other = in;
    std::fill(std::begin(other.settings.minX), std::end(other.settings.minX), 1.0);
    const std::atomic<bool> isEnding{false};
    CustomPlot custom(in);
    custom.draw(true);
    Costs ours;
    Costs adaptive;
    Costs qwts;
    CurveRasteriser rasteriser;
    QImage picture;
    for (int round = 0; round < rounds; ++round) {
        rasteriser.draw(other, isEnding);
        ours.append(costOf([&] { rasteriser.draw(in, isEnding); }));
        picture = rasteriser.image().copy();
        adaptive.append(custom.draw(true));
        qwts.append(drawQwt(in));
    }
    QImage naivePicture;
    const Cost naive = costOf([&] { naivePicture = scenes::naivePicture(in); });
    const scenes::Difference d = scenes::compare(picture, naivePicture);
    return {kind,
            figure(median(ours.processor), 1),
            figure(median(adaptive.processor), 1),
            figure(medianRatio(ours.processor, adaptive.processor), 2),
            ratioSpread(ours.processor, adaptive.processor),
            figure(medianRatio(ours.passed, adaptive.passed), 2),
            figure(median(qwts.processor), 0),
            figure(naive.processor, 0),
            QString::number(d.largest),
            figure(100 * d.visiblePart, 4),
            QString::number(d.lostExtremes)};
}

// A second of a run, tick by tick, after half a minute of it.
QStringList measureTick(const QByteArray &kind)
{
    PlotInputs in = fourChannels(kind, samples / 2);
    CurveRasteriser rasteriser;
    const std::atomic<bool> isEnding{false};
    rasteriser.draw(in, isEnding);
    const QVector<double> more = scenes::wave(kind, 1600, 9);
    QVector<double> ticks;
    for (int tick = 0; tick < 25; ++tick) {
        for (PointTrack &track : in.curveMap)
            track.append(PointTrack::sampleStep * track.size(), more);
        ticks.append(costOf([&] { rasteriser.draw(in, isEnding); }).processor);
    }
    return {kind, figure(median(ticks), 2), figure(*std::max_element(ticks.cbegin(), ticks.cend()), 2)};
}

void measureNumbers()
{
    const QVector<double> y = scenes::wave("noisy sine", 800000);
    PointTrack track;
    track.append(0.0, y);
    QVector<double> spectra;
    QVector<double> statistics;
    QVector<double> searches;
    for (int round = 0; round < rounds; ++round) {
        spectra.append(costOf([&] {
                           fft transformer;
                           for (int c = 0; c < plotChannels; ++c)
                               spectrumOf(y, &transformer);
                       }).processor);
        statistics.append(costOf([&] {
                              Statistics result;
                              for (int c = 0; c < plotChannels; ++c)
                                  cursorrules::computeStatistics(track, 0, 1e6, &result);
                          }).processor);
        searches.append(costOf([&] {
                            for (int c = 0; c < plotChannels; ++c)
                                track.firstOfValue(0.123456);
                        }).processor);
    }
    printTable(QStringLiteral("4 x 800,000 samples, milliseconds, median of %1 rounds").arg(rounds),
               {{"spectra", "statistics", "search of a value that no sample has"},
                {figure(median(spectra), 0), figure(median(statistics), 1), figure(median(searches), 2)}});
}

} // namespace

int main(int argc, char *argv[])
{
    return runBenchmark(argc, argv, [] {
        QVector<QStringList> pictures{{"wave", "ours", "QCustomPlot", "ratio", "spread",
                                       "ratio of time passed", "Qwt", "polyline", "largest of 255",
                                       "visible %", "extremes lost"}};
        QVector<QStringList> ticks{{"wave", "median", "longest"}};
        for (const QByteArray &kind : scenes::kinds()) {
            pictures.append(measurePicture(kind));
            ticks.append(measureTick(kind));
        }
        printTable(
            QStringLiteral(
                "Picture of 4 x 480,000 samples, 900 x 600, milliseconds of processor time, median of %1 "
                "rounds; ours beside the polyline's picture")
                .arg(rounds),
            pictures);
        printTable(QStringLiteral("Live tick of 4 x 1600 samples, milliseconds"), ticks);
        measureNumbers();
    });
}
