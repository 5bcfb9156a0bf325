// SPDX-License-Identifier: GPL-3.0-or-later
// The menu and the double-click of the parameter table.
#include "tablerows.h"

#include "link/serialport.h"
#include "parameter/parametertable.h"
#include "support/modalanswers.h"

#include <QContextMenuEvent>
#include <QMenu>
#include <QSignalSpy>
#include <QTest>

using namespace tablerows;

namespace {

const QString offline = QStringLiteral("Fail to connect to the device via USB!");

QMenu *openMenu(ParameterTable *table, int row)
{
    const QPoint pos = table->visualItemRect(table->item(row, Value)).center();
    QContextMenuEvent event(QContextMenuEvent::Mouse, pos, table->viewport()->mapToGlobal(pos));
    QCoreApplication::sendEvent(table->viewport(), &event);
    return table->findChild<QMenu *>();
}

QStringList textsOf(const QMenu *menu)
{
    QStringList texts;
    const QList<QAction *> actions = menu->actions();
    for (const QAction *action : actions)
        texts.append(action->text());
    return texts;
}

} // namespace

class ParameterTableMenuTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void menuOffersWritingWhereItMay_data();
    void menuOffersWritingWhereItMay();
    void noMenuOverEmptySpace();
    void menuActionsTellWhenOffline();
    void menuActionsSendTheRecord();
    void doubleClickNamesTheCellUnderIt();
};

void ParameterTableMenuTest::init()
{
    SerialPort::portOpened = true;
}

void ParameterTableMenuTest::menuOffersWritingWhereItMay_data()
{
    QTest::addColumn<QStringList>("values");
    QTest::addColumn<QString>("valueText");
    QTest::addColumn<bool>("offersWrite");
    QTest::newRow("ordinary") << jogSpeed << "200.0" << true;
    QTest::newRow("read-only") << version << "1" << false;
    // The test looks at the value, not at the name.
    QTest::newRow("named as reserved") << reserved << "0" << true;
    QTest::newRow("value is the word") << jogSpeed << "Reserved" << false;
}

void ParameterTableMenuTest::menuOffersWritingWhereItMay()
{
    QFETCH(QStringList, values);
    QFETCH(QString, valueText);
    QFETCH(bool, offersWrite);
    ParameterTable table;
    table.addRow(values);
    table.item(0, Value)->setText(valueText);
    table.resize(900, 200);
    table.show();
    QStringList expected{"Read Current Parameter"};
    if (offersWrite)
        expected.append(QStringLiteral("Write Current Parameter"));
    QMenu *const menu = openMenu(&table, 0);
    QCOMPARE(textsOf(menu), expected);
    QVERIFY(menu->isVisible());
    // Opened again, it holds the same and not twice as much.
    menu->hide();
    QCOMPARE(textsOf(openMenu(&table, 0)), expected);
}

void ParameterTableMenuTest::noMenuOverEmptySpace()
{
    ParameterTable table;
    table.addRow(jogSpeed);
    table.resize(900, 300);
    table.show();
    QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(50, 200));
    QCoreApplication::sendEvent(table.viewport(), &event);
    QVERIFY(!table.findChild<QMenu *>()->isVisible());
    QSignalSpy reads(&table, &ParameterTable::readCurrentVlue);
    table.readParams();
    QCOMPARE(reads.count(), 0);
}

void ParameterTableMenuTest::menuActionsTellWhenOffline()
{
    ModalAnswers boxes;
    ParameterTable table;
    table.addRow(jogSpeed);
    table.show();
    QSignalSpy reads(&table, &ParameterTable::readCurrentVlue);
    QSignalSpy writes(&table, &ParameterTable::writeCurrentValue);
    openMenu(&table, 0);
    SerialPort::portOpened = false;
    boxes.expect(offline);
    table.readParams();
    boxes.expect(offline);
    table.writeParams();
    QCOMPARE(reads.count() + writes.count(), 0);
}

void ParameterTableMenuTest::menuActionsSendTheRecord()
{
    ParameterTable table;
    table.addRow(panel);
    table.addRow(jogSpeed);
    table.addRow(version);
    table.resize(900, 300);
    table.show();
    QSignalSpy reads(&table, &ParameterTable::readCurrentVlue);
    QSignalSpy writes(&table, &ParameterTable::writeCurrentValue);
    table.item(1, Value)->setForeground(Qt::red);
    const QMenu *const menu = openMenu(&table, 1);
    menu->actions().at(0)->trigger();
    const QStringList record{"Pn-007", "", "200.0", "0.1rpm", "0.0", "6000.0"};
    QCOMPARE(reads.count(), 1);
    QCOMPARE(reads.first().first().toStringList(), record);
    menu->actions().at(1)->trigger();
    QCOMPARE(writes.count(), 1);
    QCOMPARE(writes.first().at(0).toStringList(), record);
    QCOMPARE(writes.first().at(1).toBool(), false);
    QCOMPARE(valueColour(table, 1), QColor(Qt::black));
    // A read-only row is not written, whatever asks for it.
    openMenu(&table, 2);
    table.writeParams();
    QCOMPARE(writes.count(), 1);
}

void ParameterTableMenuTest::doubleClickNamesTheCellUnderIt()
{
    ParameterTable table;
    table.addRow(version);
    table.resize(900, 300);
    table.show();
    QSignalSpy clicks(&table, &QTableWidget::cellDoubleClicked);
    QTest::mouseDClick(table.viewport(), Qt::RightButton, {},
                       table.visualItemRect(table.item(0, Min)).center());
    QCOMPARE(clicks.count(), 0);
    QTest::mouseDClick(table.viewport(), Qt::LeftButton, {}, QPoint(50, 250));
    QCOMPARE(clicks.count(), 1);
    QCOMPARE(clicks.last().at(0).toInt(), -1);
    QCOMPARE(clicks.last().at(1).toInt(), -1);
    QTest::mouseDClick(table.viewport(), Qt::LeftButton, {},
                       table.visualItemRect(table.item(0, Description)).center());
    QCOMPARE(clicks.count(), 2);
    QCOMPARE(clicks.last().at(0).toInt(), 0);
    QCOMPARE(clicks.last().at(1).toInt(), int(Description));
}

QTEST_MAIN(ParameterTableMenuTest)
#include "tst_parametertable_menu.moc"
