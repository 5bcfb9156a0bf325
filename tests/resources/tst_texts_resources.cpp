// SPDX-License-Identifier: GPL-3.0-or-later
// What the texts of the resource files say of one another: the parameters that they name, and words of one
// kind.
#include "xmltree.h"

#include <QDir>
#include <QMap>
#include <QRegularExpression>
#include <QTest>

class TextsTest : public QObject
{
    Q_OBJECT

private slots:
    void parameterNamedInAChineseTextExists();
    void timedOutHomingNamesItsTime();
    void manyPageWritesAnHourRaiseNoFault();
    void wordIsSpeltOneWay_data();
    void wordIsSpeltOneWay();
    void faultIsNoWarning_data();
    void faultIsNoWarning();
    void modeSwitchNamesTheMethodsItWorksIn_data();
    void modeSwitchNamesTheMethodsItWorksIn();
    void analogTorqueLimitNamesWhatItNeeds_data();
    void analogTorqueLimitNamesWhatItNeeds();
};

namespace {

QString fileOf(const char *name, const char *language)
{
    return QStringLiteral(":/%1_%2.xml").arg(QLatin1String(name), QLatin1String(language));
}

const char parameters[] = "parameter/parameter/parameters";
const char functions[] = "parameter/parameter/DIDO";
const char alarms[] = "AlarmErrorInfor/AlarmError/AlarmError";

QString textOf(const char *name, const char *language)
{
    return QString::fromUtf8(contentOf(fileOf(name, language)));
}

// The rows of a file of groups, by the text of the child that names a row.
QMap<QString, XmlNode> rowsBy(const char *child, const QString &path)
{
    QMap<QString, XmlNode> rows;
    const XmlFile file = readXmlFile(path);
    for (const XmlNode &group : file.root.children) {
        for (const XmlNode &row : group.children)
            rows.insert(row.childText(child), row);
    }
    return rows;
}

QMap<QString, XmlNode> chineseParameters()
{
    return rowsBy("code", fileOf(parameters, "zh_CN"));
}

QStringList codesIn(const QString &text)
{
    QStringList codes;
    QRegularExpressionMatchIterator matches =
        QRegularExpression(QStringLiteral("Pn-[0-9A-B][0-9]{2}")).globalMatch(text);
    while (matches.hasNext())
        codes.append(matches.next().captured());
    return codes;
}

} // namespace

void TextsTest::parameterNamedInAChineseTextExists()
{
    QStringList known;
    const QStringList rows = chineseParameters().keys();
    for (const QString &code : rows)
        known += codesIn(code);
    QVERIFY(known.size() > 571);
    QStringList missing;
    int named = 0;
    for (const char *name : {parameters, functions, alarms}) {
        // Rows hidden in a comment tell nobody anything.
        const QString shown = textOf(name, "zh_CN")
                                  .remove(QRegularExpression(QStringLiteral("<!--.*?-->"),
                                                             QRegularExpression::DotMatchesEverythingOption));
        const QStringList codes = codesIn(shown);
        for (const QString &code : codes) {
            ++named;
            if (!known.contains(code))
                missing.append(code);
        }
    }
    QVERIFY2(missing.isEmpty(), qPrintable(missing.join(QLatin1Char(' '))));
    QVERIFY(named > 650);
    // A warning whose remedy is to set something says what.
    const XmlNode preOverload = rowsBy("alarm_code", fileOf(alarms, "zh_CN")).value(QStringLiteral("AL-002"));
    QCOMPARE(codesIn(preOverload.childText("alarm_corrective")), QStringList("Pn-831"));
}

void TextsTest::timedOutHomingNamesItsTime()
{
    const XmlNode fault = rowsBy("error_code", fileOf(alarms, "zh_CN")).value(QStringLiteral("Er-038"));
    const XmlNode time = chineseParameters().value(QStringLiteral("Pn-343"));
    QVERIFY(time.childText("parameter_description").contains(QLatin1String("Er-038")));
    QCOMPARE(codesIn(fault.childText("error_cauese")), QStringList("Pn-343"));
    QCOMPARE(codesIn(fault.childText("error_corrective")), QStringList("Pn-343"));
}

// Each row that is neither read-only nor reserved is written once.
void TextsTest::manyPageWritesAnHourRaiseNoFault()
{
    const QMap<QString, XmlNode> rows = chineseParameters();
    int written = 0;
    for (const XmlNode &row : rows) {
        if (row.child("function").children.at(0).code() != QLatin1String("0") &&
            row.name() != QStringLiteral("保留"))
            ++written;
    }
    QVERIFY(written > 400);
    const int limit = rows.value(QStringLiteral("Pn-834")).childText("value").toInt();
    QVERIFY2(limit >= 20 * written, qPrintable(QString::number(limit)));
    QFile registers(QStringLiteral(VELMORA_SOURCE_DIR "/simulator/registers.csv"));
    QVERIFY(registers.open(QIODevice::ReadOnly));
    QVERIFY(registers.readAll().contains("\n834,1,rw," + QByteArray::number(limit) + ' '));
}

