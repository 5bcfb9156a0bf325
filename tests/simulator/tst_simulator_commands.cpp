// SPDX-License-Identifier: GPL-3.0-or-later
#include "motorbench.h"

#include <QtTest>

#include <cmath>

using namespace kt500sim;

namespace {

constexpr int jogForward = 0x0101;   // DI1 and DI9
constexpr int jogReverse = 0x0201;   // DI1 and DI10
constexpr double rotor = 0.00013;    // kg m2
constexpr double ratedTorque = 2.39; // Nm
constexpr double radiansPerRpm = pi / 30;

} // namespace

class TestCommands : public QObject
{
    Q_OBJECT

private slots:
    void jogRunsBothWaysByItsRamps()
    {
        MotorBench bench;
        bench.write(7, 3000); // 300 rpm
        bench.write(8, 1000); // ms to the rated 3000 rpm: a tenth of it to 300
        bench.write(9, 500);
        bench.prepareJog();
        const auto command = [&bench] { return rpm(bench.model.state().speedCommand); };
        bench.write(202, jogForward);
        const double up = bench.until(1, [&] { return command() > 299.99; });
        QVERIFY2(std::fabs(up - 0.1) < 0.0005, qPrintable(QString::number(up)));
        bench.advance(400);
        QVERIFY(std::fabs(bench.speed() - 300) < 1);
        bench.write(202, 1);
        const double down = bench.until(1, [&] { return command() < 0.01; });
        QVERIFY2(std::fabs(down - 0.05) < 0.0005, qPrintable(QString::number(down)));
        bench.advance(400);
        QVERIFY(std::fabs(bench.speed()) < 1);
        const std::int64_t farthest = bench.counts();
        bench.write(202, jogReverse);
        bench.advance(600);
        QVERIFY(std::fabs(bench.speed() + 300) < 1);
        QVERIFY(bench.counts() < farthest);
        bench.write(202, jogForward | jogReverse);
        bench.advance(400);
        QVERIFY(std::fabs(bench.speed()) < 1); // both at once stop
    }

    void jogTorqueIsLimited()
    {
        MotorBench bench({1.5, 0, 0, 0, 0, 0});
        bench.write(7, 30000);
        bench.write(8, 0);
        bench.write(10, 20);
        bench.prepareJog();
        bench.write(202, jogForward);
        bench.advance(20);
        QVERIFY(std::fabs(bench.model.state().torque - 0.2 * ratedTorque) < 0.001);
    }

    void speedFollowsItsRamp()
    {
        MotorBench bench;
        bench.write(403, 600);
        bench.write(404, 300);
        bench.prepareSpeed(0);
        bench.writePair(401, 15000);
        const auto command = [&bench] { return rpm(bench.model.state().speedCommand); };
        QVERIFY(std::fabs(bench.until(2, [&] { return command() > 1499.99; }) - 0.3) < 0.0005);
        bench.advance(500);
        QVERIFY(std::fabs(bench.speed() - 1500) < 2);
        QVERIFY(std::abs(bench.status(1500) - 1500) <= 2);
        QCOMPARE(bench.status(1501), 1500);
        bench.writePair(401, -15000);
        QVERIFY(std::fabs(bench.until(2, [&] { return command() < -1499.99; }) - 0.45) < 0.0005);
    }

    void speedIsKeptWithinItsLimit()
    {
        MotorBench bench;
        bench.write(411, 8000);
        bench.prepareSpeed(20000);
        bench.advance(1000);
        QVERIFY(std::fabs(bench.speed() - 800) < 2);
        QVERIFY(bench.model.state().speedLimited);
    }

    void speedSectionsFollowOneAnother()
    {
        MotorBench bench;
        bench.write(1101, 2);
        for (const auto &[offset, speed] : {std::pair(1106, 3000), {1111, -6000}}) {
            bench.writePair(offset, speed);
            bench.write(offset + 4, 500);
        }
        bench.write(400, 2);
        bench.prepareSpeed(0);
        bench.advance(400);
        QVERIFY(std::fabs(bench.speed() - 300) < 2);
        bench.advance(500);
        QVERIFY(std::fabs(bench.speed() + 600) < 2);
        bench.advance(600);
        QVERIFY(std::fabs(bench.speed()) < 2); // once, then at rest
    }

    void torqueMovesTheMotorUpToTheSpeedLimit()
    {
        MotorBench bench({2, 0, 0, 0, 0, 0});
        bench.write(100, 2);
        bench.write(501, 10);
        bench.write(511, 5000);
        bench.run();
        bench.advance(20);
        const double start = bench.speed();
        bench.advance(20);
        const double expected = 0.1 * ratedTorque / (2 * rotor) * 0.02 / radiansPerRpm;
        QVERIFY(std::fabs((bench.speed() - start) / expected - 1) < 0.02);
        QCOMPARE(bench.status(1503), 10);
        bench.advance(1000);
        QVERIFY(std::fabs(bench.speed() - 500) < 5);
        bench.write(501, -10);
        bench.advance(2000);
        QVERIFY(bench.speed() < -1000);
    }

