// SPDX-License-Identifier: GPL-3.0-or-later
#include "link/serialport.h"
#include "parameter/parametertable.h"
#include "support/modalanswers.h"

#include <QAbstractButton>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QMenu>
#include <QSignalSpy>
#include <QTest>

namespace {

// A catalogue row as the reader delivers it.
QStringList row(const QString &name, const QString &code, const QStringList &flags, const QString &byDefault,
                const QString &unit, const QString &min, const QString &max)
{
    QStringList values{name, code};
    for (int i = 0; i < 11; ++i)
        values.append(flags.contains(QString::number(i)) ? QString::number(i) : QString());
    return values << byDefault << unit << min << max << QStringLiteral("description");
}

const QStringList version = row("CPU VERSION", "Pn-000", {"0"}, "", "", "", "");
const QStringList jogSpeed = row("JOG speed value", "Pn-007", {}, "200.0", "0.1rpm", "0.0", "6000.0");
const QStringList panel = row("Panel status display", "Pn-003", {"1"}, "", "", "0x000", "0x0199");
const QStringList allFlags =
    row("All", "Pn-044", {"0", "1", "2", "3", "4", "5", "6", "7", "8", "9", "10"}, "1", "", "0", "9");
const QStringList reserved = row("Reserved", "Pn-002", {}, "0", "", "0", "65535");
const QString offline = QStringLiteral("Fail to connect to the device via USB!");

enum Column { Star, Square, Dot, Triangle, Hex, Value, Unit, Min, Max, Default, Description };

QColor valueColour(const ParameterTable &table, int row)
{
    return table.item(row, Value)->foreground().color();
}

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

class ParameterTableTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void rowFillsItsElevenCells();
    void flagsShowTheirSymbols();
    void headsAndFontsFollowTheTable();
    void pairShowsItsFirstCode();
    void columnsAreAsWideAsTheirWidestText();
    void descriptionStaysReadableInANarrowWindow();
    void columnsAreFittedWhenTheWidestTextChanges();
    void valueColumnFollowsItsWidestText();
    void eachFlagShowsItsOwnMark_data();
    void eachFlagShowsItsOwnMark();
    void replyShowsInEveryRowOfItsNumber();
    void replyFindsItsRowWhenRowsHaveComeAndGone();
    void replyWithoutARowChangesNothing();
    void readValueTurnsBlueWhenItDiffersFromTheDefault_data();
    void readValueTurnsBlueWhenItDiffersFromTheDefault();
    void redStaysWhenTheDefaultIsReadBack();
    void helperValueIsTakenOver_data();
    void helperValueIsTakenOver();
    void equalHelperValueLeavesTheColour();
    void helperValueWithoutARowIsIgnored();
    void menuOffersWritingWhereItMay_data();
    void menuOffersWritingWhereItMay();
    void noMenuOverEmptySpace();
    void menuActionsTellWhenOffline();
    void menuActionsSendTheRecord();
    void coloursAreReset();
    void writesLeaveOutReadOnlyAndReserved();
    void doubleClickNamesTheCellUnderIt();
    void cornerShowsFunctionCode();
};

void ParameterTableTest::init()
{
    SerialPort::portOpened = true;
}

void ParameterTableTest::rowFillsItsElevenCells()
{
    ParameterTable table;
    table.addRow(jogSpeed);
    QCOMPARE(table.columnCount(), 11);
    QStringList cells;
    for (int column = 0; column < 11; ++column)
        cells.append(table.item(0, column)->text());
    QCOMPARE(cells, QStringList({"", "", "", "", "", "200.0", "0.1rpm", "0.0", "6000.0", "200.0",
                                 "JOG speed value"}));
    QCOMPARE(table.verticalHeaderItem(0)->text(), QStringLiteral("Pn-007"));
    QCOMPARE(table.rowHeight(0), 25);
    for (int column = 0; column < 11; ++column)
        QCOMPARE(table.item(0, column)->textAlignment(), int(Qt::AlignCenter));
}

