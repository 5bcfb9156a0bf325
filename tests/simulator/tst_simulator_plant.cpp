// SPDX-License-Identifier: GPL-3.0-or-later
#include "simulator/model/plant.h"
#include "simulator/model/units.h"

#include <QtTest>

#include <cmath>
#include <complex>
#include <functional>

using namespace kt500sim;

namespace {

constexpr double rotor = 0.00013; // kg m2

PlantSettings elastic()
{
    PlantSettings settings;
    settings.inertiaRatio = 3;
    settings.stiffness = 800;
    settings.damping = 0.02;
    settings.viscous = 0.02;
    settings.coulomb = 0;
    return settings;
}

Plant plantOf(const PlantSettings &settings)
{
    Plant plant;
    plant.setRotorInertia(rotor);
    plant.set(settings);
    return plant;
}

/// Motor speed over motor torque by the two bodies' impedances.
std::complex<double> response(const PlantSettings &s, double frequency)
{
    const std::complex<double> p(0, 2 * pi * frequency);
    const std::complex<double> shaft = s.damping + s.stiffness / p;
    const std::complex<double> load = rotor * (s.inertiaRatio - 1) * p;
    return 1.0 / (rotor * p + s.viscous + shaft * load / (shaft + load));
}

/// The same for a torque that is held during each sample period, seen at the ends of the periods: the sum
/// over all frequencies that look alike then.
std::complex<double> heldResponse(const PlantSettings &s, double frequency)
{
    std::complex<double> sum;
    for (int k = -40; k <= 40; ++k) {
        const double alike = frequency + 8000.0 * k;
        const std::complex<double> turn(0, 2 * pi * alike / 8000);
        sum += response(s, alike) * (1.0 - std::exp(-turn)) / turn;
    }
    return sum;
}

/// The frequency at which \a value swings about zero, by the time between its first and last upward crossing.
double frequencyOf(const std::function<double()> &value, int samples)
{
    double last = value();
    double first = -1;
    double latest = -1;
    int crossings = 0;
    for (int i = 1; i < samples; ++i) {
        const double next = value();
        if (last < 0 && next >= 0) {
            latest = i - 1 + last / (last - next);
            if (first < 0)
                first = latest;
            else
                ++crossings;
        }
        last = next;
    }
    return crossings / ((latest - first) * stepTime);
}

} // namespace

class TestPlant : public QObject
{
    Q_OBJECT

private slots:
    void frequencyResponseIsThatOfTwoMasses_data()
    {
        QTest::addColumn<int>("samplesPerPeriod");
        for (const int samples : {800, 400, 160, 80, 53, 40, 27, 20, 16, 10})
            QTest::newRow(qPrintable(QStringLiteral("%1 Hz").arg(8000.0 / samples))) << samples;
    }
    void frequencyResponseIsThatOfTwoMasses()
    {
        QFETCH(int, samplesPerPeriod);
        Plant plant = plantOf(elastic());
        const int settling = 8000 / samplesPerPeriod * samplesPerPeriod;
        const int measured = 40 * samplesPerPeriod;
        std::complex<double> sum;
        for (int i = 0; i < settling + measured; ++i) {
            const double angle = 2 * pi * i / samplesPerPeriod;
            plant.step(0.1 * std::sin(angle));
            if (i >= settling)
                sum += plant.speed() * std::exp(std::complex<double>(0, -angle));
        }
        const double gain = 2 * std::abs(sum) / measured / 0.1;
        const double expected = std::abs(heldResponse(elastic(), 8000.0 / samplesPerPeriod));
        QVERIFY2(std::fabs(gain / expected - 1) < 0.03, qPrintable(QString::number(gain / expected)));
    }

