// SPDX-License-Identifier: GPL-3.0-or-later
// Every expectation is worked out by hand from what may be entered, and none from the code under test.
#include "parameter/valuecheck.h"

#include <QTest>

using Verdict = ValueCheck::Verdict;
Q_DECLARE_METATYPE(ValueCheck::Verdict)

class ValueCheckTest : public QObject
{
    Q_OBJECT

private slots:
    void textIsJudged_data();
    void textIsJudged();
    void shownTextFollowsTheButton_data();
    void shownTextFollowsTheButton();
    void recordHoldsTheTextAsTyped();
    void rowWithTooFewTextsIsJudgedAsOneWithoutLimits();
};

namespace {

struct Limits
{
    const char *mark;
    const char *min;
    const char *max;
};

constexpr Limits integer{"", "-300", "300"};
constexpr Limits fromZero{"", "0", "65535"};
constexpr Limits wide{"", "-2147483647", "2147483647"};
constexpr Limits tenths{"", "0.0", "6000.0"};
constexpr Limits signedTenths{"", "-6000.0", "6000.0"};
constexpr Limits hundredths{"", "0.10", "100.00"};
constexpr Limits onlyMaxHasPoint{"", "1", "3.00"};
constexpr Limits none{"", "", ""};
constexpr Limits hexRow{"H", "0x0001", "0x0199"};
constexpr Limits hexWide{"H", "0x0000", "0xFFFF"};
constexpr Limits hexWithoutMark{"", "0x0000", "0x1111"};
constexpr Limits hexWithoutLimits{"H", "", ""};

QStringList rowOf(const Limits &limits)
{
    return {"Pn-004", "",         "",         "",        "",      limits.mark, "value of the table",
            "0.1rpm", limits.min, limits.max, "default", "A name"};
}

struct Case
{
    const char *name;
    Limits limits;
    QString text;
    Verdict verdict;
    const char *limit;
};

const QString arabicTwelve = QString::fromUtf8("\u0661\u0662");
const QString fullWidthTwelve = QString::fromUtf8("\uFF11\uFF12");
const QString devanagariTwelve = QString::fromUtf8("\u0967\u0968");
const QString minusSign = QString::fromUtf8("\u22125");
const QString noBreakSpace = QString::fromUtf8("5\u00A0");
const QString lineSeparator = QString::fromUtf8("5\u2028");

QVector<Case> signCases()
{
    return {
        {"digits", integer, "5", Verdict::Accepted, ""},
        {"plus", integer, "+5", Verdict::Accepted, ""},
        {"minus", integer, "-5", Verdict::Accepted, ""},
        {"zero", integer, "0", Verdict::Accepted, ""},
        {"plus zero", integer, "+0", Verdict::Accepted, ""},
        {"minus zero", integer, "-0", Verdict::Accepted, ""},
        {"leading zeros", integer, "0005", Verdict::Accepted, ""},
        {"two signs", integer, "--5", Verdict::Malformed, ""},
        {"two different signs", integer, "+-5", Verdict::Malformed, ""},
        {"sign alone", integer, "-", Verdict::Malformed, ""},
        {"sign behind", integer, "5-", Verdict::Malformed, ""},
        {"minus of typography", integer, minusSign, Verdict::Malformed, ""},
    };
}

QVector<Case> blankCases()
{
    return {
        {"nothing", integer, "", Verdict::Malformed, ""},
        {"a blank", integer, " ", Verdict::Malformed, ""},
        {"blank in front", integer, " 5", Verdict::Malformed, ""},
        {"blank behind", integer, "5 ", Verdict::Malformed, ""},
        {"blank inside", integer, "1 000", Verdict::Malformed, ""},
        {"blank behind the sign", integer, "- 5", Verdict::Malformed, ""},
        {"tabulator behind", integer, "5\t", Verdict::Malformed, ""},
        {"no-break space behind", integer, noBreakSpace, Verdict::Malformed, ""},
        {"line feed behind", integer, "5\n", Verdict::Malformed, ""},
        {"carriage return and line feed behind", integer, "5\r\n", Verdict::Malformed, ""},
        {"line feed in front", integer, "\n5", Verdict::Malformed, ""},
        {"two lines", integer, "5\n6", Verdict::Malformed, ""},
        {"line separator behind", integer, lineSeparator, Verdict::Malformed, ""},
        {"line feed behind a fraction", tenths, "5.0\n", Verdict::Malformed, ""},
        {"nothing in a fraction row", tenths, "", Verdict::Malformed, ""},
    };
}

QVector<Case> notationCases()
{
    return {
        {"letters", integer, "abc", Verdict::Malformed, ""},
        {"digits and a letter", integer, "5x", Verdict::Malformed, ""},
        {"exponent", integer, "1e2", Verdict::Malformed, ""},
        {"exponent of a fraction", tenths, "1.0e2", Verdict::Malformed, ""},
        {"infinity", integer, "inf", Verdict::Malformed, ""},
        {"not a number", integer, "nan", Verdict::Malformed, ""},
        {"comma", tenths, "5,0", Verdict::Malformed, ""},
        {"thousands comma", fromZero, "1,000", Verdict::Malformed, ""},
        {"hexadecimal in a decimal row", fromZero, "0x10", Verdict::Malformed, ""},
        {"arabic digits", fromZero, arabicTwelve, Verdict::Malformed, ""},
        {"arabic digits in a fraction row", tenths, arabicTwelve, Verdict::Malformed, ""},
        {"full-width digits", fromZero, fullWidthTwelve, Verdict::Malformed, ""},
        {"devanagari digits", fromZero, devanagariTwelve, Verdict::Malformed, ""},
    };
}

QVector<Case> fractionCases()
{
    return {
        {"fraction in an integer row", integer, "1.0", Verdict::Malformed, ""},
        {"point alone behind in an integer row", integer, "1.", Verdict::Malformed, ""},
        {"integer in a fraction row", tenths, "100", Verdict::Accepted, ""},
        {"one digit of one", tenths, "100.2", Verdict::Accepted, ""},
        {"two digits of one", tenths, "100.25", Verdict::Malformed, ""},
        {"superfluous zero counts", tenths, "100.20", Verdict::Malformed, ""},
        {"point without digits behind", tenths, "100.", Verdict::Malformed, ""},
        {"point without digits in front", tenths, ".5", Verdict::Malformed, ""},
        {"point alone", tenths, ".", Verdict::Malformed, ""},
        {"two points", tenths, "1.2.3", Verdict::Malformed, ""},
        {"signed fraction", signedTenths, "-0.5", Verdict::Accepted, ""},
        {"two digits of two", hundredths, "0.25", Verdict::Accepted, ""},
        {"three digits of two", hundredths, "0.255", Verdict::Malformed, ""},
        {"digits of the maximum where the minimum has no point", onlyMaxHasPoint, "1.25", Verdict::Accepted,
         ""},
        {"digits of the minimum, though the maximum has more",
         {"", "0.0", "10.00"},
         "1.25",
         Verdict::Malformed,
         ""},
        {"digits of the minimum, though the maximum has fewer",
         {"", "0.00", "10.0"},
         "1.25",
         Verdict::Accepted,
         ""},
        {"one more than the maximum has", onlyMaxHasPoint, "1.255", Verdict::Malformed, ""},
    };
}

QVector<Case> rangeCases()
{
    return {
        {"upper limit", integer, "300", Verdict::Accepted, ""},
        {"one above", integer, "301", Verdict::AboveMaximum, "300"},
        {"lower limit", integer, "-300", Verdict::Accepted, ""},
        {"one below", integer, "-301", Verdict::BelowMinimum, "-300"},
        {"upper limit of tenths", tenths, "6000.0", Verdict::Accepted, ""},
        {"a tenth above", tenths, "6000.1", Verdict::AboveMaximum, "6000"},
        {"lower limit of tenths", tenths, "0.0", Verdict::Accepted, ""},
        {"a tenth below", tenths, "-0.1", Verdict::BelowMinimum, "0"},
        {"a hundredth below", hundredths, "0.09", Verdict::BelowMinimum, "0.1"},
        {"lower limit of hundredths", hundredths, "0.10", Verdict::Accepted, ""},
        {"a hundredth above", hundredths, "100.01", Verdict::AboveMaximum, "100"},
        {"limit of six digits", fromZero, "65536", Verdict::AboveMaximum, "65535"},
        {"greatest 32-bit number", wide, "2147483647", Verdict::Accepted, ""},
        {"one beyond 32 bits", wide, "2147483648", Verdict::Malformed, ""},
        {"least number of the band", wide, "-2147483647", Verdict::Accepted, ""},
        {"the lowest 32-bit number is outside", wide, "-2147483648", Verdict::Malformed, ""},
        {"the band goes before the limits", integer, "2147483648", Verdict::Malformed, ""},
        {"within the band but above", integer, "2147483647", Verdict::AboveMaximum, "300"},
        {"a hundred digits", wide, QString(100, '9'), Verdict::Malformed, ""},
        {"beyond any double", wide, "1" + QString(400, '0'), Verdict::Malformed, ""},
        {"beyond any double, negative", wide, "-1" + QString(400, '0'), Verdict::Malformed, ""},
        {"many leading zeros", wide, QString(400, '0') + "7", Verdict::Accepted, ""},
        {"long limit is told in six digits",
         {"", "0", "1234567"},
         "1234568",
         Verdict::AboveMaximum,
         "1.23457e+06"},
        {"zero without limits", none, "0", Verdict::Accepted, ""},
        {"minus zero without limits", none, "-0", Verdict::Accepted, ""},
        {"one without limits", none, "1", Verdict::AboveMaximum, "0"},
        {"minus one without limits", none, "-1", Verdict::BelowMinimum, "0"},
        {"fraction of zero without limits", none, "0.0", Verdict::Malformed, ""},
        {"empty minimum is zero", {"", "", "10"}, "-1", Verdict::BelowMinimum, "0"},
        {"empty maximum is zero", {"", "-10", ""}, "1", Verdict::AboveMaximum, "0"},
    };
}

QVector<Case> hexadecimalCases()
{
    return {
        {"four digits", hexRow, "0x0100", Verdict::Accepted, ""},
        {"fewer digits", hexRow, "0x12", Verdict::Accepted, ""},
        {"one digit", hexRow, "0x1", Verdict::Accepted, ""},
        {"capital prefix", hexRow, "0X0100", Verdict::Accepted, ""},
        {"capital prefix above the range", hexRow, "0X0200", Verdict::AboveMaximum, "0199"},
        {"small digits", hexWide, "0xabcd", Verdict::Accepted, ""},
        {"capital digits", hexWide, "0xABCD", Verdict::Accepted, ""},
        {"mixed digits", hexWide, "0XaBcD", Verdict::Accepted, ""},
        {"prefix alone reads as zero", hexWide, "0x", Verdict::Accepted, ""},
        {"prefix alone below the range", hexRow, "0x", Verdict::BelowMinimum, "0001"},
        {"five digits", hexWide, "0x00001", Verdict::Malformed, ""},
        {"a letter beyond F", hexRow, "0x01AZ", Verdict::Malformed, ""},
        {"letter G", hexWide, "0x00G0", Verdict::Malformed, ""},
        {"no prefix", hexWide, "0100", Verdict::Malformed, ""},
        {"half a prefix", hexWide, "x100", Verdict::Malformed, ""},
        {"nothing in a hexadecimal row", hexWide, "", Verdict::Malformed, ""},
        {"one character", hexWide, "0", Verdict::Malformed, ""},
        {"sign before the prefix", hexWide, "-0x001", Verdict::Malformed, ""},
        {"sign behind the prefix", hexWide, "0x-001", Verdict::Malformed, ""},
        {"blank in front of the prefix", hexWide, " 0x001", Verdict::Malformed, ""},
        {"blank behind the digits", hexWide, "0x001 ", Verdict::Malformed, ""},
        {"line feed behind the digits", hexWide, "0x001\n", Verdict::Malformed, ""},
        {"two prefixes", hexWide, "0x0x01", Verdict::Malformed, ""},
        {"point in the digits", hexWide, "0x1.0", Verdict::Malformed, ""},
        {"arabic digits behind the prefix", hexWide, "0x" + arabicTwelve, Verdict::Malformed, ""},
        {"full-width digits behind the prefix", hexWide, "0x" + fullWidthTwelve, Verdict::Malformed, ""},
        {"upper limit", hexRow, "0x0199", Verdict::Accepted, ""},
        {"one above", hexRow, "0x019A", Verdict::AboveMaximum, "0199"},
        {"lower limit", hexRow, "0x0001", Verdict::Accepted, ""},
        {"one below", hexRow, "0x0000", Verdict::BelowMinimum, "0001"},
        {"greatest word", hexWide, "0xFFFF", Verdict::Accepted, ""},
        {"digits are one number, not fields", hexWithoutMark, "0x0FFF", Verdict::Accepted, ""},
        {"the maximum alone makes the row hexadecimal", hexWithoutMark, "0x1112", Verdict::AboveMaximum,
         "1111"},
        {"decimal in such a row", hexWithoutMark, "1", Verdict::Malformed, ""},
        {"zero without limits", hexWithoutLimits, "0x0000", Verdict::Accepted, ""},
        {"one without limits", hexWithoutLimits, "0x0001", Verdict::AboveMaximum, ""},
        {"small letter prefix in the mark-less maximum",
         {"", "0x000", "0x0199"},
         "0x12",
         Verdict::Accepted,
         ""},
        {"decimal limits of a marked row", {"H", "0", "10"}, "0x0011", Verdict::AboveMaximum, "10"},
        {"decimal minimum of a marked row is told at the end",
         {"H", "1", "10"},
         "0x0005",
         Verdict::BelowMinimum,
         "1"},
    };
}

} // namespace

