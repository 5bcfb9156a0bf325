// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/parametercatalogue.h"
#include "catalogue/parametergroups.h"
#include "catalogue/readxmlthread.h"
#include "support/signallog.h"
#include "support/testdirectory.h"

#include <QFile>
#include <QTest>

namespace {

struct Row
{
    int group;
    QStringList values;
    QStringList details;
};

QList<Row> read(const QByteArray &xml)
{
    QList<Row> rows;
    readParameterCatalogue(xml, [&rows](int group, const QStringList &values, const QStringList &details) {
        rows.append({group, values, details});
    });
    return rows;
}

QByteArray parameter(const char *name, const char *code, const char *details = "")
{
    QByteArray text =
        QByteArray("<parameter name=\"") + name + "\" default=\"\"><code>" + code + "</code><function>";
    for (int i = 0; i < 11; ++i)
        text += "<function_value code=\"" + (i == 1 ? QByteArray("1") : QByteArray()) +
                "\">label</function_value>";
    return text +
           "</function><value>5</value><unit>ms</unit><min>0</min><max>9</max>"
           "<parameter_description>words</parameter_description>" +
           details + "</parameter>";
}

QByteArray group(const char *name, const QByteArray &rows)
{
    return QByteArray("<group name=\"") + name + "\">" + rows + "</group>";
}

QByteArray document(const QByteArray &groups)
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?><parameters>" + groups + "</parameters>";
}

} // namespace

class ParameterCatalogueTest : public QObject
{
    Q_OBJECT

private slots:
    void rowArrivesAsEighteenStrings();
    void detailLinesAreCollected();
    void groupsAreNamedExactly_data();
    void groupsAreNamedExactly();
    void rowsBeforeAnyKnownGroupAreDropped();
    void rowsOfAnUnknownGroupFallIntoTheOneBefore();
    void commentHidesRows();
    void missingElementShiftsTheStrings();
    void strayDescriptionIsAppended();
    void brokenFileKeepsTheRowsBeforeTheError_data();
    void brokenFileKeepsTheRowsBeforeTheError();
    void threadReadsTheFileOfTheLanguage_data();
    void threadReadsTheFileOfTheLanguage();
    void threadWithoutAFileEndsSilently();

private:
    TestDirectory directory;
};

void ParameterCatalogueTest::rowArrivesAsEighteenStrings()
{
    const QList<Row> rows = read(document(group("Position Control", parameter("A name", "Pn-300"))));
    QCOMPARE(rows.size(), 1);
    QCOMPARE(rows.first().group, 3);
    QCOMPARE(rows.first().values, QStringList({"A name", "Pn-300", "", "1", "", "", "", "", "", "", "", "",
                                               "", "5", "ms", "0", "9", "words"}));
    QVERIFY(rows.first().details.isEmpty());
}

void ParameterCatalogueTest::detailLinesAreCollected()
{
    const QList<Row> rows = read(document(group(
        "Basic parameters",
        parameter(
            "A", "Pn-004",
            "<detailed_description><detailed_description_value code=\"1\">0: No</detailed_description_value>"
            "<detailed_description_value code=\"2\">1: Yes</detailed_description_value>"
            "</detailed_description>") +
            parameter("B", "Pn-005"))));
    QCOMPARE(rows.size(), 2);
    QCOMPARE(rows.at(0).details, QStringList({"0: No", "1: Yes"}));
    QCOMPARE(rows.at(0).values.size(), 18);
    QVERIFY(rows.at(1).details.isEmpty());
}

void ParameterCatalogueTest::groupsAreNamedExactly_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("label");
    QTest::newRow("0") << "Basic parameters" << 0 << "  -Pn-0XX Basic parameters";
    QTest::newRow("1") << "Basic control parameter" << 1 << "  -Pn-1XX Basic control parameters";
    QTest::newRow("2") << "DI/DO parameters" << 2 << "  -Pn-2XX DI/DO parameters";
    QTest::newRow("3") << "Position Control" << 3 << "  -Pn-3XX Position Control parameters";
    QTest::newRow("4") << "Speed control parameters" << 4 << "  -Pn-4XX Speed control parameters";
    QTest::newRow("5") << "Torque control parameters" << 5 << "  -Pn-5XX Torque control parameters";
    QTest::newRow("6") << "Gain class parameters" << 6 << "  -Pn-6XX Gain class parameters";
    QTest::newRow("7") << "Full closed loop function" << 7
                       << "  -Pn-7XX Full closed loop function parameters";
    QTest::newRow("8") << "Failure and protection" << 8 << "  -Pn-8XX Failure and protection parameters";
    QTest::newRow("9") << "Communication parameter" << 9 << "  -Pn-9XX Communication parameters";
    QTest::newRow("10") << "Multi-segment displacement group parameter" << 10
                        << "  -Pn-AXX Multi-segment displacement group parameters";
    QTest::newRow("11") << "Multi-segment speed group parameter" << 11
                        << "  -Pn-BXX Multi-segment speed group parameters";
    QTest::newRow("case counts") << "position control" << -1 << "";
    QTest::newRow("unknown") << "Other" << -1 << "";
}

void ParameterCatalogueTest::groupsAreNamedExactly()
{
    QFETCH(QString, name);
    QFETCH(int, index);
    QFETCH(QString, label);
    QCOMPARE(parameterGroupIndex(name), index);
    if (index >= 0)
        QCOMPARE(parameterGroupLabel(index), label);
}

