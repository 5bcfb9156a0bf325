// SPDX-License-Identifier: GPL-3.0-or-later
// The spectrum of the span between the cursors.
#include "plotmeasurebench.h"
#include "plotterbench.h"

#include "support/modalanswers.h"
#include "support/testdirectory.h"

#include <QApplication>
#include <QTest>
#include <QToolBar>

#include <qcustomplot.h>

#include <cmath>

using namespace plotterbench;
using namespace plotmeasurebench;

namespace {

QWidget *spectrumWindow()
{
    const auto windows = QApplication::topLevelWidgets();
    for (QWidget *window : windows)
        if (window->windowTitle() == "Fast Fourier Transform")
            return window;
    return nullptr;
}

QList<QCustomPlot *> spectrumPlots()
{
    auto plots = spectrumWindow()->findChildren<QCustomPlot *>();
    std::sort(plots.begin(), plots.end(),
              [](QCustomPlot *a, QCustomPlot *b) { return a->objectName() < b->objectName(); });
    return plots;
}

} // namespace

class PlotSpectrumTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { directory.clear(); }
    void spectrumNeedsTheCursors();
    void spectrumOfTheSpanIsShown();
    void spectrumWindowIsHiddenByClosing();

private:
    TestDirectory directory;
};

void PlotSpectrumTest::spectrumNeedsTheCursors()
{
    const QString hint = "Failed to calculate the FFT \nPlease Turn on the X-Axis measurement";
    const auto plotter = makeStopped(ramp(8000));
    {
        ModalAnswers answers;
        answers.expect(hint);
        plotter->showFFT();
        QVERIFY(answers.isDone());
        QCOMPARE(answers.seen.first().icon, QMessageBox::NoIcon);
    }
    plotter->setXMeasurement(true);
    plotter->receiveScopIsStopSlot(false);
    ModalAnswers answers;
    answers.expect(hint);
    plotter->showFFT();
    QVERIFY(answers.isDone());
    QVERIFY(!spectrumWindow()->isVisible());
}

void PlotSpectrumTest::spectrumOfTheSpanIsShown()
{
    List y(8000);
    for (int i = 0; i < y.size(); ++i)
        y[i] = 50 * std::sin(2 * M_PI * 500 * i / 8000.0);
    const auto plotter = makeStopped(y, ramp(8000));
    plotter->setVisibleAll(true, false, true, false, true);
    // 1024 samples: from 0 up to 1023 * 1.25.
    PlotSettings settings;
    for (double &maxX : settings.maxX)
        maxX = 1278.75;
    plotter->setPlotSettings(settings);
    plotter->setXMeasurement(true);
    plotter->showFFT();
    QVERIFY(spectrumWindow()->isVisible());
    QCOMPARE(spectrumWindow()->size(), QSize(1200, 600));
    QCOMPARE(spectrumWindow()->findChild<QToolBar *>()->height(), 26);
    const auto plots = spectrumPlots();
    QCOMPARE(plots.size(), 4);
    QCOMPARE(plots.at(0)->graphCount(), 1);
    QCOMPARE(plots.at(1)->graphCount(), 0);
    QCOMPARE(plots.at(2)->graphCount(), 0); // visible, but without samples
    QCOMPARE(plots.at(3)->graphCount(), 0);
    const auto data = plots.at(0)->graph(0)->data();
    QCOMPARE(data->size(), 512);
    QCOMPARE(data->at(64)->key, 500.0);
    QVERIFY(qAbs(data->at(64)->value - 50) < 1e-6);
    QCOMPARE(plots.at(0)->xAxis->label(), QStringLiteral("X/Hz"));
    QCOMPARE(plots.at(0)->yAxis->label(), QStringLiteral("Y/An"));
    QCOMPARE(plots.at(0)->interactions(), QCP::iRangeDrag | QCP::iRangeZoom);
    QVERIFY(plots.at(0)->yAxis->range().contains(49.9));
    keepPicture(spectrumWindow(), "spectrum.png");
    // It stays as it is until asked again.
    plotter->setVisible(0, false);
    QCOMPARE(plots.at(0)->graphCount(), 1);
    plotter->showFFT();
    QCOMPARE(plots.at(0)->graphCount(), 0);
}

void PlotSpectrumTest::spectrumWindowIsHiddenByClosing()
{
    const auto plotter = makeStopped(ramp(8000));
    plotter->setXMeasurement(true);
    plotter->showFFT();
    spectrumWindow()->close();
    QVERIFY(!spectrumWindow()->isVisible());
    plotter->showFFT();
    QVERIFY(spectrumWindow()->isVisible());
    QVERIFY(plotter->isVisible());
}

QTEST_MAIN(PlotSpectrumTest)
#include "tst_plotspectrum.moc"
