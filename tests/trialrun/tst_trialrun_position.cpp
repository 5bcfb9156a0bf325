// SPDX-License-Identifier: GPL-3.0-or-later
// Step three: both modes and the reads of their table.
#include "trialbench.h"

#include "trialrun/holdbutton.h"

#include <QGroupBox>

class TrialRunPositionTest : public QObject
{
    Q_OBJECT

private slots:
    void stepThreeBegins();
    void stepOneComesBack();
    void onceReadsTheTable();
    void continuousReadsTheTableAndMirrorsIt();
    void valuesStayWhenTheModeChanges();
    void stepBackMakesTheTableUnread();
    void waitTimeIsTheOneOfEntryOrTheLastTyped();
    void stepThreeDropsTheReadsOfStepOne();
    void longestNumberIsShownWhole();
};

void TrialRunPositionTest::stepThreeBegins()
{
    TrialBench bench;
    QVERIFY(bench.waitUntilReady());
    const TrialRunDriver drive = bench.drive();
    bench.peer.held = true;
    TrialRunDriver::click(drive.servoOn());
    bench.window->handleTrialRun(panel("0001"));
    for (const char *position : {"000003E8", "FFFFFC18"})
        bench.window->handleTrialRun(wire::readReply(wire::bytes(position)));
    bench.peer.frames.clear();
    bench.peer.held = false;
    TrialRunDriver::click(drive.positionRun());
    TrialBench::settled();
    QCOMPARE(bench.sent(), frames({"0106200B0000", "0110 2332 0004 08 000003E8 FFFFFC18", "010620CA0000"}));
    QCOMPARE(TrialRunDriver::cells(drive.jogTable()), (QStringList{"", "", "", ""}));
    QVERIFY(!drive.positionRun()->isEnabled());
    QVERIFY(drive.jogRun()->isEnabled());
    const QWidget *const page = drive.page();
    QVERIFY(!page->findChild<QGroupBox *>(QStringLiteral("stepBox1"))->isEnabled());
    QVERIFY(!page->findChild<QGroupBox *>(QStringLiteral("stepBox2"))->isEnabled());
    QVERIFY(page->findChild<QGroupBox *>(QStringLiteral("stepBox3"))->isEnabled());
    // A mode has to be chosen first.
    QVERIFY(!drive.moveForward()->isEnabled());
    QVERIFY(!drive.moveRollback()->isEnabled());
    QVERIFY(!drive.runButton("Run")->isEnabled());
}

void TrialRunPositionTest::stepOneComesBack()
{
    TrialBench bench;
    QVERIFY(bench.waitUntilReady());
    const TrialRunDriver drive = bench.drive();
    bench.enter(drive.once());
    TrialRunDriver::click(drive.jogRun());
    QVERIFY(!drive.once()->isChecked());
    QVERIFY(!drive.continuous()->isChecked());
    QVERIFY(drive.once()->isCheckable());
    QVERIFY(!drive.moveForward()->isEnabled());
    QVERIFY(runUntil([&] { return drive.servoOn()->isEnabled(); }, 3000));
    QCOMPARE(bench.sent(), frames({"010620CA0000", "0106200B0001", "010620DB0027", "010620DC0028",
                                   "010620DD0025", "010620C80701", "011020640001020000", "010320070001",
                                   "010320080001", "010320090001", "0103200A0001"}));
    QVERIFY(drive.positionRun()->isEnabled());
    QVERIFY(!drive.jogRun()->isEnabled());
    QVERIFY(!TrialRunDriver::cell(drive.jogTable(), 0).isEmpty());
}

