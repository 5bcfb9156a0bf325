// SPDX-License-Identifier: GPL-3.0-or-later
// How the digits of a form and the text of its value follow each other.
#include "helperrows.h"

#include "parameter/bitfieldrules.h"
#include "support/testdirectory.h"

#include <QTest>

using namespace helperrows;

class BitFieldRulesTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void digitOfTheValueIsShown_data();
    void digitOfTheValueIsShown();
    void letterStaysUntilItsFieldIsChanged();
    void digitWithoutLinesGoesUpToTheMaximum_data();
    void digitWithoutLinesGoesUpToTheMaximum();
    void choiceBackGivesTheTextBack_data();
    void choiceBackGivesTheTextBack();
    void firstChoiceFromAnEmptyValue_data();
    void firstChoiceFromAnEmptyValue();
    void valueOfAFormCannotBeTyped();
    void typedDigitsAreShown();
    void typedDigitWithoutOptionStays();
    void shortTypedTextIsFilledUpFirst();
    void namesWithoutARuleChangeNothing();

private:
    const TestDirectory directory;
};

void BitFieldRulesTest::initTestCase()
{
    directory.setLanguage(english);
}

void BitFieldRulesTest::digitOfTheValueIsShown_data()
{
    QTest::addColumn<QString>("code");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("index");
    QTest::newRow("hundreds of a terminal") << "Pn-211"
                                            << "0x0139"
                                            << "Pn-211-Pn-226_2" << 1;
    QTest::newRow("thousands of a terminal") << "Pn-211"
                                             << "0x0139"
                                             << "Pn-211-Pn-226_3" << 0;
    QTest::newRow("letter of a base 16 field") << "Pn-211"
                                               << "0xA139"
                                               << "Pn-211-Pn-226_3" << 10;
    QTest::newRow("small letter of a base 16 field") << "Pn-911"
                                                     << "0x2a31"
                                                     << "Pn-911_2" << 10;
    QTest::newRow("letter of a base 10 field") << "Pn-291"
                                               << "0x000A"
                                               << "Pn-291-Pn-294_0" << 0;
    QTest::newRow("digit without option") << "Pn-004"
                                          << "0x0009"
                                          << "Pn-004uint" << 0;
    QTest::newRow("first digit without option") << "Pn-004"
                                                << "0x0002"
                                                << "Pn-004uint" << 0;
    QTest::newRow("last digit with option") << "Pn-004"
                                            << "0x0001"
                                            << "Pn-004uint" << 1;
    QTest::newRow("two digits") << "Pn-271"
                                << "0x0537"
                                << "Pn-271-Pn-286_01" << 37;
    QTest::newRow("two upper digits") << "Pn-271"
                                      << "0x0537"
                                      << "Pn-271-Pn-286_23" << 5;
    QTest::newRow("two digits without option") << "Pn-271"
                                               << "0x0038"
                                               << "Pn-271-Pn-286_01" << 0;
    QTest::newRow("two digits, one a letter") << "Pn-271"
                                              << "0x001A"
                                              << "Pn-271-Pn-286_01" << 0;
    QTest::newRow("empty value") << "Pn-003"
                                 << ""
                                 << "Pn-003uint" << 0;
    QTest::newRow("free digit") << "Pn-003"
                                << "0x0115"
                                << "Pn-003uint" << 5;
    QTest::newRow("free ten") << "Pn-003"
                              << "0x0115"
                              << "Pn-003ten" << 1;
    QTest::newRow("ten of the analog inputs") << "Pn-250"
                                              << "0x0021"
                                              << "Pn-250_1" << 2;
    QTest::newRow("choice") << "Pn-100"
                            << "8"
                            << "Pn-100" << 8;
    QTest::newRow("choice without option") << "Pn-100"
                                           << "9"
                                           << "Pn-100" << 0;
    QTest::newRow("negative choice") << "Pn-100"
                                     << "-1"
                                     << "Pn-100" << 0;
    QTest::newRow("choice that is no number") << "Pn-100"
                                              << "x"
                                              << "Pn-100" << 0;
    QTest::newRow("choice of two digits") << "Pn-400"
                                          << "12"
                                          << "Pn-400" << 0;
}

