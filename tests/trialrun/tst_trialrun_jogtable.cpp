// SPDX-License-Identifier: GPL-3.0-or-later
// The JOG table: what is typed is written at once, or told and blanked.
#include "support/modalanswers.h"
#include "trialbench.h"

class TrialRunJogTableTest : public QObject
{
    Q_OBJECT

private slots:
    void typedCellIsWritten_data();
    void typedCellIsWritten();
    void wrongCellIsToldAndBlanked_data();
    void wrongCellIsToldAndBlanked();
    void onlyTheValueColumnIsEdited();
};

void TrialRunJogTableTest::typedCellIsWritten_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("frame");
    QTest::newRow("speed") << 0 << "1.2" << wire::frame("01062007000C");
    QTest::newRow("zero") << 0 << "0" << wire::frame("010620070000");
    QTest::newRow("acceleration") << 1 << "1000" << wire::frame("0106200803E8");
    QTest::newRow("deceleration") << 2 << "7" << wire::frame("010620090007");
    QTest::newRow("torque") << 3 << "300" << wire::frame("0106200A012C");
}

void TrialRunJogTableTest::typedCellIsWritten()
{
    QFETCH(int, row);
    QFETCH(QString, text);
    QFETCH(QByteArray, frame);
    TrialBench bench;
    QVERIFY(bench.waitUntilReady());
    TrialRunDriver::type(bench.drive().jogTable(), row, text);
    QCOMPARE(bench.peer.frames, QList<QByteArray>{frame});
}

void TrialRunJogTableTest::wrongCellIsToldAndBlanked_data()
{
    addWrongCellColumns();
    const QString wrong = QStringLiteral("Paramter Value Input Error!");
    QTest::newRow("too fine") << 0 << "1.25" << wrong;
    QTest::newRow("not whole") << 1 << "1.5" << wrong;
    QTest::newRow("no number") << 3 << "abc" << wrong;
    QTest::newRow("above") << 0 << "6000.1"
                           << "Input value execteeds the range!\n \nMax:6000";
    QTest::newRow("below") << 2 << "-1"
                           << "Input value execteeds the range!\n \nMin:0";
}

void TrialRunJogTableTest::wrongCellIsToldAndBlanked()
{
    QFETCH(int, row);
    QFETCH(QString, text);
    QFETCH(QString, message);
    ModalAnswers boxes;
    TrialBench bench;
    QVERIFY(bench.waitUntilReady());
    boxes.expect(message);
    TrialRunDriver::type(bench.drive().jogTable(), row, text);
    QVERIFY(boxes.isDone());
    QCOMPARE(boxes.seen.first().title, QString());
    QCOMPARE(TrialRunDriver::cell(bench.drive().jogTable(), row), QString());
    QVERIFY(bench.peer.frames.isEmpty());
}

void TrialRunJogTableTest::onlyTheValueColumnIsEdited()
{
    TrialBench bench;
    QTableWidget *const table = bench.drive().jogTable();
    bench.window->jogTableWidgetCellClicked(0, 3);
    QCOMPARE(int(table->editTriggers()), 6);
    bench.window->jogTableWidgetCellClicked(0, 2);
    QCOMPARE(int(table->editTriggers()), 0);
    QTableWidget *const positions = bench.drive().positionTable();
    bench.window->operationTableWidgetCellClicked(0, 3);
    QCOMPARE(int(positions->editTriggers()), 6);
    bench.window->operationTableWidgetCellClicked(0, 0);
    QCOMPARE(int(positions->editTriggers()), 0);
}

QTEST_MAIN(TrialRunJogTableTest)
#include "tst_trialrun_jogtable.moc"
