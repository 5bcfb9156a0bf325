// SPDX-License-Identifier: GPL-3.0-or-later
#include "parameter/parametersettinghelper.h"

#include "link/serialport.h"
#include "support/editortexts.h"
#include "support/modalanswers.h"
#include "support/testdirectory.h"

#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTranslator>

Q_DECLARE_METATYPE(QMessageBox::Icon)

class ParameterSettingHelperTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void windowHasItsTitleSizeAndColour();
    void attributesStandUnderTheirHeads_data();
    void attributesStandUnderTheirHeads();
    void everyWidgetTakesTheDialogsFont();
    void flagsKeepTheirColumns();
    void valueStandsInTheMiddleOfItsRow();
    void defaultOfAnAsteriskLeavesTheValueEmpty();
    void buttonsStandInTheirOrder_data();
    void buttonsStandInTheirOrder();
    void parameterWithoutFormKeepsAnEmptyFrame();

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

    void missingCatalogueIsToldOnce_data();
    void missingCatalogueIsToldOnce();
    void unreadableCatalogueHasItsOwnWords();

private:
    const TestDirectory directory;
};

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

QStringList row(const QString &value, const QString &min, const QString &max, const QString &mark = QString())
{
    return {"Pn-007", "", "", "", "", mark, value, "0.1rpm", min, max, "200.0", "JOG speed value"};
}

QStringList tenths()
{
    return row("200.0", "0.0", "6000.0");
}

QPushButton *button(const QWidget &dialog, const char *name)
{
    return dialog.findChild<QPushButton *>(QLatin1String(name));
}

QLineEdit *valueEdit(const QWidget &dialog)
{
    return dialog.findChild<QLineEdit *>();
}

QGridLayout *grid(const QWidget &dialog)
{
    return qobject_cast<QGridLayout *>(dialog.layout());
}

QString textAt(const QWidget &dialog, int gridRow, int column)
{
    const auto *const label = qobject_cast<QLabel *>(grid(dialog)->itemAtPosition(gridRow, column)->widget());
    return label ? label->text() : QStringLiteral("no label");
}

// Buttons by their texts, "20" for a space of that width and "<>" for a stretch.
QStringList contentsOf(QLayout *layout)
{
    QStringList contents;
    for (int i = 0; i < layout->count(); ++i) {
        const QLayoutItem *const item = layout->itemAt(i);
        if (auto *const found = qobject_cast<QPushButton *>(const_cast<QLayoutItem *>(item)->widget()))
            contents.append(found->isHidden() ? QStringLiteral("hidden") : found->text());
        else if (item->expandingDirections() & Qt::Horizontal)
            contents.append(QStringLiteral("<>"));
        else
            contents.append(QString::number(item->sizeHint().width()));
    }
    return contents;
}

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

void ParameterSettingHelperTest::init()
{
    directory.clear();
    directory.setLanguage(QStringLiteral("en_US"));
    SerialPort::portOpened = true;
}

void ParameterSettingHelperTest::cleanup()
{
    SerialPort::portOpened = false;
}

void ParameterSettingHelperTest::windowHasItsTitleSizeAndColour()
{
    ParameterSettingHelper dialog(tenths(), {});
    QCOMPARE(dialog.windowTitle(), QStringLiteral("Parameter Setting Helper"));
    const QImage icon = dialog.windowIcon().pixmap(32, 32).toImage();
    QVERIFY(!icon.isNull());
    QCOMPARE(icon, QIcon(QStringLiteral(":/pic/pic/logo.ico")).pixmap(32, 32).toImage());
    QCOMPARE(dialog.size(), QSize(650, 380));
    QCOMPARE(dialog.objectName(), QStringLiteral("widget"));
    QCOMPARE(dialog.styleSheet(), QStringLiteral("QWidget#widget{background-color: #E1ECEE;}"));
    QCOMPARE(grid(dialog)->spacing(), 2);
    QVERIFY(!dialog.testAttribute(Qt::WA_DeleteOnClose));
    dialog.show();
    QCOMPARE(dialog.grab().toImage().pixelColor(2, 2), QColor(0xE1, 0xEC, 0xEE));

    const auto *const name = qobject_cast<QLabel *>(grid(dialog)->itemAtPosition(3, 0)->widget());
    QVERIFY(name);
    QCOMPARE(name->text(), QStringLiteral("JOG speed value"));
    QCOMPARE(name->font().pointSize(), 15);
    QVERIFY(name->font().bold());
    QCOMPARE(valueEdit(dialog)->text(), QStringLiteral("200.0"));
    QVERIFY(valueEdit(dialog)->isEnabled());
    QVERIFY(!valueEdit(dialog)->isReadOnly());
}

