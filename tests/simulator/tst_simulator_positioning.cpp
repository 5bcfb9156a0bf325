// SPDX-License-Identifier: GPL-3.0-or-later
#include "motorbench.h"

#include <QtTest>

#include <cmath>

using namespace kt500sim;

namespace {

constexpr int jogForward = 0x0101; // DI1 and DI9
constexpr int jogReverse = 0x0201; // DI1 and DI10
constexpr int trigger = 0x0401;    // DI1 and DI11

double toCounts(double userUnits)
{
    return userUnits * 131072 / 10000;
}

} // namespace

class TestPositioning : public QObject
{
    Q_OBJECT

private slots:
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
        bench.preparePositioning();
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
        bench.planInputs();
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
        bench.preparePositioning();
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
        bench.preparePositioning();
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
        bench.preparePositioning();
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
        bench.preparePositioning();
        bench.write(300, 2);
        bench.advance(1000);
        QCOMPARE(bench.counts(), std::int64_t(0));
        bench.write(202, 0x0801);
        bench.advance(5);
        bench.write(202, 0x0c01);
        bench.advance(3000);
        QCOMPARE(bench.statusPair(1515), -4000);
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
        bench.preparePositioning();
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
        bench.prepareJog();
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

    void wayOfOtherCommandsIsNotTakenBack_data()
    {
        QTest::addColumn<int>("clearing");
        QTest::newRow("cleared with the servo") << 0;
        QTest::newRow("kept through servo off") << 3;
    }
    void wayOfOtherCommandsIsNotTakenBack()
    {
        QFETCH(int, clearing);
        MotorBench bench;
        bench.write(321, clearing);
        bench.prepareJog();
        bench.write(202, jogForward);
        bench.advance(1000);
        bench.write(202, 1);
        bench.advance(500);
        const std::int64_t stopped = bench.counts();
        QVERIFY(stopped > 100000);
        bench.write(11, 0); // positions from here on
        bench.advance(1000);
        QVERIFY(std::abs(bench.counts() - stopped) <= 2);

        bench.write(11, 1);
        bench.write(202, jogForward);
        bench.advance(1000);
        bench.write(202, 0);
        bench.advance(1000);
        bench.write(11, 0);
        const std::int64_t off = bench.counts();
        bench.write(202, 1);
        bench.advance(1000);
        QVERIFY(std::abs(bench.counts() - off) <= 2);
    }

    void deviationIsClearedByItsInput()
    {
        MotorBench bench;
        bench.write(321, 1);
        bench.write(222, 0x18); // DI12
        bench.writePair(314, 100000);
        bench.preparePositioning();
        bench.write(202, trigger);
        bench.advance(500);
        QVERIFY(bench.model.state().deviation > 1000);
        bench.write(202, 0x0801);
        bench.advance(300);
        QVERIFY(std::fabs(bench.speed()) < 1);
        QVERIFY(std::fabs(bench.model.state().deviation) <= 1);
    }
};

QTEST_APPLESS_MAIN(TestPositioning)
#include "tst_simulator_positioning.moc"
