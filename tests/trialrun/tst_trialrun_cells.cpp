// SPDX-License-Identifier: GPL-3.0-or-later
// Step three: what is typed into the cells of its table.
#include "trialbench.h"

#include "support/modalanswers.h"
#include "trialrun/holdbutton.h"

class TrialRunCellsTest : public QObject
{
    Q_OBJECT

private slots:
    void cellsOpenForTypingWhenTheTableIsRead_data();
    void cellsOpenForTypingWhenTheTableIsRead();
    void typedWhileTheTableIsReadIsNotWritten();
    void refusedReadLeavesItsCellBlank();
    void typedCellOnce_data();
    void typedCellOnce();
    void typedCellContinuous();
    void wrongCellIsToldAndBlanked_data();
    void wrongCellIsToldAndBlanked();
    void blankCellIsLeftOut();
    void framesOfTwoActsKeepTheirOrder();
};

void TrialRunCellsTest::cellsOpenForTypingWhenTheTableIsRead_data()
{
    QTest::addColumn<bool>("continuous");
    QTest::newRow("once") << false;
    QTest::newRow("continuous") << true;
}

void TrialRunCellsTest::cellsOpenForTypingWhenTheTableIsRead()
{
    QFETCH(bool, continuous);
    TrialBench bench;
    QVERIFY(bench.waitUntilReady());
    bench.enterStepThree();
    const TrialRunDriver drive = bench.drive();
    // Nor before a mode is chosen: what is typed then goes nowhere.
    QVERIFY(!TrialRunDriver::opensForTyping(drive.positionTable(), 0));
    bench.peer.held = true;
    TrialRunDriver::click(continuous ? drive.continuous() : drive.once());
    QVERIFY(!TrialRunDriver::opensForTyping(drive.positionTable(), 0));
    bench.peer.release();
    TrialBench::settled();
    QVERIFY(TrialRunDriver::opensForTyping(drive.positionTable(), 0));
    QCOMPARE(TrialRunDriver::opensForTyping(drive.positionTable(), 3), continuous);
    // A step back and forth makes the table unread.
    TrialRunDriver::click(drive.jogRun());
    QVERIFY(bench.waitUntilReady());
    bench.enterStepThree();
    QVERIFY(!TrialRunDriver::opensForTyping(drive.positionTable(), 0));
}

void TrialRunCellsTest::typedWhileTheTableIsReadIsNotWritten()
{
    TrialBench bench;
    QVERIFY(bench.waitUntilReady());
    const TrialRunDriver drive = bench.drive();
    for (QRadioButton *mode : {drive.once(), drive.continuous()}) {
        QVERIFY(bench.enterStepThree());
        bench.peer.held = true;
        TrialRunDriver::click(mode);
        TrialRunDriver::type(drive.positionTable(), 2, QStringLiteral("7"));
        QCOMPARE(bench.peer.frames.size(), 1);
        bench.peer.release();
        TrialBench::settled();
        // The drive's value has taken its place.
        const int address = mode == drive.once() ? 0x213D : 0x23EF;
        QCOMPARE(TrialRunDriver::cell(drive.positionTable(), 2),
                 QString::number(bench.peer.registers.value(address)));
        TrialRunDriver::click(drive.jogRun());
        QVERIFY(bench.waitUntilReady());
    }
}

// A value of an earlier visit is not taken for one of the drive's, nor moved by.
void TrialRunCellsTest::refusedReadLeavesItsCellBlank()
{
    TrialBench bench;
    QVERIFY(bench.waitUntilReady());
    const TrialRunDriver drive = bench.drive();
    bench.enter(drive.once());
    TrialRunDriver::type(drive.positionTable(), 0, QStringLiteral("1000"));
    TrialBench::settled();
    TrialRunDriver::click(drive.jogRun());
    QVERIFY(bench.waitUntilReady());
    bench.peer.intercept = [](const QByteArray &request, const QByteArray &usual) {
        return request == QByteArray::fromHex("0103213a0002ee3a") ? wire::frame("018302") : usual;
    };
    bench.enter(drive.once());
    QCOMPARE(TrialRunDriver::cell(drive.positionTable(), 0), QString());
    QVERIFY(!TrialRunDriver::cell(drive.positionTable(), 1).isEmpty());
    TrialRunDriver::hold(drive.moveForward());
    TrialBench::settled();
    QCOMPARE(bench.sent().first(), wire::frame("0110 213A 0002 04 00000000"));
}

