// SPDX-License-Identifier: GPL-3.0-or-later
// The printed document and its pages, from plain rows.
#include "parameter/parameterprint.h"
#include "parameter/printedpages.h"
#include "support/testdirectory.h"

#include <QFile>
#include <QImage>
#include <QPainter>
#include <QPrinter>
#include <QTest>
#include <QTextDocument>
#include <QTextTable>

#include <functional>

namespace {

const QStringList heads{"Function Code", "★",    "■",   "●",   "▲",       "H",
                        "Value",         "Uint", "Min", "Max", "Default", "Description"};
const QList<QColor> markColours{QColor(0, 128, 128), QColor(0, 0, 255), QColor(255, 0, 0), QColor(0, 0, 0),
                                QColor(188, 0, 243)};
const QString longName =
    QStringLiteral("A name of a parameter that is so long that it takes two lines of its column or three");
constexpr qreal a4Width = 8.27; // inches
constexpr qreal a4Height = 11.69;
constexpr qreal margin = 20 / 25.4; // inches

// Rows with names of one line and of more, by turns, so that page breaks meet both.
QList<QStringList> someRows(int count)
{
    QList<QStringList> rows;
    for (int i = 0; i < count; ++i)
        rows.append({QStringLiteral("Pn-%1").arg(i, 3, 10, QLatin1Char('0')), "★", "■", "●", "▲", "H",
                     QString::number(i), "0.01kg.cm2", "-2147483647", "2147483647", "0",
                     i % 3 == 0 ? longName : QStringLiteral("Reserved")});
    return rows;
}

void fill(QTextDocument *document, const QList<QStringList> &rows)
{
    ParameterPrint print(document);
    print.begin(heads);
    print.addRows(rows);
    print.finish();
}

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

// A sheet of paper to paint on, in inches and dots per inch.
class Sheet
{
public:
    Sheet(qreal width, qreal height, int resolution)
        : size(width * resolution, height * resolution)
        , image(size.toSize(), QImage::Format_RGB32)
    {
        image.setDotsPerMeterX(qRound(resolution / 0.0254));
        image.setDotsPerMeterY(qRound(resolution / 0.0254));
        image.fill(Qt::white);
    }
    QImage painted(const PrintedPages &pages, int page) const
    {
        QImage result = image;
        QPainter painter(&result);
        pages.paint(&painter, page);
        return result;
    }

    QSizeF size;
    QImage image;
};

int dotsOf(const QImage &image, const QRectF &where, const std::function<bool(const QColor &)> &isMeant)
{
    int count = 0;
    const QRect area = where.toAlignedRect().intersected(image.rect());
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x)
            count += isMeant(image.pixelColor(x, y)) ? 1 : 0;
    }
    return count;
}

bool isInk(const QColor &colour)
{
    return colour != QColor(Qt::white);
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

class ParameterPrintTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void headingStandsAboveTheTable();
    void tableHoldsHeadAndRowsInOrder();
    void tableHasPaddingAndNoSpacing();
    void everyCellIsInTheMiddle();
    void marksKeepTheirColours();
    void shortRowLeavesCellsEmpty();
    void nextPrintoutReplacesTheLast();
    void documentHoldsTheTextsAsTheyAre_data();
    void documentHoldsTheTextsAsTheyAre();
    void endlessWordIsBrokenOnPaper_data();
    void endlessWordIsBrokenOnPaper();
    void tableTakesTheWidthOfThePaper_data();
    void tableTakesTheWidthOfThePaper();
    void pageNumberBecomesSmallerWithTheTable();
    void smallRestIsPulledIn();
    void rowsAreCutIntoPages_data();
    void rowsAreCutIntoPages();
    void noRowIsCutThrough_data();
    void noRowIsCutThrough();
    void columnsLineUpOnAllPages();
    void codesAndLimitsStayOnOneLine_data();
    void codesAndLimitsStayOnOneLine();
    void nameTakesTheWidestColumn();
    void narrowPaperGetsASmallerTable();
    void headStandsOnEveryPage();
    void tableIsClosedOnEveryPage();
    void nothingIsPaintedOutsideTheTable();
    void pagesAreNumbered();
    void emptyTableIsOnePage();
    void printerChoosesThePages_data();
    void printerChoosesThePages();
    void printedPdfHoldsTheChosenPages();

private:
    TestDirectory directory;
};