void ParameterSettingHelperTest::attributesStandUnderTheirHeads_data()
{
    QTest::addColumn<QString>("code");
    QTest::addColumn<QString>("width");
    QTest::newRow("one register") << "Pn-007"
                                  << "16bit";
    QTest::newRow("two registers") << "Pn-314"
                                   << "32bit";
    QTest::newRow("second register of a pair") << "Pn-315"
                                               << "16bit";
}

void ParameterSettingHelperTest::attributesStandUnderTheirHeads()
{
    QFETCH(QString, code);
    QFETCH(QString, width);
    QStringList values = tenths();
    values[0] = code;
    const ParameterSettingHelper dialog(values, {});
    const QStringList heads{"Parameter Name", "Uint", "Minimum ~ Maximum", "Default", "16/32bit"};
    const QStringList texts{code, "0.1rpm", "0.0 ~ 6000.0", "200.0", width};
    for (int column = 0; column < heads.size(); ++column) {
        QCOMPARE(textAt(dialog, 0, column), heads.at(column));
        QCOMPARE(textAt(dialog, 1, column), texts.at(column));
        for (int gridRow : {0, 1}) {
            const auto *const label =
                qobject_cast<QLabel *>(grid(dialog)->itemAtPosition(gridRow, column)->widget());
            QCOMPARE(label->frameShadow(), QFrame::Sunken);
            QCOMPARE(label->font().bold(), gridRow == 0);
        }
    }
}

void ParameterSettingHelperTest::everyWidgetTakesTheDialogsFont()
{
    QStringList values = tenths();
    values[2] = QStringLiteral("■");
    ParameterSettingHelper dialog(values, {});
    dialog.show();
    QCOMPARE(dialog.font().family(), QStringLiteral("Tahoma"));
    const QList<QWidget *> widgets = dialog.findChildren<QWidget *>();
    for (const QWidget *widget : widgets) {
        QCOMPARE(widget->font().family(), QStringLiteral("Tahoma"));
        QCOMPARE(widget->font().pointSize(), widget->objectName() == QLatin1String("nameLabel") ? 15 : 10);
    }
}

void ParameterSettingHelperTest::flagsKeepTheirColumns()
{
    const QStringList marks{"★", "■", "●", "▲", "H"};
    const QStringList words{"Read Only", "Set When Servo OFF", "Valid After Re-power on",
                            "Volatile Parameter", "Hex data,modified by bit"};
    const QStringList styles{"color:#008080", "color:#0000FF", "color:#FF0000", "color:#000000",
                             "color:#BC00F3"};
    for (int set = 0; set < marks.size(); ++set) {
        QStringList values = tenths();
        values[1 + set] = marks.at(set);
        const ParameterSettingHelper dialog(values, {});
        for (int column = 0; column < marks.size(); ++column) {
            QLayout *const pair = grid(dialog)->itemAtPosition(2, column)->layout();
            QVERIFY(pair);
            QCOMPARE(pair->count(), 2);
            const auto *const mark = qobject_cast<QLabel *>(pair->itemAt(0)->widget());
            const auto *const word = qobject_cast<QLabel *>(pair->itemAt(1)->widget());
            const bool isSet = column == set;
            QCOMPARE(mark->text(), isSet ? marks.at(column) : QString());
            QCOMPARE(word->text(), isSet ? words.at(column) : QString());
            QCOMPARE(mark->styleSheet(), isSet ? styles.at(column) : QString());
            QCOMPARE(word->styleSheet(), isSet ? styles.at(column) : QString());
        }
    }
}

