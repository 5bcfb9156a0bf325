// SPDX-License-Identifier: GPL-3.0-or-later
// The rows of the parameter catalogues, what each of them holds.
#include "parameterfiles.h"

#include <QRegularExpression>
#include <QTest>

using namespace parameterfiles;

namespace {

int digitsOf(const QString &text)
{
    const int point = text.indexOf(QLatin1Char('.'));
    return point < 0 ? 0 : text.size() - point - 1;
}

bool isHexadecimal(const QString &text)
{
    return text.startsWith(QLatin1String("0x"));
}

// Decimal or 0x text; *ok tells whether it is one or the other.
double numberOf(const QString &text, bool *ok)
{
    return isHexadecimal(text) ? text.toUInt(ok, 16) : text.toDouble(ok);
}

} // namespace

class ParameterFilesTest : public QObject
{
    Q_OBJECT

private slots:
    void everyRowHasItsElementsInOrder_data();
    void everyRowHasItsElementsInOrder();
    void marksAreThoseOfTheirRow_data();
    void marksAreThoseOfTheirRow();
    void defaultsAgreeWithTheLimits_data();
    void defaultsAgreeWithTheLimits();
    void rowWithAHexadecimalMaximumHasItsMark_data();
    void rowWithAHexadecimalMaximumHasItsMark();
    void tellingRowIsExact_data();
    void tellingRowIsExact();
    void reservedRowsAreNamedAlike();
};

void ParameterFilesTest::everyRowHasItsElementsInOrder_data()
{
    addLanguages();
}

void ParameterFilesTest::everyRowHasItsElementsInOrder()
{
    QFETCH(QString, path);
    const QStringList order{"code", "function", "value", "unit", "min", "max", "parameter_description"};
    const QList<XmlNode> rows = rowsOf(path);
    QVERIFY(!rows.isEmpty());
    for (const XmlNode &row : rows) {
        const QByteArray code = row.childText("code").toUtf8();
        QCOMPARE(row.tag, QStringLiteral("parameter"));
        QVERIFY2(!row.name().isEmpty(), code);
        QVERIFY2(row.attributes.hasAttribute("default") && row.attributes.value("default").isEmpty(), code);
        QStringList tags = row.childTags();
        if (tags.size() == 8)
            QCOMPARE(tags.takeLast(), QStringLiteral("detailed_description"));
        QCOMPARE(tags, order);
        const QString description = row.childText("parameter_description");
        QVERIFY2(!description.trimmed().isEmpty(), code);
        QVERIFY2(!description.contains(QLatin1Char('\n')), code);
        for (const XmlNode &line : row.child("detailed_description").children) {
            QCOMPARE(line.tag, QStringLiteral("detailed_description_value"));
            QVERIFY2(!line.text.trimmed().isEmpty(), code);
        }
    }
}

void ParameterFilesTest::marksAreThoseOfTheirRow_data()
{
    addLanguages();
}

void ParameterFilesTest::marksAreThoseOfTheirRow()
{
    QFETCH(QString, path);
    const QStringList labels{"Read Only",
                             "Hexadecimal parameter, modified by bit",
                             "32-bit data",
                             "Set When Servo OFF",
                             "Volatile Parameter",
                             "Valid After Re-power on",
                             "Related to the drive model",
                             "Need to configure DI/DO implementation",
                             "Position control",
                             "Speed control",
                             "Torque control"};
    const QList<int> settable{0, 1, 2, 3, 5};
    const QRegularExpression starred(QStringLiteral("^Pn-60[0-8]$"));
    const bool english = path == catalogue("en_US");
    for (const XmlNode &row : rowsOf(path)) {
        const QString code = row.childText("code");
        const QList<XmlNode> functions = row.child("function").children;
        QCOMPARE(functions.size(), 11);
        for (int i = 0; i < functions.size(); ++i) {
            const XmlNode &function = functions.at(i);
            QCOMPARE(function.tag, QStringLiteral("function_value"));
            if (english)
                QCOMPARE(function.text, labels.at(i));
            QVERIFY2(!function.text.isEmpty(), qPrintable(code));
            if (i == 0 && starred.match(code).hasMatch())
                QCOMPARE(function.code(), QStringLiteral("*"));
            else if (!function.code().isEmpty()) {
                QCOMPARE(function.code(), QString::number(i));
                QVERIFY2(settable.contains(i), qPrintable(code));
            }
        }
    }
}

void ParameterFilesTest::defaultsAgreeWithTheLimits_data()
{
    addLanguages();
}

void ParameterFilesTest::defaultsAgreeWithTheLimits()
{
    QFETCH(QString, path);
    int compared = 0;
    for (const XmlNode &row : rowsOf(path)) {
        const QString code = row.childText("code");
        const QString value = row.childText("value");
        const QString min = row.childText("min");
        const QString max = row.childText("max");
        const QByteArray told = (code + ": " + min + ", " + value + ", " + max).toUtf8();
        QVERIFY2(min.isEmpty() == max.isEmpty(), told);
        const bool hexMark = row.child("function").children.at(1).code() == QLatin1String("1");
        if (min.isEmpty())
            continue;
        bool minOk = false;
        bool maxOk = false;
        bool valueOk = false;
        const double low = numberOf(min, &minOk);
        const double high = numberOf(max, &maxOk);
        QVERIFY2(minOk && maxOk && low <= high, told);
        QVERIFY2(isHexadecimal(min) == hexMark && isHexadecimal(max) == hexMark, told);
        QVERIFY2(digitsOf(min) == digitsOf(max), told);
        if (value.isEmpty())
            continue;
        const double number = numberOf(value, &valueOk);
        QVERIFY2(valueOk && number >= low && number <= high, told);
        QVERIFY2(isHexadecimal(value) == hexMark, told);
        // The default of Pn-638 has one digit less than its limits, as the drive's own table has it.
        if (code != QLatin1String("Pn-638"))
            QVERIFY2(digitsOf(value) == digitsOf(min), told);
        ++compared;
    }
    QVERIFY(compared > 450);
}

