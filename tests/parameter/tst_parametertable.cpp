// SPDX-License-Identifier: GPL-3.0-or-later
// What the rows of the parameter table hold, and how replies and the setting helper change them.
#include "tablerows.h"

#include "link/serialport.h"
#include "parameter/parametertable.h"

#include <QTest>

using namespace tablerows;

class ParameterTableTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void rowFillsItsElevenCells();
    void flagsShowTheirSymbols();
    void pairShowsItsFirstCode();
    void eachFlagShowsItsOwnMark_data();
    void eachFlagShowsItsOwnMark();
    void replyShowsInEveryRowOfItsNumber();
    void replyFindsItsRowWhenRowsHaveComeAndGone();
    void replyWithoutARowChangesNothing();
    void readValueTurnsBlueWhenItDiffersFromTheDefault_data();
    void readValueTurnsBlueWhenItDiffersFromTheDefault();
    void redStaysWhenTheDefaultIsReadBack();
    void helperValueIsTakenOver_data();
    void helperValueIsTakenOver();
    void equalHelperValueLeavesTheColour();
    void helperValueWithoutARowIsIgnored();
    void coloursAreReset();
    void writesLeaveOutReadOnlyAndReserved();
};

void ParameterTableTest::init()
{
    SerialPort::portOpened = true;
}

void ParameterTableTest::rowFillsItsElevenCells()
{
    ParameterTable table;
    table.addRow(jogSpeed);
    QCOMPARE(table.columnCount(), 11);
    QStringList cells;
    for (int column = 0; column < 11; ++column)
        cells.append(table.item(0, column)->text());
    QCOMPARE(cells, QStringList({"", "", "", "", "", "200.0", "0.1rpm", "0.0", "6000.0", "200.0",
                                 "JOG speed value"}));
    QCOMPARE(table.verticalHeaderItem(0)->text(), QStringLiteral("Pn-007"));
    QCOMPARE(table.rowHeight(0), 25);
    for (int column = 0; column < 11; ++column)
        QCOMPARE(table.item(0, column)->textAlignment(), int(Qt::AlignCenter));
}

void ParameterTableTest::flagsShowTheirSymbols()
{
    ParameterTable table;
    table.addRow(allFlags);
    table.addRow(row("Mark *", "Pn-045", {}, "", "", "", ""));
    QStringList starred = row("Mark *", "Pn-046", {}, "", "", "", "");
    starred[2] = QStringLiteral("*");
    table.addRow(starred);
    const QStringList symbols{"★", "■", "●", "▲", "H"};
    for (int column = 0; column < symbols.size(); ++column) {
        QCOMPARE(table.item(0, column)->text(), symbols.at(column));
        QCOMPARE(table.item(1, column)->text(), QString());
        QCOMPARE(table.item(2, column)->text(), QString());
    }
}

void ParameterTableTest::pairShowsItsFirstCode()
{
    ParameterTable table;
    table.addRow(row("Pair", "Pn-304~Pn-305", {}, "1", "", "1", "9"));
    QCOMPARE(table.code(0), QStringLiteral("Pn-304"));
}

void ParameterTableTest::eachFlagShowsItsOwnMark_data()
{
    QTest::addColumn<int>("flagRow");
    QTest::addColumn<int>("column");
    QTest::addColumn<QString>("mark");
    QTest::newRow("read-only") << 0 << 0 << QString::fromUtf8("★");
    QTest::newRow("servo off") << 3 << 1 << QString::fromUtf8("■");
    QTest::newRow("re-power") << 5 << 2 << QString::fromUtf8("●");
    QTest::newRow("volatile") << 4 << 3 << QString::fromUtf8("▲");
    QTest::newRow("hexadecimal") << 1 << 4 << QStringLiteral("H");
}

void ParameterTableTest::eachFlagShowsItsOwnMark()
{
    QFETCH(int, flagRow);
    QFETCH(int, column);
    QFETCH(QString, mark);
    QStringList values = row("Name", "Pn-100", {}, "1", "", "0", "9");
    values[2 + flagRow] = QString::number(flagRow);
    ParameterTable table;
    table.addRow(values);
    for (int i = 0; i < 5; ++i)
        QCOMPARE(table.item(0, i)->text(), i == column ? mark : QString());
}

void ParameterTableTest::replyShowsInEveryRowOfItsNumber()
{
    ParameterTable table;
    table.addRow(row("First", "Pn-606", {}, "", "", "0", "9"));
    table.addRow(row("Other", "Pn-607", {}, "", "", "0", "9"));
    table.addRow(row("Second", "Pn-606", {"1"}, "", "", "0x0", "0x9"));
    table.showReply(6, QByteArray::fromHex("0007"));
    QCOMPARE(table.text(0, ParameterTable::ValueColumn), QStringLiteral("7"));
    QCOMPARE(table.text(1, ParameterTable::ValueColumn), QString());
    QCOMPARE(table.text(2, ParameterTable::ValueColumn), QStringLiteral("0x0007"));
}

void ParameterTableTest::replyFindsItsRowWhenRowsHaveComeAndGone()
{
    ParameterTable table;
    table.addRow(version);
    table.addRow(reserved);
    table.showReply(2, QByteArray::fromHex("0005"));
    QCOMPARE(table.item(1, Value)->text(), QStringLiteral("5"));
    table.removeRow(0);
    table.showReply(2, QByteArray::fromHex("0007"));
    QCOMPARE(table.item(0, Value)->text(), QStringLiteral("7"));
    table.addRow(jogSpeed);
    table.showReply(7, QByteArray::fromHex("07d0"));
    QCOMPARE(table.item(1, Value)->text(), QStringLiteral("200.0"));
    QCOMPARE(table.item(0, Value)->text(), QStringLiteral("7"));
}