void ParameterPrintTest::init()
{
    directory.clear();
}

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
    QTextDocument document;
    fill(&document, {row});
    const Sheet sheet(a4Width, a4Height, 96);
    QImage device = sheet.image;
    const PrintedPages pages(document, &device, sheet.size);
    QCOMPARE(cellText(*tableOf(document), 1, 6), text);
}

void ParameterPrintTest::endlessWordIsBrokenOnPaper_data()
{
    QTest::addColumn<int>("length");
    QTest::addColumn<bool>("broken");
    QTest::newRow("as long as a word may be") << 24 << false;
    QTest::newRow("one more") << 25 << true;
    QTest::newRow("endless") << 200 << true;
}

void ParameterPrintTest::endlessWordIsBrokenOnPaper()
{
    QFETCH(const int, length);
    QFETCH(const bool, broken);
    QList<QStringList> rows = someRows(2);
    rows[0][6] = QString(length, QLatin1Char('8'));
    QTextDocument document;
    fill(&document, rows);
    const Sheet sheet(a4Width, a4Height, 96);
    QImage device = sheet.image;
    const PrintedPages pages(document, &device, sheet.size);
    const qreal oneLine = pages.textRect(2, 6).height();
    QCOMPARE(pages.textRect(1, 6).height() > 1.5 * oneLine, broken);
}

void ParameterPrintTest::tableTakesTheWidthOfThePaper_data()
{
    QTest::addColumn<qreal>("width");
    QTest::addColumn<qreal>("height");
    QTest::newRow("portrait") << a4Width << a4Height;
    QTest::newRow("landscape") << a4Height << a4Width;
    QTest::newRow("A3 landscape") << 16.5 << a4Height;
}

void ParameterPrintTest::tableTakesTheWidthOfThePaper()
{
    QFETCH(const qreal, width);
    QFETCH(const qreal, height);
    QTextDocument document;
    fill(&document, someRows(10));
    const Sheet sheet(width, height, 96);
    QImage device = sheet.image;
    const PrintedPages pages(document, &device, sheet.size);
    const QRectF table = pages.tableRect(0);
    QVERIFY2(qAbs(table.left() - margin * 96) < 8, qPrintable(QString::number(table.left())));
    QVERIFY2(qAbs(table.right() - (width - margin) * 96) < 8, qPrintable(QString::number(table.right())));
}

void ParameterPrintTest::pageNumberBecomesSmallerWithTheTable()
{
    QTextDocument document;
    fill(&document, someRows(40));
    const auto numberHeight = [&document](qreal width, qreal height) {
        const Sheet sheet(width, height, 96);
        QImage device = sheet.image;
        const PrintedPages pages(document, &device, sheet.size);
        const QImage image = sheet.painted(pages, 0);
        const int top = qRound((height - margin) * 96) + 2;
        int rows = 0;
        for (int y = top; y < image.height(); ++y)
            rows += dotsOf(image, QRectF(0, y, image.width(), 0.5), isInk) > 0 ? 1 : 0;
        return rows;
    };
    const int usual = numberHeight(a4Width, a4Height);
    const int small = numberHeight(4.1, 5.8);
    QVERIFY2(small > 0 && small < 0.8 * usual, qPrintable(QStringLiteral("%1 of %2").arg(small).arg(usual)));
}

void ParameterPrintTest::smallRestIsPulledIn()
{
    const Sheet sheet(a4Width, a4Height, 96);
    QImage device = sheet.image;
    bool wasTightened = false;
    int countBefore = 0;
    qreal heightBefore = 0;
    for (int count = 50; count < 100; ++count) {
        QTextDocument document;
        fill(&document, someRows(count));
        const PrintedPages pages(document, &device, sheet.size);
        int rest = 0;
        for (int row = 1; row <= count; ++row)
            rest += pages.pageOfRow(row) == pages.count() - 1 ? 1 : 0;
        QVERIFY2(rest > 2, qPrintable(QStringLiteral("%1 rows, %2 left").arg(count).arg(rest)));
        const qreal height = pages.cellRect(2, 0).height();
        if (heightBefore > 0 && height < heightBefore) {
            wasTightened = true;
            QCOMPARE(pages.count(), countBefore);
            QVERIFY(height > 0.85 * heightBefore);
        }
        countBefore = pages.count();
        heightBefore = height;
    }
    QVERIFY(wasTightened);
}

