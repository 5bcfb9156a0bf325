// SPDX-License-Identifier: GPL-3.0-or-later
#include "xmltree.h"

#include <QRegularExpression>
#include <QTest>

class ParameterFilesTest : public QObject
{
    Q_OBJECT

private slots:
    void groupsHoldTheirCodesInOrder_data();
    void groupsHoldTheirCodesInOrder();
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
    void commentHidesSevenRows_data();
    void commentHidesSevenRows();
    void listIsExact_data();
    void listIsExact();
    void addressListHoldsThePairsOfTheChineseFile();
};

namespace {

QString catalogue(const char *language)
{
    return QStringLiteral(":/parameter/parameter/parameters_%1.xml").arg(QLatin1String(language));
}

QList<XmlNode> rowsOf(const QString &path)
{
    QList<XmlNode> rows;
    const XmlFile file = readXmlFile(path);
    for (const XmlNode &group : file.root.children)
        rows += group.children;
    return rows;
}

// "300..302 304~305" is Pn-300, Pn-301, Pn-302 and Pn-304~Pn-305; "304-305" is Pn-304-Pn-305.
QStringList codes(const QString &text)
{
    QStringList list;
    const QStringList words = text.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    for (const QString &word : words) {
        const int dots = word.indexOf(QLatin1String(".."));
        if (dots < 0) {
            QString code = QLatin1String("Pn-") + word;
            list.append(code.replace(QRegularExpression(QStringLiteral("([0-9])([~-])")),
                                     QStringLiteral("\\1\\2Pn-")));
            continue;
        }
        const QChar group = word.at(0);
        for (int number = word.midRef(1, 2).toInt(); number <= word.rightRef(2).toInt(); ++number)
            list.append(QStringLiteral("Pn-%1%2").arg(group).arg(number, 2, 10, QLatin1Char('0')));
    }
    return list;
}

QString two(const char *form, int first, int second)
{
    return QString::fromLatin1(form).arg(first, 2, 10, QLatin1Char('0')).arg(second, 2, 10, QLatin1Char('0'));
}

QStringList displacementCodes()
{
    QStringList list = codes(QStringLiteral("A00..A03"));
    for (int first = 4; first <= 94; first += 6) {
        list += two("Pn-A%1~Pn-A%2", first, first + 1);
        list += two("Pn-A%1 Pn-A%2", first + 2, first + 3).split(QLatin1Char(' '));
        list += two("Pn-A%1~Pn-A%2", first + 4, first + 5);
    }
    return list;
}

QStringList speedCodes()
{
    QStringList list = codes(QStringLiteral("B00..B05"));
    for (int first = 6; first <= 81; first += 5) {
        list += two("Pn-B%1~Pn-B%2", first, first + 1);
        list += two("Pn-B%1 Pn-B%2", first + 2, first + 3).split(QLatin1Char(' '));
        list += QStringLiteral("Pn-B%1").arg(first + 4, 2, 10, QLatin1Char('0'));
    }
    return list + codes(QStringLiteral("B88..B95"));
}

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

void addLanguages()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("English") << catalogue("en_US");
    QTest::newRow("Chinese") << catalogue("zh_CN");
}

} // namespace

void ParameterFilesTest::groupsHoldTheirCodesInOrder_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("englishCount");
    QTest::addColumn<int>("chineseCount");
    QTest::addColumn<QStringList>("english");
    QTest::addColumn<QStringList>("chinese");
    auto add = [index = 0](const char *name, int englishCount, int chineseCount, const QStringList &english,
                           const QStringList &chinese) mutable {
        QTest::newRow(name) << index++ << QString::fromLatin1(name) << englishCount << chineseCount << english
                            << chinese;
    };
    auto both = [&add](const char *name, int count, const QStringList &list) {
        add(name, count, count, list, list);
    };
    add("Basic parameters", 50, 21, codes("000..049"), codes("000..020"));
    both("Basic control parameter", 20, codes("100..119"));
    add("DI/DO parameters", 60, 99, codes("200..259"), codes("200..297 298~299"));
    // Deliberate: the row Pn-0329 has one digit too many in the English file.
    add("Position Control", 34, 36,
        codes("300..303 304-305 306-307 308-309 310-311 312-313 314-315 316..324 325-326 327-328 0329 "
              "330..335 336~337 338..342"),
        codes("300..303 304~305 306~307 308~309 310~311 312~313 314~315 316..321 322~323 324..326 327~328 "
              "329~330 331..339 340~341 342..345"));
    add("Speed control parameters", 21, 21, codes("400 401-402 403..421"), codes("400 401~402 403..421"));
    both("Torque control parameters", 19, codes("500..518"));
    // Deliberate: Pn-606 stands twice in the English file.
    add("Gain class parameters", 88, 88, codes("600..607 606 608..613 620..651 652~653 654..693"),
        codes("600..613 620..651 652~653 654..694"));
    both("Full closed loop function", 18, codes("700 701 702~703 704~705 706..719"));
    add("Failure and protection", 19, 62, codes("800..806 807~808 809..817 818~819 820~821"),
        codes("800..806 807~808 809..817 818~819 820~821 822..864"));
    add("Communication parameter", 45, 41, codes("900..940 950..953"), codes("900..940"));
    // Deliberate: one pair of the English file lacks the letter of its second code.
    QStringList displacement = displacementCodes();
    displacement.replaceInStrings(QStringLiteral("Pn-A56~Pn-A57"), QStringLiteral("Pn-A56~Pn-57"));
    add("Multi-segment displacement group parameter", 68, 68, displacement, displacementCodes());
    both("Multi-segment speed group parameter", 78, speedCodes());
}