void ParameterTableTest::flagsShowTheirSymbols()
{
    ParameterTable table;
    table.addRow(allFlags);
    table.addRow(row("Mark *", "Pn-045", {}, "", "", "", ""));
    QStringList starred = row("Mark *", "Pn-046", {}, "", "", "", "");
    starred[2] = QStringLiteral("*");
    table.addRow(starred);
    const QStringList symbols{"★", "■", "●", "▲", "H"};
    for (int column = 0; column < symbols.size(); ++column) {
        QCOMPARE(table.item(0, column)->text(), symbols.at(column));
        QCOMPARE(table.item(1, column)->text(), QString());
        QCOMPARE(table.item(2, column)->text(), QString());
    }
}

void ParameterTableTest::headsAndFontsFollowTheTable()
{
    ParameterTable table;
    table.addRow(allFlags);
    const QStringList heads{"★", "■", "●", "▲", "H", "Value", "Uint", "Min", "Max", "Default", "Description"};
    for (int column = 0; column < heads.size(); ++column)
        QCOMPARE(table.horizontalHeaderItem(column)->text(), heads.at(column));
    const QList<QColor> colours{QColor(0, 128, 128), QColor(0, 0, 255), QColor(255, 0, 0), QColor(0, 0, 0),
                                QColor(188, 0, 243)};
    for (int column = 0; column < colours.size(); ++column) {
        for (const QTableWidgetItem *item : {table.item(0, column), table.horizontalHeaderItem(column)}) {
            QCOMPARE(item->foreground().color(), colours.at(column));
            QCOMPARE(item->font().family(),
                     column == Hex ? QStringLiteral("Tahoma") : QStringLiteral("Helvetica"));
            QCOMPARE(item->font().pointSize(), column == Hex ? 15 : 17);
        }
    }
    QCOMPARE(table.item(0, Hex)->font().weight(), 75);
    QCOMPARE(table.item(0, Star)->font().hintingPreference(), QFont::PreferFullHinting);
    QCOMPARE(table.font().family(), QStringLiteral("微软雅黑"));
    QCOMPARE(table.horizontalHeader()->height(), 25);
    QCOMPARE(table.horizontalHeader()->defaultSectionSize(), 33);
    QCOMPARE(table.horizontalHeader()->sectionResizeMode(Hex), QHeaderView::Fixed);
    QCOMPARE(table.horizontalHeader()->sectionResizeMode(Value), QHeaderView::ResizeToContents);
    QVERIFY(table.horizontalHeader()->stretchLastSection());
    for (const QHeaderView *header : {table.horizontalHeader(), table.verticalHeader()}) {
        QVERIFY(!header->sectionsClickable());
        QVERIFY(!header->sectionsMovable());
    }
    QCOMPARE(table.selectionBehavior(), QAbstractItemView::SelectRows);
    QCOMPARE(table.selectionMode(), QAbstractItemView::SingleSelection);
    QCOMPARE(table.editTriggers(), QAbstractItemView::NoEditTriggers);
}

void ParameterTableTest::pairShowsItsFirstCode()
{
    ParameterTable table;
    table.addRow(row("Pair", "Pn-304~Pn-305", {}, "1", "", "1", "9"));
    QCOMPARE(table.code(0), QStringLiteral("Pn-304"));
}

namespace {

// As wide as Qt itself makes a column of these contents.
class Hints : public ParameterTable
{
public:
    int widthOf(int column) const
    {
        return qMax(qMax(sizeHintForColumn(column), horizontalHeader()->sectionSizeHint(column)),
                    horizontalHeader()->minimumSectionSize());
    }
};

} // namespace

void ParameterTableTest::columnsAreAsWideAsTheirWidestText()
{
    Hints table;
    table.addRow(row("First", "Pn-606", {"4"}, "1", "0.1rpm", "-2147483647", "2147483647"));
    table.addRow(row("Second", "Pn-607", {}, "123456", "", "0", "9"));
    table.resize(900, 300);
    table.show();
    QCoreApplication::processEvents();
    for (int column = 0; column < 10; ++column) {
        if (column != 4) // fixed
            QCOMPARE(table.columnWidth(column), table.widthOf(column));
    }
}

