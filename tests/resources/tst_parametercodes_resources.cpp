// SPDX-License-Identifier: GPL-3.0-or-later
// Which codes stand in the parameter catalogues and in the lists of pairs.
#include "parameterfiles.h"

#include <QTest>

using namespace parameterfiles;

namespace {

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

} // namespace

class ParameterCodesTest : public QObject
{
    Q_OBJECT

private slots:
    void groupsHoldTheirCodesInOrder_data();
    void groupsHoldTheirCodesInOrder();
    void commentHidesSevenRows_data();
    void commentHidesSevenRows();
    void listIsExact_data();
    void listIsExact();
    void addressListHoldsThePairsOfTheChineseFile();
};

void ParameterCodesTest::groupsHoldTheirCodesInOrder_data()
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

void ParameterCodesTest::groupsHoldTheirCodesInOrder()
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

void ParameterCodesTest::commentHidesSevenRows_data()
{
    addLanguages();
}

void ParameterCodesTest::commentHidesSevenRows()
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

void ParameterCodesTest::listIsExact_data()
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

void ParameterCodesTest::listIsExact()
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

void ParameterCodesTest::addressListHoldsThePairsOfTheChineseFile()
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

QTEST_GUILESS_MAIN(ParameterCodesTest)
#include "tst_parametercodes_resources.moc"
