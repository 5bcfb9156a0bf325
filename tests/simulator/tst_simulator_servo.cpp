// SPDX-License-Identifier: GPL-3.0-or-later
#include "motorbench.h"

#include <QtTest>

#include <cmath>

using namespace kt500sim;

namespace {

constexpr int jogForward = 0x0101; // DI1 and DI9
constexpr int jogReverse = 0x0201;
constexpr int trigger = 0x0401;
constexpr double rotor = 0.00013;    // kg m2
constexpr double ratedTorque = 2.39; // Nm
constexpr double radiansPerRpm = pi / 30;

/// JOG by DI9 and DI10, the trigger at DI11, all by register.
void planInputs(MotorBench &bench)
{
    bench.write(219, 0x27);
    bench.write(220, 0x28);
    bench.write(221, 0x25);
}

void prepareJog(MotorBench &bench)
{
    bench.write(11, 1);
    bench.write(602, 15);
    planInputs(bench);
    bench.run();
}

void preparePositioning(MotorBench &bench)
{
    bench.write(300, 1);
    bench.write(602, 15);
    planInputs(bench);
    bench.run();
}

void prepareSpeed(MotorBench &bench, int tenthsOfRpm)
{
    bench.write(100, 1);
    bench.write(602, 15);
    bench.writePair(401, tenthsOfRpm);
    bench.run();
}

double toCounts(double userUnits)
{
    return userUnits * 131072 / 10000;
}

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
        planInputs(bench);
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
        planInputs(bench);
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

    void jogRunsBothWaysByItsRamps()
    {
        MotorBench bench;
        bench.write(7, 3000); // 300 rpm
        bench.write(8, 1000); // ms to the rated 3000 rpm: a tenth of it to 300
        bench.write(9, 500);
        prepareJog(bench);
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
        prepareJog(bench);
        bench.write(202, jogForward);
        bench.advance(20);
        QVERIFY(std::fabs(bench.model.state().torque - 0.2 * ratedTorque) < 0.001);
    }

    void positionIsReachedToTheCount_data()
    {
        QTest::addColumn<int>("distance");
        QTest::newRow("a turn") << 10000;
        QTest::newRow("a turn back") << -10000;
        QTest::newRow("one unit") << 1;
        QTest::newRow("no whole number of counts") << 12345;
        QTest::newRow("far") << 200001;
    }
    void positionIsReachedToTheCount()
    {
        QFETCH(int, distance);
        MotorBench bench;
        bench.writePair(314, distance);
        bench.write(316, 20000);
        preparePositioning(bench);
        const std::int64_t start = bench.counts();
        bench.write(202, trigger);
        // A ramp of 100 ms to 3000 rpm, at most 2000 rpm, and the way of the command in rated terms.
        const double turns = std::abs(distance) / 10000.0;
        const double speed = 2000 / 60.0;
        const double acceleration = 3000 / 60.0 / 0.1;
        const double time = turns >= speed * speed / acceleration ? turns / speed + speed / acceleration
                                                                  : 2 * std::sqrt(turns / acceleration);
        bench.step();
        QVERIFY(bench.model.state().commandPresent);
        const double took = bench.until(10, [&bench] { return !bench.model.state().commandPresent; });
        QVERIFY2(std::fabs(took - time) < 0.0005, qPrintable(QStringLiteral("%1 %2").arg(took).arg(time)));
        bench.advance(4000); // a way of a few counts waits for the integral to overcome friction
        QCOMPARE(bench.counts(), start + static_cast<std::int64_t>(std::lround(toCounts(distance))));
        QCOMPARE(bench.status(1526) & 4, 4); // DO3, in position
        bench.advance(500);                  // the trigger is still held: an edge starts, a level does not
        QCOMPARE(bench.counts(), start + static_cast<std::int64_t>(std::lround(toCounts(distance))));
    }

    void triggerThatComesWithServoOnIsRunOnceTheServoIsOn()
    {
        MotorBench bench;
        bench.write(300, 1);
        bench.writePair(314, 5000);
        planInputs(bench);
        bench.useAuxiliaryInputs();
        bench.advance(5);
        bench.write(202, trigger);
        bench.advance(30);
        bench.write(202, 1); // let go before the brake is open
        bench.advance(1500);
        QCOMPARE(bench.counts(), std::int64_t(65536));
    }

    void absolutePositionIsReachedFromAnywhere()
    {
        MotorBench bench;
        bench.write(318, 1);
        bench.writePair(314, 20000);
        preparePositioning(bench);
        for (const int target : {20000, 5000, -7000}) {
            bench.writePair(314, target);
            bench.write(202, trigger);
            bench.advance(1500);
            QCOMPARE(bench.statusPair(1515), target);
            bench.write(202, 1);
            bench.advance(10);
        }
    }

    void electronicGearIsChosenByInput()
    {
        MotorBench bench;
        bench.writePair(306, 262144);
        bench.write(222, 0x15); // DI12 chooses the second numerator
        bench.writePair(314, 1000);
        preparePositioning(bench);
        bench.write(202, trigger | 0x0800);
        bench.advance(1000);
        QCOMPARE(bench.counts(), static_cast<std::int64_t>(std::lround(2 * toCounts(1000))));
        QCOMPARE(bench.statusPair(1515), 1000);
    }