// Counts how often the column is looked at.
void ParameterTableTest::descriptionStaysReadableInANarrowWindow()
{
    constexpr int description = 10;
    ParameterTable table;
    table.addRow(jogSpeed);
    table.show();
    QVERIFY(QTest::qWaitForWindowExposed(&table));
    const int needed = table.fontMetrics().horizontalAdvance(table.item(0, description)->text());
    table.resize(1200, 300);
    QVERIFY(table.horizontalHeader()->stretchLastSection());
    table.resize(450, 300);
    QVERIFY(table.columnWidth(description) > needed);
    table.resize(1200, 300);
    QVERIFY(table.horizontalHeader()->stretchLastSection());
}

void ParameterTableTest::columnsAreFittedWhenTheWidestTextChanges()
{
    class Counting : public ParameterTable
    {
    public:
        mutable int fits = 0;

    protected:
        int sizeHintForColumn(int column) const override
        {
            fits += column == Value;
            return ParameterTable::sizeHintForColumn(column);
        }
    };
    Counting table;
    for (const char *code : {"Pn-001", "Pn-002", "Pn-003"})
        table.addRow(row("Row", QLatin1String(code), {}, "1000", "", "0", "9"));
    table.show();
    QCoreApplication::processEvents();
    table.fits = 0;
    for (int value = 1; value <= 300; ++value) {
        table.showReply(2, QByteArray(1, char(value / 256)) + char(value % 256));
        QCoreApplication::processEvents();
    }
    QCOMPARE(table.text(1, ParameterTable::ValueColumn), QStringLiteral("300"));
    QCOMPARE(table.fits, 0);
    table.item(1, Value)->setText(QStringLiteral("123456789"));
    QCoreApplication::processEvents();
    QCOMPARE(table.fits, 1);
}

void ParameterTableTest::valueColumnFollowsItsWidestText()
{
    Hints table;
    for (int i = 0; i < 3; ++i)
        table.addRow(row("Row", "Pn-606", {}, "1", "", "0", "9"));
    table.show();
    QCoreApplication::processEvents();
    const int narrow = table.columnWidth(Value);
    // The header fits its columns when events run.
    const auto check = [&table] { QTRY_COMPARE(table.columnWidth(Value), table.widthOf(Value)); };
    check();
    for (const char *text : {"123456789012", "1234567890123456", "12345678901234", "1", "-300.0"}) {
        table.item(1, Value)->setText(QLatin1String(text));
        check();
        table.item(2, Value)->setText(QLatin1String(text));
        check();
        table.item(2, Value)->setText(QStringLiteral("1"));
        check();
    }
    table.item(1, Value)->setText(QStringLiteral("123456789012"));
    QTRY_VERIFY(table.columnWidth(Value) > narrow);
    QFont larger = table.font();
    larger.setPointSize(larger.pointSize() * 2);
    table.setFont(larger);
    check();
    // What a removed row has wanted counts no longer at the next change.
    table.removeRow(1);
    table.item(0, Value)->setText(QStringLiteral("2"));
    check();
    table.insertRow(0);
    table.setItem(0, Value, new QTableWidgetItem(QStringLiteral("12345678901234567")));
    check();
}

void ParameterTableTest::eachFlagShowsItsOwnMark_data()
{
    QTest::addColumn<int>("flagRow");
    QTest::addColumn<int>("column");
    QTest::addColumn<QString>("mark");
    QTest::newRow("read-only") << 0 << 0 << QString::fromUtf8("★");
    QTest::newRow("servo off") << 3 << 1 << QString::fromUtf8("■");
    QTest::newRow("re-power") << 5 << 2 << QString::fromUtf8("●");
    QTest::newRow("volatile") << 4 << 3 << QString::fromUtf8("▲");
    QTest::newRow("hexadecimal") << 1 << 4 << QStringLiteral("H");
}

