// SPDX-License-Identifier: GPL-3.0-or-later
#include "motorbench.h"

#include <QtTest>

#include <cmath>

using namespace kt500sim;

namespace {

constexpr double ratedTorque = 2.39; // Nm

/// Turns slowly against a load torque.
void runAgainstLoad(MotorBench &bench)
{
    bench.write(100, 1);
    bench.write(602, 15);
    bench.writePair(401, 1000);
    bench.run();
}

} // namespace

class TestProtection : public QObject
{
    Q_OBJECT

private slots:
    void overloadTripsByItsCurve_data()
    {
        QTest::addColumn<double>("load"); // of the rated torque
        QTest::addColumn<int>("gain");    // %
        QTest::newRow("a little") << 1.2 << 100;
        QTest::newRow("half above") << 1.5 << 100;
        QTest::newRow("near twice") << 1.9 << 100;
        QTest::newRow("half above, at half the time") << 1.5 << 50;
        QTest::newRow("half above, at three times the time") << 1.5 << 300;
    }
    void overloadTripsByItsCurve()
    {
        QFETCH(double, load);
        QFETCH(int, gain);
        MotorBench bench({1.5, 0, 0, 0, 0, load * ratedTorque});
        bench.write(802, gain);
        runAgainstLoad(bench);
        const double warned = bench.until(300, [&bench] { return bench.warning() == 2; });
        const double tripped = warned + bench.until(300, [&bench] { return bench.fault() == 3; });
        // Heat rises towards the square of the current over 1.1 times the rated one, in 30 s at 100 %.
        const double current = load * ratedTorque / 0.5 / 4.78; // 0.50 Nm/A
        const double settled = current * current / 1.21;
        const double expected = -30 * gain / 100.0 * std::log(1 - 1 / settled);
        QVERIFY2(std::fabs(tripped / expected - 1) < 0.03,
                 qPrintable(QStringLiteral("%1 %2").arg(tripped).arg(expected)));
        const double expectedWarning = -30 * gain / 100.0 * std::log(1 - 0.85 / settled);
        QVERIFY(std::fabs(warned / expectedWarning - 1) < 0.03);
        QCOMPARE(bench.status(1562), 100);
    }

    void ratedLoadIsBorneForEver()
    {
        MotorBench bench({1.5, 0, 0, 0, 0, ratedTorque});
        runAgainstLoad(bench);
        bench.advance(300000);
        QCOMPARE(bench.fault(), 0);
        QCOMPARE(bench.warning(), 0);
        QVERIFY(std::abs(bench.status(1562) - 83) <= 1);  // 1 / 1.1 squared
        QVERIFY(std::abs(bench.status(1505) - 100) <= 1); // effective torque of a minute
        QVERIFY(std::abs(bench.status(1532) - 100) <= 1);
    }

    void overloadCanBeHidden()
    {
        MotorBench bench({1.5, 0, 0, 0, 0, 1.5 * ratedTorque});
        bench.write(803, 1);
        runAgainstLoad(bench);
        bench.advance(60000);
        QCOMPARE(bench.fault(), 0);
        QCOMPARE(bench.warning(), 0);
    }

    void overloadIsResetOnceTheMotorHasCooled()
    {
        MotorBench bench({1.5, 0, 0, 0, 0, 1.9 * ratedTorque});
        runAgainstLoad(bench);
        QVERIFY(bench.until(60, [&bench] { return bench.fault() == 3; }) > 0);
        bench.write(800, 1);
        bench.advance(1);
        QCOMPARE(bench.fault(), 3);
        bench.advance(8000);
        bench.write(800, 1);
        bench.advance(1);
        QCOMPARE(bench.fault(), 0);
        QCOMPARE(bench.registers.working(800), std::uint16_t(0));
    }

    void blockedMotorTripsWithinItsWindow()
    {
        MotorBench bench({1.5, 0, 0, 0, 100, 0});
        bench.write(805, 400);
        runAgainstLoad(bench);
        const double strong =
            bench.until(20, [&bench] { return bench.model.state().torque > 2 * ratedTorque; });
        QVERIFY(strong > 0);
        const double tripped = bench.until(2, [&bench] { return bench.fault() == 3; });
        QVERIFY2(std::fabs(tripped - 0.4) < 0.005, qPrintable(QString::number(tripped)));
    }

