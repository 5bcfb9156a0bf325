// SPDX-License-Identifier: GPL-3.0-or-later
// How the printed table is cut into pages, and what stands on each of them.
#include "printsheets.h"
#include "testfiles.h"

#include "parameter/printedpages.h"
#include "support/testdirectory.h"

#include <QImage>
#include <QPrinter>
#include <QTest>
#include <QTextDocument>

#include <functional>

using namespace printsheets;
using namespace testfiles;

namespace {

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

} // namespace

class ParameterPrintPagesTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void pageNumberBecomesSmallerWithTheTable();
    void smallRestIsPulledIn();
    void rowsAreCutIntoPages_data();
    void rowsAreCutIntoPages();
    void noRowIsCutThrough_data();
    void noRowIsCutThrough();
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

void ParameterPrintPagesTest::init()
{
    directory.clear();
}

void ParameterPrintPagesTest::pageNumberBecomesSmallerWithTheTable()
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

void ParameterPrintPagesTest::smallRestIsPulledIn()
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

void ParameterPrintPagesTest::rowsAreCutIntoPages_data()
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

void ParameterPrintPagesTest::rowsAreCutIntoPages()
{
    QFETCH(const QVector<qreal>, rowEnds);
    QFETCH(const qreal, firstRoom);
    QFETCH(const qreal, room);
    QFETCH(const QVector<qreal>, starts);
    QCOMPARE(pageStarts(rowEnds, 10, firstRoom, room), starts);
}

void ParameterPrintPagesTest::noRowIsCutThrough_data()
{
    QTest::addColumn<qreal>("width");
    QTest::addColumn<qreal>("height");
    QTest::addColumn<int>("resolution");

    QTest::newRow("portrait, screen") << a4Width << a4Height << 96;
    QTest::newRow("portrait, printer") << a4Width << a4Height << 600;
    QTest::newRow("landscape") << a4Height << a4Width << 96;
    QTest::newRow("letter") << 8.5 << 11.0 << 100;
}

void ParameterPrintPagesTest::noRowIsCutThrough()
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

void ParameterPrintPagesTest::headStandsOnEveryPage()
{
    // Rows without marks: what is coloured is the head's.
    QList<QStringList> rows = someRows(100);
    for (QStringList &row : rows) {
        for (int column = 1; column <= 5; ++column)
            row[column].clear();
    }
    const PrintedRows printed(rows);
    const PrintedPages &pages = printed.pages;
    QVERIFY(pages.count() > 2);
    for (int page = 0; page < pages.count(); ++page) {
        const QImage image = printed.sheet.painted(pages, page);
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

void ParameterPrintPagesTest::tableIsClosedOnEveryPage()
{
    const PrintedRows printed(someRows(100));
    const PrintedPages &pages = printed.pages;
    for (int page = 0; page < pages.count(); ++page) {
        const QImage image = printed.sheet.painted(pages, page);
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

void ParameterPrintPagesTest::nothingIsPaintedOutsideTheTable()
{
    QList<QStringList> rows = someRows(100);
    rows[70][6] = QString(60, QLatin1Char('8')); // from a foreign file
    const PrintedRows printed(rows);
    const PrintedPages &pages = printed.pages;
    for (int page = 1; page < pages.count(); ++page) {
        const QImage image = printed.sheet.painted(pages, page);
        const QRectF table = pages.tableRect(page).adjusted(-1, -1, 1, 1);
        QCOMPARE(dotsOf(image, QRectF(0, 0, table.left() - 1, printed.sheet.size.height()), isInk), 0);
        QCOMPARE(dotsOf(image,
                        QRectF(table.right() + 1, 0, printed.sheet.size.width(), printed.sheet.size.height()),
                        isInk),
                 0);
        QCOMPARE(dotsOf(image, QRectF(0, 0, printed.sheet.size.width(), table.top() - 1), isInk), 0);
        const qreal end = (a4Height - margin) * 96;
        QCOMPARE(dotsOf(image,
                        QRectF(0, table.bottom() + 1, printed.sheet.size.width(), end - table.bottom() - 1),
                        isInk),
                 0);
    }
}

void ParameterPrintPagesTest::pagesAreNumbered()
{
    const PrintedRows printed(someRows(100));
    const PrintedPages &pages = printed.pages;
    const QRect foot(0, qRound((a4Height - margin) * 96) + 3, qRound(printed.sheet.size.width()),
                     qRound(margin * 96) - 4);
    QList<QImage> feet;
    for (int page = 0; page < pages.count(); ++page) {
        const QImage image = printed.sheet.painted(pages, page);
        QVERIFY(dotsOf(image, foot, isInk) > 10);
        QCOMPARE(dotsOf(image, foot.adjusted(0, 0, -foot.width() / 2, 0), isInk), 0);
        for (const QImage &other : qAsConst(feet))
            QVERIFY(image.copy(foot) != other);
        feet.append(image.copy(foot));
    }
}

void ParameterPrintPagesTest::emptyTableIsOnePage()
{
    const PrintedRows printed({});
    const PrintedPages &pages = printed.pages;
    QCOMPARE(pages.count(), 1);
    QCOMPARE(pages.tableRect(0).bottom(), pages.cellRect(0, 0).bottom());
    QVERIFY(dotsOf(printed.sheet.painted(pages, 0), pages.tableRect(0), isInk) > 100);
}

void ParameterPrintPagesTest::printerChoosesThePages_data()
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

void ParameterPrintPagesTest::printerChoosesThePages()
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

void ParameterPrintPagesTest::printedPdfHoldsTheChosenPages()
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

QTEST_MAIN(ParameterPrintPagesTest)
#include "tst_parameterprint_pages.moc"