void BitFieldRulesTest::digitOfTheValueIsShown()
{
    QFETCH(QString, code);
    QFETCH(QString, value);
    QFETCH(QString, name);
    QFETCH(int, index);
    const Helper helper = open(chinese, code, value);
    QCOMPARE(box(helper, name)->currentIndex(), index);
    // Opening alone changes nothing.
    QCOMPARE(valueEdit(helper)->text(), value);
}

void BitFieldRulesTest::digitWithoutLinesGoesUpToTheMaximum_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("maximum");
    QTest::addColumn<QStringList>("digits");
    const QStringList none;
    QTest::newRow("unit") << "Pn-300_0"
                          << "0x4122" << QStringList{"0", "1", "2"};
    QTest::newRow("hundreds") << "Pn-300_2"
                              << "0x4122" << QStringList{"0", "1"};
    QTest::newRow("thousands") << "Pn-300_3"
                               << "0x4122" << QStringList{"0", "1", "2", "3", "4"};
    QTest::newRow("base 16") << "Pn-700_1"
                             << "0x00B0"
                             << QStringList{"0", "1", "2", "3", "4", "5", "6", "7", "8", "9", "A", "B"};
    QTest::newRow("two digits") << "Pn-295-Pn-296_01"
                                << "0x0003" << QStringList{"0", "1", "2", "3"};
    QTest::newRow("short maximum") << "Pn-300_1"
                                   << "0x20" << QStringList{"0", "1", "2"};
    QTest::newRow("only 0") << "Pn-324_1"
                            << "0x0003" << none;
    QTest::newRow("letter in a decimal digit") << "Pn-004uint"
                                               << "0xFFFF" << none;
    QTest::newRow("decimal maximum") << "Pn-336_1"
                                     << "65535" << none;
    QTest::newRow("no maximum") << "Pn-336_1"
                                << "" << none;
    QTest::newRow("choice") << "Pn-100"
                            << "0x0008" << none;
    QTest::newRow("combo box without a rule") << "Pn-003Thousands"
                                              << "0x4122" << none;
}

void BitFieldRulesTest::digitWithoutLinesGoesUpToTheMaximum()
{
    QFETCH(QString, name);
    QFETCH(QString, maximum);
    QFETCH(QStringList, digits);
    QCOMPARE(plainDigits(*bitField(name), maximum), digits);
}

void BitFieldRulesTest::letterStaysUntilItsFieldIsChanged()
{
    const Helper helper = open(chinese, QStringLiteral("Pn-004"), QStringLiteral("0x00BC"));
    box(helper, QStringLiteral("Pn-004hundreds"))->setCurrentIndex(1);
    QCOMPARE(valueEdit(helper)->text(), QStringLiteral("0x01BC"));
    box(helper, QStringLiteral("Pn-004ten"))->setCurrentIndex(1);
    QCOMPARE(valueEdit(helper)->text(), QStringLiteral("0x011C"));
    box(helper, QStringLiteral("Pn-004ten"))->setCurrentIndex(0);
    QCOMPARE(valueEdit(helper)->text(), QStringLiteral("0x010C"));
}

void BitFieldRulesTest::choiceBackGivesTheTextBack_data()
{
    QTest::addColumn<QString>("language");
    QTest::newRow("Chinese") << chinese;
    QTest::newRow("English") << english;
}

void BitFieldRulesTest::choiceBackGivesTheTextBack()
{
    QFETCH(QString, language);
    const Helper helper = open(language, QStringLiteral("Pn-004"), QStringLiteral("0x0000"));
    helper->show();
    QComboBox *const hundreds = box(helper, QStringLiteral("Pn-004hundreds"));
    QCOMPARE(hundreds->currentIndex(), 0);
    QTest::keyClick(hundreds, Qt::Key_Down);
    QCOMPARE(hundreds->currentIndex(), 1);
    QCOMPARE(valueEdit(helper)->text(), QStringLiteral("0x0100"));
    QTest::keyClick(hundreds, Qt::Key_Up);
    QCOMPARE(hundreds->currentIndex(), 0);
    QCOMPARE(valueEdit(helper)->text(), QStringLiteral("0x0000"));
}