    void deviationBeyondItsThresholdTrips()
    {
        MotorBench bench({1.5, 0, 0, 0, 100, 0}); // blocked
        bench.writePair(807, 20000);
        bench.write(804, 0);
        bench.write(300, 1);
        bench.writePair(314, 100000);
        bench.write(221, 0x25);
        bench.run();
        bench.write(202, 0x0401);
        QVERIFY(bench.until(5, [&bench] { return bench.fault() != 0; }) > 0);
        QCOMPARE(bench.fault(), 16);
        bench.step();
        QVERIFY(std::fabs(bench.model.state().deviation) < 1); // cleared with the servo
    }

    void overspeedTrips()
    {
        MotorBench bench({1.5, 0, 0, 0, 0, -6}); // a load that drives
        bench.write(411, 60000);
        bench.write(809, 10);
        bench.write(100, 2);
        bench.write(501, 0);
        bench.write(511, 60000);
        bench.write(505, 10);
        bench.write(506, 10);
        bench.run();
        QVERIFY(bench.until(5, [&bench] { return bench.fault() != 0; }) >= 0);
        QCOMPARE(bench.fault(), 11);
        // Of 6 Nm on 1.95 kg cm2 a millisecond makes 290 rpm.
        QVERIFY(bench.registers.working(860) > 6000 && bench.registers.working(860) < 6400);
    }

    void electronicGearBeyondItsRangeTrips_data()
    {
        QTest::addColumn<int>("numerator");
        QTest::addColumn<int>("denominator");
        QTest::addColumn<int>("fault");
        QTest::newRow("least") << 1 << 50 << 0;
        QTest::newRow("too small") << 1 << 51 << 22;
        QTest::newRow("largest") << 2621 << 1 << 0;
        QTest::newRow("too large") << 2622 << 1 << 22;
    }
    void electronicGearBeyondItsRangeTrips()
    {
        QFETCH(int, numerator);
        QFETCH(int, denominator);
        MotorBench bench;
        bench.writePair(304, numerator);
        bench.writePair(312, denominator);
        bench.run();
        QTEST(bench.fault(), "fault");
    }

    void brakingLiftsTheBusAndLoadsTheResistor()
    {
        MotorBench bench({30, 0, 0, 0, 0, 0});
        bench.write(100, 1);
        bench.write(602, 300);
        bench.writePair(401, 30000);
        bench.run();
        bench.advance(4000);
        QVERIFY(std::abs(bench.status(1523) - 3110) < 60);
        bench.writePair(401, 0);
        int highest = 0;
        for (int i = 0; i < 1000; ++i) {
            bench.advance(1);
            highest = std::max(highest, bench.status(1523));
        }
        QVERIFY2(highest > 3700 && highest < 4000, qPrintable(QString::number(highest)));
        QVERIFY(bench.status(1533) > 0);
        QCOMPARE(bench.fault(), 0);
    }

    void faultStopsAndIsReset_data()
    {
        QTest::addColumn<int>("number");
        QTest::addColumn<bool>("resettable");
        QTest::newRow("overcurrent") << 1 << true;
        QTest::newRow("position") << 16 << true;
        QTest::newRow("encoder") << 17 << false;
        QTest::newRow("store") << 14 << false;
    }
    void faultStopsAndIsReset()
    {
        QFETCH(int, number);
        QFETCH(bool, resettable);
        MotorBench bench;
        bench.write(100, 1);
        bench.writePair(401, 10000);
        bench.run();
        bench.advance(500);
        QVERIFY(bench.speed() > 900);
        QVERIFY(bench.model.raiseFault(bench.registers, number));
        QVERIFY(!bench.model.raiseFault(bench.registers, 5)); // the first one stays
        bench.step();
        QCOMPARE(bench.status(1528), number);
        QCOMPARE(bench.status(1526) & 3, 2); // DO1 ready off, DO2 fault on
        bench.advance(1500);
        QVERIFY(std::fabs(bench.speed()) < 1);
        QVERIFY(!bench.model.state().energised);
        bench.write(800, 1);
        bench.advance(2);
        QCOMPARE(bench.fault(), resettable ? 0 : number);
        bench.advance(500);
        QVERIFY(!bench.model.state().energised); // the servo waits to be switched on anew
        bench.registers.powerCycle();
        bench.model.powerOn(bench.registers);
        QCOMPARE(bench.fault(), 0);
    }

