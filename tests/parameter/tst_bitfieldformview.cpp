// SPDX-License-Identifier: GPL-3.0-or-later
// How the forms look: captions, the order from top to bottom, the font, and what a closed row leaves usable.
#include "bitfieldexpectations.h"
#include "helperrows.h"

#include "support/testdirectory.h"
#include "widgets/newcombox.h"

#include <QApplication>
#include <QFrame>
#include <QTest>

using namespace helperrows;

class BitFieldFormViewTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void everyFieldHasTheCaptionOfItsDigits_data();
    void everyFieldHasTheCaptionOfItsDigits();
    void captionStandsLeftOfItsChoice();
    void fieldsStandInTheirOrder_data();
    void fieldsStandInTheirOrder();
    void redNoteStandsBetweenTheFreeDigitsAndTheHundreds_data();
    void redNoteStandsBetweenTheFreeDigitsAndTheHundreds();
    void everyWidgetOfAFormHasTheDialogsFont_data();
    void everyWidgetOfAFormHasTheDialogsFont();
    void choicesOfAClosedRowAreDisabled_data();
    void choicesOfAClosedRowAreDisabled();

private:
    const TestDirectory directory;
};

namespace {

const QString anyValue = QStringLiteral("0x0000");

QVector<BitFieldExpectation> expectationsOf(const QString &language)
{
    QVector<BitFieldExpectation> found;
    const auto all = digitExpectations() + choiceExpectations();
    for (const BitFieldExpectation &one : all) {
        if (one.files == Files::Both || (one.files == Files::Chinese) == (language == chinese))
            found.append(one);
    }
    return found;
}

// A name ends with its digits behind an underscore, or with the word for its digit. Those that are a code
// alone are choices of the whole value, but for the six of one unit digit each.
QString captionByName(const QString &name)
{
    struct Ending
    {
        const char *end;
        const char *caption;
    };
    const Ending endings[] = {
        {"_0", "Uint:"},       {"uint", "Uint:"},
        {"_1", "Ten:"},        {"ten", "Ten:"},
        {"_2", "Hundreds:"},   {"hundreds", "Hundreds:"},
        {"_3", "Thousands:"},  {"Thousands", "Thousands:"},
        {"_01", "Ten, Uint:"}, {"_23", "Thousands, Hundreds:"},
    };
    for (const Ending &ending : endings) {
        if (name.endsWith(QLatin1String(ending.end)))
            return QLatin1String(ending.caption);
    }
    const QStringList unitDigits{"Pn-200", "Pn-201", "Pn-202", "Pn-203", "Pn-204", "Pn-205"};
    return unitDigits.contains(name) ? QStringLiteral("Uint:") : QStringLiteral("Option:");
}

void addLanguages()
{
    QTest::addColumn<QString>("language");
    QTest::newRow("Chinese") << chinese;
    QTest::newRow("English") << english;
}

NewCombox *fieldOf(const Helper &helper, const QString &name)
{
    const QComboBox *const comboBox = box(helper, name);
    return comboBox ? qobject_cast<NewCombox *>(comboBox->parentWidget()) : nullptr;
}

// Where a widget stands in the helper's window.
QRect placeOf(const Helper &helper, const QWidget *widget)
{
    return {widget->mapTo(helper.get(), QPoint()), widget->size()};
}

const QGroupBox *groupTitled(const Helper &helper, const QString &title)
{
    const auto groups = helper->findChildren<QGroupBox *>();
    for (const QGroupBox *group : groups) {
        if (group->title() == title)
            return group;
    }
    return nullptr;
}

} // namespace

void BitFieldFormViewTest::initTestCase()
{
    directory.setLanguage(english);
    QVERIFY(QApplication::font().family() != QLatin1String("Tahoma"));
}

void BitFieldFormViewTest::everyFieldHasTheCaptionOfItsDigits_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<QString>("code");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("caption");
    for (const QString &language : {chinese, english}) {
        const auto expected = expectationsOf(language);
        for (const BitFieldExpectation &one : expected) {
            QTest::addRow("%s %s %s", qPrintable(language), one.firstCode, one.name)
                << language << QString(one.firstCode) << QString(one.name)
                << captionByName(QLatin1String(one.name));
        }
    }
}

void BitFieldFormViewTest::everyFieldHasTheCaptionOfItsDigits()
{
    QFETCH(QString, language);
    QFETCH(QString, code);
    QFETCH(QString, name);
    QFETCH(QString, caption);
    const Helper helper = open(language, code, anyValue);
    const NewCombox *const field = fieldOf(helper, name);
    QVERIFY(field);
    QCOMPARE(field->label->text(), caption);
}

void BitFieldFormViewTest::captionStandsLeftOfItsChoice()
{
    const Helper helper = open(english, QStringLiteral("Pn-004"), anyValue);
    helper->show();
    const auto fields = helper->findChildren<NewCombox *>();
    QCOMPARE(fields.size(), 4);
    for (const NewCombox *field : fields) {
        QVERIFY(field->label->isVisible());
        QVERIFY(field->label->geometry().right() < field->comboBox->geometry().left());
        QCOMPARE(placeOf(helper, field->comboBox).left(), placeOf(helper, fields.first()->comboBox).left());
    }
}

