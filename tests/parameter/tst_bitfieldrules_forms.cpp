// SPDX-License-Identifier: GPL-3.0-or-later
// Single forms with lists and notes that follow the choices.
#include "helperrows.h"

#include "link/serialport.h"
#include "support/modalanswers.h"
#include "support/testdirectory.h"
#include "widgets/newcombox.h"

#include <QPushButton>
#include <QTest>

using namespace helperrows;

class BitFieldRulesFormsTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
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

void BitFieldRulesFormsTest::initTestCase()
{
    directory.setLanguage(english);
}

void BitFieldRulesFormsTest::panelDisplayHasFreeDigitsAndANote()
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

void BitFieldRulesFormsTest::analogInputTenLengthensTheTextAndIsRefused()
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

void BitFieldRulesFormsTest::pulseWidthListFollowsTheTerminal()
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

void BitFieldRulesFormsTest::bothPulseWidthListsAreWhole()
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

void BitFieldRulesFormsTest::pulseWidthListIsThatOfTheValueFromTheStart()
{
    const Helper helper = open(chinese, QStringLiteral("Pn-300"), QStringLiteral("0x2100"));
    QCOMPARE(box(helper, QStringLiteral("Pn-300_3"))->currentText(), QStringLiteral("2: 1.2μs(416K)"));
    QCOMPARE(valueEdit(helper)->text(), QStringLiteral("0x2100"));
}

void BitFieldRulesFormsTest::notesFollowTheChoice_data()
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

void BitFieldRulesFormsTest::notesFollowTheChoice()
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

void BitFieldRulesFormsTest::terminalNotesStandBesideTheChoices()
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

void BitFieldRulesFormsTest::longNotesAreNotCutOff()
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

void BitFieldRulesFormsTest::noteFormsShowTheirLines_data()
{
    QTest::addColumn<QString>("code");
    QTest::newRow("Pn-050") << "Pn-050";
    QTest::newRow("Pn-953") << "Pn-953";
}

void BitFieldRulesFormsTest::noteFormsShowTheirLines()
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

QTEST_MAIN(BitFieldRulesFormsTest)
#include "tst_bitfieldrules_forms.moc"
