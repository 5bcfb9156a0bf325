// SPDX-License-Identifier: GPL-3.0-or-later
// The printed document, from plain rows.
#include "printsheets.h"

#include "parameter/parameterprint.h"
#include "parameter/printedpages.h"

#include <QImage>
#include <QTest>
#include <QTextDocument>
#include <QTextTable>

using namespace printsheets;

namespace {

QTextTable *tableOf(const QTextDocument &document)
{
    return qobject_cast<QTextTable *>(document.rootFrame()->childFrames().first());
}

QString cellText(const QTextTable &table, int row, int column)
{
    const QTextTableCell cell = table.cellAt(row, column);
    QTextCursor cursor = cell.firstCursorPosition();
    cursor.setPosition(cell.lastPosition(), QTextCursor::KeepAnchor);
    return cursor.selectedText();
}

QTextCharFormat textFormat(const QTextTable &table, int row, int column)
{
    QTextCursor cursor = table.cellAt(row, column).firstCursorPosition();
    cursor.movePosition(QTextCursor::NextCharacter);
    return cursor.charFormat();
}

} // namespace

class ParameterPrintTest : public QObject
{
    Q_OBJECT

private slots:
    void headingStandsAboveTheTable();
    void tableHoldsHeadAndRowsInOrder();
    void tableHasPaddingAndNoSpacing();
    void everyCellIsInTheMiddle();
    void marksKeepTheirColours();
    void shortRowLeavesCellsEmpty();
    void nextPrintoutReplacesTheLast();
    void documentHoldsTheTextsAsTheyAre_data();
    void documentHoldsTheTextsAsTheyAre();
};

void ParameterPrintTest::headingStandsAboveTheTable()
{
    QTextDocument document;
    fill(&document, someRows(2));
    QTextBlock block = document.firstBlock();
    QCOMPARE(block.text(), QStringLiteral(" "));
    block = block.next();
    QCOMPARE(block.text(), QStringLiteral("KT500 Servo Parameter"));
    QCOMPARE(block.blockFormat().alignment(), Qt::AlignCenter);
    const QTextCharFormat format = block.begin().fragment().charFormat();
    QCOMPARE(format.foreground().color(), QColor(Qt::black));
    // The tag's size, counted from the normal one, which is 3.
    QCOMPARE(format.property(QTextFormat::FontSizeAdjustment).toInt(), 9 - 3);
    QVERIFY(block.position() < tableOf(document)->firstPosition());
    QCOMPARE(document.rootFrame()->childFrames().size(), 1);
}

void ParameterPrintTest::tableHoldsHeadAndRowsInOrder()
{
    const QList<QStringList> rows = someRows(30);
    QTextDocument document;
    ParameterPrint print(&document);
    print.begin(heads);
    print.addRows(rows.mid(0, 10));
    print.addRows({});
    print.addRows(rows.mid(10));
    print.finish();

    const QTextTable *const table = tableOf(document);
    QCOMPARE(table->columns(), 12);
    QCOMPARE(table->rows(), 31);
    for (int column = 0; column < 12; ++column) {
        QCOMPARE(cellText(*table, 0, column), heads.at(column));
        for (int row = 0; row < rows.size(); ++row)
            QCOMPARE(cellText(*table, row + 1, column), rows.at(row).at(column));
    }
}

void ParameterPrintTest::tableHasPaddingAndNoSpacing()
{
    QTextDocument document;
    fill(&document, someRows(1));
    QCOMPARE(tableOf(document)->format().cellPadding(), 2.5);
    QCOMPARE(tableOf(document)->format().cellSpacing(), 0.0);
}

void ParameterPrintTest::everyCellIsInTheMiddle()
{
    QTextDocument document;
    fill(&document, someRows(3));
    const QTextTable *const table = tableOf(document);
    for (int row = 1; row < table->rows(); ++row) {
        for (int column = 0; column < 12; ++column) {
            const QTextTableCell cell = table->cellAt(row, column);
            QCOMPARE(cell.format().verticalAlignment(), QTextCharFormat::AlignMiddle);
            QCOMPARE(cell.firstCursorPosition().blockFormat().alignment(), Qt::AlignCenter);
        }
    }
}

void ParameterPrintTest::marksKeepTheirColours()
{
    QTextDocument document;
    fill(&document, someRows(1));
    const QTextTable *const table = tableOf(document);
    for (int row = 0; row < 2; ++row) {
        for (int column = 0; column < 12; ++column) {
            const bool isMark = column >= 1 && column <= 5;
            QCOMPARE(textFormat(*table, row, column).foreground().color(),
                     isMark ? markColours.at(column - 1) : QColor(Qt::black));
        }
    }
}

void ParameterPrintTest::shortRowLeavesCellsEmpty()
{
    QTextDocument document;
    fill(&document, {{"Pn-100"}});
    QCOMPARE(cellText(*tableOf(document), 1, 0), QStringLiteral("Pn-100"));
    for (int column = 1; column < 12; ++column)
        QCOMPARE(cellText(*tableOf(document), 1, column), QString());
}

void ParameterPrintTest::nextPrintoutReplacesTheLast()
{
    QTextDocument document;
    fill(&document, someRows(5));
    fill(&document, someRows(2));
    QCOMPARE(document.rootFrame()->childFrames().size(), 1);
    QCOMPARE(tableOf(document)->rows(), 3);
    QCOMPARE(document.toPlainText().count(QStringLiteral("KT500 Servo Parameter")), 1);
}

void ParameterPrintTest::documentHoldsTheTextsAsTheyAre_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("nothing") << QString();
    QTest::newRow("words") << "two words";
    QTest::newRow("endless word") << QString(60, QLatin1Char('x'));
    QTest::newRow("endless words") << QString(60, QLatin1Char('x')) + " " + QString(25, QLatin1Char('y'));
}

void ParameterPrintTest::documentHoldsTheTextsAsTheyAre()
{
    QFETCH(const QString, text);
    QStringList row = someRows(1).first();
    row[6] = text;
    const PrintedRows printed({row});
    QCOMPARE(cellText(*tableOf(printed.document), 1, 6), text);
}

QTEST_MAIN(ParameterPrintTest)
#include "tst_parameterprint.moc"
