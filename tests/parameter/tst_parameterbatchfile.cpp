// SPDX-License-Identifier: GPL-3.0-or-later
#include "parameter/parameterbatchfile.h"

#include <QTest>

class ParameterBatchFileTest : public QObject
{
    Q_OBJECT

private slots:
    void rowsAreWrittenWithTheirTick();
    void listWithoutRowsIsItsHeads();
    void rowsAreRead_data();
    void rowsAreRead();
    void everyByteIsReadToTheEnd();
    void fileThatIsNoListIsRefused_data();
    void fileThatIsNoListIsRefused();
    void longestListIsReadWhole();
};

namespace {

// "tick|cell|cell..." of each row.
QStringList told(const QList<BatchRow> &rows)
{
    QStringList list;
    for (const BatchRow &row : rows)
        list.append((row.ticked ? QLatin1String("1|") : QLatin1String("0|")) +
                    row.cells.join(QLatin1Char('|')));
    return list;
}

} // namespace

void ParameterBatchFileTest::rowsAreWrittenWithTheirTick()
{
    const QStringList heads{"Function code", QString::fromUtf8("★"), "Value", "Real"};
    const QList<BatchRow> rows{
        {true, {"Pn-304", "", "131072", "default"}},
        {false, {"Pn-A04", "", "-1", ""}},
    };
    QCOMPARE(batchFile(heads, rows), QByteArray("Function code,\xE2\x98\x85,Value,Real,\n"
                                                "Pn-304-1,,131072,default,\n"
                                                "Pn-A04-0,,-1,,\n"));
}

void ParameterBatchFileTest::listWithoutRowsIsItsHeads()
{
    QCOMPARE(batchFile({"Function code", "Real"}, {}), QByteArray("Function code,Real,\n"));
}

void ParameterBatchFileTest::rowsAreRead_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QStringList>("rows");

    QTest::newRow("heads and two rows")
        << QByteArray("Function code,a,Value,\nPn-304-1,,131072,\nPn-A04-0,x,-1,\n")
        << QStringList{"1|Pn-304||131072", "0|Pn-A04|x|-1"};
    QTest::newRow("all thirteen fields")
        << QByteArray("Pn-300-1,,\xE2\x96\xA0,,,H,0x0000,,0x0000,0x4122,0x0000,Source,default,\n")
        << QStringList{QString::fromUtf8("1|Pn-300||■|||H|0x0000||0x0000|0x4122|0x0000|Source|default")};
    QTest::newRow("fields beyond the columns") << QByteArray("Pn-304-1,1,2,3,4,5,6,7,8,9,10,11,12,13,14,\n")
                                               << QStringList{"1|Pn-304|1|2|3|4|5|6|7|8|9|10|11|12"};
    QTest::newRow("field behind the last comma")
        << QByteArray("Pn-304-1,a,b\nPn-305-1,c,\n") << QStringList{"1|Pn-304|a", "1|Pn-305|c"};
    QTest::newRow("carriage returns")
        << QByteArray("Pn-304-1,a,\r\nPn-305-0,b,\r\n") << QStringList{"1|Pn-304|a", "0|Pn-305|b"};
    QTest::newRow("code without a tick") << QByteArray("Pn-304,a,\n") << QStringList{"0|Pn-304|a"};
    QTest::newRow("another sign before the tick") << QByteArray("Pn-304+1,a,\n") << QStringList{"1|Pn-304|a"};
    QTest::newRow("tick of another digit") << QByteArray("Pn-304-2,a,\n") << QStringList{"0|Pn-304|a"};
    QTest::newRow("tick one place behind") << QByteArray("Pn-304--1,a,\n") << QStringList{"0|Pn-304|a"};
    QTest::newRow("code in small letters") << QByteArray("pn-a04-1,a,\n") << QStringList{"1|pn-a04|a"};
    QTest::newRow("code in another field") << QByteArray("a,see Pn-304,\n") << QStringList{"0|a|see Pn-304"};
    QTest::newRow("code without a comma")
        << QByteArray("Pn-304-1\nPn-305-1,a,\n") << QStringList{"1|Pn-305|a"};
    QTest::newRow("lines without a code") << QByteArray("a,b,\n\n,,\nPn-304-1,\n") << QStringList{"1|Pn-304"};
    QTest::newRow("heads alone") << QByteArray("0,1,2,3,4,5,6,7,8,9,10,11,12,\n") << QStringList();
    QTest::newRow("cut within a line")
        << QByteArray("Pn-304-1,a,b,\nPn-305-1,a,12") << QStringList{"1|Pn-304|a|b", "1|Pn-305|a"};
    QTest::newRow("comma in a description") << QByteArray("Pn-110-1,,,,,,,,,,,state,closing,default,\n")
                                            << QStringList{"1|Pn-110|||||||||||state|closing"};
}

void ParameterBatchFileTest::rowsAreRead()
{
    QFETCH(QByteArray, file);
    QFETCH(QStringList, rows);
    const auto read = readBatchFile(file);
    QVERIFY(read.has_value());
    QCOMPARE(told(*read), rows);
}

void ParameterBatchFileTest::everyByteIsReadToTheEnd()
{
    QByteArray file;
    for (int i = 0; i < 256; ++i)
        file.append(char(i));
    file += "\nPn-304-1,a,\n";
    QCOMPARE(told(readBatchFile(file).value_or(QList<BatchRow>())), QStringList{"1|Pn-304|a"});
}

void ParameterBatchFileTest::fileThatIsNoListIsRefused_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::newRow("empty file") << QByteArray();
    QTest::newRow("one line feed") << QByteArray("\n");
    QTest::newRow("Base64 lines") << QByteArray("UG4tMDAw\r\nMHgwMDAw\r\n");
    QTest::newRow("heads of another table") << QByteArray("Function code,Value,\n");
    QTest::newRow("heads, codes without a comma") << QByteArray("a,b,\nPn-304-1\n");
    QTest::newRow("codes without a comma") << QByteArray("Pn-304-1\nPn-305-1\n");
    QTest::newRow("semicolons") << QByteArray("Pn-304-1;a;\nPn-305-1;b;\n");
    QTest::newRow("more rows than a list has") << QByteArray("Pn-304-1,a,\n").repeated(10001);
}

void ParameterBatchFileTest::fileThatIsNoListIsRefused()
{
    QFETCH(QByteArray, file);
    QVERIFY(!readBatchFile(file));
}

void ParameterBatchFileTest::longestListIsReadWhole()
{
    const QByteArray file = QByteArray("Pn-304-1,a,\n").repeated(10000);
    QCOMPARE(readBatchFile(file).value_or(QList<BatchRow>()).size(), 10000);
}

QTEST_APPLESS_MAIN(ParameterBatchFileTest)
#include "tst_parameterbatchfile.moc"