void ParameterSettingHelperTest::valueStandsInTheMiddleOfItsRow()
{
    ParameterSettingHelper dialog(tenths(), {});
    const auto *const line = qobject_cast<QHBoxLayout *>(grid(dialog)->itemAtPosition(4, 0)->layout());
    QVERIFY(line);
    QCOMPARE(grid(dialog)->itemAtPosition(4, 4)->layout(), line);
    QCOMPARE(line->count(), 4);
    for (const int place : {0, 3}) {
        QVERIFY(line->itemAt(place)->spacerItem());
        QVERIFY(line->itemAt(place)->expandingDirections() & Qt::Horizontal);
    }
    const auto *const label = qobject_cast<QLabel *>(line->itemAt(1)->widget());
    QVERIFY(label);
    QCOMPARE(label->text(), QStringLiteral("Value"));
    QCOMPARE(line->itemAt(2)->widget(), valueEdit(dialog));

    dialog.show();
    const QRect words = label->geometry();
    const QRect edit = valueEdit(dialog)->geometry();
    QVERIFY(words.right() < edit.left());
    QVERIFY(words.left() > 100);
    QVERIFY(qAbs(words.left() - (dialog.width() - 1 - edit.right())) <= 1);
}

void ParameterSettingHelperTest::defaultOfAnAsteriskLeavesTheValueEmpty()
{
    QStringList values = tenths();
    values[10] = QStringLiteral("*");
    const ParameterSettingHelper dialog(values, {});
    QCOMPARE(valueEdit(dialog)->text(), QString());
}

void ParameterSettingHelperTest::buttonsStandInTheirOrder_data()
{
    QTest::addColumn<QStringList>("values");
    QTest::addColumn<QStringList>("order");
    const QStringList closed{"<>", "Cancel", "20", "OK", "hidden", "<>"};
    QStringList readOnly = tenths();
    readOnly[1] = QStringLiteral("★");
    QStringList reserved = tenths();
    reserved[11] = QStringLiteral("Reserved");
    QTest::newRow("normal") << tenths() << QStringList({"<>", "Cancel", "OK", "20", "Write to Servo", "<>"});
    QTest::newRow("read-only") << readOnly << closed;
    QTest::newRow("reserved") << reserved << closed;
}

void ParameterSettingHelperTest::buttonsStandInTheirOrder()
{
    QFETCH(QStringList, values);
    QFETCH(QStringList, order);
    const ParameterSettingHelper dialog(values, {});
    QCOMPARE(contentsOf(grid(dialog)->itemAtPosition(15, 0)->layout()), order);
    QCOMPARE(button(dialog, "okButton")->toolTip(), QStringLiteral("Write RAM"));
    QCOMPARE(button(dialog, "writeButton")->toolTip(), QStringLiteral("Write EEPROM"));
    QCOMPARE(valueEdit(dialog)->isEnabled(), order.contains(QStringLiteral("Write to Servo")));
}

void ParameterSettingHelperTest::parameterWithoutFormKeepsAnEmptyFrame()
{
    const ParameterSettingHelper dialog(tenths(), {"A title", "0: An option"});
    const auto *const frame = dialog.findChild<QFrame *>(QStringLiteral("formFrame"));
    QVERIFY(frame);
    QCOMPARE(frame->frameShape(), QFrame::StyledPanel);
    QCOMPARE(frame->frameShadow(), QFrame::Sunken);
    QVERIFY(frame->findChildren<QWidget *>().isEmpty());
    int gridRow = 0;
    int column = 0;
    int rowSpan = 0;
    int columnSpan = 0;
    grid(dialog)->getItemPosition(grid(dialog)->indexOf(const_cast<QFrame *>(frame)), &gridRow, &column,
                                  &rowSpan, &columnSpan);
    QCOMPARE(gridRow, 5);
    QCOMPARE(rowSpan, 9);
    QCOMPARE(columnSpan, 5);
}

void ParameterSettingHelperTest::okWritesToTheWorkingMemoryOnly()
{
    ParameterSettingHelper dialog(tenths(), {});
    const Sent sent(&dialog);
    dialog.show();
    valueEdit(dialog)->setText(QStringLiteral("+100"));
    QTest::mouseClick(button(dialog, "okButton"), Qt::LeftButton);
    QCOMPARE(sent.log, QStringList({"write Pn-007||+100|0.1rpm|0.0|6000.0 RAM", "show 100.0 red"}));
    QVERIFY(!dialog.isVisible());
}

