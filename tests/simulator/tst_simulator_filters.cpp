// SPDX-License-Identifier: GPL-3.0-or-later
#include "simulator/model/filters.h"
#include "simulator/model/ramp.h"
#include "simulator/model/torquepath.h"
#include "simulator/model/trapezoid.h"

#include <QtTest>

#include <cmath>
#include <complex>

using namespace kt500sim;

namespace {

/// The gain for a sine of a whole number of samples a period.
double gainOf(Biquad filter, int samplesPerPeriod)
{
    const int settling = 40 * samplesPerPeriod + 8000 / samplesPerPeriod * samplesPerPeriod;
    const int measured = 20 * samplesPerPeriod;
    std::complex<double> sum;
    for (int i = 0; i < settling + measured; ++i) {
        const double angle = 2 * pi * i / samplesPerPeriod;
        const double output = filter.step(std::sin(angle));
        if (i >= settling)
            sum += output * std::exp(std::complex<double>(0, -angle));
    }
    return 2 * std::abs(sum) / measured;
}

/// The gain of a notch as a function of the frequency, without a sample rate.
double notchGain(double frequency, double centre, double width, double depth)
{
    const double x = frequency / centre;
    const std::complex<double> through(1 - x * x, depth * width * x);
    const std::complex<double> all(1 - x * x, width * x);
    return std::abs(through / all);
}

} // namespace

class TestFilters : public QObject
{
    Q_OBJECT

private slots:
    void notchAttenuatesItsCentreAndLittleAnOctaveOff_data()
    {
        QTest::addColumn<int>("width");
        QTest::addColumn<int>("depth");
        QTest::newRow("as from the factory") << 2 << 0;
        QTest::newRow("wide") << 10 << 0;
        QTest::newRow("shallow") << 5 << 30;
        QTest::newRow("narrow and shallow") << 1 << 10;
    }
    void notchAttenuatesItsCentreAndLittleAnOctaveOff()
    {
        QFETCH(int, width);
        QFETCH(int, depth);
        const Biquad notch = notchSection({200, width, depth});
        QVERIFY(notch.isActive());
        QVERIFY(std::fabs(gainOf(notch, 40) - depth / 100.0) < 0.002);
        for (const int samples : {20, 80}) {
            const double expected = notchGain(8000.0 / samples, 200, width / 10.0, depth / 100.0);
            QVERIFY2(std::fabs(gainOf(notch, samples) / expected - 1) < 0.02,
                     qPrintable(QString::number(samples)));
        }
    }

    void notchAtItsHighestFrequencyIsOff()
    {
        QVERIFY(!notchSection({5000, 2, 0}).isActive());
        QVERIFY(!Biquad::lowPass(5000, 0.5).isActive());
        Biquad off = notchSection({5000, 2, 0});
        QCOMPARE(off.step(0.75), 0.75);
    }

    void secondOrderFilterHasItsQualityAtTheCorner()
    {
        for (const double quality : {0.5, 0.7, 1.0})
            QVERIFY(std::fabs(gainOf(Biquad::lowPass(400, quality), 20) - quality) < 0.002);
    }

    void lowPassRisesByItsTimeConstant()
    {
        LowPass filter;
        filter.setTimeConstant(0.01);
        for (int i = 1; i <= 240; ++i)
            QVERIFY(std::fabs(filter.step(1) - (1 - std::exp(-i / 80.0))) < 1e-9);
        filter.setTimeConstant(0);
        QCOMPARE(filter.step(0.25), 0.25);
    }

    void movingAverageRisesInAStraightLine()
    {
        MovingAverage average;
        average.setLength(10);
        for (int i = 1; i <= 25; ++i)
            QVERIFY(std::fabs(average.step(1) - std::fmin(i, 10) / 10.0) < 1e-12);
        average.setLength(1);
        QCOMPARE(average.step(7), 7.0);
    }

    void rampTakesItsTime()
    {
        Ramp ramp;
        int samples = 0;
        for (; ramp.value() < 300; ++samples)
            ramp.step(300, 1000, 500);
        QVERIFY(std::abs(samples - 2400) <= 1); // 0.3 s
        samples = 0;
        for (; ramp.value() > -100; ++samples)
            ramp.step(-100, 1000, 500);
        QVERIFY(std::abs(samples - (4800 + 800)) <= 2); // down by the one slope, up by the other
        QCOMPARE(ramp.step(42, 0, 0), 0.0);             // a reversal passes through zero
        QCOMPARE(ramp.step(42, 0, 0), 42.0);
    }

    void trapezoidTakesItsTimeAndEndsWhereTold_data()
    {
        QTest::addColumn<double>("distance");
        QTest::addColumn<double>("speed");
        QTest::addColumn<double>("acceleration");
        QTest::newRow("with a level part") << 131072.0 << 200000.0 << 4000000.0;
        QTest::newRow("backwards") << -131072.0 << 200000.0 << 4000000.0;
        QTest::newRow("triangle") << 5000.0 << 200000.0 << 4000000.0;
        QTest::newRow("one count") << 1.0 << 200000.0 << 4000000.0;
        QTest::newRow("fraction") << 13.1072 << 1000.0 << 50000.0;
        QTest::newRow("without ramps") << 131072.0 << 200000.0 << 0.0;
        QTest::newRow("very long") << 2.0e9 << 4.0e6 << 1.0e6;
    }
    void trapezoidTakesItsTimeAndEndsWhereTold()
    {
        QFETCH(double, distance);
        QFETCH(double, speed);
        QFETCH(double, acceleration);
        const double length = std::fabs(distance);
        double expected = length / speed;
        if (acceleration > 0)
            expected = length >= speed * speed / acceleration ? length / speed + speed / acceleration
                                                              : 2 * std::sqrt(length / acceleration);
        Trapezoid way;
        way.start(distance, speed, acceleration);
        double place = 0;
        std::int64_t samples = 0;
        while (way.isActive()) {
            const double moved = way.step();
            QVERIFY(moved * distance >= 0);
            QVERIFY(std::fabs(moved) <= speed / 8000 * (1 + 1e-6));
            place += moved;
            ++samples;
        }
        QVERIFY(std::fabs(place - distance) < 1e-6 * std::fmax(1, length * 1e-3));
        QVERIFY(std::fabs(static_cast<double>(samples) / 8000 - expected) <= 1.0 / 8000);
        QCOMPARE(way.step(), 0.0);
    }

    void wayWithoutSpeedIsNotRun()
    {
        Trapezoid way;
        way.start(1000, 0, 100);
        QVERIFY(!way.isActive());
        way.start(0, 1000, 100);
        QVERIFY(!way.isActive());
    }
};

QTEST_APPLESS_MAIN(TestFilters)
#include "tst_simulator_filters.moc"
