// SPDX-License-Identifier: GPL-3.0-or-later
#include "motorbench.h"

#include "simulator/model/statusvalues.h"

#include <QFile>
#include <QRegularExpression>
#include <QtTest>

#include <cmath>
#include <random>

using namespace kt500sim;

namespace {

/// The ranges that a healthy drive's status registers keep, whatever it does, in their raw units.
struct Range
{
    int offset;
    bool wide;
    std::int64_t least;
    std::int64_t most;
};

constexpr Range ranges[] = {
    {1500, false, -6000, 6000}, {1501, false, -6000, 6000},   {1502, false, -1200, 1200},
    {1503, false, -300, 300},   {1504, false, -1200, 1200},   {1505, false, 0, 300},
    {1506, false, 0, 300},      {1507, true, 0, 0},           {1509, true, 0, 0},
    {1517, false, -200, 200},   {1518, true, 0, 131071},      {1522, false, 0, 1500},
    {1523, false, 2800, 4200},  {1524, false, 200, 600},      {1527, false, 0, 20},
    {1528, false, 0, 0},        {1529, true, 123400, 123500}, {1532, false, 0, 300},
    {1533, false, 0, 200},      {1534, false, 31, 40},        {1535, false, 0, 65535},
    {1536, false, 0, 5000},     {1537, false, 0, 5000},       {1538, false, 0, 5000},
    {1540, true, 0, 0},         {1542, true, 0, 0},           {1544, true, 0, 0},
    {1556, false, 1, 9000},     {1557, false, 1, 10000},      {1558, false, 10, 10000},
    {1559, false, 0, 15500},    {1560, false, 100, 12000},    {1562, false, 0, 100},
    {1570, false, 0, 0},        {1571, false, 0, 0},          {1572, false, 0, 0},
    {1581, true, 0, 0},         {1585, false, 0, 240},
};

std::int64_t valueOf(const RegisterFile &registers, const Range &range)
{
    if (range.wide)
        return registers.workingPair(range.offset);
    return static_cast<std::int16_t>(registers.working(range.offset));
}

} // namespace

class TestStatus : public QObject
{
    Q_OBJECT

private slots:
    void everyRegisterStaysPlausible_data()
    {
        QTest::addColumn<int>("method");
        QTest::newRow("position") << 0;
        QTest::newRow("speed") << 1;
        QTest::newRow("torque") << 2;
    }
    void everyRegisterStaysPlausible()
    {
        QFETCH(int, method);
        MotorBench bench({3, 700, 0.02, 0.0003, 0.08, 0.2});
        bench.write(100, method);
        bench.write(300, 2);
        bench.write(602, 30);
        bench.write(686, 3);
        bench.write(1000, 1);
        bench.writePair(1010, -10000);
        bench.writePair(1008, 100);
        bench.writePair(1014, 100);
        bench.write(501, 15);
        bench.write(511, 20000);
        bench.run();
        double last = static_cast<double>(bench.counts());
        for (int i = 0; i < 2400; ++i) {
            if (i == 1200) {
                bench.writePair(401, -20000);
                bench.write(501, -20);
            }
            bench.advance(1);
            bench.model.refreshStatus(bench.registers);
            for (const Range &range : ranges) {
                const std::int64_t value = valueOf(bench.registers, range);
                QVERIFY2(value >= range.least && value <= range.most,
                         qPrintable(QStringLiteral("%1: %2").arg(range.offset).arg(value)));
            }
            // Position and speed tell of the same motion: counts a millisecond against rpm.
            const double counts = bench.statusPair(1511);
            const double moved = (counts - last) * 1000 * 60 / 131072;
            QVERIFY2(std::fabs(moved - bench.status(1500)) < 60, qPrintable(QString::number(moved)));
            last = counts;
            // So do the other registers of the position.
            QCOMPARE(bench.statusPair(1520), bench.statusPair(1511));
            QCOMPARE(bench.status(1517) * 131072 + bench.statusPair(1518), bench.statusPair(1511));
            QVERIFY(std::fabs(bench.statusPair(1515) - counts * 10000 / 131072) <= 1);
            QCOMPARE(bench.status(1580), static_cast<int>(static_cast<std::int16_t>(bench.statusPair(1511))));
        }
        QVERIFY(bench.status(1506) > 0);
        QVERIFY(bench.status(1505) > 0);
    }

