// SPDX-License-Identifier: GPL-3.0-or-later
// From a double-click in the table through the setting helper back into the cell.
#include "parameter/parametersettinghelper.h"
#include "parameter/parametertable.h"

#include "link/serialport.h"
#include "support/modalanswers.h"
#include "support/testdirectory.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

#include <memory>

class ParameterTableHelperTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void doubleClickOnAnyColumnOpensTheHelper_data();
    void doubleClickOnAnyColumnOpensTheHelper();
    void doubleClickBesideTheRowsOpensNothing();
    void columnBehindTheLastOpensNothing();
    void helperGetsTextsAndDetailLinesOfItsRow();
    void okTurnsTheValueRed();
    void writeToServoTurnsTheValueBlack();
    void hexadecimalValueIsFilledUpInTheTable();
    void presentValueLeavesTheColour();
    void choiceInTheFormReachesTheTable();
    void readOnlyRowOpensAndStaysAsItIs();
    void everyDoubleClickMakesAHelperThatStaysWithTheTable();

private:
    ParameterSettingHelper *openHelper(int row, int column = ParameterTable::ValueColumn);

    const TestDirectory directory;
    std::unique_ptr<ParameterTable> table;
};

namespace {

enum TableRow { Decimal, Form, ReadOnly, Reserved };

const QStringList formLines{"Restore factory values", "0: No action", "1: Restore",
                            "Parameter lock",         "0: Open",      "1: Locked"};

QStringList catalogueRow(const QString &name, const QString &code, const QString &flags, const QString &value,
                         const QString &unit, const QString &min, const QString &max)
{
    QStringList values{name, code};
    for (int flag = 0; flag < 11; ++flag) {
        const QString mark = QString::number(flag);
        values.append(flags.contains(mark) && flag < 10 ? mark : QString());
    }
    return values + QStringList{value, unit, min, max, QString()};
}

QPoint centreOf(ParameterTable *table, int row, int column)
{
    table->scrollToItem(table->item(row, column));
    return table->visualItemRect(table->item(row, column)).center();
}

void enter(ParameterSettingHelper *helper, const QString &text, const char *buttonName)
{
    helper->findChild<QLineEdit *>()->setText(text);
    QTest::mouseClick(helper->findChild<QPushButton *>(QLatin1String(buttonName)), Qt::LeftButton);
}

} // namespace

void ParameterTableHelperTest::init()
{
    directory.setLanguage(QStringLiteral("en_US"));
    SerialPort::portOpened = true;
    table = std::make_unique<ParameterTable>();
    table->rowDescriptions = {{}, formLines, {}, {}};
    table->addRow(catalogueRow("JOG speed value", "Pn-007", "", "200.0", "0.1rpm", "0.0", "6000.0"));
    table->addRow(catalogueRow("Parameter management", "Pn-004", "13", "0x0000", "", "0x0000", "0x0011"));
    table->addRow(catalogueRow("CPU VERSION", "Pn-000", "0", "", "", "", ""));
    table->addRow(catalogueRow("Reserved", "Pn-005", "", "0", "", "0", "1"));
    table->resize(1000, 300);
    table->show();
    QVERIFY(QTest::qWaitForWindowExposed(table.get()));
}

void ParameterTableHelperTest::cleanup()
{
    table.reset();
    SerialPort::portOpened = false;
}

// The helper that a double-click on this cell has opened, or a null pointer.
ParameterSettingHelper *ParameterTableHelperTest::openHelper(int row, int column)
{
    const auto before = table->findChildren<ParameterSettingHelper *>();
    QTest::mouseDClick(table->viewport(), Qt::LeftButton, Qt::NoModifier, centreOf(table.get(), row, column));
    const auto after = table->findChildren<ParameterSettingHelper *>();
    return after.size() == before.size() + 1 ? after.last() : nullptr;
}

void ParameterTableHelperTest::doubleClickOnAnyColumnOpensTheHelper_data()
{
    QTest::addColumn<int>("column");
    for (int column = 0; column < ParameterTable::ColumnCount; ++column)
        QTest::addRow("column %d", column) << column;
}

void ParameterTableHelperTest::doubleClickOnAnyColumnOpensTheHelper()
{
    QFETCH(int, column);
    const ParameterSettingHelper *const helper = openHelper(Decimal, column);
    QVERIFY(helper);
    QVERIFY(helper->isVisible());
    QVERIFY(helper->isModal());
    QCOMPARE(helper->parent(), table.get());
}

void ParameterTableHelperTest::doubleClickBesideTheRowsOpensNothing()
{
    const QRect last = table->visualItemRect(table->item(Reserved, ParameterTable::ValueColumn));
    QTest::mouseDClick(table->viewport(), Qt::LeftButton, Qt::NoModifier,
                       last.center() + QPoint(0, 2 * last.height()));
    QTest::mouseDClick(table->viewport(), Qt::RightButton, Qt::NoModifier, last.center());
    QVERIFY(table->findChildren<ParameterSettingHelper *>().isEmpty());
}

void ParameterTableHelperTest::columnBehindTheLastOpensNothing()
{
    table->cellDoubleClickedSlot(Decimal, 11);
    table->cellDoubleClickedSlot(-1, -1);
    QVERIFY(table->findChildren<ParameterSettingHelper *>().isEmpty());
}