    void faultIsResetByItsInput()
    {
        MotorBench bench;
        QVERIFY(bench.model.raiseFault(bench.registers, 1));
        bench.useAuxiliaryInputs();
        bench.advance(2);
        QCOMPARE(bench.fault(), 1);
        bench.write(202, 0x0002); // DI2, as from the factory
        bench.advance(2);
        QCOMPARE(bench.fault(), 0);
        QVERIFY(bench.model.raiseFault(bench.registers, 1));
        bench.advance(20);
        QCOMPARE(bench.fault(), 1); // the level alone resets nothing
    }

    void numberOutsideTheRangeIsNoFault()
    {
        MotorBench bench;
        for (const int number : {-1, 0, 100, 65537})
            QVERIFY(!bench.model.raiseFault(bench.registers, number));
        QCOMPARE(bench.fault(), 0);
    }

    void recordHoldsTheLastTenFaults()
    {
        MotorBench bench;
        for (int number = 1; number <= 12; ++number) {
            QVERIFY(bench.model.raiseFault(bench.registers, number + 20));
            bench.registers.powerCycle();
            bench.model.powerOn(bench.registers);
        }
        for (int i = 0; i < 10; ++i)
            QCOMPARE(bench.registers.working(850 + i), std::uint16_t(32 - i));
        bench.write(800, 0x0010);
        for (int i = 0; i < 15; ++i) {
            QCOMPARE(bench.registers.working(850 + i), std::uint16_t(0));
            QCOMPARE(bench.registers.stored(850 + i), std::uint16_t(0));
        }
    }

    void recordHoldsWhatWasMeasured()
    {
        MotorBench bench({1.5, 0, 0, 0, 0, 1.195});
        bench.write(100, 1);
        bench.writePair(401, 6000);
        bench.run();
        bench.advance(2000);
        QVERIFY(bench.model.raiseFault(bench.registers, 9));
        QVERIFY(std::abs(bench.registers.working(860) - 600) <= 2);
        QVERIFY(std::abs(bench.registers.working(861) - 239) <= 3); // 1.195 Nm at 0.50 Nm/A
        QVERIFY(std::abs(bench.registers.working(862) - 3110) < 40);
        QVERIFY(bench.registers.working(863) > 250 && bench.registers.working(863) < 500);
        QCOMPARE(int(bench.registers.working(864)), bench.statusPair(1529) / 100);
    }

    void frequentStoreWritesTrip()
    {
        MotorBench bench;
        bench.write(834, 20);
        for (int i = 0; i < 20; ++i)
            bench.model.storedCopyWritten(bench.registers);
        QCOMPARE(bench.fault(), 0);
        bench.advance(3600 * 1000); // an hour later they no longer count
        for (int i = 0; i < 20; ++i)
            bench.model.storedCopyWritten(bench.registers);
        QCOMPARE(bench.fault(), 0);
        bench.model.storedCopyWritten(bench.registers);
        QCOMPARE(bench.fault(), 13);
        bench.write(800, 1);
        QCOMPARE(bench.fault(), 0);

        bench.write(833, 0);
        for (int i = 0; i < 100; ++i)
            bench.model.storedCopyWritten(bench.registers);
        QCOMPARE(bench.fault(), 0);
    }

    void lowestWarningIsShown()
    {
        MotorBench bench;
        bench.model.forceWarning(11, true);
        bench.advance(2);
        QCOMPARE(bench.status(1527), 11);
        bench.write(219, 0x02);
        bench.useAuxiliaryInputs(0x0100);
        bench.advance(2);
        QCOMPARE(bench.status(1527), 1);
        bench.write(202, 0);
        bench.advance(2);
        QCOMPARE(bench.status(1527), 11);
        bench.model.forceWarning(11, false);
        QCOMPARE(bench.warning(), 0);
    }
};

QTEST_APPLESS_MAIN(TestProtection)
#include "tst_simulator_protection.moc"
