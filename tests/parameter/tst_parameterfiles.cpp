// SPDX-License-Identifier: GPL-3.0-or-later
#include "parameter/parameterfiles.h"

#include <QTest>

class ParameterFilesTest : public QObject
{
    Q_OBJECT

private slots:
    void scpHasALineForEachHeadAndValue();
    void scpEncodesTheLocalText();
    void scpHasNoLineForAPageWithoutRows();
    void scpIsReadByPlace_data();
    void scpIsReadByPlace();
    void scpOfEveryByteIsReadToItsEnd();
    void scpWithTooManyLinesKeepsToTheRows();
    void csvFieldsAreNeitherQuotedNorEscaped();
    void csvHasHeadsRowsAndALineBetweenPages();
    void csvOfNoPagesIsEmpty();
};

namespace {

// "page:row:text" of each value.
QStringList told(const QList<ScpValue> &values)
{
    QStringList list;
    for (const ScpValue &value : values)
        list.append(QStringLiteral("%1:%2:").arg(value.page).arg(value.row) + value.text);
    return list;
}

// Twelve pages of three rows.
const QList<int> threeRows{3, 3, 3, 3, 3, 3, 3, 3, 3, 3, 3, 3};

} // namespace

void ParameterFilesTest::scpHasALineForEachHeadAndValue()
{
    const QList<ScpPage> pages{{"Pn-000", {"0x0000", "100.0", "-300", ""}}, {"Pn-A00", {"1"}}};
    QCOMPARE(scpFile(pages), QByteArray("UG4tMDAw\r\n"
                                        "MHgwMDAw\r\n"
                                        "MTAwLjA=\r\n"
                                        "LTMwMA==\r\n"
                                        "\r\n"
                                        "UG4tQTAw\r\n"
                                        "MQ==\r\n"));
}

void ParameterFilesTest::scpEncodesTheLocalText()
{
    QCOMPARE(scpFile({{"Pn-000", {QString::fromUtf8("中")}}}), QByteArray("UG4tMDAw\r\n5Lit\r\n"));
    QCOMPARE(told(readScpFile("UG4tMDAw\r\n5Lit\r\n", threeRows)), QStringList{QString::fromUtf8("0:0:中")});
}

void ParameterFilesTest::scpHasNoLineForAPageWithoutRows()
{
    QCOMPARE(scpFile({{"", {}}, {"Pn-100", {"7"}}}), QByteArray("UG4tMTAw\r\nNw==\r\n"));
    QCOMPARE(scpFile({}), QByteArray());
}

void ParameterFilesTest::scpIsReadByPlace_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QStringList>("values");

    QTest::newRow("two pages") << QByteArray("UG4tMDAw\r\nMHgwMDAw\r\nMTAwLjA=\r\nUG4tQTAw\r\nMQ==\r\n")
                               << QStringList{"0:0:0x0000", "0:1:100.0", "10:0:1"};
    QTest::newRow("empty value") << QByteArray("UG4tMDAw\r\n\r\nMQ==\r\n") << QStringList{"0:0:", "0:1:1"};
    QTest::newRow("head of another row") << QByteArray("UG4tQTM3\r\nMQ==\r\n") << QStringList{"10:0:1"};
    QTest::newRow("head in small letters") << QByteArray("cG4tMjAw\r\nMQ==\r\n") << QStringList{"2:0:1"};
    QTest::newRow("head in mixed letters") << QByteArray("UE4tYjAw\r\nMQ==\r\n") << QStringList{"11:0:1"};
    QTest::newRow("values before a head")
        << QByteArray("MQ==\r\nMQ==\r\nUG4tMTAw\r\nNw==\r\n") << QStringList{"1:0:7"};
    QTest::newRow("head of no page") << QByteArray("UG4tQzAw\r\nMQ==\r\nUG4tMTAw\r\nNw==\r\n")
                                     << QStringList{"1:0:7"};
    QTest::newRow("head without a digit")
        << QByteArray("UG4tMTAw\r\nNw==\r\nUG4tPzAw\r\nMQ==\r\n") << QStringList{"1:0:7"};
    QTest::newRow("head that is too short")
        << QByteArray("UG4tMTAw\r\nNw==\r\ncG4=\r\nMQ==\r\n") << QStringList{"1:0:7"};
    QTest::newRow("page that comes twice") << QByteArray("UG4tMTAw\r\nNw==\r\nOA==\r\nUG4tMTAw\r\nOQ==\r\n")
                                           << QStringList{"1:0:7", "1:1:8", "1:0:9"};
    QTest::newRow("more values than rows")
        << QByteArray("UG4tMTAw\r\nNw==\r\nNw==\r\nNw==\r\nOA==\r\nUG4tMDAw\r\nOQ==\r\n")
        << QStringList{"1:0:7", "1:1:7", "1:2:7", "0:0:9"};
    QTest::newRow("line feeds alone") << QByteArray("UG4tMTAw\nNw==\n") << QStringList{"1:0:7"};
    QTest::newRow("cut after a line") << QByteArray("UG4tMTAw\r\nNw==") << QStringList{"1:0:7"};
    QTest::newRow("cut within a line") << QByteArray("UG4tMTAw\r\nMTAwLj") << QStringList{"1:0:100."};
    QTest::newRow("cut within a head") << QByteArray("UG4tMTAw\r\nNw==\r\nUG4t") << QStringList{"1:0:7"};
    QTest::newRow("line that is no Base64")
        << QByteArray("UG4tMTAw\r\n?!*\r\nN w = =\r\n") << QStringList{"1:0:", "1:1:7"};
    QTest::newRow("plain text") << QByteArray("Speed limit;200\r\nAcceleration;100\r\n") << QStringList();
    QTest::newRow("empty file") << QByteArray() << QStringList();
    QTest::newRow("one line feed") << QByteArray("\n") << QStringList();
}

