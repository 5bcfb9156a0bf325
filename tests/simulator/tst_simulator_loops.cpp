// SPDX-License-Identifier: GPL-3.0-or-later
#include "motorbench.h"

#include <QtTest>

#include <cmath>
#include <complex>

using namespace kt500sim;

namespace {

constexpr PlantSettings rigid{1.5, 0, 0, 0, 0, 0};
constexpr PlantSettings ringing{6, 600, 0.01, 0.0002, 0.05, 0};

/// Speed method by hand-set gains without ramps and filters.
void prepareSpeedStep(MotorBench &bench, int gain, int integralTime, int inertiaRatio)
{
    bench.write(100, 1);
    bench.write(403, 0);
    bench.write(404, 0);
    bench.write(502, 0);
    bench.write(600, 0);
    bench.write(602, inertiaRatio);
    bench.write(611, gain);
    bench.write(612, integralTime);
    bench.writePair(401, 0);
    bench.run();
}

} // namespace

class TestLoops : public QObject
{
    Q_OBJECT

private slots:
    void speedStepIsThatOfTheClosedLoop_data()
    {
        QTest::addColumn<int>("gain");         // 0.1 Hz
        QTest::addColumn<int>("integralTime"); // 0.1 ms
        QTest::newRow("two real poles") << 100 << 1000;
        QTest::newRow("swinging") << 100 << 100;
        QTest::newRow("slow") << 30 << 5000;
    }
    void speedStepIsThatOfTheClosedLoop()
    {
        QFETCH(int, gain);
        QFETCH(int, integralTime);
        MotorBench bench(rigid);
        prepareSpeedStep(bench, gain, integralTime, 15);
        bench.writePair(401, 10000); // 1000 rpm

        // (a p + b) / (p2 + a p + b), by its two poles.
        const double a = 2 * pi * gain / 10;
        const double b = a / (integralTime * 1e-4);
        const std::complex<double> root = std::sqrt(std::complex<double>(a * a - 4 * b, 0));
        const std::complex<double> p1 = (-a + root) / 2.0;
        const std::complex<double> p2 = (-a - root) / 2.0;
        for (int sample = 1; sample <= 2400; ++sample) {
            bench.step();
            // What a sample shows is the mean speed of the period before it.
            const double t = (sample - 1.5) * stepTime;
            if (t <= 0)
                continue;
            const std::complex<double> response = 1.0 + (a * p1 + b) / (p1 * (p1 - p2)) * std::exp(p1 * t) +
                                                  (a * p2 + b) / (p2 * (p2 - p1)) * std::exp(p2 * t);
            const double speed = rpm(bench.model.state().feedbackSpeed);
            QVERIFY2(std::fabs(speed - 1000 * response.real()) < 20,
                     qPrintable(QStringLiteral("%1 ms: %2").arg(t * 1000).arg(speed)));
        }
    }

    void deviationAtSteadySpeedIsSpeedOverGain_data()
    {
        QTest::addColumn<int>("gain"); // 0.1 1/s
        QTest::newRow("soft") << 200;
        QTest::newRow("stiff") << 600;
    }
    void deviationAtSteadySpeedIsSpeedOverGain()
    {
        QFETCH(int, gain);
        MotorBench bench(rigid);
        bench.write(600, 0);
        bench.write(602, 15);
        bench.write(610, gain);
        bench.write(636, 0); // no feedforward
        bench.write(300, 1);
        bench.writePair(314, 1000000);
        bench.write(316, 6000);
        bench.write(221, 0x25);
        bench.run();
        bench.write(202, 0x0401);
        bench.advance(1000);
        const double expected = 10 * countsPerTurn / (gain / 10.0); // 600 rpm
        QVERIFY(std::fabs(bench.model.state().deviation / expected - 1) < 0.01);
    }

    void fullFeedforwardLeavesLittleDeviation()
    {
        MotorBench bench(rigid);
        bench.write(602, 15);
        bench.write(637, 1000);
        bench.write(300, 1);
        bench.writePair(314, 1000000);
        bench.write(316, 6000);
        bench.write(221, 0x25);
        bench.run();
        bench.write(202, 0x0401);
        bench.advance(1500);
        QVERIFY(std::fabs(bench.speed() - 600) < 2);
        QVERIFY(std::fabs(bench.model.state().deviation) < countsPerTurn / 100);
    }