    void sectionsRunOnceOrOverAndOver_data()
    {
        QTest::addColumn<int>("mode");
        QTest::newRow("once") << 0;
        QTest::newRow("over and over") << 1;
    }
    void sectionsRunOnceOrOverAndOver()
    {
        QFETCH(int, mode);
        MotorBench bench;
        bench.write(1000, mode);
        bench.write(1001, 3);
        for (const auto &[offset, distance] : {std::pair(1004, 5000), {1010, 3000}, {1016, -8000}}) {
            bench.writePair(offset, distance);
            bench.write(offset + 2, 10000); // 1000 rpm
            bench.writePair(offset + 4, 600);
        }
        preparePositioning(bench);
        bench.write(300, 2);
        const auto position = [&bench] { return bench.statusPair(1515); };
        // Each way: 1000 rpm by a ramp of 100 ms to 3000 rpm, then 600 ms of rest.
        const auto section = [](double turns) { return turns / (1000 / 60.0) + 1 / 30.0 + 0.6; };
        const int first = static_cast<int>(section(0.5) * 1000);
        const int second = static_cast<int>(section(0.3) * 1000);
        const int third = static_cast<int>(section(0.8) * 1000);
        bench.advance(first - 20);
        QCOMPARE(position(), 5000);
        bench.advance(second);
        QCOMPARE(position(), 8000);
        bench.advance(third);
        QCOMPARE(position(), 0);
        bench.advance(first);
        QCOMPARE(position(), mode == 0 ? 0 : 5000);
        bench.write(202, 0); // servo off ends the run; the next one begins with the first section
        bench.advance(1000);
        const std::int32_t stopped = position();
        bench.write(202, 1);
        bench.advance(101 + first - 20);
        QCOMPARE(position(), stopped + 5000);
    }

    void sectionIsChosenByInputs()
    {
        MotorBench bench;
        bench.write(1000, 2);
        bench.writePair(1010, -4000); // section 2
        bench.write(222, 0x19);       // DI12: first bit of the section's number
        preparePositioning(bench);
        bench.write(300, 2);
        bench.advance(1000);
        QCOMPARE(bench.counts(), std::int64_t(0));
        bench.write(202, 0x0801);
        bench.advance(5);
        bench.write(202, 0x0c01);
        bench.advance(3000);
        QCOMPARE(bench.statusPair(1515), -4000);
    }

    void speedFollowsItsRamp()
    {
        MotorBench bench;
        bench.write(403, 600);
        bench.write(404, 300);
        prepareSpeed(bench, 0);
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
        prepareSpeed(bench, 20000);
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
        prepareSpeed(bench, 0);
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
        prepareSpeed(bench, 30000);
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
        prepareSpeed(bench, 30000);
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
        prepareJog(bench);
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
        preparePositioning(bench);
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

    void softwareLimitCutsAMoveAndWarns_data()
    {
        QTest::addColumn<int>("distance");
        QTest::addColumn<int>("reached");
        QTest::addColumn<int>("warning");
        QTest::newRow("forward") << 50000 << 12000 << 7;
        QTest::newRow("reverse") << -50000 << -8000 << 8;
        QTest::newRow("within") << 11000 << 11000 << 0;
    }
    void softwareLimitCutsAMoveAndWarns()
    {
        QFETCH(int, distance);
        MotorBench bench;
        bench.write(817, 1);
        bench.writePair(818, 12000);
        bench.writePair(820, -8000);
        bench.writePair(314, distance);
        preparePositioning(bench);
        bench.write(202, trigger);
        bench.advance(3000);
        QTEST(bench.statusPair(1515), "reached");
        QTEST(bench.status(1527), "warning");
    }

    void softwareLimitStopsJog()
    {
        MotorBench bench;
        bench.write(817, 1);
        bench.writePair(818, 10000);
        prepareJog(bench);
        bench.write(202, jogForward);
        bench.advance(4000);
        QVERIFY(std::fabs(bench.speed()) < 1);
        QCOMPARE(bench.warning(), 7);
        QVERIFY(bench.statusPair(1515) >= 10000 && bench.statusPair(1515) < 10500);
        bench.write(202, jogReverse);
        bench.advance(1000);
        QVERIFY(bench.speed() < -190);
        QCOMPARE(bench.warning(), 0);
    }

    void deviationIsClearedByItsInput()
    {
        MotorBench bench;
        bench.write(321, 1);
        bench.write(222, 0x18); // DI12
        bench.writePair(314, 100000);
        preparePositioning(bench);
        bench.write(202, trigger);
        bench.advance(500);
        QVERIFY(bench.model.state().deviation > 1000);
        bench.write(202, 0x0801);
        bench.advance(300);
        QVERIFY(std::fabs(bench.speed()) < 1);
        QVERIFY(std::fabs(bench.model.state().deviation) <= 1);
    }

    void directionOfRotationTakesEffectAtPowerOn()
    {
        MotorBench bench;
        bench.registers.set(101, 1, RegisterFile::Copy::WorkingAndStored);
        bench.model.powerOn(bench.registers);
        prepareSpeed(bench, 6000);
        bench.advance(500);
        QVERIFY(std::fabs(bench.speed() - 600) < 2); // as commanded
        QVERIFY(bench.counts() > 0);
        QVERIFY(bench.model.plant().speed() < -60); // the other way round
    }

    void powerCycleStopsAndForgets()
    {
        MotorBench bench;
        prepareSpeed(bench, 10000);
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
            prepareJog(bench);
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
            prepareSpeed(*bench, 10000);
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
