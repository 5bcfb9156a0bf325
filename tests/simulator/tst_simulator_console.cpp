// SPDX-License-Identifier: GPL-3.0-or-later
#include "simulator/console.h"
#include "simulator/signalmodel.h"

#include <QtTest>

using namespace kt500sim;

class TestConsole : public QObject
{
    Q_OBJECT

private slots:
    void registerIsNamedInThreeWays_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("offset");
        QTest::newRow("decimal") << "304" << 304;
        QTest::newRow("hexadecimal") << "0x130" << 304;
        QTest::newRow("code") << "Pn-304" << 304;
        QTest::newRow("code without a hyphen") << "Pn304" << 304;
        QTest::newRow("code of a lettered group") << "Pn-A04" << 1004;
        QTest::newRow("lower case") << "pn-b06" << 1106;
        QTest::newRow("status") << "Pn-F00" << 1500;
        QTest::newRow("last") << "1599" << 1599;
        QTest::newRow("beyond") << "1600" << -1;
        QTest::newRow("negative") << "-1" << -1;
        QTest::newRow("word") << "speed" << -1;
        QTest::newRow("code too short") << "Pn-30" << -1;
        QTest::newRow("nothing") << "" << -1;
    }
    void registerIsNamedInThreeWays()
    {
        QFETCH(QString, text);
        QFETCH(int, offset);
        QCOMPARE(Console::parseOffset(text), offset);
    }

    void wrongCommandGetsAClearMessage_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<QString>("answer");
        QTest::newRow("unknown") << "jump"
                                 << "unknown command \"jump\"; \"help\" lists them";
        QTest::newRow("known with too much") << "quit now"
                                             << "unknown command \"quit now\"; \"help\" lists them";
        QTest::newRow("fault without number") << "noreply"
                                              << "usage: noreply N          lose the next N replies";
        QTest::newRow("get nothing") << "get"
                                     << "usage: get REGISTER";
        QTest::newRow("get a hole") << "get 50"
                                    << "the drive has no register 50";
        QTest::newRow("set without value") << "set 7"
                                           << "usage: set REGISTER VALUE";
        QTest::newRow("set too wide") << "set 7 65536"
                                      << "usage: set REGISTER VALUE";
        QTest::newRow("store a hole") << "store 50 1"
                                      << "the drive has no register 50";
        QTest::newRow("log maybe") << "log maybe"
                                   << "usage: log on|off";
        QTest::newRow("pace half") << "pace 9600"
                                   << "usage: pace BAUD MICROSECONDS";
        QTest::newRow("advance nothing") << "advance"
                                         << "usage: advance MS";
    }
    void wrongCommandGetsAClearMessage()
    {
        QFETCH(QString, command);
        QFETCH(QString, answer);
        SimulatedDrive drive;
        Console console(drive, {});
        QCOMPARE(console.execute(command), answer);
        QVERIFY(!console.wantsToQuit());
    }

    void setReachesTheWorkingCopyAndStoreBoth()
    {
        SimulatedDrive drive;
        Console console(drive, {});
        QCOMPARE(console.execute(QStringLiteral("store Pn-007 1000")), QString());
        QCOMPARE(console.execute(QStringLiteral("set Pn-007 0x0bb8")), QString());
        QCOMPARE(console.execute(QStringLiteral("get Pn-007")),
                 QStringLiteral("Pn-007: working 0x0bb8 (3000), stored 0x03e8 (1000)"));
        QCOMPARE(console.execute(QStringLiteral("power-cycle")), QString());
        QCOMPARE(console.execute(QStringLiteral("get Pn-007")),
                 QStringLiteral("Pn-007: working 0x03e8 (1000), stored 0x03e8 (1000)"));
        QCOMPARE(console.execute(QStringLiteral("factory")), QString());
        QCOMPARE(console.execute(QStringLiteral("get Pn-007")),
                 QStringLiteral("Pn-007: working 0x07d0 (2000), stored 0x07d0 (2000)"));
    }

    void negativeValueIsTwosComplement()
    {
        SimulatedDrive drive;
        Console console(drive, {});
        console.execute(QStringLiteral("set 253 -300"));
        QCOMPARE(drive.readRegister(253).value(), std::uint16_t(0xfed4));
    }

    void modelIsSteppedByCommand()
    {
        SimulatedDrive drive({}, std::make_unique<SignalModel>()); // its values move without being told to
        Console console(drive, {});
        console.execute(QStringLiteral("freeze"));
        const auto before = drive.readPair(1511);
        QCOMPARE(drive.readPair(1511), before);
        QCOMPARE(console.execute(QStringLiteral("advance 100")), QString());
        QVERIFY(drive.readPair(1511) != before);
    }

    void plantIsSetByCommand_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<double>("inertia");
        QTest::addColumn<double>("stiffness");
        QTest::addColumn<double>("friction");
        QTest::addColumn<double>("loadTorque");
        QTest::newRow("inertia") << "load-inertia 7.5" << 7.5 << 900.0 << 0.05 << 0.0;
        QTest::newRow("stiffness") << "stiffness 250" << 1.5 << 250.0 << 0.05 << 0.0;
        QTest::newRow("rigid") << "stiffness 0" << 1.5 << 0.0 << 0.05 << 0.0;
        QTest::newRow("friction") << "friction 0.2" << 1.5 << 900.0 << 0.2 << 0.0;
        QTest::newRow("load") << "load-torque -1.5" << 1.5 << 900.0 << 0.05 << -1.5;
    }
    void plantIsSetByCommand()
    {
        QFETCH(QString, command);
        SimulatedDrive drive;
        Console console(drive, {});
        QCOMPARE(console.execute(command), QString());
        const PlantSettings plant = drive.plant();
        QTEST(plant.inertiaRatio, "inertia");
        QTEST(plant.stiffness, "stiffness");
        QTEST(plant.coulomb, "friction");
        QTEST(plant.loadTorque, "loadTorque");
    }

    void machineCommandThatDoesNotFitChangesNothing_data()
    {
        QTest::addColumn<QString>("command");
        for (const char *command :
             {"load-inertia", "load-inertia 0.5", "load-inertia x", "load-inertia 2 3", "stiffness -1",
              "friction -1", "friction nan", "load-torque", "input 0 on", "input 17 on", "input 1",
              "input 1 maybe", "fault", "fault 0", "fault 100", "fault x", "warning 3", "warning 0 on"})
            QTest::newRow(command) << command;
    }
    void machineCommandThatDoesNotFitChangesNothing()
    {
        QFETCH(QString, command);
        SimulatedDrive drive;
        Console console(drive, {});
        drive.freeze();
        QVERIFY(console.execute(command).startsWith(QLatin1String("usage: ")));
        drive.advance(milliseconds(20));
        const PlantSettings plant = drive.plant();
        const PlantSettings factory;
        QCOMPARE(plant.inertiaRatio, factory.inertiaRatio);
        QCOMPARE(plant.stiffness, factory.stiffness);
        QCOMPARE(plant.coulomb, factory.coulomb);
        QCOMPARE(plant.loadTorque, factory.loadTorque);
        QCOMPARE(drive.contacts(), std::uint16_t(0));
        QCOMPARE(drive.state().fault, 0);
        QCOMPARE(drive.state().warning, 0);
    }

    void contactsFaultsAndWarningsAreSetByCommand()
    {
        SimulatedDrive drive;
        Console console(drive, {});
        drive.freeze();
        QCOMPARE(console.execute(QStringLiteral("input 16 on")), QString());
        QCOMPARE(console.execute(QStringLiteral("input 2 on")), QString());
        drive.advance(milliseconds(20));
        QCOMPARE(drive.readRegister(1525).value(), std::uint16_t(0x8002));
        QCOMPARE(console.execute(QStringLiteral("input 16 off")), QString());
        drive.advance(milliseconds(20));
        QCOMPARE(drive.readRegister(1525).value(), std::uint16_t(0x0002));

        QCOMPARE(console.execute(QStringLiteral("fault 17")), QString());
        QCOMPARE(drive.readRegister(1528).value(), std::uint16_t(17));
        QCOMPARE(console.execute(QStringLiteral("fault 3")), QStringLiteral("a fault is present already"));
        QCOMPARE(console.execute(QStringLiteral("warning 11 on")), QString());
        QCOMPARE(drive.readRegister(1527).value(), std::uint16_t(11));
        QCOMPARE(console.execute(QStringLiteral("warning 11 off")), QString());
        QCOMPARE(drive.readRegister(1527).value(), std::uint16_t(0));
    }

    void stateShowsTheMotorAndItsLoad()
    {
        SimulatedDrive drive;
        Console console(drive, {});
        drive.freeze();
        console.execute(QStringLiteral("set 100 1"));
        console.execute(QStringLiteral("set 402 6000"));
        console.execute(QStringLiteral("load-inertia 2.5"));
        console.execute(QStringLiteral("input 1 on"));
        console.execute(QStringLiteral("advance 2000"));
        const QString state = console.execute(QStringLiteral("state"));
        QVERIFY2(state.contains(QLatin1String("servo        on")), qPrintable(state));
        QVERIFY2(state.contains(QLatin1String("command 600.0 rpm")), qPrintable(state));
        QVERIFY2(state.contains(QLatin1String("inputs       0x0001")), qPrintable(state));
        QVERIFY2(state.contains(QLatin1String("ratio 2.50")), qPrintable(state));
        QVERIFY2(state.contains(QLatin1String("fault        0, warning 0")), qPrintable(state));
    }

    void helpNamesEveryCommand()
    {
        const QString help = Console::help();
        for (const char *word :
             {"noreply", "badcrc",      "split",   "splinter",     "late",      "stale",       "exception",
              "silence", "hangup",      "garbage", "stream",       "clear",     "power-cycle", "factory",
              "get",     "set",         "store",   "load-inertia", "stiffness", "damping",     "friction",
              "viscous", "load-torque", "input",   "fault",        "warning",   "state",       "pace",
              "freeze",  "unfreeze",    "advance", "counters",     "log",       "port",        "quit"})
            QVERIFY2(help.contains(QLatin1String(word)), word);
    }

    void emptyLineDoesNothing()
    {
        SimulatedDrive drive;
        Console console(drive, {});
        QCOMPARE(console.execute(QStringLiteral("  ")), QString());
    }

    void quitIsRemembered()
    {
        SimulatedDrive drive;
        Console console(drive, {});
        QCOMPARE(console.execute(QStringLiteral("quit")), QString());
        QVERIFY(console.wantsToQuit());
    }
};

QTEST_APPLESS_MAIN(TestConsole)
#include "tst_simulator_console.moc"
