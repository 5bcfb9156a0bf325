// SPDX-License-Identifier: GPL-3.0-or-later
// Every form in both languages: what it offers, and what each choice does to the value.
#include "bitfieldexpectations.h"
#include "helperrows.h"

#include "parameter/bitfieldforms.h"
#include "settings/applanguage.h"
#include "support/modalanswers.h"
#include "support/testdirectory.h"

#include <QTest>

using namespace helperrows;

class BitFieldFormsTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void formOffersItsLines_data();
    void formOffersItsLines();
    void eachChoiceChangesTheText_data();
    void eachChoiceChangesTheText();
    void everyExpectedFormIsInItsCatalogue_data();
    void everyExpectedFormIsInItsCatalogue();
    void runEndsWithItsLastCode_data();
    void runEndsWithItsLastCode();
    void emptyListGivesNoForm();
    void fieldPastTheEndOfTheListIsLeftOut();
    void linesAreCutIntoBlocks();

private:
    const TestDirectory directory;
};

namespace {

constexpr int smallestScreen = 700; // pixels of height that a screen of 768 leaves to a dialog

QVector<BitFieldExpectation> allExpectations()
{
    return digitExpectations() + choiceExpectations();
}

bool isIn(const BitFieldExpectation &expectation, const QString &language)
{
    return expectation.files == Files::Both || (expectation.files == Files::Chinese) == (language == chinese);
}

QVector<BitFieldExpectation> expectationsOf(const QString &code, const QString &language)
{
    QVector<BitFieldExpectation> found;
    const auto all = allExpectations();
    for (const BitFieldExpectation &one : all) {
        if (isIn(one, language) && code >= QLatin1String(one.firstCode) &&
            code <= QLatin1String(one.lastCode))
            found.append(one);
    }
    return found;
}

QStringList digitsBelow(int count)
{
    return QStringList({"0", "1", "2", "3", "4", "5", "6", "7", "8", "9"}).mid(0, count);
}

bool isWritableForm(const QString &code)
{
    return (code >= QLatin1String("Pn-200") && code <= QLatin1String("Pn-205")) ||
           (code >= QLatin1String("Pn-211") && code <= QLatin1String("Pn-226")) ||
           (code >= QLatin1String("Pn-231") && code <= QLatin1String("Pn-246")) ||
           code == QLatin1String("Pn-050") || code == QLatin1String("Pn-953");
}

} // namespace

void BitFieldFormsTest::initTestCase()
{
    directory.setLanguage(english);
}

void BitFieldFormsTest::formOffersItsLines_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<QStringList>("values");
    QTest::addColumn<QStringList>("details");
    for (const QString &language : {chinese, english}) {
        const QList<Row> &rows = rowsOf(language);
        for (int i = 0; i < rows.size(); ++i)
            QTest::addRow("%s %s row %d", qPrintable(language), qPrintable(rows.at(i).values.first()), i)
                << language << rows.at(i).values << rows.at(i).details;
    }
}

// Every row of both catalogues: those with a form have exactly its boxes, all others have none.
void BitFieldFormsTest::formOffersItsLines()
{
    QFETCH(QString, language);
    QFETCH(QStringList, values);
    QFETCH(QStringList, details);
    if (configuredLanguage() != language)
        directory.setLanguage(language);
    const ModalAnswers answers;
    const Helper helper = std::make_unique<ParameterSettingHelper>(values, details);

    const auto expected = expectationsOf(values.first(), language);
    const auto found = helper->findChildren<QComboBox *>();
    QCOMPARE(found.size(), expected.size());
    for (int i = 0; i < found.size(); ++i) {
        const BitFieldExpectation &one = expected.at(i);
        QCOMPARE(found.at(i)->objectName(), QLatin1String(one.name));
        QCOMPARE(found.at(i)->count(), one.optionCount);
        if (one.firstOption >= 0)
            QCOMPARE(itemsOf(found.at(i)), details.mid(one.firstOption, one.optionCount));
        else
            QCOMPARE(itemsOf(found.at(i)), digitsBelow(one.optionCount));
        if (one.title >= 0)
            QCOMPARE(titleAround(found.at(i)), details.at(one.title));
    }
    QCOMPARE(valueEdit(helper)->isReadOnly(), !expected.isEmpty() && !isWritableForm(values.first()));
    QCOMPARE(valueEdit(helper)->text(), values.at(6));
    helper->show();
    QVERIFY(helper->height() <= smallestScreen);
}

void BitFieldFormsTest::eachChoiceChangesTheText_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<QString>("code");
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("after");
    for (const QString &language : {chinese, english}) {
        const QList<Row> &rows = rowsOf(language);
        for (const Row &row : rows) {
            const auto expected = expectationsOf(row.values.first(), language);
            for (const BitFieldExpectation &one : expected)
                QTest::addRow("%s %s %s", qPrintable(language), qPrintable(row.values.first()), one.name)
                    << language << row.values.first() << QString(one.name) << one.index << QString(one.after);
        }
    }
}

void BitFieldFormsTest::eachChoiceChangesTheText()
{
    QFETCH(QString, language);
    QFETCH(QString, code);
    QFETCH(QString, name);
    QFETCH(int, index);
    QFETCH(QString, after);
    const QString before =
        after.startsWith(QLatin1String("0x")) ? QStringLiteral("0x9999") : QStringLiteral("95");
    const Helper helper = open(language, code, before);
    QCOMPARE(valueEdit(helper)->text(), before);
    QComboBox *const comboBox = box(helper, name);
    QVERIFY(comboBox);
    if (comboBox->count() == 1) {
        // The lone option of Pn-003 could not be changed otherwise.
        comboBox->addItem(QStringLiteral("another"));
        index = 1;
    }
    QVERIFY(comboBox->currentIndex() != index);
    comboBox->setCurrentIndex(index);
    QCOMPARE(comboBox->currentIndex(), index);
    QCOMPARE(valueEdit(helper)->text(), after);
}