void ParameterFilesTest::rowWithAHexadecimalMaximumHasItsMark_data()
{
    addLanguages();
}

// A value is taken as hexadecimal by its mark or by its maximum: in these files they agree.
void ParameterFilesTest::rowWithAHexadecimalMaximumHasItsMark()
{
    QFETCH(QString, path);
    int found = 0;
    for (const XmlNode &row : rowsOf(path)) {
        if (!row.childText("max").contains(QLatin1String("0x"), Qt::CaseInsensitive))
            continue;
        ++found;
        const XmlNode mark = row.child("function").children.value(1);
        QVERIFY2(mark.code() == QLatin1String("1"), qPrintable(row.childText("code")));
    }
    QVERIFY(found > 70);
}

void ParameterFilesTest::tellingRowIsExact_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QStringList>("limitsValueUnit");
    QTest::addColumn<QString>("marks");
    QTest::addColumn<int>("detailLines");
    const auto add = [](const char *code, const char *name, const QStringList &texts, const char *marks,
                        int lines = -1) {
        QTest::newRow(code) << QString::fromLatin1(name) << texts << QString::fromLatin1(marks) << lines;
    };
    add("Pn-000", "CPU VERSION", {"", "", "", ""}, "0");
    add("Pn-001", "Motor Coding", {"0x1000", "0x5000", "", ""}, "15");
    add("Pn-003", "Panel status display", {"0x000", "0x0199", "", ""}, "1", 6);
    add("Pn-004", "Parameter management", {"0x0000", "0x1111", "0x0000", ""}, "13", 12);
    add("Pn-007", "JOG speed value", {"0.0", "6000.0", "200.0", "0.1rpm"}, "");
    add("Pn-253", "Speed simulation command zero offset", {"-300", "300", "0", "6.03mv"}, "");
    add("Pn-314-Pn-315", "Internal position command setting", {"-2147483647", "2147483647", "131072", "pp"},
        "");
    add("Pn-401-Pn-402", "Internal speed command setting", {"-6000.0", "6000.0", "100.0", "0.1rpm"}, "");
    add("Pn-638", "Velocity feedforward smoothing filter constant", {"0.10", "100.00", "0.5", "0.01ms"}, "3");
    add("Pn-809", "Overspeed fault threshold", {"1.0", "3.0", "1.2", "0.1"}, "3");
    add("Pn-A04~Pn-A05", "Section 1 displacement", {"-2147483647", "2147483647", "10000", "pp"}, "3");
    add("Pn-B06~Pn-B07", "Section 1 speed directive", {"-6000.0", "6000.0", "0.0", "0.1rpm"}, "");
}

void ParameterFilesTest::tellingRowIsExact()
{
    QFETCH(QString, name);
    QFETCH(QStringList, limitsValueUnit);
    QFETCH(QString, marks);
    QFETCH(int, detailLines);
    int found = 0;
    for (const XmlNode &row : rowsOf(catalogue("en_US"))) {
        if (row.childText("code") != QLatin1String(QTest::currentDataTag()))
            continue;
        ++found;
        QCOMPARE(row.name(), name);
        const QStringList texts{row.childText("min"), row.childText("max"), row.childText("value"),
                                row.childText("unit")};
        QCOMPARE(texts, limitsValueUnit);
        QString set;
        for (const XmlNode &function : row.child("function").children)
            set += function.code();
        QCOMPARE(set, marks);
        if (detailLines >= 0)
            QCOMPARE(row.child("detailed_description").children.size(), detailLines);
    }
    QCOMPARE(found, 1);
}

void ParameterFilesTest::reservedRowsAreNamedAlike()
{
    const auto namesByCode = [](const char *language) {
        QMap<QString, QString> names;
        for (const XmlNode &row : rowsOf(catalogue(language)))
            names.insert(row.childText("code"), row.name());
        return names;
    };
    const QMap<QString, QString> english = namesByCode("en_US");
    const QMap<QString, QString> chinese = namesByCode("zh_CN");
    // Virtual outputs that only the Chinese file plans; the English one still calls them reserved.
    const QStringList plannedInChinese = codes("241..246");
    QStringList others;
    int checked = 0;
    for (auto row = english.cbegin(); row != english.cend(); ++row) {
        if (row.value() != QLatin1String("Reserved") || !chinese.contains(row.key()) ||
            plannedInChinese.contains(row.key()))
            continue;
        ++checked;
        if (chinese.value(row.key()) != QStringLiteral("保留"))
            others.append(row.key() + QLatin1Char(' ') + chinese.value(row.key()));
    }
    QVERIFY2(others.isEmpty(), qPrintable(others.join(QLatin1String(", "))));
    QVERIFY(checked > 40);
}

QTEST_GUILESS_MAIN(ParameterFilesTest)
#include "tst_parameterfiles_resources.moc"