void ValueCheckTest::textIsJudged_data()
{
    QTest::addColumn<QStringList>("row");
    QTest::addColumn<QString>("text");
    QTest::addColumn<Verdict>("verdict");
    QTest::addColumn<QString>("limit");
    const QVector<QPair<const char *, QVector<Case>>> groups{
        {"signs", signCases()},         {"blanks", blankCases()}, {"notation", notationCases()},
        {"fractions", fractionCases()}, {"range", rangeCases()},  {"hexadecimal", hexadecimalCases()}};
    for (const auto &group : groups) {
        for (const Case &one : group.second)
            QTest::addRow("%s: %s", group.first, one.name)
                << rowOf(one.limits) << one.text << one.verdict << QString::fromLatin1(one.limit);
    }
}

void ValueCheckTest::textIsJudged()
{
    QFETCH(QStringList, row);
    QFETCH(QString, text);
    QFETCH(Verdict, verdict);
    QFETCH(QString, limit);
    const ValueCheck check = checkValue(row, text);
    QCOMPARE(int(check.verdict), int(verdict));
    QCOMPARE(check.limit, limit);
}

void ValueCheckTest::shownTextFollowsTheButton_data()
{
    QTest::addColumn<QStringList>("row");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("afterOk");
    QTest::addColumn<QString>("afterWrite");
    QTest::newRow("plain") << rowOf(integer) << "5"
                           << "5"
                           << "5";
    QTest::newRow("plus") << rowOf(integer) << "+5"
                          << "5"
                          << "+5";
    QTest::newRow("minus") << rowOf(integer) << "-5"
                           << "-5"
                           << "-5";
    QTest::newRow("minus zero") << rowOf(integer) << "-0"
                                << "0"
                                << "-0";
    QTest::newRow("minus zeros") << rowOf(integer) << "-000"
                                 << "000"
                                 << "-000";
    QTest::newRow("plus zero") << rowOf(integer) << "+0"
                               << "0"
                               << "+0";
    QTest::newRow("integer in a fraction row") << rowOf(tenths) << "100"
                                               << "100.0"
                                               << "100.0";
    QTest::newRow("fraction") << rowOf(tenths) << "100.5"
                              << "100.5"
                              << "100.5";
    QTest::newRow("hundredths get one digit") << rowOf(hundredths) << "5"
                                              << "5.0"
                                              << "5.0";
    QTest::newRow("plus in a fraction row") << rowOf(tenths) << "+5"
                                            << "5.0"
                                            << "+5.0";
    QTest::newRow("minus zero in a fraction row") << rowOf(signedTenths) << "-0.0"
                                                  << "0.0"
                                                  << "-0.0";
    QTest::newRow("small negative") << rowOf(signedTenths) << "-0.1"
                                    << "-0.1"
                                    << "-0.1";
    QTest::newRow("only the maximum has a point") << rowOf(onlyMaxHasPoint) << "2"
                                                  << "2.0"
                                                  << "2.0";
    QTest::newRow("hexadecimal stays as typed") << rowOf(hexRow) << "0x12"
                                                << "0x12"
                                                << "0x12";
}

void ValueCheckTest::shownTextFollowsTheButton()
{
    QFETCH(QStringList, row);
    QFETCH(QString, text);
    QFETCH(QString, afterOk);
    QFETCH(QString, afterWrite);
    QCOMPARE(displayText(row, text, true), afterOk);
    QCOMPARE(displayText(row, text, false), afterWrite);
}

void ValueCheckTest::recordHoldsTheTextAsTyped()
{
    QCOMPARE(writeRecord(rowOf(hexRow), QStringLiteral("+5")),
             QStringList({"Pn-004", "H", "+5", "0.1rpm", "0x0001", "0x0199"}));
}

void ValueCheckTest::rowWithTooFewTextsIsJudgedAsOneWithoutLimits()
{
    QCOMPARE(int(checkValue({}, QStringLiteral("0")).verdict), int(Verdict::Accepted));
    QCOMPARE(int(checkValue({}, QStringLiteral("1")).verdict), int(Verdict::AboveMaximum));
}

QTEST_APPLESS_MAIN(ValueCheckTest)
#include "tst_valuecheck.moc"
