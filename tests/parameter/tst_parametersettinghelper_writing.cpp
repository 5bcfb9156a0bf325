// SPDX-License-Identifier: GPL-3.0-or-later
// What the setting helper's buttons write, and which values they refuse.
#include "helperdialog.h"

#include "link/serialport.h"
#include "parameter/parametersettinghelper.h"
#include "support/editortexts.h"
#include "support/modalanswers.h"
#include "support/testdirectory.h"

#include <QSignalSpy>
#include <QTest>
#include <QTranslator>

Q_DECLARE_METATYPE(QMessageBox::Icon)
using namespace helperdialog;

namespace {

const QString reservedWord = QString::fromUtf8("保留");

// Translates the word for reserved rows and nothing else.
class OneWord : public QTranslator
{
public:
    QString translate(const char *, const char *text, const char *, int) const override
    {
        return qstrcmp(text, "Reserved") == 0 ? reservedWord : QString();
    }
    bool isEmpty() const override { return false; }
};

// The signals of a dialog in the order of their coming.
class Sent
{
public:
    explicit Sent(ParameterSettingHelper *dialog)
    {
        QObject::connect(dialog, &ParameterSettingHelper::writeDataToServo, dialog,
                         [this](const QStringList &record, bool isWriteRAM) {
                             log.append(QStringLiteral("write %1 %2")
                                            .arg(record.join(QLatin1Char('|')))
                                            .arg(isWriteRAM ? "RAM" : "EEPROM"));
                         });
        QObject::connect(dialog, &ParameterSettingHelper::setParamValue, dialog,
                         [this](const QString &value, bool colour) {
                             log.append(
                                 QStringLiteral("show %1 %2").arg(value).arg(colour ? "red" : "black"));
                         });
    }

    QStringList log;
};

} // namespace

class ParameterSettingHelperWritingTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void okWritesToTheWorkingMemoryOnly();
    void writeToServoStores();
    void enterInTheValueIsOk();
    void cancelAndEscapeWriteNothing();
    void offlineIsToldAndTheDialogStays();
    void closedRowClosesWithoutAWord_data();
    void closedRowClosesWithoutAWord();
    void wordForReservedRowsIsTranslated();
    void refusedValueIsToldAndTheDialogStays_data();
    void refusedValueIsToldAndTheDialogStays();
    void acceptedValueIsShown_data();
    void acceptedValueIsShown();

private:
    const TestDirectory directory;
};

void ParameterSettingHelperWritingTest::init()
{
    directory.clear();
    directory.setLanguage(QStringLiteral("en_US"));
    SerialPort::portOpened = true;
}

void ParameterSettingHelperWritingTest::cleanup()
{
    SerialPort::portOpened = false;
}

void ParameterSettingHelperWritingTest::okWritesToTheWorkingMemoryOnly()
{
    ParameterSettingHelper dialog(tenths(), {});
    const Sent sent(&dialog);
    dialog.show();
    valueEdit(dialog)->setText(QStringLiteral("+100"));
    QTest::mouseClick(button(dialog, "okButton"), Qt::LeftButton);
    QCOMPARE(sent.log, QStringList({"write Pn-007||+100|0.1rpm|0.0|6000.0 RAM", "show 100.0 red"}));
    QVERIFY(!dialog.isVisible());
}

void ParameterSettingHelperWritingTest::writeToServoStores()
{
    ParameterSettingHelper dialog(tenths(), {});
    const Sent sent(&dialog);
    dialog.show();
    valueEdit(dialog)->setText(QStringLiteral("+100"));
    QTest::mouseClick(button(dialog, "writeButton"), Qt::LeftButton);
    QCOMPARE(sent.log, QStringList({"write Pn-007||+100|0.1rpm|0.0|6000.0 EEPROM", "show +100.0 black"}));
    QVERIFY(!dialog.isVisible());
}

void ParameterSettingHelperWritingTest::enterInTheValueIsOk()
{
    ParameterSettingHelper dialog(tenths(), {});
    const Sent sent(&dialog);
    dialog.show();
    // The value is selected, so that typing replaces it.
    QTest::keyClicks(valueEdit(dialog), QStringLiteral("150.5"));
    QTest::keyClick(valueEdit(dialog), Qt::Key_Return);
    QCOMPARE(sent.log, QStringList({"write Pn-007||150.5|0.1rpm|0.0|6000.0 RAM", "show 150.5 red"}));
}