void TextsTest::wordIsSpeltOneWay_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<QString>("other");
    QTest::newRow("range mark") << "zh_CN" << QStringLiteral("～");
    QTest::newRow("microseconds") << "zh_CN"
                                  << "[0-9>]us\\b";
    QTest::newRow("microseconds with the micro sign") << "zh_CN" << QStringLiteral("\u00b5");
    QTest::newRow("energized") << "en_US"
                               << "energis";
    QTest::newRow("alarm and warning") << "zh_CN" << QStringLiteral("报警");
}

void TextsTest::wordIsSpeltOneWay()
{
    QFETCH(QString, language);
    QFETCH(QString, other);
    for (const char *name : {parameters, functions, alarms}) {
        const QString text = textOf(name, qPrintable(language));
        QVERIFY(text.size() > 1000);
        const QRegularExpressionMatch match = QRegularExpression(other).match(text);
        QVERIFY2(!match.hasMatch(), qPrintable(text.mid(match.capturedStart() - 60, 120)));
    }
}

void TextsTest::faultIsNoWarning_data()
{
    QTest::addColumn<QString>("code");
    QTest::newRow("Pn-106") << "Pn-106";
    QTest::newRow("Pn-343") << "Pn-343";
    QTest::newRow("Pn-802") << "Pn-802";
    QTest::newRow("ERCLR") << "ERCLR";
}

void TextsTest::faultIsNoWarning()
{
    QFETCH(QString, code);
    QString told;
    if (code.startsWith(QLatin1String("Pn-"))) {
        const XmlNode row = chineseParameters().value(code);
        told = row.name() + row.childText("parameter_description");
    } else {
        const XmlNode row = rowsBy("symbol", fileOf(functions, "zh_CN")).value(code);
        told = row.childText("function");
        const QList<XmlNode> values = row.child("description").children;
        for (const XmlNode &value : values)
            told += value.text;
    }
    QVERIFY2(told.contains(QStringLiteral("故障")), qPrintable(told));
    QVERIFY2(!told.contains(QStringLiteral("警")), qPrintable(told));
}

void TextsTest::modeSwitchNamesTheMethodsItWorksIn_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<QString>("symbol");
    QTest::addColumn<QStringList>("named");
    for (const char *language : {"zh_CN", "en_US"}) {
        QTest::addRow("CMOD1 %s", language)
            << language << "CMOD1" << QStringList({"Pn-100", "3", "6", "CMOD2"});
        QTest::addRow("CMOD2 %s", language)
            << language << "CMOD2" << QStringList({"Pn-100", "4", "6", "CMOD1"});
    }
}

void TextsTest::modeSwitchNamesTheMethodsItWorksIn()
{
    QFETCH(QString, language);
    QFETCH(QString, symbol);
    QFETCH(QStringList, named);
    const XmlNode row = rowsBy("symbol", fileOf(functions, qPrintable(language))).value(symbol);
    const QList<XmlNode> values = row.child("description").children;
    QCOMPARE(values.last().code(), QStringLiteral("Tip"));
    for (const QString &word : named)
        QVERIFY2(values.last().text.contains(word), qPrintable(word));
}

void TextsTest::analogTorqueLimitNamesWhatItNeeds_data()
{
    QTest::addColumn<QString>("language");
    QTest::newRow("English") << "en_US";
    QTest::newRow("Chinese") << "zh_CN";
}

void TextsTest::analogTorqueLimitNamesWhatItNeeds()
{
    QFETCH(QString, language);
    const XmlNode row =
        rowsBy("code", fileOf(parameters, qPrintable(language))).value(QStringLiteral("Pn-504"));
    const QList<XmlNode> lines = row.child("detailed_description").children;
    QVERIFY(lines.size() > 3);
    const QString option = lines.at(3).text;
    QVERIFY2(option.startsWith(QLatin1String("2: ")), qPrintable(option));
    QVERIFY2(option.contains(QLatin1String("T_REF")), qPrintable(option));
    // Its use and its ratio, as the speed limit's row names those of V_REF.
    QCOMPARE(codesIn(option), QStringList({"Pn-250", "Pn-256"}));
}

QTEST_GUILESS_MAIN(TextsTest)
#include "tst_texts_resources.moc"
