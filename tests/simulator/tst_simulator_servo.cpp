// SPDX-License-Identifier: GPL-3.0-or-later
#include "motorbench.h"

#include <QtTest>

#include <cmath>

using namespace kt500sim;

namespace {

constexpr int jogForward = 0x0101;   // DI1 and DI9
constexpr int jogReverse = 0x0201;   // DI1 and DI10
constexpr int trigger = 0x0401;      // DI1 and DI11
constexpr double rotor = 0.00013;    // kg m2
constexpr double ratedTorque = 2.39; // Nm
constexpr double radiansPerRpm = pi / 30;

} // namespace

class TestServo : public QObject
{
    Q_OBJECT

private slots:
    void nothingMovesWithoutServoOn_data()
    {
        QTest::addColumn<int>("offset");
        QTest::addColumn<int>("value");
        QTest::addColumn<int>("inputs");
        QTest::newRow("JOG forward") << 11 << 1 << 0x0100;
        QTest::newRow("JOG reverse") << 11 << 1 << 0x0200;
        QTest::newRow("trigger") << 300 << 1 << 0x0400;
        QTest::newRow("sections") << 300 << 2 << 0x0400;
        QTest::newRow("speed") << 100 << 1 << 0;
        QTest::newRow("torque") << 100 << 2 << 0;
        QTest::newRow("identification") << 603 << 1 << 0;
    }

    void nothingMovesWithoutServoOn()
    {
        QFETCH(int, offset);
        QFETCH(int, value);
        QFETCH(int, inputs);
        MotorBench bench;
        bench.planInputs();
        bench.write(501, 100);
        bench.writePair(401, 30000);
        bench.useAuxiliaryInputs();
        bench.write(offset, value);
        bench.write(202, inputs);
        for (int i = 0; i < 2000; ++i) {
            bench.advance(1);
            QCOMPARE(bench.counts(), std::int64_t(0));
            QVERIFY(!bench.model.state().energised);
        }
        // The same with the servo on does move: the input was not dead.
        bench.write(202, inputs & ~1);
        bench.advance(5);
        bench.write(202, 1);
        bench.advance(150);
        bench.write(202, inputs | 1);
        bench.advance(500);
        QVERIFY(bench.counts() != 0);
    }

    void commandsAreTakenOnceTheBrakeIsOpen()
    {
        MotorBench bench;
        bench.write(11, 1);
        bench.planInputs();
        bench.write(108, 250);
        bench.useAuxiliaryInputs();
        bench.advance(2);
        bench.write(202, jogForward);
        bench.advance(249);
        QVERIFY(bench.model.state().energised);
        QVERIFY(std::abs(bench.counts()) <= 1);
        bench.advance(50);
        QVERIFY(bench.counts() > 10);
    }

    void emergencyStopsWithinItsTime_data()
    {
        QTest::addColumn<int>("torque"); // %
        QTest::newRow("rated torque") << 100;
        QTest::newRow("twice") << 200;
    }

    void emergencyStopsWithinItsTime()
    {
        QFETCH(int, torque);
        MotorBench bench({4, 0, 0, 0, 0, 0});
        bench.write(516, torque);
        bench.write(219, 0x02);
        bench.write(110, 0); // the holding brake is to take no part
        bench.write(111, 1000);
        bench.prepareSpeed(30000);
        bench.write(602, 40);
        bench.advance(1500);
        QVERIFY(std::fabs(bench.speed() - 3000) < 5);
        bench.write(202, 0x0101);
        const double time = bench.until(3, [&bench] { return std::fabs(bench.speed()) < 5; });
        const double expected = 4 * rotor * 3000 * radiansPerRpm / (torque / 100.0 * ratedTorque);
        QVERIFY2(time > 0.9 * expected && time < 1.2 * expected + 0.01,
                 qPrintable(QStringLiteral("%1 %2").arg(time).arg(expected)));
        QCOMPARE(bench.warning(), 1);
        bench.advance(100);
        QVERIFY(!bench.model.state().energised);

        // The emergency gone, the servo waits until it is switched on anew.
        bench.write(202, 0x0001);
        bench.advance(500);
        QVERIFY(!bench.model.state().energised);
        QCOMPARE(bench.warning(), 0);
        bench.write(202, 0x0000);
        bench.advance(5);
        bench.write(202, 0x0001);
        bench.advance(500);
        QVERIFY(bench.speed() > 500);
    }

    void servoOffStopsByItsMode_data()
    {
        QTest::addColumn<int>("mode");
        QTest::addColumn<double>("most"); // s
        QTest::addColumn<double>("least");
        QTest::newRow("coast until the brake falls") << 0 << 0.53 << 0.5;
        QTest::newRow("dynamic brake") << 1 << 0.1 << 0.01;
    }

    void servoOffStopsByItsMode()
    {
        QFETCH(int, mode);
        QFETCH(double, most);
        QFETCH(double, least);
        MotorBench bench({1.5, 0, 0, 0, 0.005, 0});
        bench.write(103, mode);
        bench.prepareSpeed(30000);
        bench.advance(1000);
        bench.servoOn(false);
        const double time = bench.until(3, [&bench] { return std::fabs(bench.speed()) < 5; });
        QVERIFY2(time >= least && time <= most, qPrintable(QString::number(time)));
    }

    void brakeHoldsALoadWhileTheServoIsOff()
    {
        MotorBench bench({2, 0, 0, 0, 0.02, 1.2});
        bench.write(602, 20);
        bench.advance(1000);
        QCOMPARE(bench.counts(), std::int64_t(0));
        bench.run();
        bench.advance(1000);
        const std::int64_t held = bench.counts();
        QVERIFY(std::abs(bench.status(1503) - 50) <= 2); // 1.2 of 2.39 Nm, less friction
        bench.servoOn(false);
        bench.advance(3000);
        QVERIFY(std::abs(bench.counts() - held) <= 2);
        QVERIFY(!bench.model.state().energised);
    }