void ParameterSettingHelperWritingTest::cancelAndEscapeWriteNothing()
{
    ParameterSettingHelper dialog(tenths(), {});
    const Sent sent(&dialog);
    dialog.show();
    QTest::mouseClick(button(dialog, "cancelButton"), Qt::LeftButton);
    QVERIFY(!dialog.isVisible());
    dialog.show();
    QTest::keyClick(&dialog, Qt::Key_Escape);
    QVERIFY(!dialog.isVisible());
    QVERIFY(sent.log.isEmpty());
}

void ParameterSettingHelperWritingTest::offlineIsToldAndTheDialogStays()
{
    SerialPort::portOpened = false;
    for (const char *name : {"okButton", "writeButton"}) {
        ParameterSettingHelper dialog(tenths(), {});
        const Sent sent(&dialog);
        dialog.show();
        // The link is looked at before the value.
        valueEdit(dialog)->setText(QStringLiteral("nonsense"));
        ModalAnswers answers;
        answers.expect(editortext::offline);
        QTest::mouseClick(button(dialog, name), Qt::LeftButton);
        QVERIFY(answers.isDone());
        QCOMPARE(answers.seen.first().icon, QMessageBox::NoIcon);
        QVERIFY(dialog.isVisible());
        QVERIFY(sent.log.isEmpty());
    }
}

void ParameterSettingHelperWritingTest::closedRowClosesWithoutAWord_data()
{
    QTest::addColumn<QStringList>("values");
    QStringList readOnly = tenths();
    readOnly[1] = QStringLiteral("★");
    QStringList reserved = tenths();
    reserved[11] = QStringLiteral("Reserved");
    QTest::newRow("read-only") << readOnly;
    QTest::newRow("reserved") << reserved;
}

void ParameterSettingHelperWritingTest::closedRowClosesWithoutAWord()
{
    QFETCH(QStringList, values);
    for (const bool online : {true, false}) {
        for (const char *slot : {"getParamValue", "writeToServo"}) {
            SerialPort::portOpened = online;
            const ModalAnswers answers;
            ParameterSettingHelper dialog(values, {});
            const Sent sent(&dialog);
            dialog.show();
            QVERIFY(QMetaObject::invokeMethod(&dialog, slot));
            QVERIFY(!dialog.isVisible());
            QVERIFY(sent.log.isEmpty());
        }
    }
}

void ParameterSettingHelperWritingTest::wordForReservedRowsIsTranslated()
{
    OneWord translator;
    QVERIFY(QCoreApplication::installTranslator(&translator));
    QStringList values = tenths();
    values[11] = reservedWord;
    QVERIFY(!valueEdit(ParameterSettingHelper(values, {}))->isEnabled());
    values[11] = QStringLiteral("Reserved");
    QVERIFY(valueEdit(ParameterSettingHelper(values, {}))->isEnabled());
    QCoreApplication::removeTranslator(&translator);
    // The misspelt word of the English catalogue is an ordinary name.
    values[11] = QStringLiteral("Resevred");
    QVERIFY(valueEdit(ParameterSettingHelper(values, {}))->isEnabled());
    // Only a whole text counts.
    values[11] = QStringLiteral("Reserved word");
    QVERIFY(valueEdit(ParameterSettingHelper(values, {}))->isEnabled());
}