    void scopeItemShowsItsRegisterOrTheLoops_data()
    {
        QTest::addColumn<int>("item");
        QTest::addColumn<int>("offset");
        QTest::addColumn<bool>("wide");
        QTest::newRow("motor speed") << 0 << 1500 << false;
        QTest::newRow("torque command") << 3 << 1503 << false;
        QTest::newRow("peak torque") << 6 << 1506 << false;
        QTest::newRow("feedback") << 9 << 1511 << true;
        QTest::newRow("deviation") << 10 << 1513 << true;
        QTest::newRow("position") << 11 << 1515 << true;
        QTest::newRow("turns") << 12 << 1517 << false;
        QTest::newRow("within the turn") << 13 << 1518 << true;
        QTest::newRow("current") << 15 << 1522 << false;
        QTest::newRow("bus") << 16 << 1523 << false;
        QTest::newRow("inputs") << 18 << 1525 << false;
        QTest::newRow("outputs") << 19 << 1526 << false;
        QTest::newRow("running time") << 22 << 1529 << true;
        QTest::newRow("resonance") << 30 << 1537 << false;
        QTest::newRow("first of the second encoder") << 33 << 1540 << true;
        QTest::newRow("pulse frequency") << 49 << 1581 << true;
    }
    void scopeItemShowsItsRegisterOrTheLoops()
    {
        QFETCH(int, item);
        QFETCH(int, offset);
        QFETCH(bool, wide);
        QCOMPARE(offsetOfScopeItem(item), offset);
        MotorBench bench;
        bench.write(100, 1);
        bench.run();
        bench.advance(300);
        bench.model.refreshStatus(bench.registers);
        const std::int32_t shown = wide ? bench.statusPair(offset) : bench.status(offset);
        QCOMPARE(bench.model.scopeValue(item), shown);
    }

    void everyItemOfARegisterShowsWhatTheRegisterShows()
    {
        MotorBench bench;
        bench.write(100, 1);
        bench.run();
        bench.model.forceWarning(2, true);
        bench.advance(300);
        bench.model.refreshStatus(bench.registers);
        // Neighbours that are usually both zero are told apart.
        QVERIFY(bench.status(1527) != bench.status(1528));
        for (int item = 0; item < scopeItemCount; ++item) {
            const int offset = offsetOfScopeItem(item);
            // A reserved item has the second word of a pair for a register, and shows nothing.
            if (offset < 0 || isWideStatusValue(offset - 1))
                continue;
            const std::int32_t shown =
                isWideStatusValue(offset) ? bench.statusPair(offset) : bench.status(offset);
            QVERIFY2(bench.model.scopeValue(item) == shown, qPrintable(QString::number(item)));
        }
    }

    // The catalogue whose rows name all items: a row's register is that of its code, and a row with a code of
    // another kind has none.
    void everyScopeItemIsTheRegisterThatItsRowNames()
    {
        QFile file(QStringLiteral(SCOPE_CATALOGUE));
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QString text = QString::fromUtf8(file.readAll());
        QRegularExpressionMatchIterator codes =
            QRegularExpression(QStringLiteral("<code>([^<]*)</code>")).globalMatch(text);
        int item = 0;
        for (; codes.hasNext(); ++item) {
            const QString code = codes.next().captured(1);
            const int expected = code.startsWith(QLatin1String("Pn-F")) ? 1500 + code.mid(4, 2).toInt() : -1;
            QVERIFY2(offsetOfScopeItem(item) == expected, qPrintable(code));
        }
        QCOMPARE(item, 50);
        QCOMPARE(offsetOfScopeItem(item), -1);
    }