void ParameterPrintTest::rowsAreCutIntoPages_data()
{
    using Ends = QVector<qreal>;
    QTest::addColumn<Ends>("rowEnds");
    QTest::addColumn<qreal>("firstRoom");
    QTest::addColumn<qreal>("room");
    QTest::addColumn<Ends>("starts");

    QTest::newRow("no rows") << Ends{} << 50.0 << 100.0 << Ends{10};
    QTest::newRow("all on the first") << Ends{20, 30, 60} << 50.0 << 100.0 << Ends{10};
    QTest::newRow("one too many") << Ends{20, 30, 61} << 50.0 << 100.0 << Ends{10, 30};
    QTest::newRow("second page full") << Ends{60, 100, 160, 161} << 50.0 << 100.0 << Ends{10, 60, 160};
    QTest::newRow("high row moves as a whole") << Ends{20, 110, 120} << 50.0 << 100.0 << Ends{10, 20};
    QTest::newRow("heading fills the first") << Ends{20, 30} << 0.0 << 100.0 << Ends{10, 10};
    QTest::newRow("row higher than a page") << Ends{20, 270, 280} << 50.0 << 100.0 << Ends{10, 20, 120, 220};
    QTest::newRow("no room at all") << Ends{20, 30} << 0.0 << 0.0 << Ends{10, 20};
}

void ParameterPrintTest::rowsAreCutIntoPages()
{
    QFETCH(const QVector<qreal>, rowEnds);
    QFETCH(const qreal, firstRoom);
    QFETCH(const qreal, room);
    QFETCH(const QVector<qreal>, starts);
    QCOMPARE(pageStarts(rowEnds, 10, firstRoom, room), starts);
}

void ParameterPrintTest::noRowIsCutThrough_data()
{
    QTest::addColumn<qreal>("width");
    QTest::addColumn<qreal>("height");
    QTest::addColumn<int>("resolution");

    QTest::newRow("portrait, screen") << a4Width << a4Height << 96;
    QTest::newRow("portrait, printer") << a4Width << a4Height << 600;
    QTest::newRow("landscape") << a4Height << a4Width << 96;
    QTest::newRow("letter") << 8.5 << 11.0 << 100;
}

void ParameterPrintTest::noRowIsCutThrough()
{
    QFETCH(const qreal, width);
    QFETCH(const qreal, height);
    QFETCH(const int, resolution);
    constexpr int count = 200;
    QTextDocument document;
    fill(&document, someRows(count));
    QImage device(1, 1, QImage::Format_RGB32);
    device.setDotsPerMeterX(qRound(resolution / 0.0254));
    device.setDotsPerMeterY(qRound(resolution / 0.0254));
    const PrintedPages pages(document, &device, QSizeF(width, height) * resolution);

    QVERIFY(pages.count() > 3);
    qreal above = 0;
    int page = 0;
    for (int row = 0; row <= count; ++row) {
        const QRectF cell = pages.cellRect(row, 11);
        const QRectF text = pages.textRect(row, 11);
        QVERIFY(cell.top() < text.top() && text.bottom() < cell.bottom());
        QVERIFY(cell.top() >= (margin * resolution) - 1);
        QVERIFY(cell.bottom() <= (height - margin) * resolution + 1);
        if (pages.pageOfRow(row) == page) {
            if (row > 0)
                QCOMPARE(cell.top(), above);
        } else {
            // Not before the page was full.
            QCOMPARE(pages.pageOfRow(row), ++page);
            QVERIFY(above + cell.height() > (height - margin) * resolution);
        }
        above = cell.bottom();
    }
    QCOMPARE(page, pages.count() - 1);
}