void ParameterFilesTest::scpIsReadByPlace()
{
    QFETCH(QByteArray, file);
    QFETCH(QStringList, values);
    QCOMPARE(told(readScpFile(file, threeRows)), values);
}

void ParameterFilesTest::scpOfEveryByteIsReadToItsEnd()
{
    QByteArray file;
    for (int i = 0; i < 256; ++i)
        file.append(char(i));
    // Behind the rubbish a head and a value with a zero byte, which ends the text.
    file += "\r\nUG4tMTAw\r\nYQBi\r\n" + QByteArray(4, '\0') + "\r\nUG4tMDAw\r\nMQ==\r\n";
    const QList<ScpValue> values = readScpFile(file, threeRows);
    QCOMPARE(values.size(), 3);
    QCOMPARE(values.at(0).text, QStringLiteral("a"));
    QCOMPARE(values.at(1).text, QString());
    QCOMPARE(values.at(2).page, 0);
    QCOMPARE(values.at(2).text, QStringLiteral("1"));
}

void ParameterFilesTest::scpWithTooManyLinesKeepsToTheRows()
{
    const QByteArray file = "UG4tMTAw\r\n" + QByteArray("Nw==\r\n").repeated(100000) + "UG4tMDAw\r\nMQ==\r\n";
    QCOMPARE(told(readScpFile(file, threeRows)), (QStringList{"1:0:7", "1:1:7", "1:2:7", "0:0:1"}));
}

void ParameterFilesTest::csvFieldsAreNeitherQuotedNorEscaped()
{
    QCOMPARE(csvLine({"a,b", "\"c\"", "", "d"}), QByteArray("a,b,\"c\",,d,\n"));
    QCOMPARE(csvLine({QString::fromUtf8("★")}), QByteArray("\xE2\x98\x85,\n"));
}

void ParameterFilesTest::csvHasHeadsRowsAndALineBetweenPages()
{
    const QList<CsvPage> pages{
        {{"Value", "Description"}, {{"Pn-000", "", "CPU VERSION"}, {"Pn-007", "200.0", "JOG, speed"}}},
        {{"Value", "Description"}, {}},
        {{"Value", "Description"}, {{"Pn-200", "0x0000", "DI"}}},
    };
    QCOMPARE(csvExport(pages), QByteArray(",Value,Description,\n"
                                          "Pn-000,,CPU VERSION,\n"
                                          "Pn-007,200.0,JOG, speed,\n"
                                          "\r\n"
                                          ",Value,Description,\n"
                                          "\r\n"
                                          ",Value,Description,\n"
                                          "Pn-200,0x0000,DI,\n"));
}

void ParameterFilesTest::csvOfNoPagesIsEmpty()
{
    QCOMPARE(csvExport({}), QByteArray());
}

QTEST_APPLESS_MAIN(ParameterFilesTest)
#include "tst_parameterfiles.moc"