void ParameterSettingHelperWritingTest::refusedValueIsToldAndTheDialogStays_data()
{
    QTest::addColumn<QStringList>("values");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("message");
    QTest::addColumn<QMessageBox::Icon>("icon");
    const QString malformed = QStringLiteral("Paramter Value Input Error!");
    const QStringList hexRow = row("0x0000", "0x0000", "0x0199", "H");
    const QStringList integer = row("0", "0", "10");
    QTest::newRow("letter beyond F") << hexRow << "0x01AZ" << malformed << QMessageBox::Critical;
    QTest::newRow("hexadecimal above")
        << hexRow << "0x0200"
        << "Input value execteeds the range!\n \nMax:0199" << QMessageBox::NoIcon;
    QTest::newRow("capital prefix above")
        << hexRow << "0X0200"
        << "Input value execteeds the range!\n \nMax:0199" << QMessageBox::NoIcon;
    QTest::newRow("hexadecimal below")
        << row("0x0001", "0x0001", "0x0199", "H") << "0x0"
        << "Input value execteeds the range!\n \nMin:0001" << QMessageBox::NoIcon;
    QTest::newRow("two fraction digits against one")
        << tenths() << "100.25" << malformed << QMessageBox::Critical;
    QTest::newRow("fraction in an integer row") << integer << "1.0" << malformed << QMessageBox::Critical;
    QTest::newRow("beyond 32 bits") << integer << "2147483648" << malformed << QMessageBox::Critical;
    QTest::newRow("above") << tenths() << "6000.1"
                           << "Input value execteeds the range!\n \nMax:6000" << QMessageBox::NoIcon;
    QTest::newRow("below") << tenths() << "-0.1"
                           << "Input value execteeds the range!\n \nMin:0" << QMessageBox::NoIcon;
    QTest::newRow("without limits above")
        << row("", "", "") << "1"
        << "Input value execteeds the range!\n \nMax:0" << QMessageBox::NoIcon;
    QTest::newRow("without limits below")
        << row("", "", "") << "-1"
        << "Input value execteeds the range!\n \nMin:0" << QMessageBox::NoIcon;
}

void ParameterSettingHelperWritingTest::refusedValueIsToldAndTheDialogStays()
{
    QFETCH(QStringList, values);
    QFETCH(QString, text);
    QFETCH(QString, message);
    QFETCH(QMessageBox::Icon, icon);
    for (const char *name : {"okButton", "writeButton"}) {
        ParameterSettingHelper dialog(values, {});
        const Sent sent(&dialog);
        dialog.show();
        valueEdit(dialog)->setText(text);
        ModalAnswers answers;
        answers.expect(message);
        QTest::mouseClick(button(dialog, name), Qt::LeftButton);
        QVERIFY(answers.isDone());
        QCOMPARE(answers.seen.first().icon, icon);
        QCOMPARE(answers.seen.first().buttons, QStringList("OK"));
        QCOMPARE(answers.seen.first().title, QString());
        QVERIFY(dialog.isVisible());
        QCOMPARE(valueEdit(dialog)->text(), text);
        QVERIFY(sent.log.isEmpty());
    }
}

void ParameterSettingHelperWritingTest::acceptedValueIsShown_data()
{
    QTest::addColumn<QStringList>("values");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("afterOk");
    QTest::addColumn<QString>("afterWrite");
    const QStringList hexRow = row("0x0000", "0x000", "0x0199", "H");
    const QStringList integer = row("0", "-10", "10");
    QTest::newRow("hexadecimal of two digits") << hexRow << "0x12"
                                               << "0x12"
                                               << "0x12";
    QTest::newRow("capital prefix") << hexRow << "0X0100"
                                    << "0X0100"
                                    << "0X0100";
    QTest::newRow("integer in a fraction row") << tenths() << "100"
                                               << "100.0"
                                               << "100.0";
    QTest::newRow("plus") << integer << "+5"
                          << "5"
                          << "+5";
    QTest::newRow("minus zero") << integer << "-0"
                                << "0"
                                << "-0";
    QTest::newRow("zero without limits") << row("", "", "") << "0"
                                         << "0"
                                         << "0";
}

void ParameterSettingHelperWritingTest::acceptedValueIsShown()
{
    QFETCH(QStringList, values);
    QFETCH(QString, text);
    QFETCH(QString, afterOk);
    QFETCH(QString, afterWrite);
    const ModalAnswers answers;
    for (const bool isWriteRAM : {true, false}) {
        ParameterSettingHelper dialog(values, {});
        QSignalSpy shown(&dialog, &ParameterSettingHelper::setParamValue);
        QSignalSpy written(&dialog, &ParameterSettingHelper::writeDataToServo);
        valueEdit(dialog)->setText(text);
        QTest::mouseClick(button(dialog, isWriteRAM ? "okButton" : "writeButton"), Qt::LeftButton);
        QCOMPARE(shown.count(), 1);
        QCOMPARE(shown.first().at(0).toString(), isWriteRAM ? afterOk : afterWrite);
        QCOMPARE(shown.first().at(1).toBool(), isWriteRAM);
        QCOMPARE(written.count(), 1);
        QCOMPARE(written.first().at(0).toStringList().at(2), text);
        QCOMPARE(written.first().at(1).toBool(), isWriteRAM);
    }
}

QTEST_MAIN(ParameterSettingHelperWritingTest)
#include "tst_parametersettinghelper_writing.moc"