void ParameterFilesTest::groupsHoldTheirCodesInOrder()
{
    QFETCH(int, index);
    QFETCH(QString, name);
    QFETCH(int, englishCount);
    QFETCH(int, chineseCount);
    QFETCH(QStringList, english);
    QFETCH(QStringList, chinese);
    QCOMPARE(english.size(), englishCount);
    QCOMPARE(chinese.size(), chineseCount);
    const auto check = [&](const char *language, const QStringList &expected) {
        const XmlFile file = readXmlFile(catalogue(language));
        QVERIFY(!file.hasError);
        QCOMPARE(file.root.tag, QStringLiteral("parameters"));
        QCOMPARE(file.root.children.size(), 12);
        const XmlNode &group = file.root.children.at(index);
        QCOMPARE(group.tag, QStringLiteral("group"));
        QCOMPARE(group.name(), name);
        QStringList found;
        for (const XmlNode &row : group.children)
            found.append(row.childText("code"));
        QCOMPARE(found, expected);
    };
    check("en_US", english);
    check("zh_CN", chinese);
}

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

void ParameterFilesTest::commentHidesSevenRows_data()
{
    addLanguages();
}

void ParameterFilesTest::commentHidesSevenRows()
{
    QFETCH(QString, path);
    const QByteArray content = contentOf(path);
    QXmlStreamReader xml(content);
    QString group;
    int comments = 0;
    while (!xml.atEnd()) {
        xml.readNext();
        if (xml.isStartElement() && xml.name() == QLatin1String("group"))
            group = xml.attributes().value("name").toString();
        if (!xml.isComment())
            continue;
        ++comments;
        QCOMPARE(group, QStringLiteral("Basic control parameter"));
        QCOMPARE(xml.text().toString().count(QLatin1String("<parameter name=")), 7);
    }
    QVERIFY(!xml.hasError());
    QCOMPARE(comments, 1);
}

void ParameterFilesTest::listIsExact_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("address.txt")
        << 66
        << codes("298 304 306 308 310 312 314 322 327 329 340 401 652 702 704 807 818 820 "
                 "A04 A08 A10 A14 A16 A20 A22 A26 A28 A32 A34 A38 A40 A44 A46 A50 A52 A56 A58 A62 A64 A68 "
                 "A70 A74 A76 A80 A82 A86 A88 A92 A94 A98 "
                 "B06 B11 B16 B21 B26 B31 B36 B41 B46 B51 B56 B61 B66 B71 B76 B81");
    const char *const common = "F07 F09 F11 F13 F15 F18 F20 F29 F40 F42 F44 ";
    QTest::newRow("monitor_double_address.txt")
        << 17 << codes(QLatin1String(common) + "F53 F63 F65 F67 F73 F81");
    QStringList scope = codes(QLatin1String(common) + "F81");
    for (int channel = 40; channel <= 48; ++channel)
        scope.append(QStringLiteral("Sn-S%1").arg(channel));
    QTest::newRow("scope_double_address.txt") << 21 << scope;
}

void ParameterFilesTest::listIsExact()
{
    QFETCH(int, count);
    QFETCH(QStringList, expected);
    QCOMPARE(expected.size(), count);
    QByteArray content = contentOf(QLatin1String(":/config/config/") + QTest::currentDataTag());
    // The last line may stand with its line end or without.
    if (!content.endsWith("\r\n"))
        content += "\r\n";
    QCOMPARE(content, (expected.join(QLatin1String("\r\n")) + "\r\n").toLatin1());
}

void ParameterFilesTest::addressListHoldsThePairsOfTheChineseFile()
{
    QStringList pairs;
    for (const XmlNode &row : rowsOf(catalogue("zh_CN"))) {
        const QString code = row.childText("code");
        const bool pair = code.contains(QLatin1Char('~'));
        if (pair)
            pairs.append(code.left(6));
        const bool marked = row.child("function").children.at(2).code() == QLatin1String("2");
        QVERIFY2(marked || !pair, qPrintable(code));
    }
    QCOMPARE(QString::fromLatin1(contentOf(":/config/config/address.txt"))
                 .split(QStringLiteral("\r\n"), Qt::SkipEmptyParts),
             pairs);
}

QTEST_GUILESS_MAIN(ParameterFilesTest)
#include "tst_parameterfiles_resources.moc"