void ParameterTableHelperTest::helperGetsTextsAndDetailLinesOfItsRow()
{
    const ParameterSettingHelper *const decimal = openHelper(Decimal);
    QVERIFY(decimal);
    QVERIFY(decimal->findChildren<QComboBox *>().isEmpty());
    QCOMPARE(decimal->findChild<QLineEdit *>()->text(), QStringLiteral("200.0"));
    QStringList texts;
    const auto labels = decimal->findChildren<QLabel *>();
    for (const QLabel *label : labels)
        texts.append(label->text());
    for (const char *expected : {"Pn-007", "0.1rpm", "0.0 ~ 6000.0", "200.0", "JOG speed value"})
        QVERIFY2(texts.contains(QLatin1String(expected)), expected);

    const ParameterSettingHelper *const form = openHelper(Form);
    QVERIFY(form);
    QCOMPARE(form->findChildren<QComboBox *>().size(), 2);
}

void ParameterTableHelperTest::okTurnsTheValueRed()
{
    QSignalSpy written(table.get(), &ParameterTable::writeCurrentValue);
    enter(openHelper(Decimal), QStringLiteral("100"), "okButton");
    const QTableWidgetItem *const cell = table->item(Decimal, ParameterTable::ValueColumn);
    QCOMPARE(cell->text(), QStringLiteral("100.0"));
    QCOMPARE(cell->foreground().color(), QColor(Qt::red));
    QCOMPARE(written.count(), 1);
    QCOMPARE(written.first().at(0).toStringList(),
             QStringList({"Pn-007", "", "100", "0.1rpm", "0.0", "6000.0"}));
    QCOMPARE(written.first().at(1).toBool(), true);
}

void ParameterTableHelperTest::writeToServoTurnsTheValueBlack()
{
    enter(openHelper(Decimal), QStringLiteral("100"), "okButton");
    QSignalSpy written(table.get(), &ParameterTable::writeCurrentValue);
    enter(openHelper(Decimal), QStringLiteral("+101"), "writeButton");
    const QTableWidgetItem *const cell = table->item(Decimal, ParameterTable::ValueColumn);
    QCOMPARE(cell->text(), QStringLiteral("+101.0"));
    QCOMPARE(cell->foreground().color(), QColor(Qt::black));
    QCOMPARE(written.count(), 1);
    QCOMPARE(written.first().at(1).toBool(), false);
}

void ParameterTableHelperTest::hexadecimalValueIsFilledUpInTheTable()
{
    table->addRow(catalogueRow("DI test", "Pn-206", "1", "0x0000", "", "0x000", "0x0199"));
    const int row = table->rowCount() - 1;
    enter(openHelper(row), QStringLiteral("0x12"), "okButton");
    QCOMPARE(table->text(row, ParameterTable::ValueColumn), QStringLiteral("0x0012"));
    enter(openHelper(row), QStringLiteral("0X1"), "okButton");
    QCOMPARE(table->text(row, ParameterTable::ValueColumn), QStringLiteral("0X0001"));
}

void ParameterTableHelperTest::presentValueLeavesTheColour()
{
    QTableWidgetItem *const cell = table->item(Decimal, ParameterTable::ValueColumn);
    cell->setForeground(Qt::blue);
    enter(openHelper(Decimal), QStringLiteral("200.0"), "writeButton");
    QCOMPARE(cell->foreground().color(), QColor(Qt::blue));
}

void ParameterTableHelperTest::choiceInTheFormReachesTheTable()
{
    ParameterSettingHelper *const helper = openHelper(Form);
    QVERIFY(helper);
    helper->findChild<QComboBox *>(QStringLiteral("Pn-004ten"))->setCurrentIndex(1);
    QTest::mouseClick(helper->findChild<QPushButton *>(QStringLiteral("okButton")), Qt::LeftButton);
    QCOMPARE(table->text(Form, ParameterTable::ValueColumn), QStringLiteral("0x0010"));
}

void ParameterTableHelperTest::readOnlyRowOpensAndStaysAsItIs()
{
    for (const int row : {int(ReadOnly), int(Reserved)}) {
        const QString before = table->text(row, ParameterTable::ValueColumn);
        QSignalSpy written(table.get(), &ParameterTable::writeCurrentValue);
        const ModalAnswers answers;
        ParameterSettingHelper *const helper = openHelper(row, ParameterTable::DescriptionColumn);
        QVERIFY(helper);
        QVERIFY(!helper->findChild<QLineEdit *>()->isEnabled());
        enter(helper, QStringLiteral("1"), "okButton");
        QVERIFY(!helper->isVisible());
        QCOMPARE(table->text(row, ParameterTable::ValueColumn), before);
        QCOMPARE(written.count(), 0);
    }
}

void ParameterTableHelperTest::everyDoubleClickMakesAHelperThatStaysWithTheTable()
{
    const QPointer<ParameterSettingHelper> first = openHelper(Decimal);
    QVERIFY(first);
    first->close();
    const QPointer<ParameterSettingHelper> second = openHelper(Decimal);
    QVERIFY(second);
    second->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(first && second && first != second);
    table.reset();
    QVERIFY(!first && !second);
}

QTEST_MAIN(ParameterTableHelperTest)
#include "tst_parametertable_helper.moc"