void ParameterTableTest::replyWithoutARowChangesNothing()
{
    ParameterTable table;
    table.addRow(jogSpeed);
    table.showReply(8, QByteArray::fromHex("0007"));
    QCOMPARE(table.text(0, ParameterTable::ValueColumn), QStringLiteral("200.0"));
    QVERIFY(valueColour(table, 0) != QColor(Qt::blue));
}

void ParameterTableTest::readValueTurnsBlueWhenItDiffersFromTheDefault_data()
{
    QTest::addColumn<QString>("byDefault");
    QTest::addColumn<QString>("reply");
    QTest::addColumn<bool>("blue");
    QTest::newRow("equal") << "200.0"
                           << "07d0" << false;
    QTest::newRow("different") << "200.0"
                               << "07d1" << true;
    QTest::newRow("no default") << ""
                                << "07d1" << false;
    QTest::newRow("compared as text") << "200"
                                      << "07d0" << true;
}

void ParameterTableTest::readValueTurnsBlueWhenItDiffersFromTheDefault()
{
    QFETCH(QString, byDefault);
    QFETCH(QString, reply);
    QFETCH(bool, blue);
    ParameterTable table;
    table.addRow(row("JOG speed value", "Pn-007", {}, byDefault, "0.1rpm", "0.0", "6000.0"));
    table.showReply(7, QByteArray::fromHex(reply.toLatin1()));
    QCOMPARE(valueColour(table, 0) == QColor(Qt::blue), blue);
}

void ParameterTableTest::redStaysWhenTheDefaultIsReadBack()
{
    ParameterTable table;
    table.addRow(jogSpeed);
    table.item(0, Value)->setForeground(Qt::red);
    table.showReply(7, QByteArray::fromHex("07d0"));
    QCOMPARE(valueColour(table, 0), QColor(Qt::red));
}

void ParameterTableTest::helperValueIsTakenOver_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<bool>("ramOnly");
    QTest::addColumn<QString>("shown");
    QTest::newRow("RAM") << "150.0" << true << "150.0";
    QTest::newRow("EEPROM") << "150.0" << false << "150.0";
    QTest::newRow("0x1 is completed") << "0x1" << true << "0x0001";
    QTest::newRow("0X12 is completed") << "0X12" << false << "0X0012";
    QTest::newRow("six characters stay") << "0x0012" << true << "0x0012";
    QTest::newRow("longer stays") << "0x00012" << true << "0x00012";
}

void ParameterTableTest::helperValueIsTakenOver()
{
    QFETCH(QString, value);
    QFETCH(bool, ramOnly);
    QFETCH(QString, shown);
    ParameterTable table;
    table.addRow(jogSpeed);
    table.setCurrentCell(0, Value);
    table.cellDoubleClickedSlot(0, Value);
    table.setParamValueSlot(value, ramOnly);
    QCOMPARE(table.text(0, ParameterTable::ValueColumn), shown);
    QCOMPARE(valueColour(table, 0), ramOnly ? QColor(Qt::red) : QColor(Qt::black));
    QVERIFY(!table.currentItem());
}

void ParameterTableTest::equalHelperValueLeavesTheColour()
{
    ParameterTable table;
    table.addRow(jogSpeed);
    table.item(0, Value)->setForeground(Qt::blue);
    table.cellDoubleClickedSlot(0, Description);
    table.setParamValueSlot(QStringLiteral("200.0"), true);
    QCOMPARE(valueColour(table, 0), QColor(Qt::blue));
}

void ParameterTableTest::helperValueWithoutARowIsIgnored()
{
    ParameterTable table;
    table.addRow(jogSpeed);
    table.setParamValueSlot(QStringLiteral("1.0"), true);
    QCOMPARE(table.text(0, ParameterTable::ValueColumn), QStringLiteral("200.0"));
    table.cellDoubleClickedSlot(-1, -1);
    table.setParamValueSlot(QStringLiteral("1.0"), true);
    QCOMPARE(table.text(0, ParameterTable::ValueColumn), QStringLiteral("200.0"));
}

void ParameterTableTest::coloursAreReset()
{
    ParameterTable table;
    table.addRow(jogSpeed);
    table.addRow(panel);
    table.item(0, Value)->setForeground(Qt::red);
    table.item(1, Value)->setForeground(Qt::blue);
    table.resetValueColours();
    QCOMPARE(valueColour(table, 0), QColor(Qt::black));
    QCOMPARE(valueColour(table, 1), QColor(Qt::black));
}

void ParameterTableTest::writesLeaveOutReadOnlyAndReserved()
{
    ParameterTable table;
    table.addRow(version);
    table.addRow(reserved);
    table.addRow(row("Resevred", "Pn-609", {}, "0", "", "0", "9"));
    table.addRow(jogSpeed);
    QVERIFY(isLeftOutOfWrites(table.rowTexts(0)));
    QVERIFY(isLeftOutOfWrites(table.rowTexts(1)));
    // This spelling is not recognised.
    QVERIFY(!isLeftOutOfWrites(table.rowTexts(2)));
    QVERIFY(!isLeftOutOfWrites(table.rowTexts(3)));
}

QTEST_MAIN(ParameterTableTest)
#include "tst_parametertable.moc"