void TrialRunCellsTest::typedCellOnce_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QList<QByteArray>>("written");
    QTest::newRow("distance") << 0 << "1000" << frames({"0110 213A 0002 04 000003E8"});
    QTest::newRow("speed") << 1 << "12.3" << frames({"0110 213C 0001 02 007B"});
    QTest::newRow("wait") << 3 << "5" << QList<QByteArray>();
    QTest::newRow("overload") << 4 << "110" << frames({"0110 2322 0001 02 006E"});
}

void TrialRunCellsTest::typedCellOnce()
{
    QFETCH(int, row);
    QFETCH(QString, text);
    TrialBench bench;
    QVERIFY(bench.waitUntilReady());
    bench.enter(bench.drive().once());
    TrialRunDriver::type(bench.drive().positionTable(), row, text);
    TrialBench::settled();
    QTEST(bench.sent(), "written");
}

void TrialRunCellsTest::typedCellContinuous()
{
    TrialBench bench;
    QVERIFY(bench.waitUntilReady());
    bench.enter(bench.drive().continuous());
    QTableWidget *const table = bench.drive().positionTable();
    TrialRunDriver::type(table, 0, QStringLiteral("1000"));
    TrialRunDriver::type(table, 4, QStringLiteral("110"));
    TrialRunDriver::type(table, 3, QStringLiteral("5"));
    TrialBench::settled();
    QCOMPARE(bench.sent(),
             frames({"0110 23EC 0002 04 000003E8", "0110 23F2 0002 04 FFFFFC18", "0110 2322 0001 02 006E",
                     "0110 0001 02 006E", "0110 23F0 0002 04 00000005", "0110 23F6 0002 04 00000005"}));
}

void TrialRunCellsTest::wrongCellIsToldAndBlanked_data()
{
    addWrongCellColumns();
    QTest::newRow("not whole") << 0 << "1.5"
                               << "Paramter Value Input Error!";
    QTest::newRow("above") << 0 << "2147483648"
                           << "Input value execteeds the range!\n \nMax:2.14748e+09";
    QTest::newRow("below") << 4 << "49"
                           << "Input value execteeds the range!\n \nMin:50";
    QTest::newRow("threshold") << 5 << "3.1"
                               << "Input value execteeds the range!\n \nMax:3";
}

void TrialRunCellsTest::wrongCellIsToldAndBlanked()
{
    QFETCH(int, row);
    QFETCH(QString, text);
    QFETCH(QString, message);
    ModalAnswers boxes;
    TrialBench bench;
    QVERIFY(bench.waitUntilReady());
    bench.enter(bench.drive().once());
    boxes.expect(message);
    TrialRunDriver::type(bench.drive().positionTable(), row, text);
    QVERIFY(boxes.isDone());
    QCOMPARE(TrialRunDriver::cell(bench.drive().positionTable(), row), QString());
    QVERIFY(bench.peer.frames.isEmpty());
}

void TrialRunCellsTest::blankCellIsLeftOut()
{
    TrialBench bench;
    QVERIFY(bench.waitUntilReady());
    bench.enter(bench.drive().once());
    TrialRunDriver::type(bench.drive().positionTable(), 4, QString());
    TrialRunDriver::click(bench.drive().continuous());
    TrialBench::settled();
    for (const QByteArray &frame : bench.sent())
        QVERIFY(frame.mid(2, 2) != word(0x2322));
}

void TrialRunCellsTest::framesOfTwoActsKeepTheirOrder()
{
    TrialBench bench;
    QVERIFY(bench.waitUntilReady());
    bench.enter(bench.drive().continuous());
    bench.peer.held = true;
    TrialRunDriver::type(bench.drive().positionTable(), 2, QStringLiteral("7"));
    TrialRunDriver::type(bench.drive().positionTable(), 1, QStringLiteral("1"));
    QCOMPARE(bench.peer.frames.size(), 1);
    bench.peer.release();
    TrialBench::settled();
    QCOMPARE(bench.sent(), frames({"0110 23EF 0001 02 0007", "0110 23F5 0001 02 0007",
                                   "0110 23EE 0001 02 000A", "0110 23F4 0001 02 000A"}));
}

QTEST_MAIN(TrialRunCellsTest)
#include "tst_trialrun_cells.moc"
