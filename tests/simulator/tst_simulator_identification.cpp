// SPDX-License-Identifier: GPL-3.0-or-later
#include "motorbench.h"

#include <QtTest>

#include <cmath>

using namespace kt500sim;

class TestIdentification : public QObject
{
    Q_OBJECT

private slots:
    void onlineEstimateSettlesWithinTenAccelerations_data()
    {
        QTest::addColumn<double>("ratio");
        QTest::addColumn<double>("friction");
        QTest::addColumn<int>("mode");
        QTest::newRow("motor alone") << 1.0 << 0.02 << 2;
        QTest::newRow("light") << 1.5 << 0.05 << 1;
        QTest::newRow("three, slow") << 3.0 << 0.05 << 2;
        QTest::newRow("three, fast") << 3.0 << 0.05 << 3;
        QTest::newRow("heavy") << 10.0 << 0.2 << 3;
        QTest::newRow("much friction") << 4.0 << 0.5 << 3;
    }
    void onlineEstimateSettlesWithinTenAccelerations()
    {
        QFETCH(double, ratio);
        QFETCH(double, friction);
        QFETCH(int, mode);
        MotorBench bench({ratio, 900, 0.02, 0.0005, friction, 0});
        bench.write(100, 1);
        bench.write(686, mode);
        bench.run();
        for (int i = 0; i < 10; ++i) {
            bench.writePair(401, i % 2 == 0 ? 12000 : -12000);
            bench.advance(400);
        }
        const double found = bench.status(1560) / 100.0;
        QVERIFY2(std::fabs(found / ratio - 1) < 0.05, qPrintable(QString::number(found)));
        const double load = bench.status(1559) / 100.0; // kg cm2, of a rotor of 1.30
        QVERIFY(std::fabs(load - (found - 1) * 1.3) < 0.02);
    }

    void estimateFollowsAChangedLoad()
    {
        MotorBench bench({2, 900, 0.02, 0.0005, 0.05, 0});
        bench.write(100, 1);
        bench.write(602, 30);
        bench.write(686, 3);
        bench.run();
        const auto shake = [&bench] {
            for (int i = 0; i < 20; ++i) {
                bench.writePair(401, i % 2 == 0 ? 12000 : -12000);
                bench.advance(400);
            }
        };
        shake();
        QVERIFY(std::abs(bench.status(1560) - 200) <= 10);
        bench.model.setPlant({5, 900, 0.02, 0.0005, 0.05, 0});
        shake();
        QVERIFY2(std::abs(bench.status(1560) - 500) <= 25, qPrintable(QString::number(bench.status(1560))));
    }

    void offlineRunMovesWithinItsStrokeAndReports_data()
    {
        QTest::addColumn<int>("speed");
        QTest::addColumn<int>("time");
        QTest::addColumn<int>("turns");
        QTest::newRow("as from the factory") << 500 << 125 << 4;
        QTest::newRow("short stroke") << 1000 << 800 << 1;
    }
    void offlineRunMovesWithinItsStrokeAndReports()
    {
        QFETCH(int, speed);
        QFETCH(int, time);
        QFETCH(int, turns);
        MotorBench bench({4, 900, 0.02, 0.0005, 0.05, 0});
        bench.write(605, speed);
        bench.write(606, time);
        bench.write(607, turns);
        bench.write(608, 200);
        bench.write(602, 30);
        bench.run();
        QCOMPARE(bench.counts(), std::int64_t(0));
        bench.write(603, 1);
        std::int64_t least = 0;
        std::int64_t most = 0;
        double fastest = 0;
        const double took = bench.until(60, [&] {
            least = std::min(least, bench.counts());
            most = std::max(most, bench.counts());
            fastest = std::max(fastest, std::fabs(rpm(bench.model.state().speedCommand)));
            return bench.registers.working(603) == 0;
        });
        QVERIFY(took > 1);
        QVERIFY(most > 10000);
        QVERIFY2(most - least < (turns * 1.2 + 0.2) * countsPerTurn,
                 qPrintable(QString::number(most - least)));
        QVERIFY(fastest <= speed * 1.001);
        QVERIFY2(std::abs(bench.status(1560) - 400) <= 20, qPrintable(QString::number(bench.status(1560))));
        bench.advance(300);
        QVERIFY(std::fabs(bench.speed()) < 1); // whatever the method would command
    }

    void servoOffEndsTheOfflineRun()
    {
        MotorBench bench;
        bench.run();
        bench.write(603, 1);
        bench.advance(100);
        QVERIFY(std::fabs(bench.speed()) > 50);
        bench.servoOn(false);
        bench.advance(1000);
        QVERIFY(std::fabs(bench.speed()) < 1);
    }

    void resonancesAreFoundOnceTheMachineHasBeenShaken()
    {
        MotorBench bench({3, 800, 0.01, 0.0005, 0.05, 0});
        bench.write(100, 1);
        QCOMPARE(bench.status(1536), 0);
        QCOMPARE(bench.status(1537), 0);
        bench.run();
        for (int i = 0; i < 6; ++i) {
            bench.writePair(401, i % 2 == 0 ? 12000 : -12000);
            bench.advance(400);
        }
        const double load = 0.00026;
        const double held = std::sqrt(800 / load) / (2 * pi);
        const double free = std::sqrt(800 * (1 / load + 1 / 0.00013)) / (2 * pi);
        QVERIFY(std::abs(bench.status(1536) - held) < 0.02 * held);
        QVERIFY(std::abs(bench.status(1537) - free) < 0.02 * free);
        QCOMPARE(bench.status(1538), 0);
        bench.model.setPlant({3, 0, 0.01, 0.0005, 0.05, 0}); // rigid: none
        bench.advance(2000);
        QCOMPARE(bench.status(1537), 0);
    }

    void thirdNotchAdaptsItself_data()
    {
        QTest::addColumn<int>("mode");
        QTest::addColumn<bool>("adapts");
        QTest::newRow("by hand") << 0 << false;
        QTest::newRow("third") << 1 << true;
        QTest::newRow("third and fourth") << 2 << true;
        QTest::newRow("measured only") << 3 << false;
    }
    void thirdNotchAdaptsItself()
    {
        QFETCH(int, mode);
        QFETCH(bool, adapts);
        MotorBench bench({3, 800, 0.01, 0.0005, 0.05, 0});
        bench.write(100, 1);
        bench.write(662, mode);
        bench.run();
        for (int i = 0; i < 6; ++i) {
            bench.writePair(401, i % 2 == 0 ? 12000 : -12000);
            bench.advance(400);
        }
        QCOMPARE(int(bench.registers.working(669)), adapts ? bench.status(1537) : 5000);
        QCOMPARE(bench.registers.working(672), std::uint16_t(5000));
        bench.write(662, 4); // sets both back, and measures from then on
        bench.advance(5);
        QCOMPARE(bench.registers.working(669), std::uint16_t(5000));
        QCOMPARE(bench.registers.working(662), std::uint16_t(3));
    }
};

QTEST_APPLESS_MAIN(TestIdentification)
#include "tst_simulator_identification.moc"