void TrialRunPositionTest::onceReadsTheTable()
{
    TrialBench bench;
    bench.peer.registers[0x213A] = 0;
    bench.peer.registers[0x213B] = 1000;
    bench.peer.registers[0x213C] = 30000;
    bench.peer.registers[0x213D] = 200;
    bench.peer.registers[0x2322] = 110;
    bench.peer.registers[0x2329] = 15;
    bench.peer.registers[0x2327] = 0x00C8;
    bench.peer.registers[0x2328] = 0;
    QVERIFY(bench.waitUntilReady());
    const TrialRunDriver drive = bench.drive();
    QVERIFY(bench.enterStepThree());
    TrialRunDriver::click(drive.once());
    TrialBench::settled();
    QCOMPARE(bench.sent(), frames({"0103213a0002", "0103213c0001", "0103213d0001", "010323220001",
                                   "010323290001", "010323270002", "0106212C0001"}));
    QCOMPARE(TrialRunDriver::cells(drive.positionTable()),
             (QStringList{"1000", "3000.0", "200", "", "110", "1.5", "13107200"}));
    QVERIFY(drive.moveForward()->isEnabled());
    QVERIFY(drive.moveRollback()->isEnabled());
    QVERIFY(!drive.runButton("Run")->isEnabled());
    QVERIFY(!(drive.positionTable()->item(3, 3)->flags() & Qt::ItemIsEditable));
}

void TrialRunPositionTest::continuousReadsTheTableAndMirrorsIt()
{
    TrialBench bench;
    bench.peer.registers[0x23EC] = 0;
    bench.peer.registers[0x23ED] = 1000;
    bench.peer.registers[0x23EE] = 123;
    bench.peer.registers[0x23EF] = 200;
    bench.peer.registers[0x23F0] = 0;
    bench.peer.registers[0x23F1] = 5;
    QVERIFY(bench.waitUntilReady());
    const TrialRunDriver drive = bench.drive();
    QVERIFY(bench.enterStepThree());
    TrialRunDriver::click(drive.continuous());
    TrialBench::settled();
    QCOMPARE(bench.sent(), frames({"010323ec0002", "010323ee0001", "010323ef0001", "010323f00002",
                                   "010323220001", "010323290001", "010323270002", "010623E80001",
                                   "010623E90002", "0110 23F2 0002 04 FFFFFC18", "0110 23F4 0001 02 007B",
                                   "0110 23F5 0001 02 00C8", "0110 23F6 0002 04 00000005"}));
    QCOMPARE(TrialRunDriver::cells(drive.positionTable()).mid(0, 4),
             (QStringList{"1000", "12.3", "200", "5"}));
    QVERIFY(!drive.moveForward()->isEnabled());
    QVERIFY(drive.runButton("Run")->isEnabled());
    QVERIFY(drive.positionTable()->item(3, 3)->flags() & Qt::ItemIsEditable);
}

void TrialRunPositionTest::valuesStayWhenTheModeChanges()
{
    TrialBench bench;
    QVERIFY(bench.waitUntilReady());
    const TrialRunDriver drive = bench.drive();
    bench.enter(drive.once());
    TrialRunDriver::type(drive.positionTable(), 0, QStringLiteral("1000"));
    TrialRunDriver::type(drive.positionTable(), 1, QStringLiteral("12.3"));
    TrialRunDriver::type(drive.positionTable(), 2, QStringLiteral("200"));
    TrialRunDriver::type(drive.positionTable(), 4, QStringLiteral("110"));
    TrialRunDriver::type(drive.positionTable(), 5, QStringLiteral("1.2"));
    TrialRunDriver::type(drive.positionTable(), 6, QStringLiteral("7"));
    TrialBench::settled();
    bench.peer.frames.clear();
    TrialRunDriver::click(drive.continuous());
    TrialBench::settled();
    const QString wait = QString::number(bench.peer.registers.value(0x23F1));
    QCOMPARE(TrialRunDriver::cell(drive.positionTable(), 3), wait);
    QList<QByteArray> sent = bench.sent();
    // Sent past the queue, while the first frame of it is out.
    QCOMPARE(sent.takeAt(1), panel("0000"));
    const QByteArray waitData = wire::bytes("0000") + word(wait.toInt());
    QList<QByteArray> expected =
        frames({"0110 23EC 0002 04 000003E8", "0110 23F2 0002 04 FFFFFC18", "0110 23EE 0001 02 007B",
                "0110 23F4 0001 02 007B", "0110 23EF 0001 02 00C8", "0110 23F5 0001 02 00C8"});
    for (const char *head : {"011023F0000204", "011023F6000204"})
        expected.append(wire::frame(wire::bytes(head) + waitData));
    expected += frames({"0110 2322 0001 02 006E", "0110 2329 0001 02 000C", "0110 2327 0002 04 00000007",
                        "010623E80001", "010623E90002"});
    QCOMPARE(sent, expected);
    bench.peer.frames.clear();
    TrialRunDriver::click(drive.once());
    TrialBench::settled();
    QCOMPARE(bench.sent(), frames({"0110 213A 0002 04 000003E8", "0110 213C 0001 02 007B",
                                   "0110 213D 0001 02 00C8", "0110 2322 0001 02 006E",
                                   "0110 2329 0001 02 000C", "0110 2327 0002 04 00000007", "0106212C0001"}));
}

