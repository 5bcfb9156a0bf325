// SPDX-License-Identifier: GPL-3.0-or-later
// The forced levels: their buttons, the words that they make, and the row that enables the servo.
#include "iocontrolbench.h"

#include <QTest>

namespace {

using Bench = IoControlBench;

} // namespace

class IoControlLevelsTest : public QObject
{
    Q_OBJECT

private slots:
    void buttonsStartDisabledAndLow();
    void sourceEnablesItsButtons_data();
    void sourceEnablesItsButtons();
    void sourceZeroKeepsTheLevels();
    void levelIsSignalled_data();
    void levelIsSignalled();
    void levelsAreOneWord();
    void pressOfTheEnableRowIsToldFirst();
    void pressOfAnyOtherRowIsNotTold();
    void outputNeverTellsOfTheEnable();
    void foreignSenderChangesNothing();
    void enableRowIsToldAfterTheLastInput_data();
    void enableRowIsToldAfterTheLastInput();
    void servoButtonForcesItsRow();
    void servoButtonOfNoRowIsIgnored_data();
    void servoButtonOfNoRowIsIgnored();
    void withdrawnLevelsAreTakenBack();
};

void IoControlLevelsTest::buttonsStartDisabledAndLow()
{
    const Bench bench;
    for (const char *half : {"di", "do"}) {
        for (int row = 1; row <= 16; ++row) {
            const QPushButton *const button = bench.button(QLatin1String(half), row);
            QVERIFY(!button->isEnabled());
            QVERIFY(button->isCheckable());
            QCOMPARE(button->size(), QSize(24, 22));
            QCOMPARE(button->styleSheet(), QStringLiteral("border-radius: 5px;"));
            QVERIFY(!bench.isHigh(QLatin1String(half), row));
        }
    }
}

void IoControlLevelsTest::sourceEnablesItsButtons_data()
{
    QTest::addColumn<QString>("half");
    QTest::addColumn<QString>("other");
    QTest::newRow("inputs") << "di"
                            << "do";
    QTest::newRow("outputs") << "do"
                             << "di";
}

void IoControlLevelsTest::sourceEnablesItsButtons()
{
    QFETCH(QString, half);
    QFETCH(QString, other);
    Bench bench;
    const QString said = half.toUpper() + QLatin1String("source ");
    for (const int index : {1, 0}) {
        bench.said.clear();
        bench.source(half)->setCurrentIndex(index);
        QCOMPARE(bench.said, QStringList(said + QString::number(index)));
        for (int row = 1; row <= 16; ++row) {
            QCOMPARE(bench.button(half, row)->isEnabled(), index == 1);
            QVERIFY(!bench.button(other, row)->isEnabled());
        }
    }
}

void IoControlLevelsTest::sourceZeroKeepsTheLevels()
{
    Bench bench;
    bench.source("di")->setCurrentIndex(1);
    bench.button("di", 3)->click();
    bench.source("di")->setCurrentIndex(0);
    QVERIFY(bench.isHigh("di", 3));
    bench.source("di")->setCurrentIndex(1);
    bench.said.clear();
    bench.button("di", 1)->click();
    QCOMPARE(bench.said, QStringList("DIlevel 5"));
}

void IoControlLevelsTest::levelIsSignalled_data()
{
    QTest::addColumn<QString>("half");
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("levels");
    for (const char *half : {"di", "do"}) {
        for (int row = 1; row <= 16; ++row)
            QTest::addRow("%s%d", half, row) << QString::fromLatin1(half) << row << (1 << (row - 1));
    }
}

void IoControlLevelsTest::levelIsSignalled()
{
    QFETCH(QString, half);
    QFETCH(int, row);
    QFETCH(int, levels);
    Bench bench;
    bench.source(half)->setCurrentIndex(1);
    bench.said.clear();
    bench.button(half, row)->click();
    QVERIFY(bench.isHigh(half, row));
    bench.button(half, row)->click();
    QVERIFY(!bench.isHigh(half, row));
    const QString said = half.toUpper() + QLatin1String("level ");
    QCOMPARE(bench.said, QStringList({said + QString::number(levels), said + QLatin1String("0")}));
}

void IoControlLevelsTest::levelsAreOneWord()
{
    Bench bench;
    bench.source("do")->setCurrentIndex(1);
    bench.said.clear();
    for (const int row : {1, 3, 16, 1})
        bench.button("do", row)->click();
    QCOMPARE(bench.said, QStringList({"DOlevel 1", "DOlevel 5", "DOlevel 32773", "DOlevel 32772"}));
}

