// SPDX-License-Identifier: GPL-3.0-or-later
#include "gaintuning/gainfields.h"
#include "gaintuning/gaintuningframes.h"
#include "support/wire.h"

#include <QLocale>
#include <QTest>
#include <QTranslator>

using namespace gaintuning;

namespace {

struct Expected
{
    const char *title;
    const char *minimum;
    const char *maximum;
    int digits; // 0 integer, -1 unchanged
};

const Expected expectedFields[24] = {
    {"Maxinum speed", "100", "1000", 0},
    {"Acceleration and deceleration time", "20", "800", 0},
    {"Motor stroke", "0", "100", 0},
    {"Interval time", "50", "5000", 0},
    {"Inertia Ratio", "1.0", "120.0", 1},
    {"Position Loop Gain", "0.1", "900.0", 1},
    {"Speed Loop Gain", "0.1", "1000.0", 1},
    {"Integral Time Constant of Speed Loop", "1.0", "1000.0", 1},
    {"Time Constant of Torque Instruction Filtering", "0.00", "30.00", 2},
    {"Speed Feedforward Gain", "0.0", "100.0", 1},
    {"Time Constant of Speed Feedforward Filtering", "0.10", "100.00", 2},
    {"Notch-filter1 Frequency", "50", "5000", 0},
    {"Notch-filter1 Width Grade", "1", "4096", 0},
    {"Notch-filter1 Deep Grade", "0", "40", 0},
    {"Notch-filter2 Frequency", "50", "5000", 0},
    {"Notch-filter2 Width Grade", "1", "4096", 0},
    {"Notch-filter2 Deep Grade", "0", "40", 0},
    {"Notch-filter3 Frequency", "50", "5000", 0},
    {"Notch-filter3 Width Grade", "1", "4096", 0},
    {"Notch-filter3 Deep Grade", "0", "40", 0},
    {"Notch-filter4 Frequency", "50", "5000", 0},
    {"Notch-filter4 Width Grade", "1", "4096", 0},
    {"Notch-filter4 Deep Grade", "0", "40", 0},
    {"Calculated", "1.0", "120.0", -1},
};

const QString refused = QStringLiteral("refused");

// A number in the form of a field, by its digits written out by hand.
QString inForm(int digits, double value)
{
    const qint64 scaled = qRound64(value * (digits == 2 ? 100 : 10));
    if (digits == 0)
        return QString::number(qRound64(value));
    const qint64 unit = digits == 2 ? 100 : 10;
    return QStringLiteral("%1.%2").arg(scaled / unit).arg(scaled % unit, digits, 10, QLatin1Char('0'));
}

} // namespace

class GainFieldsTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void everyFieldHasItsTitleAndLimits();
    void inputs_data();
    void inputs();
    void normalForms_data();
    void normalForms();
    void messageNamesTheRange();
    void messageNamesTheRangeInChinese();
    void scaledValuesAreRoundedAboveZeroAndCutBelow();
    void valueTextsFollowTheirRegister_data();
    void valueTextsFollowTheirRegister();
    void storedWritesHaveTheirHeads();
    void everyFieldShowsItsRegister();
};

void GainFieldsTest::initTestCase()
{
    // Numbers are read and written with a point all the same.
    QLocale::setDefault(QLocale(QLocale::German));
}

void GainFieldsTest::everyFieldHasItsTitleAndLimits()
{
    QCOMPARE(minimumTexts().size(), 24);
    QCOMPARE(maximumTexts().size(), 24);
    for (int field = 0; field < 24; ++field) {
        QCOMPARE(fieldTitle(field), QLatin1String(expectedFields[field].title));
        QCOMPARE(minimumTexts().at(field), QLatin1String(expectedFields[field].minimum));
        QCOMPARE(maximumTexts().at(field), QLatin1String(expectedFields[field].maximum));
    }
}

