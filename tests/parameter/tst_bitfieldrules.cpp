// SPDX-License-Identifier: GPL-3.0-or-later
// How single forms follow the value and each other's choices.
#include "helperrows.h"

#include "link/serialport.h"
#include "parameter/bitfieldrules.h"
#include "support/modalanswers.h"
#include "support/testdirectory.h"
#include "widgets/newcombox.h"

#include <QPushButton>
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
    void panelDisplayHasFreeDigitsAndANote();
    void analogInputTenLengthensTheTextAndIsRefused();
    void pulseWidthListFollowsTheTerminal();
    void bothPulseWidthListsAreWhole();
    void pulseWidthListIsThatOfTheValueFromTheStart();
    void notesFollowTheChoice_data();
    void notesFollowTheChoice();
    void terminalNotesStandBesideTheChoices();
    void longNotesAreNotCutOff();
    void noteFormsShowTheirLines_data();
    void noteFormsShowTheirLines();

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

void BitFieldRulesTest::panelDisplayHasFreeDigitsAndANote()
{
    const Helper helper = open(english, QStringLiteral("Pn-003"), QStringLiteral("0x0000"));
    const QStringList digits{"0", "1", "2", "3", "4", "5", "6", "7", "8", "9"};
    for (const char *name : {"Pn-003uint", "Pn-003ten"}) {
        QCOMPARE(itemsOf(box(helper, name)), digits);
        QCOMPARE(titleAround(box(helper, name)), QStringLiteral("Normal monitoring parameters"));
    }
    const QLabel *const note =
        labelOf(helper, QStringLiteral("The unit and ten digits hold the number of the monitor item: 15 "
                                       "shows Pn-F15"));
    QVERIFY(note);
    QCOMPARE(note->styleSheet(), QStringLiteral("color:red"));
    QVERIFY(!note->isHidden());
    QCOMPARE(itemsOf(box(helper, QStringLiteral("Pn-003Thousands"))), QStringList("0: Not used"));
}

void BitFieldRulesTest::analogInputTenLengthensTheTextAndIsRefused()
{
    SerialPort::portOpened = true;
    const Helper helper = open(english, QStringLiteral("Pn-250"), QStringLiteral("0x0021"));
    box(helper, QStringLiteral("Pn-250_1"))->setCurrentIndex(3);
    QCOMPARE(valueEdit(helper)->text(), QStringLiteral("0x00213"));
    box(helper, QStringLiteral("Pn-250_1"))->setCurrentIndex(4);
    QCOMPARE(valueEdit(helper)->text(), QStringLiteral("0x00214"));
    helper->show();
    ModalAnswers answers;
    answers.expect(QStringLiteral("Paramter Value Input Error!"));
    QTest::mouseClick(helper->findChild<QPushButton *>(QStringLiteral("okButton")), Qt::LeftButton);
    SerialPort::portOpened = false;
    QVERIFY(answers.isDone());
    QVERIFY(helper->isVisible());
}

void BitFieldRulesTest::pulseWidthListFollowsTheTerminal()
{
    const Helper helper = open(chinese, QStringLiteral("Pn-300"), QStringLiteral("0x3012"));
    const QString lowSpeed = QString::fromUtf8("外部脉冲最小脉宽（低速端子）");
    const QString highSpeed = QString::fromUtf8("外部脉冲最小脉宽（高速端子）");
    QVERIFY(helper->findChild<NewCombox *>(QStringLiteral("Pn-300_31")));
    QComboBox *const thousands = box(helper, QStringLiteral("Pn-300_3"));
    QCOMPARE(titleAround(thousands), lowSpeed);
    QCOMPARE(thousands->currentText(), QStringLiteral("3: 9.6μs(52K)"));

    box(helper, QStringLiteral("Pn-300_2"))->setCurrentIndex(1);
    QCOMPARE(titleAround(thousands), highSpeed);
    // Digit and choice stay together.
    QCOMPARE(thousands->currentIndex(), 3);
    QCOMPARE(valueEdit(helper)->text(), QStringLiteral("0x3112"));

    thousands->setCurrentIndex(1);
    QCOMPARE(valueEdit(helper)->text(), QStringLiteral("0x1112"));
    box(helper, QStringLiteral("Pn-300_2"))->setCurrentIndex(0);
    QCOMPARE(titleAround(thousands), lowSpeed);
    QCOMPARE(thousands->currentText(), QStringLiteral("1: 2.4μs(208K)"));
    QCOMPARE(valueEdit(helper)->text(), QStringLiteral("0x1012"));
}

void BitFieldRulesTest::bothPulseWidthListsAreWhole()
{
    // The last two blocks of the row, each a title and five options.
    const QStringList details = rowOf(chinese, QStringLiteral("Pn-300")).details;
    QCOMPARE(details.size(), 23);
    const QStringList lowSpeed = details.mid(12, 5);
    const QStringList highSpeed = details.mid(18, 5);
    QCOMPARE(lowSpeed.last(), QStringLiteral("4: 不滤波"));
    QCOMPARE(highSpeed, QStringList({"0: 150ns(3.33M)", "1: 600ns(0.83M)", "2: 1.2μs(416K)", "3: 2.4μs(208K)",
                                     "4: 不滤波"}));

    const Helper helper = open(chinese, QStringLiteral("Pn-300"), QStringLiteral("0x0000"));
    const QComboBox *const thousands = box(helper, QStringLiteral("Pn-300_3"));
    QComboBox *const hundreds = box(helper, QStringLiteral("Pn-300_2"));
    QCOMPARE(thousands->count(), 5);
    QCOMPARE(itemsOf(thousands), lowSpeed);
    hundreds->setCurrentIndex(1);
    QCOMPARE(thousands->count(), 5);
    QCOMPARE(itemsOf(thousands), highSpeed);
    hundreds->setCurrentIndex(0);
    QCOMPARE(itemsOf(thousands), lowSpeed);
    const Helper opened = open(chinese, QStringLiteral("Pn-300"), QStringLiteral("0x0100"));
    QCOMPARE(itemsOf(box(opened, QStringLiteral("Pn-300_3"))), highSpeed);
}