void BitFieldRulesTest::firstChoiceFromAnEmptyValue_data()
{
    QTest::addColumn<QString>("code");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("after");
    QTest::newRow("digit") << "Pn-004"
                           << "Pn-004hundreds"
                           << "0x0100";
    QTest::newRow("free digit") << "Pn-003"
                                << "Pn-003ten"
                                << "0x0010";
    QTest::newRow("typed form") << "Pn-211"
                                << "Pn-211-Pn-226_3"
                                << "0x1000";
    QTest::newRow("two digits") << "Pn-260"
                                << "Pn-260-Pn-270_01"
                                << "0x0001";
    QTest::newRow("choice that becomes the text") << "Pn-100"
                                                  << "Pn-100"
                                                  << "1";
    // The start is the same for every form, so the first of its characters is replaced.
    QTest::newRow("choice of the first character") << "Pn-400"
                                                   << "Pn-400"
                                                   << "1x0000";
}

void BitFieldRulesTest::firstChoiceFromAnEmptyValue()
{
    QFETCH(QString, code);
    QFETCH(QString, name);
    QFETCH(QString, after);
    const Helper helper = open(chinese, code, QString());
    box(helper, name)->setCurrentIndex(1);
    QCOMPARE(valueEdit(helper)->text(), after);
}

void BitFieldRulesTest::valueOfAFormCannotBeTyped()
{
    for (const char *code : {"Pn-004", "Pn-100", "Pn-003", "Pn-271"}) {
        const Helper helper = open(chinese, QLatin1String(code), QStringLiteral("0x0000"));
        helper->show();
        QTest::keyClicks(valueEdit(helper), QStringLiteral("12"));
        QTest::keyClick(valueEdit(helper), Qt::Key_Backspace);
        QCOMPARE(valueEdit(helper)->text(), QStringLiteral("0x0000"));
    }
}

void BitFieldRulesTest::typedDigitsAreShown()
{
    const Helper helper = open(chinese, QStringLiteral("Pn-211"), QStringLiteral("0x0001"));
    helper->show();
    valueEdit(helper)->clear();
    QTest::keyClicks(valueEdit(helper), QStringLiteral("0xC112"));
    QCOMPARE(box(helper, QStringLiteral("Pn-211-Pn-226_3"))->currentIndex(), 12);
    QCOMPARE(box(helper, QStringLiteral("Pn-211-Pn-226_2"))->currentIndex(), 1);
    QCOMPARE(valueEdit(helper)->text(), QStringLiteral("0xC112"));
    box(helper, QStringLiteral("Pn-211-Pn-226_2"))->setCurrentIndex(0);
    QCOMPARE(valueEdit(helper)->text(), QStringLiteral("0xC012"));
}

void BitFieldRulesTest::typedDigitWithoutOptionStays()
{
    const Helper helper = open(chinese, QStringLiteral("Pn-211"), QStringLiteral("0x0101"));
    helper->show();
    valueEdit(helper)->setSelection(3, 1);
    QTest::keyClicks(valueEdit(helper), QStringLiteral("7"));
    QCOMPARE(box(helper, QStringLiteral("Pn-211-Pn-226_2"))->currentIndex(), 0);
    QCOMPARE(valueEdit(helper)->text(), QStringLiteral("0x0701"));
}

void BitFieldRulesTest::shortTypedTextIsFilledUpFirst()
{
    const Helper helper = open(chinese, QStringLiteral("Pn-211"), QString());
    QTest::keyClicks(valueEdit(helper), QStringLiteral("0x12"));
    box(helper, QStringLiteral("Pn-211-Pn-226_2"))->setCurrentIndex(1);
    QCOMPARE(valueEdit(helper)->text(), QStringLiteral("0x0112"));
}

void BitFieldRulesTest::namesWithoutARuleChangeNothing()
{
    for (const char *name : {"", "Pn-003Thousands", "Pn-300_31", "Pn-509_0", "Pn-999"}) {
        QCOMPARE(chosenText(QStringLiteral("0x1234"), QLatin1String(name), 1), QStringLiteral("0x1234"));
        QCOMPARE(chosenText(QString(), QLatin1String(name), 1), QString());
    }
    // A list that is being filled has no current item for a moment.
    QCOMPARE(chosenText(QStringLiteral("0x1234"), QStringLiteral("Pn-004uint"), -1),
             QStringLiteral("0x1234"));
}

QTEST_MAIN(BitFieldRulesTest)
#include "tst_bitfieldrules.moc"