void GainFieldsTest::inputs_data()
{
    QTest::addColumn<int>("field");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("form"); // or refused
    for (int field = 0; field < 24; ++field) {
        const Expected &row = expectedFields[field];
        const double minimum = QByteArray(row.minimum).toDouble();
        const double maximum = QByteArray(row.maximum).toDouble();
        const double step = row.digits == 0 ? 1 : 0.01;
        const int digits = row.digits;
        const auto add = [&](const char *name, const QString &text, const QString &form) {
            QTest::addRow("%d %s", field, name) << field << text << form;
        };
        const auto unchangedOr = [&](const QString &text, double value) {
            return digits < 0 ? text : inForm(digits, value);
        };
        const double middle = int((minimum + maximum) / 2);
        add("minimum", QLatin1String(row.minimum), QLatin1String(row.minimum));
        add("maximum", QLatin1String(row.maximum), QLatin1String(row.maximum));
        add("middle", QString::number(middle), unchangedOr(QString::number(middle), middle));
        add("below", QString::number(minimum - step, 'f', digits == 0 ? 0 : 2), refused);
        add("above", QString::number(maximum + step, 'f', digits == 0 ? 0 : 2), refused);
        add("empty", QString(), refused);
        add("no number", QStringLiteral("abc"), refused);
        add("comma", QString::number(int(middle)) + QStringLiteral(",5"), refused);
        add("other script", QString(QChar(0x0665)) + QChar(0x0660), refused);
        add("not a number", QStringLiteral("nan"), refused);
        add("decimal", QString::number(middle) + QStringLiteral(".5"),
            digits == 0 ? refused
                        : unchangedOr(QString::number(middle) + QStringLiteral(".5"), middle + 0.5));
        add("leading zeros", QStringLiteral("00") + QString::number(middle),
            digits < 0 ? QStringLiteral("00") + QString::number(middle) : inForm(digits, middle));
    }
}

void GainFieldsTest::inputs()
{
    QFETCH(int, field);
    QFETCH(QString, text);
    const auto form = normalForm(field, text, minimumTexts().at(field), maximumTexts().at(field));
    QTEST(form.value_or(refused), "form");
}

void GainFieldsTest::normalForms_data()
{
    QTest::addColumn<int>("field");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("form");
    QTest::newRow("one digit") << 5 << "48"
                               << "48.0";
    QTest::newRow("two digits") << 8 << "0.4"
                                << "0.40";
    QTest::newRow("rounded") << 8 << "0.4567"
                             << "0.46";
    QTest::newRow("sign") << 0 << "+500"
                          << "500";
    QTest::newRow("exponent") << 5 << "1e2"
                              << "100.0";
    QTest::newRow("exponent in an integer") << 11 << "1e2" << refused;
    QTest::newRow("infinite") << 5 << "inf" << refused;
    QTest::newRow("kept as it is") << 23 << "3.25"
                                   << "3.25";
}

void GainFieldsTest::normalForms()
{
    QFETCH(int, field);
    QFETCH(QString, text);
    QTEST(normalForm(field, text, minimumTexts().at(field), maximumTexts().at(field)).value_or(refused),
          "form");
}

void GainFieldsTest::messageNamesTheRange()
{
    QCOMPARE(rangeMessage(QStringLiteral("100"), QStringLiteral("1000")),
             QStringLiteral("Input value execteeds the range!\nRange: 100 ~ 1000"));
}

void GainFieldsTest::messageNamesTheRangeInChinese()
{
    QTranslator translator;
    QVERIFY(translator.load(QStringLiteral(":/lan/sd_zh_CN.qm")));
    QVERIFY(QCoreApplication::installTranslator(&translator));
    QCOMPARE(rangeMessage(QStringLiteral("100"), QStringLiteral("1000")),
             QStringLiteral("输入值超出范围！\n范围：100 ~ 1000"));
}

