// SPDX-License-Identifier: GPL-3.0-or-later
// Heads, fonts and widths of the parameter table's columns.
#include "tablerows.h"

#include "link/serialport.h"
#include "parameter/parametertable.h"

#include <QAbstractButton>
#include <QHeaderView>
#include <QTest>

using namespace tablerows;

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

class ParameterTableColumnsTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void headsAndFontsFollowTheTable();
    void columnsAreAsWideAsTheirWidestText();
    void descriptionStaysReadableInANarrowWindow();
    void columnsAreFittedWhenTheWidestTextChanges();
    void valueColumnFollowsItsWidestText();
    void cornerShowsFunctionCode();
};

void ParameterTableColumnsTest::init()
{
    SerialPort::portOpened = true;
}

void ParameterTableColumnsTest::headsAndFontsFollowTheTable()
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

void ParameterTableColumnsTest::columnsAreAsWideAsTheirWidestText()
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

void ParameterTableColumnsTest::descriptionStaysReadableInANarrowWindow()
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

void ParameterTableColumnsTest::columnsAreFittedWhenTheWidestTextChanges()
{
    // Counts how often the column is looked at.
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

void ParameterTableColumnsTest::valueColumnFollowsItsWidestText()
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

void ParameterTableColumnsTest::cornerShowsFunctionCode()
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

QTEST_MAIN(ParameterTableColumnsTest)
#include "tst_parametertable_columns.moc"