void IoControlLevelsTest::pressOfTheEnableRowIsToldFirst()
{
    Bench bench;
    bench.source("di")->setCurrentIndex(1);
    bench.pollInputs({{2, "0001"}});
    bench.said.clear();
    bench.button("di", 3)->click();
    bench.button("di", 3)->click();
    QCOMPARE(bench.said, QStringList({"enable on", "DIlevel 4", "enable off", "DIlevel 0"}));
}

void IoControlLevelsTest::pressOfAnyOtherRowIsNotTold()
{
    Bench bench;
    bench.source("di")->setCurrentIndex(1);
    bench.pollInputs({{2, "0001"}});
    bench.said.clear();
    bench.button("di", 4)->click();
    QCOMPARE(bench.said, QStringList("DIlevel 8"));
}

void IoControlLevelsTest::outputNeverTellsOfTheEnable()
{
    Bench bench;
    bench.source("do")->setCurrentIndex(1);
    bench.poll(doFunctions, "0001");
    bench.said.clear();
    bench.button("do", 1)->click();
    QCOMPARE(bench.said, QStringList("DOlevel 1"));
}

void IoControlLevelsTest::foreignSenderChangesNothing()
{
    Bench bench;
    bench.panel->DIBtnclickedSlot(true);
    bench.panel->DOBtnclickedSlot(true);
    bench.panel->ComboBoxChangedSlot(1);
    QVERIFY(bench.said.isEmpty());
    QVERIFY(!bench.isHigh("di", 1));
    QVERIFY(!bench.button("di", 1)->isEnabled());
}

void IoControlLevelsTest::enableRowIsToldAfterTheLastInput_data()
{
    QTest::addColumn<QList<int>>("rows");
    QTest::addColumn<int>("told");
    QTest::newRow("none") << QList<int>() << 16;
    QTest::newRow("first") << QList<int>{0} << 0;
    QTest::newRow("last") << QList<int>{15} << 15;
    QTest::newRow("the lower of two") << QList<int>{9, 4} << 4;
}

void IoControlLevelsTest::enableRowIsToldAfterTheLastInput()
{
    QFETCH(QList<int>, rows);
    QFETCH(int, told);
    Bench bench;
    for (int row = 0; row < 16; ++row) {
        QVERIFY(bench.said.isEmpty());
        bench.poll(diFunctions + row, rows.contains(row) ? "0001" : "0002");
    }
    QCOMPARE(bench.said, QStringList(QStringLiteral("enable row %1").arg(told)));
}

void IoControlLevelsTest::servoButtonForcesItsRow()
{
    Bench bench;
    bench.panel->handleBtnEnableSlot(4, true);
    QVERIFY(bench.isHigh("di", 5));
    bench.panel->handleBtnEnableSlot(4, false);
    QVERIFY(!bench.isHigh("di", 5));
    QCOMPARE(bench.said, QStringList({"DIlevel 16", "DIlevel 0"}));
}

void IoControlLevelsTest::servoButtonOfNoRowIsIgnored_data()
{
    QTest::addColumn<int>("row");
    QTest::newRow("before the first") << -1;
    QTest::newRow("none") << 16;
    QTest::newRow("far off") << 1000;
}

void IoControlLevelsTest::servoButtonOfNoRowIsIgnored()
{
    QFETCH(int, row);
    Bench bench;
    bench.panel->handleBtnEnableSlot(row, true);
    QVERIFY(bench.said.isEmpty());
}

void IoControlLevelsTest::withdrawnLevelsAreTakenBack()
{
    Bench bench;
    for (const char *half : {"di", "do"}) {
        bench.source(QLatin1String(half))->setCurrentIndex(1);
        bench.button(QLatin1String(half), 1)->click();
        bench.button(QLatin1String(half), 2)->click();
    }
    bench.said.clear();
    bench.panel->restoreDILevels(1);
    QVERIFY(bench.isHigh("di", 1));
    QVERIFY(!bench.isHigh("di", 2));
    QVERIFY(bench.isHigh("do", 2));
    bench.panel->restoreDOLevels(0x8000);
    QVERIFY(!bench.isHigh("do", 1));
    QVERIFY(bench.isHigh("do", 16));
    QVERIFY(bench.said.isEmpty());
    // The next press goes out without them.
    bench.button("di", 3)->click();
    QCOMPARE(bench.said, QStringList("DIlevel 5"));
}

QTEST_MAIN(IoControlLevelsTest)

#include "tst_io_control_levels.moc"