void ParameterCatalogueTest::rowsBeforeAnyKnownGroupAreDropped()
{
    const QList<Row> rows =
        read(document(parameter("Lost", "Pn-000") + group("Nobody's", parameter("Lost too", "Pn-001")) +
                      group("Basic parameters", parameter("Kept", "Pn-002"))));
    QCOMPARE(rows.size(), 1);
    QCOMPARE(rows.first().values.first(), QStringLiteral("Kept"));
    QCOMPARE(rows.first().values.size(), 18);
}

void ParameterCatalogueTest::rowsOfAnUnknownGroupFallIntoTheOneBefore()
{
    const QList<Row> rows = read(document(group("Speed control parameters", parameter("A", "Pn-400")) +
                                          group("Speed control", parameter("B", "Pn-500"))));
    QCOMPARE(rows.size(), 2);
    QCOMPARE(rows.at(1).group, 4);
    QCOMPARE(rows.at(1).values.at(1), QStringLiteral("Pn-500"));
}

void ParameterCatalogueTest::commentHidesRows()
{
    const QList<Row> rows = read(document(
        group("Basic parameters", "<!-- " + parameter("A", "Pn-000") + " -->" + parameter("B", "Pn-001"))));
    QCOMPARE(rows.size(), 1);
    QCOMPARE(rows.first().values.first(), QStringLiteral("B"));
}

void ParameterCatalogueTest::missingElementShiftsTheStrings()
{
    QByteArray row = parameter("A", "Pn-000");
    row.replace("<value>5</value>", "");
    const QList<Row> rows = read(document(group("Basic parameters", row)));
    QCOMPARE(rows.first().values.size(), 17);
    QCOMPARE(rows.first().values.at(13), QStringLiteral("ms"));
}

void ParameterCatalogueTest::strayDescriptionIsAppended()
{
    const QList<Row> rows = read(
        document(group("Basic parameters", parameter("A", "Pn-000", "<description description=\"more\"/>"))));
    QCOMPARE(rows.first().values.size(), 19);
    QCOMPARE(rows.first().values.last(), QStringLiteral("more"));
}

void ParameterCatalogueTest::brokenFileKeepsTheRowsBeforeTheError_data()
{
    QTest::addColumn<QByteArray>("xml");
    QTest::addColumn<int>("rowCount");
    const QByteArray good =
        document(group("Basic parameters", parameter("A", "Pn-000") + parameter("B", "Pn-001")));
    const int secondRow = good.indexOf("<parameter name=\"B\"");
    QTest::newRow("whole") << good << 2;
    QTest::newRow("empty") << QByteArray() << 0;
    QTest::newRow("binary") << QByteArray("\x00\xff\x12\x80", 4) << 0;
    QTest::newRow("cut in the second row") << good.left(secondRow + 40) << 1;
    QTest::newRow("cut in a text of the second row") << good.left(good.lastIndexOf("Pn-001") + 3) << 1;
    QTest::newRow("closing tags lost") << good.left(good.indexOf("</group>")) << 2;
    QTest::newRow("last row not closed")
        << good.left(good.lastIndexOf("</parameter>")) + "</group></parameters>" << 1;
    QTest::newRow("stray ampersand") << QByteArray(good).replace("name=\"B\"", "name=\"B & C\"") << 1;
}

void ParameterCatalogueTest::brokenFileKeepsTheRowsBeforeTheError()
{
    QFETCH(QByteArray, xml);
    QFETCH(int, rowCount);
    QCOMPARE(read(xml).size(), rowCount);
}

void ParameterCatalogueTest::threadReadsTheFileOfTheLanguage_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<int>("rowCount");
    QTest::newRow("Chinese") << "zh_CN" << 571;
    QTest::newRow("English") << "en_US" << 520;
    QTest::newRow("any other") << "de_DE" << 520;
    QTest::newRow("nearly Chinese") << "zh_TW" << 520;
}

void ParameterCatalogueTest::threadReadsTheFileOfTheLanguage()
{
    QFETCH(QString, language);
    QFETCH(int, rowCount);
    directory.setLanguage(language);
    ReadXmlThread thread;
    const SignalLog rows(&thread, &ReadXmlThread::readXml);
    int finished = 0;
    connect(&thread, &QThread::finished, &thread, [&finished] { ++finished; });
    thread.start();
    QTRY_COMPARE(finished, 1);
    QCOMPARE(rows.count(), rowCount);
    // In the order of the document.
    int group = 0;
    for (const auto &[index, values, description] : rows.calls) {
        QVERIFY(index >= group);
        group = index;
        QCOMPARE(values.size(), 18);
    }
    QCOMPARE(group, 11);
}

extern int qCleanupResources_catalogue();
extern int qInitResources_catalogue();

void ParameterCatalogueTest::threadWithoutAFileEndsSilently()
{
    directory.setLanguage(QStringLiteral("en_US"));
    qCleanupResources_catalogue();
    ReadXmlThread thread;
    const SignalLog rows(&thread, &ReadXmlThread::readXml);
    int finished = 0;
    connect(&thread, &QThread::finished, &thread, [&finished] { ++finished; });
    thread.start();
    QTRY_COMPARE(finished, 1);
    qInitResources_catalogue();
    QCOMPARE(rows.count(), 0);
}

QTEST_GUILESS_MAIN(ParameterCatalogueTest)
#include "tst_parametercatalogue.moc"
