// SPDX-License-Identifier: GPL-3.0-or-later
// Samples from the wire to engineering units, by the shipped catalogues and by rows of the test's own.
#include "scope/sampledecoding.h"

#include "support/wire.h"

#include <QFile>
#include <QtTest>

class TestSampleDecoding : public QObject
{
    Q_OBJECT

private slots:
    void formatFollowsTheTextsOfTheRow_data();
    void formatFollowsTheTextsOfTheRow();
    void samplesAreScaledAndSigned_data();
    void samplesAreScaledAndSigned();
    void firstRowOfACodeCounts();
    void shippedRowsAreReadByTheirLanguage();
    void itemNumberIsTheLastRowThatHoldsTheText();
    void listTextNamesTheUnitIfThereIsOne();
    void recordHeaderIsCodeAndNameOfTheLastRow();
    void brokenCatalogueKeepsTheRowsBefore();
};

namespace {

QStringList item(const QString &code, const QString &min, const QString &max, const QString &unit,
                 const QString &name = QStringLiteral("name"))
{
    return {name, code, QString(), min, max, unit};
}

ScopeItems shipped(const char *language)
{
    QFile file(QStringLiteral(":/parameter/parameter/ParameterScope_%1.xml").arg(QLatin1String(language)));
    return file.open(QIODevice::ReadOnly) ? readScopeItems(file.readAll()) : ScopeItems();
}

} // namespace

void TestSampleDecoding::formatFollowsTheTextsOfTheRow_data()
{
    QTest::addColumn<QString>("code");
    QTest::addColumn<QString>("min");
    QTest::addColumn<QString>("max");
    QTest::addColumn<QString>("unit");
    QTest::addColumn<bool>("isSigned");
    QTest::addColumn<double>("factor");
    QTest::addColumn<int>("decimals");

    QTest::newRow("Motor speed") << "Pn-F00"
                                 << "-6000"
                                 << "6000"
                                 << "1RPM" << true << 1.0 << 0;
    QTest::newRow("Speed analog command") << "Pn-F02"
                                          << "-12.0"
                                          << "12.0"
                                          << "0.01V" << true << 0.01 << 2;
    QTest::newRow("Bus voltage") << "Pn-F26"
                                 << "0.0"
                                 << "900.0"
                                 << "0.1V" << false << 0.1 << 1;
    QTest::newRow("Motor current RMS") << "Pn-F27"
                                       << ""
                                       << ""
                                       << "0.01A" << false << 0.01 << 2;
    QTest::newRow("hundredths by the minimum") << "Pn-F00"
                                               << "-300.00"
                                               << "300"
                                               << "A" << true << 0.01 << 2;
    QTest::newRow("hundredths by the maximum") << "Pn-F00"
                                               << ""
                                               << "300.00"
                                               << "A" << false << 0.01 << 2;
    QTest::newRow("tenths by the maximum") << "Pn-F00"
                                           << "0"
                                           << "1.5"
                                           << "A" << false << 0.1 << 1;
    QTest::newRow("thousandths count as tenths") << "Pn-F00"
                                                 << "0"
                                                 << "9"
                                                 << "0.001A" << false << 0.1 << 1;
    QTest::newRow("a lone sign is a sign") << "Pn-F05"
                                           << "-"
                                           << "-"
                                           << "1%" << true << 1.0 << 0;
    QTest::newRow("a pair of codes is unsigned") << "Pn-F07~Pn-F08"
                                                 << "-5"
                                                 << "5"
                                                 << "1PP" << false << 1.0 << 0;
}

void TestSampleDecoding::formatFollowsTheTextsOfTheRow()
{
    QFETCH(QString, code);
    QFETCH(QString, min);
    QFETCH(QString, max);
    QFETCH(QString, unit);
    const SampleFormat format = sampleFormat({item(code, min, max, unit)}, code);
    QTEST(format.isSigned, "isSigned");
    QTEST(format.factor, "factor");
    QTEST(format.decimals, "decimals");
    const SampleFormat unknown = sampleFormat({item(code, min, max, unit)}, QStringLiteral("Pn-Z99"));
    QCOMPARE(unknown.isSigned, false);
    QCOMPARE(unknown.factor, 1.0);
}

void TestSampleDecoding::samplesAreScaledAndSigned_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("isSigned");
    QTest::addColumn<double>("factor");
    QTest::addColumn<bool>("wide");
    QTest::addColumn<QVector<double>>("values");

    const auto row = [](const char *name, const char *bytes, bool isSigned, double factor, bool wide,
                        const QVector<double> &values) {
        QTest::newRow(name) << wire::bytes(bytes) << isSigned << factor << wide << values;
    };
    row("signed", "0001 ffff 7fff 8000", true, 1, false, {1, -1, 32767, -32768});
    row("unsigned", "0001 ffff 8000", false, 1, false, {1, 65535, 32768});
    row("hundredths", "0064 ff9c", true, 0.01, false, {1, -1});
    // 3 times 0.1 is not the double 0.3: samples are multiplied, not divided.
    row("tenths are multiplied", "0003", false, 0.1, false, {0.30000000000000004});
    row("wide ones have a sign", "00000001 ffffffff 80000000 7fffffff", false, 1, true,
        {1, -1, -2147483648.0, 2147483647});
    row("a part sample is dropped", "0001 00", true, 1, false, {1});
    row("a part of a wide sample is dropped", "00000005 000001", true, 1, true, {5});
    row("nothing", "", true, 1, false, {});
}