void ParameterPrintTest::columnsLineUpOnAllPages()
{
    QTextDocument document;
    fill(&document, someRows(150));
    const Sheet sheet(a4Width, a4Height, 96);
    QImage device = sheet.image;
    const PrintedPages pages(document, &device, sheet.size);
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

void ParameterPrintTest::codesAndLimitsStayOnOneLine_data()
{
    QTest::addColumn<qreal>("width");

    QTest::newRow("A4") << a4Width;
    QTest::newRow("A5") << 5.83;
    QTest::newRow("A6") << 4.13;
}

void ParameterPrintTest::codesAndLimitsStayOnOneLine()
{
    QFETCH(const qreal, width);
    QTextDocument document;
    fill(&document, someRows(2));
    const Sheet sheet(width, a4Height, 96);
    QImage device = sheet.image;
    const PrintedPages pages(document, &device, sheet.size);
    // The second row has a name of one line.
    const qreal oneLine = pages.textRect(2, 11).height();
    QVERIFY(pages.textRect(1, 11).height() > 1.5 * oneLine);
    for (int column = 0; column < 11; ++column)
        QVERIFY(pages.textRect(1, column).height() < 1.5 * oneLine);
}

void ParameterPrintTest::nameTakesTheWidestColumn()
{
    QTextDocument document;
    fill(&document, someRows(2));
    const Sheet sheet(a4Width, a4Height, 96);
    QImage device = sheet.image;
    const PrintedPages pages(document, &device, sheet.size);
    for (int column = 0; column < 11; ++column)
        QVERIFY(pages.cellRect(1, column).width() < pages.cellRect(1, 11).width());
    for (int column = 1; column <= 5; ++column)
        QVERIFY(pages.cellRect(1, column).width() < pages.cellRect(1, 0).width());
}

void ParameterPrintTest::narrowPaperGetsASmallerTable()
{
    QTextDocument document;
    fill(&document, someRows(40));
    const Sheet sheet(4.1, 5.8, 96);
    QImage device = sheet.image;
    const PrintedPages pages(document, &device, sheet.size);
    for (int page = 0; page < pages.count(); ++page) {
        const QRectF table = pages.tableRect(page);
        QVERIFY(table.left() >= margin * 96 - 4);
        QVERIFY(table.right() <= (4.1 - margin) * 96 + 4);
        QVERIFY(table.bottom() <= (5.8 - margin) * 96 + 2);
    }
}

void ParameterPrintTest::headStandsOnEveryPage()
{
    QTextDocument document;
    // Rows without marks: what is coloured is the head's.
    QList<QStringList> rows = someRows(100);
    for (QStringList &row : rows) {
        for (int column = 1; column <= 5; ++column)
            row[column].clear();
    }
    fill(&document, rows);
    const Sheet sheet(a4Width, a4Height, 96);
    QImage device = sheet.image;
    const PrintedPages pages(document, &device, sheet.size);
    QVERIFY(pages.count() > 2);
    for (int page = 0; page < pages.count(); ++page) {
        const QImage image = sheet.painted(pages, page);
        const qreal top = pages.tableRect(page).top();
        for (int mark = 0; mark < 5; ++mark) {
            QRectF head = pages.cellRect(0, mark + 1).adjusted(2, 2, -2, -2);
            head.moveTop(top + 2);
            const QColor colour = markColours.at(mark);
            const auto isMark = [&colour](const QColor &dot) {
                return qAbs(dot.red() - colour.red()) + qAbs(dot.green() - colour.green()) +
                           qAbs(dot.blue() - colour.blue()) <
                       60;
            };
            QVERIFY(dotsOf(image, head, isMark) > 2);
        }
    }
}

void ParameterPrintTest::tableIsClosedOnEveryPage()
{
    QTextDocument document;
    fill(&document, someRows(100));
    const Sheet sheet(a4Width, a4Height, 96);
    QImage device = sheet.image;
    const PrintedPages pages(document, &device, sheet.size);
    for (int page = 0; page < pages.count(); ++page) {
        const QImage image = sheet.painted(pages, page);
        const QRectF table = pages.tableRect(page);
        const auto isLine = [&image](qreal x, qreal y) {
            return dotsOf(image, QRectF(x - 1, y - 1, 2, 2), isInk) > 0;
        };
        for (int x = qRound(table.left()); x <= qRound(table.right()); ++x) {
            QVERIFY(isLine(x, table.top()));
            QVERIFY(isLine(x, table.bottom()));
        }
        for (int y = qRound(table.top()); y <= qRound(table.bottom()); ++y) {
            QVERIFY(isLine(table.left(), y));
            QVERIFY(isLine(table.right(), y));
        }
    }
}

void ParameterPrintTest::nothingIsPaintedOutsideTheTable()
{
    QList<QStringList> rows = someRows(100);
    rows[70][6] = QString(60, QLatin1Char('8')); // from a foreign file
    QTextDocument document;
    fill(&document, rows);
    const Sheet sheet(a4Width, a4Height, 96);
    QImage device = sheet.image;
    const PrintedPages pages(document, &device, sheet.size);
    for (int page = 1; page < pages.count(); ++page) {
        const QImage image = sheet.painted(pages, page);
        const QRectF table = pages.tableRect(page).adjusted(-1, -1, 1, 1);
        QCOMPARE(dotsOf(image, QRectF(0, 0, table.left() - 1, sheet.size.height()), isInk), 0);
        QCOMPARE(dotsOf(image, QRectF(table.right() + 1, 0, sheet.size.width(), sheet.size.height()), isInk),
                 0);
        QCOMPARE(dotsOf(image, QRectF(0, 0, sheet.size.width(), table.top() - 1), isInk), 0);
        const qreal end = (a4Height - margin) * 96;
        QCOMPARE(
            dotsOf(image, QRectF(0, table.bottom() + 1, sheet.size.width(), end - table.bottom() - 1), isInk),
            0);
    }
}

void ParameterPrintTest::pagesAreNumbered()
{
    QTextDocument document;
    fill(&document, someRows(100));
    const Sheet sheet(a4Width, a4Height, 96);
    QImage device = sheet.image;
    const PrintedPages pages(document, &device, sheet.size);
    const QRect foot(0, qRound((a4Height - margin) * 96) + 3, qRound(sheet.size.width()),
                     qRound(margin * 96) - 4);
    QList<QImage> feet;
    for (int page = 0; page < pages.count(); ++page) {
        const QImage image = sheet.painted(pages, page);
        QVERIFY(dotsOf(image, foot, isInk) > 10);
        QCOMPARE(dotsOf(image, foot.adjusted(0, 0, -foot.width() / 2, 0), isInk), 0);
        for (const QImage &other : qAsConst(feet))
            QVERIFY(image.copy(foot) != other);
        feet.append(image.copy(foot));
    }
}

void ParameterPrintTest::emptyTableIsOnePage()
{
    QTextDocument document;
    fill(&document, {});
    const Sheet sheet(a4Width, a4Height, 96);
    QImage device = sheet.image;
    const PrintedPages pages(document, &device, sheet.size);
    QCOMPARE(pages.count(), 1);
    QCOMPARE(pages.tableRect(0).bottom(), pages.cellRect(0, 0).bottom());
    QVERIFY(dotsOf(sheet.painted(pages, 0), pages.tableRect(0), isInk) > 100);
}

void ParameterPrintTest::printerChoosesThePages_data()
{
    using Pages = QVector<int>;
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("to");
    QTest::addColumn<bool>("backwards");
    QTest::addColumn<Pages>("pages");

    QTest::newRow("all") << 0 << 0 << false << Pages{0, 1, 2, 3};
    QTest::newRow("all, last first") << 0 << 0 << true << Pages{3, 2, 1, 0};
    QTest::newRow("some") << 2 << 3 << false << Pages{1, 2};
    QTest::newRow("some, last first") << 2 << 3 << true << Pages{2, 1};
    QTest::newRow("beyond the end") << 3 << 9 << false << Pages{2, 3};
    QTest::newRow("none of them") << 6 << 9 << false << Pages{};
}

void ParameterPrintTest::printerChoosesThePages()
{
    QFETCH(const int, from);
    QFETCH(const int, to);
    QFETCH(const bool, backwards);
    QFETCH(const QVector<int>, pages);
    QPrinter printer;
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setFromTo(from, to);
    printer.setPageOrder(backwards ? QPrinter::LastPageFirst : QPrinter::FirstPageFirst);
    QCOMPARE(pagesToPrint(printer, 4), pages);
}

void ParameterPrintTest::printedPdfHoldsTheChosenPages()
{
    QTextDocument document;
    fill(&document, someRows(150));
    const auto pagesIn = [&document](int from, int to) {
        {
            QPrinter printer;
            printer.setOutputFormat(QPrinter::PdfFormat);
            printer.setOutputFileName(QStringLiteral("pages.pdf"));
            printer.setFromTo(from, to);
            printParameters(document, &printer);
        }
        return contentOf(QStringLiteral("pages.pdf")).count("/Type /Page\n");
    };
    QVERIFY(pagesIn(0, 0) > 3);
    QCOMPARE(pagesIn(2, 3), 2);
    QCOMPARE(pagesIn(1, 1), 1);
}

QTEST_MAIN(ParameterPrintTest)
#include "tst_parameterprint.moc"