void GainFieldsTest::scaledValuesAreRoundedAboveZeroAndCutBelow()
{
    QCOMPARE(scaledValue(QStringLiteral("0.45"), 100), 45);
    QCOMPARE(scaledValue(QStringLiteral("500.0"), 10), 5000);
    QCOMPARE(scaledValue(QStringLiteral("0.06"), 10), 1);
    QCOMPARE(scaledValue(QStringLiteral("0.04"), 10), 0);
    QCOMPARE(scaledValue(QStringLiteral("0"), 10), 0);
    QCOMPARE(scaledValue(QStringLiteral("-0.06"), 10), 0);
}

void GainFieldsTest::valueTextsFollowTheirRegister_data()
{
    QTest::addColumn<int>("address");
    QTest::addColumn<uint>("value");
    QTest::addColumn<QString>("text");
    QTest::newRow("Pn-502") << 0x21F6 << 45u << "0.45";
    QTest::newRow("Pn-638") << 0x227E << 10000u << "100.00";
    QTest::newRow("Pn-F60") << 0x2618 << 325u << "3.25";
    QTest::newRow("Pn-610") << 0x2262 << 480u << "48.0";
    QTest::newRow("Pn-611") << 0x2263 << 1u << "0.1";
    QTest::newRow("Pn-612") << 0x2264 << 65535u << "6553.5";
    QTest::newRow("Pn-602") << 0x225A << 0u << "0.0";
    QTest::newRow("Pn-637") << 0x227D << 1000u << "100.0";
    QTest::newRow("Pn-605") << 0x225D << 1000u << "1000";
    QTest::newRow("Pn-663") << 0x2297 << 65535u << "65535";
    QTest::newRow("six digits") << 0x2297 << 1234567u << "1.23457e+06";
}

void GainFieldsTest::valueTextsFollowTheirRegister()
{
    QFETCH(int, address);
    QFETCH(uint, value);
    QTEST(valueText(address, value), "text");
}

void GainFieldsTest::storedWritesHaveTheirHeads()
{
    const QList<QPair<int, const char *>> heads{
        {0x225D, "0110E25D000102"}, {0x225E, "0110E25E000102"}, {0x225F, "0110E25F000102"},
        {0x2260, "0110E260000102"}, {0x2258, "0110E258000102"}, {0x2259, "0110E259000102"},
        {0x225A, "0110E25A000102"}, {0x225C, "0110E25C000102"}, {0x22AE, "0110E2AE000102"},
        {0x2296, "0110E296000102"}, {0x21F6, "0110E1F6000102"}};
    for (const auto &[address, head] : heads)
        QCOMPARE(storeFrame(address, 0x1234), wire::frame(wire::bytes(head) + wire::bytes("12 34")));
    QCOMPARE(storeFrame(0x2297, {100, 2, 3, 400, 5, 6}),
             wire::frame("01 10 E2 97 00 06 0C 00 64 00 02 00 03 01 90 00 05 00 06"));
    QCOMPARE(storeFrame(0x22A0, {1000, 4096, 40}), wire::frame("01 10 E2 A0 00 03 06 03 E8 10 00 00 28"));
}

void GainFieldsTest::everyFieldShowsItsRegister()
{
    const int registers[24] = {0x225D, 0x225E, 0x225F, 0x2260, 0x225A, 0x2262, 0x2263, 0x2264,
                               0x21F6, 0x227D, 0x227E, 0x2297, 0x2298, 0x2299, 0x229A, 0x229B,
                               0x229C, 0x229D, 0x229E, 0x229F, 0x22A0, 0x22A1, 0x22A2, 0x2618};
    for (int field = 0; field < 24; ++field) {
        QCOMPARE(fieldRegister(field), registers[field]);
        QCOMPARE(fieldOfRegister(registers[field]), field);
    }
    QCOMPARE(fieldOfRegister(0x2258), -1);
}

QTEST_GUILESS_MAIN(GainFieldsTest)
#include "tst_gainfields.moc"