    void itemsOfTheLoopsAreInTheirUnits()
    {
        MotorBench bench({1.5, 0, 0, 0, 0, 1.195});
        bench.write(602, 15);
        bench.write(300, 1);
        bench.writePair(314, 30000);
        bench.write(221, 0x25);
        bench.run();
        bench.write(202, 0x0401);
        bench.advance(300);
        const DriveState &state = bench.model.state();
        QCOMPARE(bench.model.scopeValue(40), 3 * 131072); // where the command ends, counts
        QVERIFY(std::abs(bench.model.scopeValue(41) - bench.model.scopeValue(42) - state.deviation) <= 1);
        QCOMPARE(std::int64_t(bench.model.scopeValue(42)), state.counts);
        QVERIFY(std::abs(bench.model.scopeValue(43) - bench.model.scopeValue(44)) < 30); // rpm
        QVERIFY(std::abs(bench.model.scopeValue(48) - 239) < 10); // 1.195 Nm at 0.50 Nm/A, 0.01 A
        QVERIFY(std::abs(bench.model.scopeValue(47) - bench.model.scopeValue(48)) < 20);
        QCOMPARE(bench.model.scopeValue(45), 0);
        QCOMPARE(bench.model.scopeValue(-1), 0);
        QCOMPARE(bench.model.scopeValue(50), 0);
    }

    void deviationIsInUserUnits()
    {
        MotorBench bench({1.5, 0, 0, 0, 0, 0});
        bench.write(300, 1);
        bench.write(636, 0);
        bench.write(602, 15);
        bench.writePair(314, 1000000);
        bench.write(316, 6000);
        bench.write(221, 0x25);
        bench.run();
        bench.write(202, 0x0401);
        bench.advance(1500);
        // 10 turns a second over a gain of 39 1/s, at 10000 units a turn.
        QVERIFY(std::abs(bench.statusPair(1513) - 2564) < 30);
    }

    void torqueOfAMinuteIsForgottenAfterIt()
    {
        MotorBench bench({1.5, 0, 0, 0, 0, 1.195});
        bench.prepareSpeed(5000);
        bench.advance(30000);
        QVERIFY(std::abs(bench.status(1505) - 50) <= 1); // all the time since power-on
        QVERIFY(bench.status(1506) >= 50);
        bench.servoOn(false);
        bench.advance(45000); // 15 s of 60 are left
        QVERIFY2(std::abs(bench.status(1505) - 25) <= 1, qPrintable(QString::number(bench.status(1505))));
        bench.advance(17000);
        QCOMPARE(bench.status(1505), 0);
        QCOMPARE(bench.status(1506), 0);
    }

    void anyValuesInTheRegistersKeepTheStateFinite()
    {
        std::minstd_rand random(20); // the same at every run
        for (int round = 0; round < 150; ++round) {
            MotorBench bench({3, 700, 0.02, 0.0003, 0.08, 0.2});
            bench.run();
            for (int offset = 0; offset < 1200; ++offset) {
                const bool mayChange = bench.registers.exists(offset) && !bench.registers.isReadOnly(offset);
                if (mayChange && random() % 3 == 0)
                    bench.registers.set(offset, static_cast<std::uint16_t>(random() >> 8));
            }
            bench.write(200, 0xffff);
            for (int i = 0; i < 20; ++i) {
                bench.write(202, static_cast<int>(random() & 0xffff));
                bench.advance(5);
                const DriveState &state = bench.model.state();
                for (const double value : {state.speed, state.torque, state.deviation, state.userPosition,
                                           state.busVoltage, state.overload, state.identifiedInertia})
                    QVERIFY2(std::isfinite(value), qPrintable(QString::number(round)));
                QVERIFY(std::fabs(rpm(state.speed)) < 20000);
                for (int item = 0; item < scopeItemCount; ++item)
                    bench.model.scopeValue(item);
            }
        }
    }

    void restTakesNoStepsAndMotionFew()
    {
        MotorBench bench;
        bench.advance(50);
        QVERIFY(bench.model.longestRest() >= std::chrono::seconds(1));
        bench.run();
        QVERIFY(bench.model.longestRest() <= std::chrono::milliseconds(20));
    }
};

QTEST_APPLESS_MAIN(TestStatus)
#include "tst_simulator_status.moc"