void BitFieldRulesTest::pulseWidthListIsThatOfTheValueFromTheStart()
{
    const Helper helper = open(chinese, QStringLiteral("Pn-300"), QStringLiteral("0x2100"));
    QCOMPARE(box(helper, QStringLiteral("Pn-300_3"))->currentText(), QStringLiteral("2: 1.2μs(416K)"));
    QCOMPARE(valueEdit(helper)->text(), QStringLiteral("0x2100"));
}

void BitFieldRulesTest::notesFollowTheChoice_data()
{
    QTest::addColumn<QString>("code");
    QTest::addColumn<QString>("driver");
    QTest::addColumn<QString>("note");
    QTest::addColumn<int>("line"); // detail line that it shows
    QTest::addColumn<QVector<int>>("shownAt");
    QTest::newRow("Pn-509_0") << "Pn-509"
                              << "Pn-509"
                              << "Pn-509_0" << 4 << QVector<int>{1};
    QTest::newRow("Pn-509_1") << "Pn-509"
                              << "Pn-509"
                              << "Pn-509_1" << 5 << QVector<int>{2};
    QTest::newRow("Pn-B02_0") << "Pn-B02"
                              << "Pn-B02"
                              << "Pn-B02_0" << 3 << QVector<int>{1};
    QTest::newRow("Pn-651_2") << "Pn-651"
                              << "Pn-651_0"
                              << "Pn-651_2" << 15 << QVector<int>{2};
    QTest::newRow("Pn-651_3") << "Pn-651"
                              << "Pn-651_0"
                              << "Pn-651_3" << 16 << QVector<int>{3, 4, 5, 6, 7, 10};
}

void BitFieldRulesTest::notesFollowTheChoice()
{
    QFETCH(QString, code);
    QFETCH(QString, driver);
    QFETCH(QString, note);
    QFETCH(int, line);
    QFETCH(QVector<int>, shownAt);
    for (const QString &language : {chinese, english}) {
        const Helper helper = open(language, code, QStringLiteral("0"));
        const QLabel *const label = helper->findChild<QLabel *>(note);
        QComboBox *const comboBox = box(helper, driver);
        QCOMPARE(label->text(), rowOf(language, code).details.at(line));
        QVERIFY(label->isHidden());
        // Down and up again, so that each index is reached from another.
        for (int step = 1; step < 2 * comboBox->count(); ++step) {
            const int index = step < comboBox->count() ? step : 2 * comboBox->count() - 1 - step;
            comboBox->setCurrentIndex(index);
            QCOMPARE(!label->isHidden(), shownAt.contains(index));
            // And from the start, with such a value.
            const QString value =
                comboBox->count() > 3 ? QStringLiteral("0x000%1").arg(index, 0, 16) : QString::number(index);
            const Helper opened = open(language, code, value);
            QCOMPARE(!opened->findChild<QLabel *>(note)->isHidden(), shownAt.contains(index));
        }
    }
}

void BitFieldRulesTest::terminalNotesStandBesideTheChoices()
{
    for (const char *code : {"Pn-211", "Pn-226", "Pn-231", "Pn-246"}) {
        const QStringList details{"own title", "first note", "second note", "logic",
                                  "0: low",    "1: high",    "filter",      "0: none"};
        const auto helper = openWith(QLatin1String(code), QStringLiteral("0x0000"), details);
        for (const char *text : {"first note", "second note"}) {
            const QLabel *const label = labelOf(helper, QLatin1String(text));
            QVERIFY(label);
            QVERIFY(!label->isHidden());
        }
        QVERIFY(!valueEdit(helper)->isReadOnly());
    }
}

void BitFieldRulesTest::longNotesAreNotCutOff()
{
    const QString line = QString(30, QLatin1Char('W')) + QLatin1Char(' ') + QString(40, QLatin1Char('W'));
    QStringList details;
    for (int i = 0; i < 12; ++i)
        details.append(line);
    const Helper helper = openWith(QStringLiteral("Pn-953"), QStringLiteral("0x0000"), details);
    helper->show();
    const auto labels = helper->findChildren<QLabel *>();
    for (const QLabel *label : labels) {
        if (label->wordWrap())
            QVERIFY(label->height() >= label->heightForWidth(label->width()));
    }
}

void BitFieldRulesTest::noteFormsShowTheirLines_data()
{
    QTest::addColumn<QString>("code");
    QTest::newRow("Pn-050") << "Pn-050";
    QTest::newRow("Pn-953") << "Pn-953";
}

void BitFieldRulesTest::noteFormsShowTheirLines()
{
    QFETCH(QString, code);
    const QStringList details{"first line", "0: line with a number", "third line"};
    const auto helper = openWith(code, QStringLiteral("0x0000"), details);
    for (const QString &line : details) {
        QVERIFY(labelOf(helper, line));
        QVERIFY(!labelOf(helper, line)->isHidden());
    }
    QVERIFY(helper->findChildren<QComboBox *>().isEmpty());
    QVERIFY(!valueEdit(helper)->isReadOnly());
}

QTEST_MAIN(BitFieldRulesTest)
#include "tst_bitfieldrules.moc"