void BitFieldFormsTest::everyExpectedFormIsInItsCatalogue_data()
{
    QTest::addColumn<QString>("language");
    QTest::newRow("Chinese") << chinese;
    QTest::newRow("English") << english;
}

void BitFieldFormsTest::everyExpectedFormIsInItsCatalogue()
{
    QFETCH(QString, language);
    QStringList codes;
    const QList<Row> &rows = rowsOf(language);
    for (const Row &row : rows)
        codes.append(row.values.first());
    const auto all = allExpectations();
    for (const BitFieldExpectation &one : all) {
        if (!isIn(one, language))
            continue;
        QVERIFY2(codes.contains(QLatin1String(one.firstCode)), one.firstCode);
        QVERIFY2(codes.contains(QLatin1String(one.lastCode)), one.lastCode);
    }
}

void BitFieldFormsTest::runEndsWithItsLastCode_data()
{
    QTest::addColumn<QString>("code");
    QTest::addColumn<QString>("sameAs"); // empty: no form
    const auto without = [](const char *code) { QTest::newRow(code) << QString(code) << QString(); };
    const auto with = [](const char *code, const char *sameAs) {
        QTest::newRow(code) << QString(code) << QString(sameAs);
    };
    without("Pn-206");
    without("Pn-210");
    with("Pn-226", "Pn-211");
    without("Pn-227");
    without("Pn-230");
    with("Pn-246", "Pn-231");
    without("Pn-247");
    without("Pn-259");
    with("Pn-270", "Pn-260");
    with("Pn-286", "Pn-271");
    with("Pn-290", "Pn-287");
    with("Pn-294", "Pn-291");
    with("Pn-296", "Pn-295");
    without("Pn-297");
    without("Pn-298");
    // The six characters of the mistyped code Pn-0329, and others that only look alike.
    without("Pn-032");
    without("Pn-0329");
    without("Pn-2110");
    without("Pn-21");
    without("Pn-311");
    without("Pn-A11");
    without("pn-211");
    without("Pn-004~Pn-005");
    without("Pn-a00");
    // The last two characters are decimal digits.
    without("Pn-21A");
    without("Pn-2A1");
    without("Pn-2 1");
    without("Pn-21 ");
    without("Pn-2+1");
    without("");
}

void BitFieldFormsTest::runEndsWithItsLastCode()
{
    QFETCH(QString, code);
    QFETCH(QString, sameAs);
    QCOMPARE(bitFieldForm(code), sameAs.isEmpty() ? nullptr : bitFieldForm(sameAs));
    QCOMPARE(bitFieldForm(code) == nullptr, sameAs.isEmpty());
}

void BitFieldFormsTest::emptyListGivesNoForm()
{
    for (const char *code : {"Pn-003", "Pn-004", "Pn-100", "Pn-211", "Pn-336", "Pn-342", "Pn-953"}) {
        const auto helper = openWith(QLatin1String(code), QStringLiteral("0x0000"), {});
        QVERIFY(helper->findChildren<QComboBox *>().isEmpty());
        QVERIFY(helper->findChildren<QGroupBox *>().isEmpty());
        QVERIFY(!valueEdit(helper)->isReadOnly());
    }
    // Lines without any option would leave a value that nothing can change.
    const auto helper = openWith(QStringLiteral("Pn-004"), QStringLiteral("0x0000"), {"a title", "another"});
    QVERIFY(!valueEdit(helper)->isReadOnly());
}

void BitFieldFormsTest::fieldPastTheEndOfTheListIsLeftOut()
{
    const auto helper = openWith(QStringLiteral("Pn-004"), QStringLiteral("0x1111"),
                                 {"unit", "0: a", "1: b", "ten", "0: c", "1: d", "title without options"});
    const auto boxes = helper->findChildren<QComboBox *>();
    QCOMPARE(boxes.size(), 2);
    boxes.last()->setCurrentIndex(0);
    QCOMPARE(valueEdit(helper)->text(), QStringLiteral("0x1101"));

    const auto pulses = openWith(QStringLiteral("Pn-300"), QStringLiteral("0x0000"),
                                 {"unit", "0: a", "ten", "0: b", "hundreds", "0: c", "1: d", "low", "0: e"});
    box(pulses, QStringLiteral("Pn-300_2"))->setCurrentIndex(1);
    QCOMPARE(itemsOf(box(pulses, QStringLiteral("Pn-300_3"))), QStringList("0: e"));
}

void BitFieldFormsTest::linesAreCutIntoBlocks()
{
    const QVector<DetailBlock> blocks =
        detailBlocks({"own title", "note: with a colon", "title", "0: a", "1: b", "0: alone", "Ten digits",
                      "00: c", "0A: d", "A: e", "Beta: no option", "100: no option either"});
    QStringList titles;
    QList<QStringList> options;
    for (const DetailBlock &block : blocks) {
        titles.append(block.title);
        options.append(block.options);
    }
    QCOMPARE(titles, QStringList({"own title", "note: with a colon", "title", "", "Ten digits",
                                  "Beta: no option", "100: no option either"}));
    QCOMPARE(options, QList<QStringList>(
                          {{}, {}, {"0: a", "1: b"}, {"0: alone"}, {"00: c", "0A: d", "A: e"}, {}, {}}));
    QVERIFY(detailBlocks({}).isEmpty());
}

QTEST_MAIN(BitFieldFormsTest)
#include "tst_bitfieldforms.moc"
