// SPDX-License-Identifier: GPL-3.0-or-later
// What the setting helper shows of a row, and of a catalogue that it can't open.
#include "helperdialog.h"

#include "link/serialport.h"
#include "parameter/parametersettinghelper.h"
#include "support/modalanswers.h"
#include "support/testdirectory.h"

#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QTest>

using namespace helperdialog;

namespace {

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

} // namespace

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

    void missingCatalogueIsToldOnce_data();
    void missingCatalogueIsToldOnce();
    void unreadableCatalogueHasItsOwnWords();

private:
    const TestDirectory directory;
};

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