void TestSampleDecoding::samplesAreScaledAndSigned()
{
    QFETCH(QByteArray, bytes);
    QFETCH(bool, isSigned);
    QFETCH(double, factor);
    QFETCH(bool, wide);
    QFETCH(QVector<double>, values);
    const QVector<double> decoded = decodeSamples(bytes, {isSigned, factor, 0}, wide);
    QCOMPARE(decoded.size(), values.size());
    for (int i = 0; i < values.size(); ++i)
        QVERIFY(decoded.at(i) == values.at(i)); // to the last bit
}

void TestSampleDecoding::firstRowOfACodeCounts()
{
    const ScopeItems items{item("Pn-F50", "-1", "1", "1A"), item("Pn-F50", "0", "1", "0.01A")};
    const SampleFormat format = sampleFormat(items, QStringLiteral("Pn-F50"));
    QCOMPARE(format.isSigned, true);
    QCOMPARE(format.decimals, 0);
}

void TestSampleDecoding::shippedRowsAreReadByTheirLanguage()
{
    const ScopeItems english = shipped("en_US");
    const ScopeItems chinese = shipped("zh_CN");
    QVERIFY(english.size() > 5 && chinese.size() > 5);
    const QString code = english.at(5).at(scopeitem::code);
    QCOMPARE(chinese.at(5).at(scopeitem::code), code);
    const QByteArray minusOne = wire::bytes("ffff");
    QCOMPARE(decodeSamples(minusOne, sampleFormat(english, code), false), QVector<double>{65535});
    QCOMPARE(decodeSamples(minusOne, sampleFormat(chinese, code), false), QVector<double>{-1});
    // The Chinese file has this code twice.
    QCOMPARE(scopeItemNumber(chinese, QStringLiteral("Pn-F50")), 38);
    QCOMPARE(chinese.at(37).at(scopeitem::code), QString("Pn-F50"));
}

void TestSampleDecoding::itemNumberIsTheLastRowThatHoldsTheText()
{
    const ScopeItems items{item("Pn-F00", "", "", "1"), item("Pn-F50", "", "", "1"),
                           item("Pn-F50", "", "", "1"), item("Pn-F60", "", "Pn-F00", "1")};
    QCOMPARE(scopeItemNumber(items, QStringLiteral("Pn-F50")), 2);
    QCOMPARE(scopeItemNumber(items, QStringLiteral("Pn-F00")), 3); // stands in a column of row 3
    QCOMPARE(scopeItemNumber(items, QStringLiteral("Pn-F99")), -1);
}

void TestSampleDecoding::listTextNamesTheUnitIfThereIsOne()
{
    QCOMPARE(scopeItemText(item("Pn-F00", "", "", "1RPM", "Motor speed")), QString("Motor speed[1RPM]"));
    QCOMPARE(scopeItemText(item("Pn-F00", "", "", "", "Motor speed")), QString("Motor speed"));
}

void TestSampleDecoding::recordHeaderIsCodeAndNameOfTheLastRow()
{
    const ScopeItems items{item("Pn-F00", "", "", "1", "Motor speed"), item("Pn-F50", "", "", "1", "first"),
                           item("Pn-F50", "", "", "1", "second")};
    QCOMPARE(scopeRecordHeader(items, QStringLiteral("Pn-F00")), QString("Pn-F00Motor speed"));
    QCOMPARE(scopeRecordHeader(items, QStringLiteral("Pn-F50")), QString("Pn-F50second"));
    QCOMPARE(scopeRecordHeader(items, QStringLiteral("Pn-F99")), QString());
}

void TestSampleDecoding::brokenCatalogueKeepsTheRowsBefore()
{
    const ScopeItems items =
        readScopeItems("<parameters><parameter name=\"a\"><code>Pn-F00</code><unit>1</unit>"
                       "<other><deep>x</deep></other><min>-1</min></parameter>"
                       "<parameter name=\"b\"><code>Pn-F01</co");
    QCOMPARE(items, (ScopeItems{{"a", "Pn-F00", "", "-1", "", "1"}}));
    QVERIFY(readScopeItems("no XML").isEmpty());
}

QTEST_GUILESS_MAIN(TestSampleDecoding)
#include "tst_sampledecoding.moc"
