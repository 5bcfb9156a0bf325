// SPDX-License-Identifier: GPL-3.0-or-later
// The simulated drive on a system without pseudo-terminals.
#include "simulator/pseudoterminal.h"
#include "simulator/simulateddrive.h"

#include <QTest>

#include <thread>

using namespace kt500sim;

class NoTerminalTest : public QObject
{
    Q_OBJECT

private slots:
    void startSaysWhatIsMissing();
    void registersAreThereWithoutALine();
    void terminalStaysClosed();
    void waitEndsAtItsDeadlineOrWhenWoken();
};

void NoTerminalTest::startSaysWhatIsMissing()
{
    SimulatedDrive drive;
    QString error;
    QVERIFY(!drive.start(&error));
    QCOMPARE(error, QStringLiteral("pseudo-terminals need a POSIX system"));
    QVERIFY(!drive.isRunning());
    QVERIFY(!drive.hasClient());
    QVERIFY(drive.devicePath().isEmpty());
}

void NoTerminalTest::registersAreThereWithoutALine()
{
    SimulatedDrive drive;
    QVERIFY(drive.writeRegister(7, 1234));
    QCOMPARE(*drive.readRegister(7), quint16(1234));
    drive.powerCycle();
    QCOMPARE(*drive.readRegister(7), quint16(2000));
}

void NoTerminalTest::terminalStaysClosed()
{
    PseudoTerminal terminal("/nowhere/kt500");
    QVERIFY(!terminal.open().empty());
    QVERIFY(!terminal.isOpen());
    QVERIFY(terminal.devicePath().empty());
    QVERIFY(!terminal.hasClient());
    std::uint8_t bytes[] = {1, 2, 3};
    QCOMPARE(terminal.read(bytes, 3), std::size_t(0));
    // Bytes for nobody count as written.
    QCOMPARE(terminal.write(bytes, 3), std::size_t(3));
    terminal.close();
    QVERIFY(!terminal.isOpen());
}

void NoTerminalTest::waitEndsAtItsDeadlineOrWhenWoken()
{
    PseudoTerminal terminal({});
    const TimePoint deadline = Clock::now() + milliseconds(20);
    QVERIFY(!terminal.wait(deadline));
    QVERIFY(Clock::now() >= deadline);
    terminal.wake(); // ends the next wait
    QVERIFY(!terminal.wait({}));
    std::thread waker([&terminal] { terminal.wake(); });
    QVERIFY(!terminal.wait({}));
    waker.join();
}

QTEST_GUILESS_MAIN(NoTerminalTest)
#include "tst_simulator_noterminal.moc"