    void overtravelSwitchStopsOneDirectionAlone()
    {
        MotorBench bench;
        bench.write(213, 0x04); // DI3
        bench.prepareJog();
        bench.write(202, jogForward);
        bench.advance(500);
        bench.write(202, jogForward | 0x0004);
        bench.advance(500);
        QVERIFY(std::fabs(bench.speed()) < 1);
        QCOMPARE(bench.warning(), 3);
        bench.write(202, jogReverse | 0x0004);
        bench.advance(500);
        QVERIFY(bench.speed() < -190);
        bench.write(202, jogReverse);
        bench.advance(5);
        QCOMPARE(bench.warning(), 0);
    }

    void overtravelSwitchEndsAMove()
    {
        MotorBench bench;
        bench.writePair(314, 1000000);
        bench.preparePositioning();
        bench.write(202, trigger);
        bench.advance(600);
        QVERIFY(bench.speed() > 400);
        bench.write(202, trigger | 0x0004);
        bench.advance(500);
        const std::int64_t stopped = bench.counts();
        QVERIFY(std::fabs(bench.speed()) < 1);
        bench.write(202, 1); // the switch left, nothing goes on by itself
        bench.advance(500);
        QVERIFY(std::abs(bench.counts() - stopped) <= 1);
        QCOMPARE(bench.fault(), 0);
    }

    void directionOfRotationTakesEffectAtPowerOn()
    {
        MotorBench bench;
        bench.registers.set(101, 1, RegisterFile::Copy::WorkingAndStored);
        bench.model.powerOn(bench.registers);
        bench.prepareSpeed(6000);
        bench.advance(500);
        QVERIFY(std::fabs(bench.speed() - 600) < 2); // as commanded
        QVERIFY(bench.counts() > 0);
        QVERIFY(bench.model.plant().speed() < -60); // the other way round
    }

    void powerCycleStopsAndForgets()
    {
        MotorBench bench;
        bench.prepareSpeed(10000);
        bench.advance(500);
        QVERIFY(bench.speed() > 900);
        bench.registers.powerCycle();
        bench.model.powerOn(bench.registers);
        bench.advance(1000);
        QCOMPARE(bench.speed(), 0.0);
        QCOMPARE(bench.counts(), std::int64_t(0));
        QCOMPARE(bench.registers.working(202), std::uint16_t(0));
        QVERIFY(!bench.model.state().energised);
    }

    void absolutePositionOutlastsAPowerCycle()
    {
        MotorBench bench;
        bench.registers.set(16, 1, RegisterFile::Copy::WorkingAndStored);
        bench.model.powerOn(bench.registers);
        bench.prepareSpeed(10000);
        bench.advance(500);
        bench.servoOn(false);
        bench.advance(1000);
        const std::int64_t counts = bench.counts();
        const std::int32_t user = bench.statusPair(1515);
        QVERIFY(counts > 10000);
        bench.registers.powerCycle();
        bench.model.powerOn(bench.registers);
        QCOMPARE(bench.counts(), counts);
        QCOMPARE(bench.statusPair(1515), user);
        bench.advance(100);
        QCOMPARE(bench.counts(), counts);
    }

    void servoThatIsOnAtPowerOnWaitsForAnEdge()
    {
        MotorBench bench;
        bench.write(211, 0x0101); // DI1, on at an open contact
        bench.registers.set(211, 0x0101, RegisterFile::Copy::WorkingAndStored);
        bench.model.powerOn(bench.registers);
        bench.advance(500);
        QVERIFY(!bench.model.state().energised);
        bench.model.setContacts(1);
        bench.advance(20);
        bench.model.setContacts(0);
        bench.advance(20);
        QVERIFY(bench.model.state().energised);
    }

    void sameInputGivesTheSameRun()
    {
        const auto run = [](std::uint32_t seed) {
            MotorBench bench({5, 600, 0.015, 0.0003, 0.08, 0}, seed);
            bench.prepareJog();
            bench.write(202, jogForward);
            std::vector<std::int32_t> values;
            for (int i = 0; i < 4000; ++i) {
                bench.step();
                for (int item = 0; item < 50; ++item)
                    values.push_back(bench.model.scopeValue(item));
            }
            return values;
        };
        const std::vector<std::int32_t> first = run(7);
        QVERIFY(first == run(7));
        QVERIFY(first != run(8));
    }

    void oneLongStepIsManyShortOnes()
    {
        MotorBench one;
        MotorBench many;
        for (MotorBench *bench : {&one, &many})
            bench->prepareSpeed(10000);
        one.advance(700);
        for (int i = 0; i < 5600; ++i)
            many.step();
        QCOMPARE(one.counts(), many.counts());
        one.servoOn(false);
        many.servoOn(false);
        one.advance(60000);
        for (int i = 0; i < 60000; ++i)
            many.advance(1);
        QCOMPARE(one.counts(), many.counts());
        QVERIFY(std::fabs(one.model.state().temperature - many.model.state().temperature) < 0.01);
        QVERIFY(std::fabs(one.model.state().hours - many.model.state().hours) < 1e-6);
        QVERIFY(std::fabs(one.model.state().overload - many.model.state().overload) < 1e-6);
    }
};

QTEST_APPLESS_MAIN(TestServo)
#include "tst_simulator_servo.moc"