void ParameterTableTest::eachFlagShowsItsOwnMark()
{
    QFETCH(int, flagRow);
    QFETCH(int, column);
    QFETCH(QString, mark);
    QStringList values = row("Name", "Pn-100", {}, "1", "", "0", "9");
    values[2 + flagRow] = QString::number(flagRow);
    ParameterTable table;
    table.addRow(values);
    for (int i = 0; i < 5; ++i)
        QCOMPARE(table.item(0, i)->text(), i == column ? mark : QString());
}

void ParameterTableTest::replyShowsInEveryRowOfItsNumber()
{
    ParameterTable table;
    table.addRow(row("First", "Pn-606", {}, "", "", "0", "9"));
    table.addRow(row("Other", "Pn-607", {}, "", "", "0", "9"));
    table.addRow(row("Second", "Pn-606", {"1"}, "", "", "0x0", "0x9"));
    table.showReply(6, QByteArray::fromHex("0007"));
    QCOMPARE(table.text(0, ParameterTable::ValueColumn), QStringLiteral("7"));
    QCOMPARE(table.text(1, ParameterTable::ValueColumn), QString());
    QCOMPARE(table.text(2, ParameterTable::ValueColumn), QStringLiteral("0x0007"));
}

void ParameterTableTest::replyFindsItsRowWhenRowsHaveComeAndGone()
{
    ParameterTable table;
    table.addRow(version);
    table.addRow(reserved);
    table.showReply(2, QByteArray::fromHex("0005"));
    QCOMPARE(table.item(1, Value)->text(), QStringLiteral("5"));
    table.removeRow(0);
    table.showReply(2, QByteArray::fromHex("0007"));
    QCOMPARE(table.item(0, Value)->text(), QStringLiteral("7"));
    table.addRow(jogSpeed);
    table.showReply(7, QByteArray::fromHex("07d0"));
    QCOMPARE(table.item(1, Value)->text(), QStringLiteral("200.0"));
    QCOMPARE(table.item(0, Value)->text(), QStringLiteral("7"));
}

void ParameterTableTest::replyWithoutARowChangesNothing()
{
    ParameterTable table;
    table.addRow(jogSpeed);
    table.showReply(8, QByteArray::fromHex("0007"));
    QCOMPARE(table.text(0, ParameterTable::ValueColumn), QStringLiteral("200.0"));
    QVERIFY(valueColour(table, 0) != QColor(Qt::blue));
}

void ParameterTableTest::readValueTurnsBlueWhenItDiffersFromTheDefault_data()
{
    QTest::addColumn<QString>("byDefault");
    QTest::addColumn<QString>("reply");
    QTest::addColumn<bool>("blue");
    QTest::newRow("equal") << "200.0"
                           << "07d0" << false;
    QTest::newRow("different") << "200.0"
                               << "07d1" << true;
    QTest::newRow("no default") << ""
                                << "07d1" << false;
    QTest::newRow("compared as text") << "200"
                                      << "07d0" << true;
}

void ParameterTableTest::readValueTurnsBlueWhenItDiffersFromTheDefault()
{
    QFETCH(QString, byDefault);
    QFETCH(QString, reply);
    QFETCH(bool, blue);
    ParameterTable table;
    table.addRow(row("JOG speed value", "Pn-007", {}, byDefault, "0.1rpm", "0.0", "6000.0"));
    table.showReply(7, QByteArray::fromHex(reply.toLatin1()));
    QCOMPARE(valueColour(table, 0) == QColor(Qt::blue), blue);
}

void ParameterTableTest::redStaysWhenTheDefaultIsReadBack()
{
    ParameterTable table;
    table.addRow(jogSpeed);
    table.item(0, Value)->setForeground(Qt::red);
    table.showReply(7, QByteArray::fromHex("07d0"));
    QCOMPARE(valueColour(table, 0), QColor(Qt::red));
}

void ParameterTableTest::helperValueIsTakenOver_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<bool>("ramOnly");
    QTest::addColumn<QString>("shown");
    QTest::newRow("RAM") << "150.0" << true << "150.0";
    QTest::newRow("EEPROM") << "150.0" << false << "150.0";
    QTest::newRow("0x1 is completed") << "0x1" << true << "0x0001";
    QTest::newRow("0X12 is completed") << "0X12" << false << "0X0012";
    QTest::newRow("six characters stay") << "0x0012" << true << "0x0012";
    QTest::newRow("longer stays") << "0x00012" << true << "0x00012";
}

