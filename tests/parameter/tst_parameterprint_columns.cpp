// SPDX-License-Identifier: GPL-3.0-or-later
// How the printed table takes the width of its paper.
#include "printsheets.h"

#include "parameter/printedpages.h"

#include <QImage>
#include <QTest>
#include <QTextDocument>

using namespace printsheets;

class ParameterPrintColumnsTest : public QObject
{
    Q_OBJECT

private slots:
    void endlessWordIsBrokenOnPaper_data();
    void endlessWordIsBrokenOnPaper();
    void tableTakesTheWidthOfThePaper_data();
    void tableTakesTheWidthOfThePaper();
    void columnsLineUpOnAllPages();
    void codesAndLimitsStayOnOneLine_data();
    void codesAndLimitsStayOnOneLine();
    void nameTakesTheWidestColumn();
    void narrowPaperGetsASmallerTable();
};

void ParameterPrintColumnsTest::endlessWordIsBrokenOnPaper_data()
{
    QTest::addColumn<int>("length");
    QTest::addColumn<bool>("broken");
    QTest::newRow("as long as a word may be") << 24 << false;
    QTest::newRow("one more") << 25 << true;
    QTest::newRow("endless") << 200 << true;
}

void ParameterPrintColumnsTest::endlessWordIsBrokenOnPaper()
{
    QFETCH(const int, length);
    QFETCH(const bool, broken);
    QList<QStringList> rows = someRows(2);
    rows[0][6] = QString(length, QLatin1Char('8'));
    const PrintedRows printed(rows);
    const PrintedPages &pages = printed.pages;
    const qreal oneLine = pages.textRect(2, 6).height();
    QCOMPARE(pages.textRect(1, 6).height() > 1.5 * oneLine, broken);
}

void ParameterPrintColumnsTest::tableTakesTheWidthOfThePaper_data()
{
    QTest::addColumn<qreal>("width");
    QTest::addColumn<qreal>("height");
    QTest::newRow("portrait") << a4Width << a4Height;
    QTest::newRow("landscape") << a4Height << a4Width;
    QTest::newRow("A3 landscape") << 16.5 << a4Height;
}

void ParameterPrintColumnsTest::tableTakesTheWidthOfThePaper()
{
    QFETCH(const qreal, width);
    QFETCH(const qreal, height);
    const PrintedRows printed(someRows(10), width, height);
    const PrintedPages &pages = printed.pages;
    const QRectF table = pages.tableRect(0);
    QVERIFY2(qAbs(table.left() - margin * 96) < 8, qPrintable(QString::number(table.left())));
    QVERIFY2(qAbs(table.right() - (width - margin) * 96) < 8, qPrintable(QString::number(table.right())));
}

void ParameterPrintColumnsTest::columnsLineUpOnAllPages()
{
    const PrintedRows printed(someRows(150));
    const PrintedPages &pages = printed.pages;
    for (int column = 0; column < 12; ++column) {
        const QRectF head = pages.cellRect(0, column);
        if (column > 0)
            QCOMPARE(head.left(), pages.cellRect(0, column - 1).right());
        for (int row = 1; row <= 150; ++row) {
            QCOMPARE(pages.cellRect(row, column).left(), head.left());
            QCOMPARE(pages.cellRect(row, column).right(), head.right());
        }
    }
    // From margin to margin, but for what whole pixels leave of twelve columns.
    const qreal left = pages.cellRect(0, 0).left() - margin * 96;
    const qreal right = (a4Width - margin) * 96 - pages.cellRect(0, 11).right();
    QVERIFY(qAbs(left) < 6);
    QVERIFY(qAbs(right) < 6);
}

void ParameterPrintColumnsTest::codesAndLimitsStayOnOneLine_data()
{
    QTest::addColumn<qreal>("width");

    QTest::newRow("A4") << a4Width;
    QTest::newRow("A5") << 5.83;
    QTest::newRow("A6") << 4.13;
}

void ParameterPrintColumnsTest::codesAndLimitsStayOnOneLine()
{
    QFETCH(const qreal, width);
    const PrintedRows printed(someRows(2), width);
    const PrintedPages &pages = printed.pages;
    // The second row has a name of one line.
    const qreal oneLine = pages.textRect(2, 11).height();
    QVERIFY(pages.textRect(1, 11).height() > 1.5 * oneLine);
    for (int column = 0; column < 11; ++column)
        QVERIFY(pages.textRect(1, column).height() < 1.5 * oneLine);
}

void ParameterPrintColumnsTest::nameTakesTheWidestColumn()
{
    const PrintedRows printed(someRows(2));
    const PrintedPages &pages = printed.pages;
    for (int column = 0; column < 11; ++column)
        QVERIFY(pages.cellRect(1, column).width() < pages.cellRect(1, 11).width());
    for (int column = 1; column <= 5; ++column)
        QVERIFY(pages.cellRect(1, column).width() < pages.cellRect(1, 0).width());
}

void ParameterPrintColumnsTest::narrowPaperGetsASmallerTable()
{
    const PrintedRows printed(someRows(40), 4.1, 5.8);
    const PrintedPages &pages = printed.pages;
    for (int page = 0; page < pages.count(); ++page) {
        const QRectF table = pages.tableRect(page);
        QVERIFY(table.left() >= margin * 96 - 4);
        QVERIFY(table.right() <= (4.1 - margin) * 96 + 4);
        QVERIFY(table.bottom() <= (5.8 - margin) * 96 + 2);
    }
}

QTEST_MAIN(ParameterPrintColumnsTest)
#include "tst_parameterprint_columns.moc"
