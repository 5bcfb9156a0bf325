// SPDX-License-Identifier: GPL-3.0-or-later
#include "motorbench.h"

#include <QtTest>

using namespace kt500sim;

class TestTerminals : public QObject
{
    Q_OBJECT

private slots:
    void planIsReadByDigits_data()
    {
        QTest::addColumn<int>("plan");
        QTest::addColumn<int>("function");
        QTest::addColumn<bool>("inverted");
        QTest::addColumn<int>("delay");
        QTest::newRow("nothing") << 0x0000 << 0 << false << 0;
        QTest::newRow("one digit") << 0x0001 << 1 << false << 0;
        QTest::newRow("two digits") << 0x0012 << 12 << false << 0;
        QTest::newRow("no decimal digit") << 0x001f << 0 << false << 0;
        QTest::newRow("inverted") << 0x0127 << 27 << true << 0;
        QTest::newRow("delayed") << 0x7002 << 2 << false << 8;
        QTest::newRow("longest") << 0xf130 << 30 << true << 500;
    }
    void planIsReadByDigits()
    {
        QFETCH(int, plan);
        const TerminalPlan read = terminalPlan(static_cast<std::uint16_t>(plan));
        QTEST(read.function, "function");
        QTEST(read.inverted, "inverted");
        QTEST(read.delay, "delay");
    }

    void inputTakesItsLevelFromItsSource()
    {
        MotorBench bench;
        bench.model.setContacts(0x8005);
        bench.write(202, 0x0ff0);
        bench.advance(20);
        QCOMPARE(bench.registers.working(202), std::uint16_t(0x0ff0));
        QCOMPARE(bench.status(1525) & 0xffff, 0x8005);
        bench.write(200, 0x00f1);
        bench.advance(20);
        QCOMPARE(bench.status(1525) & 0xffff, 0x80f4);
    }

    void contactIsFilteredAndALevelOfTheLineIsNot()
    {
        MotorBench bench; // 5 ms for DI1 to DI8
        bench.advance(1);
        bench.model.setContacts(0x0101);
        bench.step();
        QCOMPARE(bench.status(1525), 0x0100); // DI9 has no common filter
        bench.advance(4);
        QCOMPARE(bench.status(1525), 0x0100);
        bench.advance(2);
        QCOMPARE(bench.status(1525), 0x0101);
        bench.model.setContacts(0x0100); // too short a gap
        bench.advance(3);
        bench.model.setContacts(0x0101);
        bench.advance(20);
        QCOMPARE(bench.status(1525), 0x0101);
        bench.write(200, 0x0001);
        bench.step();
        QCOMPARE(bench.status(1525), 0x0100);
    }

    void inputsOwnFilterIsAddedToTheCommonOne()
    {
        MotorBench bench;
        bench.write(211, 0xb001); // 30 ms
        bench.model.setContacts(0x0001);
        bench.advance(34);
        QCOMPARE(bench.status(1525), 0);
        bench.advance(3);
        QCOMPARE(bench.status(1525), 1);
    }

    void invertedInputIsOnAtAnOpenContact()
    {
        MotorBench bench;
        bench.write(219, 0x0102); // emergency stop, as a circuit that fails safe has it
        bench.advance(5);
        QCOMPARE(bench.warning(), 1);
        bench.model.setContacts(0x0100);
        bench.advance(5);
        QCOMPARE(bench.warning(), 0);
    }

    void outputsFollowTheirFunctions()
    {
        MotorBench bench;
        // DO1 ready, DO2 fault, DO3 in position, DO4 brake, then running, zero speed, warning, torque
        // limited.
        bench.write(236, 0x02);
        bench.write(237, 0x08);
        bench.write(238, 0x04);
        bench.write(239, 0x12);
        bench.advance(5);
        QCOMPARE(bench.status(1526), 0x0041); // ready, zero speed
        bench.run();
        bench.advance(100);
        QCOMPARE(bench.status(1526), 0x006d); // and in position, brake open, running
        bench.servoOn(false);
        bench.step();
        QCOMPARE(bench.status(1526) & 0x0028, 0x0020); // the brake closes while the motor still holds
        bench.advance(99);
        QCOMPARE(bench.status(1526) & 0x0020, 0x0020);
        bench.advance(3);
        QCOMPARE(bench.status(1526), 0x0041);
        bench.model.forceWarning(2, true);
        bench.advance(5);
        QCOMPARE(bench.status(1526), 0x00c1);
    }

    void speedAndTorqueOutputsFollowTheirThresholds()
    {
        MotorBench bench({1.5, 0, 0, 0, 0, 1.195});
        bench.write(236, 0x09); // speed arrived, from 1000 rpm
        bench.write(237, 0x11); // torque arrived, from 20 %
        bench.write(100, 1);
        bench.write(602, 15);
        bench.write(421, 5000); // 500 rpm
        bench.writePair(401, 4000);
        bench.run();
        bench.advance(1000);
        QCOMPARE(bench.status(1526) & 0x0060, 0x0040);
        bench.writePair(401, 6000);
        bench.advance(1000);
        QCOMPARE(bench.status(1526) & 0x0060, 0x0060);
    }

    void outputIsForcedInvertedAndDelayed()
    {
        MotorBench bench;
        bench.write(201, 0x8001);
        bench.write(203, 0x8000);
        bench.advance(2);
        QCOMPARE(bench.status(1526) & 0xffff, 0x8000); // DO1, ready, is forced off
        bench.write(201, 0);
        bench.write(231, 0x0101);
        bench.advance(2);
        QCOMPARE(bench.status(1526), 0);
        bench.write(231, 0xd002); // running, for 100 ms at least
        bench.run();
        QCOMPARE(bench.status(1526) & 1, 1);
        bench.servoOn(false);
        bench.advance(200);
        bench.servoOn();
        bench.advance(98);
        QCOMPARE(bench.status(1526) & 1, 0);
        bench.advance(4);
        QCOMPARE(bench.status(1526) & 1, 1);
    }

    void auxiliaryLevelsStartLowUnlessTheyAreToBeKept_data()
    {
        QTest::addColumn<int>("management");
        QTest::addColumn<int>("levels");
        QTest::newRow("low") << 0 << 0;
        QTest::newRow("low, cleared with the link") << 1 << 0;
        QTest::newRow("kept") << 2 << 0x0ff0;
    }
    void auxiliaryLevelsStartLowUnlessTheyAreToBeKept()
    {
        QFETCH(int, management);
        QFETCH(int, levels);
        MotorBench bench;
        bench.registers.set(204, static_cast<std::uint16_t>(management),
                            RegisterFile::Copy::WorkingAndStored);
        bench.registers.set(202, 0x0ff0, RegisterFile::Copy::WorkingAndStored);
        bench.registers.powerCycle();
        bench.model.powerOn(bench.registers);
        QCOMPARE(int(bench.registers.working(202)), levels);
        QCOMPARE(bench.registers.stored(202), std::uint16_t(0x0ff0));
    }
};

QTEST_APPLESS_MAIN(TestTerminals)
#include "tst_simulator_terminals.moc"