void BitFieldFormViewTest::fieldsStandInTheirOrder_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<QString>("code");
    QTest::addColumn<QStringList>("names");
    for (const QString &language : {chinese, english}) {
        QStringList codes;
        QMap<QString, QStringList> names;
        const auto expected = expectationsOf(language);
        for (const BitFieldExpectation &one : expected) {
            codes.append(QLatin1String(one.firstCode));
            names[codes.last()].append(QLatin1String(one.name));
        }
        codes.removeDuplicates();
        for (const QString &code : qAsConst(codes)) {
            if (names.value(code).size() > 1)
                QTest::addRow("%s %s", qPrintable(language), qPrintable(code))
                    << language << code << names.value(code);
        }
    }
}

// From the unit digit at the top to the thousands at the bottom.
void BitFieldFormViewTest::fieldsStandInTheirOrder()
{
    QFETCH(QString, language);
    QFETCH(QString, code);
    QFETCH(QStringList, names);
    const Helper helper = open(language, code, anyValue);
    helper->show();
    int bottom = 0;
    for (const QString &name : qAsConst(names)) {
        const NewCombox *const field = fieldOf(helper, name);
        QVERIFY2(field && field->isVisible(), qPrintable(name));
        const QRect place = placeOf(helper, field);
        QVERIFY2(place.top() > bottom, qPrintable(name));
        bottom = place.bottom();
    }
    QVERIFY(bottom < helper->height());
}

void BitFieldFormViewTest::redNoteStandsBetweenTheFreeDigitsAndTheHundreds_data()
{
    addLanguages();
}

void BitFieldFormViewTest::redNoteStandsBetweenTheFreeDigitsAndTheHundreds()
{
    QFETCH(QString, language);
    const QString code = QStringLiteral("Pn-003");
    const QStringList details = rowOf(language, code).details;
    const Helper helper = open(language, code, anyValue);
    helper->show();
    const QGroupBox *const freeDigits = groupTitled(helper, QStringLiteral("Normal monitoring parameters"));
    const QLabel *const note = labelOf(helper, details.at(1));
    const QGroupBox *const hundreds = groupTitled(helper, details.at(2));
    QVERIFY(freeDigits && note && hundreds);
    QVERIFY(note->isVisible());
    QCOMPARE(note->styleSheet(), QStringLiteral("color:red"));
    QVERIFY(hundreds->isAncestorOf(box(helper, QStringLiteral("Pn-003hundreds"))));
    QVERIFY(placeOf(helper, note).top() > placeOf(helper, freeDigits).bottom());
    QVERIFY(placeOf(helper, note).bottom() < placeOf(helper, hundreds).top());
}

void BitFieldFormViewTest::everyWidgetOfAFormHasTheDialogsFont_data()
{
    QTest::addColumn<QString>("code");
    QTest::addColumn<int>("comboBoxes");
    QTest::addColumn<int>("groups");
    QTest::addColumn<int>("notes");
    QTest::newRow("free digits and a red note") << "Pn-003" << 4 << 3 << 1;
    QTest::newRow("four digits") << "Pn-004" << 4 << 4 << 0;
    QTest::newRow("two notes") << "Pn-211" << 2 << 2 << 2;
    QTest::newRow("notes that come and go") << "Pn-651" << 2 << 2 << 2;
}

void BitFieldFormViewTest::everyWidgetOfAFormHasTheDialogsFont()
{
    QFETCH(QString, code);
    QFETCH(int, comboBoxes);
    QFETCH(int, groups);
    QFETCH(int, notes);
    for (const QString &language : {chinese, english}) {
        const Helper helper = open(language, code, anyValue);
        helper->show();
        const auto *const frame = helper->findChild<QFrame *>(QStringLiteral("formFrame"));
        QCOMPARE(frame->findChildren<QComboBox *>().size(), comboBoxes);
        QCOMPARE(frame->findChildren<QGroupBox *>().size(), groups);
        QCOMPARE(frame->findChildren<QLabel *>().size(), comboBoxes + notes); // captions and notes
        const auto widgets = frame->findChildren<QWidget *>();
        for (const QWidget *widget : widgets) {
            QCOMPARE(widget->font().family(), QStringLiteral("Tahoma"));
            QCOMPARE(widget->font().pointSize(), 10);
        }
    }
}

void BitFieldFormViewTest::choicesOfAClosedRowAreDisabled_data()
{
    QTest::addColumn<QString>("code");
    for (const char *code : {"Pn-003", "Pn-004", "Pn-100", "Pn-200", "Pn-211", "Pn-271", "Pn-300", "Pn-651"})
        QTest::newRow(code) << QString(code);
}

void BitFieldFormViewTest::choicesOfAClosedRowAreDisabled()
{
    QFETCH(QString, code);
    const Row row = rowOf(chinese, code);
    QStringList open = row.values;
    open[1].clear();
    QStringList readOnly = open;
    readOnly[1] = QStringLiteral("★");
    QStringList reserved = open;
    reserved[11] = QStringLiteral("Reserved");
    for (const QStringList &values : {open, readOnly, reserved}) {
        const ParameterSettingHelper helper(values, row.details);
        const auto comboBoxes = helper.findChildren<QComboBox *>();
        QVERIFY(!comboBoxes.isEmpty());
        for (const QComboBox *comboBox : comboBoxes)
            QCOMPARE(comboBox->isEnabled(), values == open);
    }
}

QTEST_MAIN(BitFieldFormViewTest)
#include "tst_bitfieldformview.moc"