void ParameterTableTest::helperValueIsTakenOver()
{
    QFETCH(QString, value);
    QFETCH(bool, ramOnly);
    QFETCH(QString, shown);
    ParameterTable table;
    table.addRow(jogSpeed);
    table.setCurrentCell(0, Value);
    table.cellDoubleClickedSlot(0, Value);
    table.setParamValueSlot(value, ramOnly);
    QCOMPARE(table.text(0, ParameterTable::ValueColumn), shown);
    QCOMPARE(valueColour(table, 0), ramOnly ? QColor(Qt::red) : QColor(Qt::black));
    QVERIFY(!table.currentItem());
}

void ParameterTableTest::equalHelperValueLeavesTheColour()
{
    ParameterTable table;
    table.addRow(jogSpeed);
    table.item(0, Value)->setForeground(Qt::blue);
    table.cellDoubleClickedSlot(0, Description);
    table.setParamValueSlot(QStringLiteral("200.0"), true);
    QCOMPARE(valueColour(table, 0), QColor(Qt::blue));
}

void ParameterTableTest::helperValueWithoutARowIsIgnored()
{
    ParameterTable table;
    table.addRow(jogSpeed);
    table.setParamValueSlot(QStringLiteral("1.0"), true);
    QCOMPARE(table.text(0, ParameterTable::ValueColumn), QStringLiteral("200.0"));
    table.cellDoubleClickedSlot(-1, -1);
    table.setParamValueSlot(QStringLiteral("1.0"), true);
    QCOMPARE(table.text(0, ParameterTable::ValueColumn), QStringLiteral("200.0"));
}

void ParameterTableTest::menuOffersWritingWhereItMay_data()
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

void ParameterTableTest::menuOffersWritingWhereItMay()
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

void ParameterTableTest::noMenuOverEmptySpace()
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

void ParameterTableTest::menuActionsTellWhenOffline()
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

void ParameterTableTest::menuActionsSendTheRecord()
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

void ParameterTableTest::coloursAreReset()
{
    ParameterTable table;
    table.addRow(jogSpeed);
    table.addRow(panel);
    table.item(0, Value)->setForeground(Qt::red);
    table.item(1, Value)->setForeground(Qt::blue);
    table.resetValueColours();
    QCOMPARE(valueColour(table, 0), QColor(Qt::black));
    QCOMPARE(valueColour(table, 1), QColor(Qt::black));
}

void ParameterTableTest::writesLeaveOutReadOnlyAndReserved()
{
    ParameterTable table;
    table.addRow(version);
    table.addRow(reserved);
    table.addRow(row("Resevred", "Pn-609", {}, "0", "", "0", "9"));
    table.addRow(jogSpeed);
    QVERIFY(isLeftOutOfWrites(table.rowTexts(0)));
    QVERIFY(isLeftOutOfWrites(table.rowTexts(1)));
    // This spelling is not recognised.
    QVERIFY(!isLeftOutOfWrites(table.rowTexts(2)));
    QVERIFY(!isLeftOutOfWrites(table.rowTexts(3)));
}

void ParameterTableTest::doubleClickNamesTheCellUnderIt()
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

void ParameterTableTest::cornerShowsFunctionCode()
{
    ParameterTable table;
    table.addRow(jogSpeed);
    table.resize(900, 200);
    table.show();
    auto *const corner = table.findChild<QAbstractButton *>();
    QVERIFY(corner);
    QCOMPARE(corner->text(), QStringLiteral("Function Code"));
    QVERIFY(corner->width() >= corner->fontMetrics().horizontalAdvance(corner->text()));
    const QImage with = corner->grab().toImage();
    corner->setText(QString());
    QVERIFY(with != corner->grab().toImage());
}

QTEST_MAIN(ParameterTableTest)
#include "tst_parametertable.moc"