    void hybridMethodSwitchesByItsInput()
    {
        MotorBench bench;
        bench.write(100, 3);
        bench.write(219, 0x10);
        bench.write(602, 15);
        bench.writePair(401, 4000);
        bench.run();
        bench.advance(500);
        QVERIFY(std::fabs(bench.speed()) < 1);
        QVERIFY(bench.model.state().positionMode);
        bench.write(202, 0x0101);
        bench.advance(500);
        QVERIFY(std::fabs(bench.speed() - 400) < 2);
        QVERIFY(!bench.model.state().positionMode);
    }

    void commandIsReversedByItsInput()
    {
        MotorBench bench;
        bench.write(219, 0x26); // DI9
        bench.prepareSpeed(5000);
        bench.write(202, 0x0101);
        bench.advance(500);
        QVERIFY(std::fabs(bench.speed() + 500) < 2);
    }

    void sectionIsRunTheOtherWayByItsInput()
    {
        MotorBench bench;
        bench.write(219, 0x24);
        bench.write(400, 2);
        bench.write(1100, 2); // chosen by inputs: section 1 unless one is on
        bench.writePair(1106, 5000);
        bench.prepareSpeed(0);
        bench.advance(300);
        QVERIFY(std::fabs(bench.speed() - 500) < 2);
        bench.write(202, 0x0101);
        bench.advance(300);
        QVERIFY(std::fabs(bench.speed() + 500) < 2);
    }

    void zeroClampHoldsTheShaft_data()
    {
        QTest::addColumn<int>("mode");
        QTest::addColumn<int>("command"); // 0.1 rpm
        QTest::addColumn<double>("speed");
        QTest::newRow("none") << 0 << 3000 << 300.0;
        QTest::newRow("always") << 1 << 3000 << 0.0;
        QTest::newRow("below the threshold") << 3 << 50 << 0.0;
        QTest::newRow("above the threshold") << 3 << 3000 << 300.0;
    }
    void zeroClampHoldsTheShaft()
    {
        QFETCH(int, mode);
        QFETCH(int, command);
        QFETCH(double, speed);
        MotorBench bench;
        bench.write(219, 0x09);
        bench.write(416, mode); // the threshold is 10 rpm
        bench.prepareSpeed(command);
        bench.write(202, 0x0101);
        bench.advance(1000);
        QVERIFY2(std::fabs(bench.speed() - speed) < 1, qPrintable(QString::number(bench.speed())));
    }

    void externalTorqueLimitAppliesByItsInput_data()
    {
        QTest::addColumn<int>("source");
        QTest::addColumn<int>("inputs");
        QTest::addColumn<double>("share");
        QTest::newRow("internal") << 0 << 0x0101 << 0.8;
        QTest::newRow("external, input off") << 1 << 0x0001 << 0.8;
        QTest::newRow("external, input on") << 1 << 0x0101 << 0.3;
        QTest::newRow("least of all") << 3 << 0x0001 << 0.3;
    }
    void externalTorqueLimitAppliesByItsInput()
    {
        QFETCH(int, source);
        QFETCH(int, inputs);
        QFETCH(double, share);
        MotorBench bench({1.5, 0, 0, 0, 0, 0});
        bench.write(219, 0x06);
        bench.write(403, 0);
        bench.write(504, source);
        bench.write(505, 80);
        bench.write(507, 30);
        bench.prepareSpeed(0);
        bench.write(202, inputs);
        bench.writePair(401, 30000);
        bench.advance(15);
        QVERIFY(std::fabs(bench.model.state().torque - share * 2.39) < 0.01);
    }

    void torqueStepIsChosenByInputs()
    {
        MotorBench bench({1.5, 0, 0, 0, 100, 0}); // blocked, so that the torque alone is seen
        bench.write(804, 0);
        bench.write(100, 2);
        bench.write(500, 2);
        bench.write(219, 0x19);
        bench.write(220, 0x20);
        for (int i = 0; i < 4; ++i) {
            bench.write(1188 + 2 * i, 10 * (i + 1));
            bench.write(1189 + 2 * i, 50);
        }
        bench.run();
        for (int i = 0; i < 4; ++i) {
            bench.write(202, 1 | i << 8);
            bench.advance(100);
            QCOMPARE(bench.status(1503), 10 * (i + 1));
        }
    }

    void cornersOfTheRampAreRounded()
    {
        MotorBench bench;
        bench.write(403, 600);
        bench.write(405, 100);
        bench.prepareSpeed(0);
        bench.writePair(401, 15000);
        const auto command = [&bench] { return rpm(bench.model.state().speedCommand); };
        bench.advance(50);
        QVERIFY(command() < 80); // 250 rpm without
        QVERIFY(std::fabs(bench.until(2, [&] { return command() > 1499.99; }) + 0.05 - 0.4) < 0.001);
    }
};

QTEST_APPLESS_MAIN(TestCommands)
#include "tst_simulator_commands.moc"