    void rigidityGradeSetsTheLoops_data()
    {
        QTest::addColumn<int>("grade");
        QTest::addColumn<int>("position"); // raw, as the status registers show them
        QTest::addColumn<int>("speed");
        QTest::addColumn<int>("time");
        QTest::newRow("softest") << 0 << 20 << 15 << 3700;
        QTest::newRow("before the jump") << 10 << 175 << 140 << 400;
        QTest::newRow("after the jump") << 11 << 320 << 180 << 310;
        QTest::newRow("from the factory") << 12 << 390 << 220 << 250;
        QTest::newRow("stiffest") << 31 << 9000 << 5000 << 20;
    }
    void rigidityGradeSetsTheLoops()
    {
        QFETCH(int, grade);
        MotorBench bench;
        bench.write(600, 1);
        bench.write(601, grade);
        bench.advance(2);
        QTEST(bench.status(1556), "position");
        QTEST(bench.status(1557), "speed");
        QTEST(bench.status(1558), "time");
        bench.write(600, 0); // by hand again: what the registers say
        bench.advance(2);
        QCOMPARE(bench.status(1556), 390);
    }

    void inertiaRatioScalesTheLoop()
    {
        // A ratio that is too small by half halves the loop's band: the speed needs twice the time.
        const auto riseTime = [](int ratio) {
            MotorBench bench(rigid);
            prepareSpeedStep(bench, 100, 10000, ratio);
            bench.writePair(401, 10000);
            return bench.until(1, [&bench] { return bench.speed() > 632; });
        };
        const double full = riseTime(20);
        const double half = riseTime(10);
        QVERIFY2(std::fabs(half / full - 2) < 0.15, qPrintable(QString::number(half / full)));
    }

    void highGainsRingOnAnElasticShaftAndTripAtLast()
    {
        const auto torqueSwing = [](MotorBench &bench) {
            double least = 1e9;
            double most = -1e9;
            for (int i = 0; i < 1600; ++i) {
                bench.step();
                least = std::fmin(least, bench.model.state().torque);
                most = std::fmax(most, bench.model.state().torque);
            }
            return most - least;
        };
        MotorBench bench(ringing);
        bench.write(100, 1);
        bench.write(602, 60);
        bench.writePair(401, 5000);
        bench.run();
        bench.advance(1000);
        QVERIFY(torqueSwing(bench) < 0.2);
        QCOMPARE(bench.fault(), 0);

        bench.write(601, 31);
        bench.advance(1000);
        QVERIFY(torqueSwing(bench) > 2);
        QVERIFY(bench.until(120, [&bench] { return bench.fault() != 0; }) > 0);
        QCOMPARE(bench.fault(), 3);
    }

    void notchAtTheResonanceQuietensIt()
    {
        const auto ripple = [](bool notch) {
            MotorBench bench(ringing);
            bench.write(100, 1);
            bench.write(602, 60);
            bench.write(601, 27);
            if (notch) {
                bench.write(663, 375); // sqrt(600 * (1 / 0.00013 + 1 / 0.00065)) / 2 pi
                bench.write(664, 8);
            }
            bench.writePair(401, 3000);
            bench.run();
            bench.advance(700);
            double most = 0;
            for (int i = 0; i < 1600; ++i) {
                bench.step();
                most = std::fmax(most, std::fabs(bench.speed() - 300));
            }
            return most;
        };
        const double without = ripple(false);
        const double with = ripple(true);
        QVERIFY2(with < without / 2, qPrintable(QStringLiteral("%1 %2").arg(without).arg(with)));
    }

    void torqueLimitBoundsTheTorque()
    {
        MotorBench bench(rigid);
        bench.write(100, 1);
        bench.write(403, 0);
        bench.write(505, 50);
        bench.run();
        bench.writePair(401, 30000);
        bench.advance(20);
        // Half the rated 2.39 Nm on 1.95 kg cm2.
        QVERIFY(std::fabs(bench.model.state().torque - 1.195) < 0.001);
        const double start = bench.speed();
        bench.advance(10);
        QVERIFY(std::fabs((bench.speed() - start) / (1.195 / 0.000195 * 0.01 * 60 / (2 * pi)) - 1) < 0.02);
        QVERIFY(bench.model.state().torqueLimited);
    }

    void secondGainsApplyByTheirInput()
    {
        MotorBench bench(rigid);
        bench.write(600, 0);
        bench.write(620, 777);
        bench.write(651, 0x0012); // by the input GAIN, the whole set
        bench.write(219, 0x13);
        bench.run();
        QCOMPARE(bench.status(1556), 390);
        bench.write(202, 0x0101);
        bench.advance(2);
        QCOMPARE(bench.status(1556), 777);
        bench.write(202, 0x0001);
        bench.advance(10); // the delay before the first set returns is 5 ms
        QCOMPARE(bench.status(1556), 390);
    }
};

QTEST_APPLESS_MAIN(TestLoops)
#include "tst_simulator_loops.moc"