void TrialRunPositionTest::stepBackMakesTheTableUnread()
{
    TrialBench bench;
    QVERIFY(bench.waitUntilReady());
    const TrialRunDriver drive = bench.drive();
    bench.enter(drive.once());
    TrialRunDriver::click(drive.jogRun());
    QVERIFY(bench.waitUntilReady());
    QVERIFY(bench.enterStepThree());
    TrialRunDriver::click(drive.once());
    TrialBench::settled();
    QCOMPARE(bench.sent().first(), QByteArray::fromHex("0103213a0002ee3a"));
}

void TrialRunPositionTest::waitTimeIsTheOneOfEntryOrTheLastTyped()
{
    TrialBench bench;
    bench.peer.registers[0x23F0] = 1;
    bench.peer.registers[0x23F1] = 2;
    QVERIFY(bench.waitUntilReady());
    const TrialRunDriver drive = bench.drive();
    bench.enter(drive.once());
    TrialRunDriver::click(drive.continuous());
    TrialBench::settled();
    QCOMPARE(TrialRunDriver::cell(drive.positionTable(), 3), QStringLiteral("65538"));
    TrialRunDriver::type(drive.positionTable(), 3, QStringLiteral("250"));
    TrialBench::settled();
    bench.peer.frames.clear();
    TrialRunDriver::click(drive.once());
    TrialBench::settled();
    TrialRunDriver::click(drive.continuous());
    TrialBench::settled();
    QCOMPARE(TrialRunDriver::cell(drive.positionTable(), 3), QStringLiteral("250"));
}

void TrialRunPositionTest::stepThreeDropsTheReadsOfStepOne()
{
    TrialBench bench;
    QVERIFY(bench.waitUntilReady());
    const TrialRunDriver drive = bench.drive();
    bench.enter(drive.once());
    bench.peer.intercept = [&](const QByteArray &request, const QByteArray &usual) {
        bench.peer.held = bench.peer.held || request == QByteArray::fromHex("0103200700013e0b");
        return usual;
    };
    TrialRunDriver::click(drive.jogRun());
    QVERIFY(runUntil([&] { return bench.peer.held; }, 2000));
    bench.peer.intercept = {};
    bench.peer.frames.clear();
    TrialRunDriver::click(drive.positionRun());
    bench.peer.release();
    TrialBench::settled();
    QCOMPARE(bench.sent(), frames({"0106200B0000", "0110 2332 0004 08 00000000 00000000", "010620CA0000"}));
    QCOMPARE(TrialRunDriver::cells(drive.jogTable()), (QStringList{"", "", "", ""}));
    QVERIFY(!drive.positionRun()->isEnabled());
}

void TrialRunPositionTest::longestNumberIsShownWhole()
{
    TrialBench bench;
    bench.peer.registers[0x213A] = 0x8000;
    bench.peer.registers[0x213B] = 1;
    QVERIFY(bench.waitUntilReady());
    QTableWidget *const table = bench.drive().positionTable();
    const int blankWidth = table->columnWidth(3);
    bench.enter(bench.drive().once());
    QCOMPARE(TrialRunDriver::cell(table, 0), QStringLiteral("-2147483647"));
    QVERIFY(table->columnWidth(3) > table->fontMetrics().horizontalAdvance(QStringLiteral("-2147483647")));
    QVERIFY(blankWidth >= 90);
}

QTEST_MAIN(TrialRunPositionTest)
#include "tst_trialrun_position.moc"