    void freeShaftSwingsAtItsResonance_data()
    {
        QTest::addColumn<double>("ratio");
        QTest::addColumn<double>("stiffness");
        QTest::newRow("light load") << 1.5 << 900.0;
        QTest::newRow("heavy load") << 10.0 << 900.0;
        QTest::newRow("soft shaft") << 3.0 << 100.0;
    }
    void freeShaftSwingsAtItsResonance()
    {
        QFETCH(double, ratio);
        QFETCH(double, stiffness);
        Plant plant = plantOf({ratio, stiffness, 0.0002, 0, 0, 0});
        plant.step(5);
        const double load = rotor * (ratio - 1);
        const double expected = std::sqrt(stiffness * (rotor + load) / (rotor * load)) / (2 * pi);
        const double found = frequencyOf(
            [&plant] {
                plant.step(0);
                return plant.speed() - plant.loadSpeed();
            },
            2000);
        QVERIFY2(std::fabs(found / expected - 1) < 0.02, qPrintable(QString::number(found)));
        QVERIFY(std::fabs(plant.resonance() / expected - 1) < 0.02);
    }

    void loadSwingsAtTheAntiresonanceWhenTheMotorIsHeld()
    {
        Plant plant = plantOf({4, 500, 0.0002, 0, 0, 0});
        for (int i = 0; i < 10; ++i)
            plant.step(5);
        const double expected = std::sqrt(500 / (3 * rotor)) / (2 * pi);
        const double found = frequencyOf(
            [&plant] {
                plant.step(0, 1e6);
                return plant.loadSpeed();
            },
            4000);
        QVERIFY2(std::fabs(found / expected - 1) < 0.02, qPrintable(QString::number(found)));
        QVERIFY(std::fabs(plant.antiresonance() / expected - 1) < 0.02);
        QCOMPARE(plant.speed(), 0.0);
    }

    void energyNeverGrowsWithoutDrive_data()
    {
        QTest::addColumn<double>("damping");
        QTest::addColumn<double>("viscous");
        QTest::addColumn<double>("coulomb");
        QTest::newRow("shaft alone") << 0.01 << 0.0 << 0.0;
        QTest::newRow("viscous") << 0.001 << 0.001 << 0.0;
        QTest::newRow("stick and slip") << 0.001 << 0.0001 << 0.1;
        QTest::newRow("nearly none") << 0.0001 << 0.0 << 0.001;
    }
    void energyNeverGrowsWithoutDrive()
    {
        QFETCH(double, damping);
        QFETCH(double, viscous);
        QFETCH(double, coulomb);
        Plant plant = plantOf({5, 700, damping, viscous, coulomb, 0});
        for (int i = 0; i < 400; ++i)
            plant.step(i % 7 < 3 ? 4 : -1);
        double energy = plant.energy();
        const double start = energy;
        QVERIFY(start > 0);
        for (int i = 0; i < 16000; ++i) {
            plant.step(0);
            QVERIFY2(plant.energy() <= energy * (1 + 1e-9) + 1e-15,
                     qPrintable(QStringLiteral("%1 %2").arg(i).arg(plant.energy() / energy - 1)));
            energy = plant.energy();
        }
        QVERIFY(energy < start);
    }

    void rigidPlantFollowsNewton()
    {
        Plant plant = plantOf({2, 0, 0, 0, 0, 0.3});
        for (int i = 0; i < 800; ++i)
            plant.step(1.3);
        const double acceleration = 1.0 / (2 * rotor);
        QVERIFY(std::fabs(plant.speed() / (acceleration * 0.1) - 1) < 1e-9);
        QVERIFY(std::fabs(plant.position() / (acceleration * 0.005) - 1) < 1e-9);
    }

    void frictionStopsTheShaftAndHoldsIt()
    {
        Plant plant = plantOf({2, 0, 0, 0, 0.1, 0});
        for (int i = 0; i < 80; ++i)
            plant.step(1.1);
        const double speed = plant.speed();
        int samples = 0;
        for (; plant.speed() != 0 && samples < 80000; ++samples)
            plant.step(0);
        const double expected = speed * 2 * rotor / 0.1;
        QVERIFY2(std::fabs(samples * stepTime - expected) < 1.5 * stepTime,
                 qPrintable(QStringLiteral("%1 %2").arg(samples).arg(expected)));
        const double place = plant.position();
        for (int i = 0; i < 800; ++i)
            plant.step(0.099);
        QCOMPARE(plant.position(), place);
        plant.step(0.2);
        QVERIFY(plant.speed() > 0);
    }
};

QTEST_APPLESS_MAIN(TestPlant)
#include "tst_simulator_plant.moc"
