// SPDX-License-Identifier: GPL-3.0-or-later
// What an engineer looks for in a spectrum: the resonance of the machine, found in the answer of the
// simulated motor to a step of its torque.
#include "scope/plotter.h"
#include "simulator/motorbench.h"

#include <QApplication>
#include <QTest>

#include <qcustomplot.h>

#include <cmath>

namespace {

constexpr int samples = 1024;            // 7.8125 Hz a bin
constexpr int feedbackSpeed = 44;        // the item's number
constexpr double rotorInertia = 0.00013; // kg m2
constexpr double inertiaRatio = 3;
// What is slower than that is the motor on its way.
constexpr double slowest = 60; // Hz

// The speed after the torque has gone from half the rated one to none.
QVector<double> speedAfterStep(double stiffness)
{
    kt500sim::PlantSettings plant;
    plant.inertiaRatio = inertiaRatio;
    plant.stiffness = stiffness;
    plant.damping = 0.003;
    plant.viscous = 0;
    plant.coulomb = 0;
    MotorBench bench(plant);
    bench.write(100, 2);
    bench.write(501, 50);
    bench.run();
    bench.advance(10);
    bench.write(501, 0);
    QVector<double> speed;
    for (int i = 0; i < samples; ++i) {
        bench.step();
        speed.append(bench.model.scopeValue(feedbackSpeed));
    }
    return speed;
}

void show(Plotter *plotter, const QVector<double> &values)
{
    plotter->resize(800, 600);
    plotter->setVisibleAll(true, false, false, false, false);
    plotter->receivePlotterDataScopeSlot({}, {}, {}, {}); // the first batch is thrown away
    for (int i = 0; i < values.size(); i += 64)
        plotter->receivePlotterDataScopeSlot(values.mid(i, 64), {}, {}, {});
    PlotSettings settings;
    for (double &maxX : settings.maxX)
        maxX = (samples - 1) * 1.25;
    plotter->setPlotSettings(settings);
    plotter->setXMeasurement(true);
}

QCustomPlot *firstSpectrum()
{
    const auto windows = QApplication::topLevelWidgets();
    for (const QWidget *window : windows) {
        if (window->windowTitle() == "Fast Fourier Transform")
            return window->findChild<QCustomPlot *>("CH1");
    }
    return nullptr;
}

} // namespace

class PlantSpectrumTest : public QObject
{
    Q_OBJECT

private slots:
    void stepShowsTheResonanceWithinOneBin_data();
    void stepShowsTheResonanceWithinOneBin();
};

void PlantSpectrumTest::stepShowsTheResonanceWithinOneBin_data()
{
    QTest::addColumn<double>("stiffness"); // Nm/rad
    for (const double stiffness : {150.0, 300.0, 500.0, 800.0})
        QTest::newRow(QByteArray::number(stiffness)) << stiffness;
}

void PlantSpectrumTest::stepShowsTheResonanceWithinOneBin()
{
    QFETCH(double, stiffness);
    Plotter plotter;
    show(&plotter, speedAfterStep(stiffness));
    plotter.showFFT();
    QVERIFY(firstSpectrum() && firstSpectrum()->graphCount() == 1);
    const auto bins = firstSpectrum()->graph(0)->data();
    QCOMPARE(bins->size(), samples / 2);
    const QCPGraphData *highest = nullptr;
    for (const QCPGraphData &bin : *bins) {
        if (bin.key >= slowest && (!highest || bin.value > highest->value))
            highest = &bin;
    }
    const double loadInertia = rotorInertia * (inertiaRatio - 1);
    const double resonance = std::sqrt(stiffness * (1 / rotorInertia + 1 / loadInertia)) / (2 * M_PI);
    QVERIFY2(std::abs(highest->key - resonance) <= 8000.0 / samples,
             qPrintable(QStringLiteral("%1 Hz for %2 Hz").arg(highest->key).arg(resonance)));
}

QTEST_MAIN(PlantSpectrumTest)
#include "tst_plantspectrum.moc"