void ParameterSettingHelperTest::writeToServoStores()
{
    ParameterSettingHelper dialog(tenths(), {});
    const Sent sent(&dialog);
    dialog.show();
    valueEdit(dialog)->setText(QStringLiteral("+100"));
    QTest::mouseClick(button(dialog, "writeButton"), Qt::LeftButton);
    QCOMPARE(sent.log, QStringList({"write Pn-007||+100|0.1rpm|0.0|6000.0 EEPROM", "show +100.0 black"}));
    QVERIFY(!dialog.isVisible());
}

void ParameterSettingHelperTest::enterInTheValueIsOk()
{
    ParameterSettingHelper dialog(tenths(), {});
    const Sent sent(&dialog);
    dialog.show();
    // The value is selected, so that typing replaces it.
    QTest::keyClicks(valueEdit(dialog), QStringLiteral("150.5"));
    QTest::keyClick(valueEdit(dialog), Qt::Key_Return);
    QCOMPARE(sent.log, QStringList({"write Pn-007||150.5|0.1rpm|0.0|6000.0 RAM", "show 150.5 red"}));
}

void ParameterSettingHelperTest::cancelAndEscapeWriteNothing()
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

void ParameterSettingHelperTest::offlineIsToldAndTheDialogStays()
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

void ParameterSettingHelperTest::closedRowClosesWithoutAWord_data()
{
    QTest::addColumn<QStringList>("values");
    QStringList readOnly = tenths();
    readOnly[1] = QStringLiteral("★");
    QStringList reserved = tenths();
    reserved[11] = QStringLiteral("Reserved");
    QTest::newRow("read-only") << readOnly;
    QTest::newRow("reserved") << reserved;
}

void ParameterSettingHelperTest::closedRowClosesWithoutAWord()
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

void ParameterSettingHelperTest::wordForReservedRowsIsTranslated()
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

void ParameterSettingHelperTest::refusedValueIsToldAndTheDialogStays_data()
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

void ParameterSettingHelperTest::refusedValueIsToldAndTheDialogStays()
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

void ParameterSettingHelperTest::acceptedValueIsShown_data()
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

void ParameterSettingHelperTest::acceptedValueIsShown()
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

void ParameterSettingHelperTest::missingCatalogueIsToldOnce_data()
{
    QTest::addColumn<QString>("language");
    QTest::newRow("Chinese") << "zh_CN";
    QTest::newRow("English") << "en_US";
}

void ParameterSettingHelperTest::missingCatalogueIsToldOnce()
{
    QFETCH(QString, language);
    directory.setLanguage(language);
    {
        const ModalAnswers answers;
        const ParameterSettingHelper dialog(tenths(), {});
    }
    Q_CLEANUP_RESOURCE(catalogue);
    ModalAnswers answers;
    answers.expect(QStringLiteral("File does not exist"));
    const ParameterSettingHelper dialog(tenths(), {});
    Q_INIT_RESOURCE(catalogue);
    QVERIFY(answers.isDone());
    QCOMPARE(answers.seen.first().title, QStringLiteral("Open Failed"));
    QCOMPARE(answers.seen.first().icon, QMessageBox::Warning);
    // The dialog is complete all the same.
    QVERIFY(button(dialog, "okButton"));
}

void ParameterSettingHelperTest::unreadableCatalogueHasItsOwnWords()
{
    QCOMPARE(ParameterSettingHelper::catalogueFailure(directory.path()),
             QStringLiteral("Failed opening parameter XML!"));
    QCOMPARE(ParameterSettingHelper::catalogueFailure(QStringLiteral(":/parameter/parameter/none.xml")),
             QStringLiteral("File does not exist"));
    // What is in it does not matter.
    QCOMPARE(ParameterSettingHelper::catalogueFailure(QStringLiteral(":/config/config/address.txt")),
             QString());
}

QTEST_MAIN(ParameterSettingHelperTest)
#include "tst_parametersettinghelper.moc"
