// SPDX-License-Identifier: GPL-3.0-or-later
#include "parameter/printedpages.h"

#include "parameter/parameterprint.h"

#include <QAbstractTextDocumentLayout>
#include <QGuiApplication>
#include <QPainter>
#include <QPrinter>
#include <QRegularExpression>
#include <QScreen>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextTable>

#include <algorithm>
#include <array>
#include <cmath>

namespace {

constexpr qreal lineThickness = 0.6; // points
constexpr qreal marginWidth = 20;    // mm
constexpr qreal mmPerInch = 25.4;
constexpr qreal pointsPerInch = 72;

constexpr int longestWord = 24; // characters; the catalogue's longest fits
constexpr int wordPiece = 12;   // characters
constexpr int smallRest = 2;    // rows that are no page of their own
// Of the cells, to pull such a rest in; the document's own is the first to be tried.
constexpr std::array<qreal, 3> tighterPaddings{{2.25, 2, 1.75}};

const QColor lineColour(0x80, 0x80, 0x80);

// Dots per inch that lengths in a text document are meant for.
qreal documentResolution()
{
    const QScreen *const screen = QGuiApplication::primaryScreen();
    if (!screen || QCoreApplication::testAttribute(Qt::AA_Use96Dpi))
        return 96;
    return std::round(screen->logicalDotsPerInchY());
}

// A value from a foreign file may be one endless word: it gets places where a line may end, which do not
// show.
void makeBreakable(QTextBlock block)
{
    static const QRegularExpression longWord(QStringLiteral("\\S{%1,}").arg(longestWord + 1));
    const QString text = block.text();
    QVector<int> places;
    for (auto words = longWord.globalMatch(text); words.hasNext();) {
        const QRegularExpressionMatch word = words.next();
        for (int place = wordPiece; place < word.capturedLength(); place += wordPiece)
            places.prepend(word.capturedStart() + place);
    }
    QTextCursor cursor(block);
    for (const int place : qAsConst(places)) {
        cursor.setPosition(block.position() + place);
        cursor.insertText(QString(QChar(0x200B)));
    }
}

} // namespace

QVector<qreal> pageStarts(const QVector<qreal> &rowEnds, qreal start, qreal firstRoom, qreal room)
{
    QVector<qreal> starts{start};
    const auto pageEnd = [&] { return starts.last() + (starts.size() == 1 ? firstRoom : room); };
    qreal rowStart = start;
    for (const qreal rowEnd : rowEnds) {
        if (rowEnd > pageEnd() && rowStart > starts.last())
            starts.append(rowStart);
        while (rowEnd > pageEnd() && room > 0)
            starts.append(pageEnd());
        rowStart = rowEnd;
    }
    return starts;
}

PrintedPages::PrintedPages(const QTextDocument &document, QPaintDevice *paintDevice, QSizeF pageSize)
    : laidOut(document.clone())
    , device(paintDevice)
    , paperSize(pageSize)
{
    table = qobject_cast<QTextTable *>(laidOut->rootFrame()->childFrames().first());
    QTextCursor edit(laidOut.get());
    edit.beginEditBlock();
    for (QTextBlock block = laidOut->begin(); block.isValid(); block = block.next()) {
        if (block.length() > longestWord)
            makeBreakable(block);
    }
    // The lines are painted here, where the page breaks are known.
    QTextTableFormat format = table->format();
    format.setBorder(0);
    format.setWidth(QTextLength(QTextLength::PercentageLength, 100));
    table->setFormat(format);
    edit.endEditBlock();
    laidOut->documentLayout()->setPaintDevice(device);
    fitOn(ParameterPrint::cellPadding);
    pullInRest();
}

// Lays the table out, smaller than it would be where the paper is too narrow for it.
void PrintedPages::fitOn(qreal cellPadding)
{
    QTextTableFormat format = table->format();
    format.setCellPadding(cellPadding);
    table->setFormat(format);
    qreal enlargement = 1;
    layOut(enlargement);
    // Whole pixels make a table that fits a little wider or narrower than its page, and no other again as
    // wide as was reckoned.
    for (const qreal tolerance : {margin / 10, margin / 30, margin / 30}) {
        const qreal available = layoutSize.width() - 2 * margin;
        const qreal needed = columns.last() - columns.first();
        if (available <= 0 || needed <= available + tolerance)
            break;
        enlargement *= needed / available;
        layOut(enlargement);
    }
    cutIntoPages();
}

// A last page of a row or two is none where slightly lower rows take it in.
void PrintedPages::pullInRest()
{
    const int before = count();
    if (before < 2 || rowsOnLastPage() > smallRest)
        return;
    for (const qreal tighter : tighterPaddings) {
        fitOn(tighter);
        if (count() < before)
            return;
    }
    fitOn(ParameterPrint::cellPadding);
}

int PrintedPages::rowsOnLastPage() const
{
    return int(std::count_if(rows.begin(), rows.end(), [this](qreal y) { return y > starts.last(); }));
}

PrintedPages::~PrintedPages() = default;

// The layout would cut rows of two lines at a page break, so it gets one long sheet.
void PrintedPages::layOut(qreal enlargement)
{
    shrinking = 1 / enlargement;
    layoutSize = paperSize * enlargement;
    const qreal toDevice = device->logicalDpiY() / documentResolution();
    margin = enlargement * marginWidth / mmPerInch * device->logicalDpiY();
    padding = table->format().cellPadding() * toDevice;
    lineWidth = lineThickness / pointsPerInch * device->logicalDpiY();
    QTextFrameFormat format = laidOut->rootFrame()->frameFormat();
    format.setMargin(margin / toDevice);
    laidOut->rootFrame()->setFrameFormat(format);
    laidOut->setTextWidth(layoutSize.width());
    measureTable();
}

void PrintedPages::measureTable()
{
    columns.clear();
    for (int column = 0; column < table->columns(); ++column)
        columns.append(textRectInDocument(0, column).left() - padding);
    columns.append(textRectInDocument(0, table->columns() - 1).right() + padding);

    rows.clear();
    for (int row = 0; row < table->rows(); ++row) {
        QRectF text;
        for (int column = 0; column < table->columns(); ++column)
            text |= textRectInDocument(row, column);
        if (row == 0)
            rows.append(text.top() - padding);
        rows.append(text.bottom() + padding);
    }
}

void PrintedPages::cutIntoPages()
{
    const qreal bodyEnd = layoutSize.height() - margin;
    // Paper that is hardly higher than its margins would cut a row into countless pieces.
    const qreal room = bodyEnd - margin - headHeight();
    starts = pageStarts(rows.mid(2), rows.at(1), std::max(bodyEnd - rows.at(1), 0.0),
                        room < headHeight() ? 0 : room);
}

qreal PrintedPages::headHeight() const
{
    return rows.at(1) - rows.at(0);
}

qreal PrintedPages::shiftOf(int page) const
{
    return page == 0 ? 0 : margin + headHeight() - starts.at(page);
}

qreal PrintedPages::endOf(int page) const
{
    return page + 1 < count() ? starts.at(page + 1) : rows.last();
}

int PrintedPages::count() const
{
    return starts.size();
}

void PrintedPages::paint(QPainter *painter, int page) const
{
    painter->save();
    painter->scale(shrinking, shrinking);
    if (page == 0) {
        paintPart(painter, 0, endOf(page), 0);
    } else {
        paintPart(painter, rows.at(0), rows.at(1), margin - rows.at(0));
        paintPart(painter, starts.at(page), endOf(page), shiftOf(page));
    }
    paintLines(painter, page);
    paintNumber(painter, page);
    painter->restore();
}

void PrintedPages::paintPart(QPainter *painter, qreal top, qreal bottom, qreal shift) const
{
    QAbstractTextDocumentLayout::PaintContext context;
    context.clip = QRectF(0, top, layoutSize.width(), bottom - top);
    context.palette.setColor(QPalette::Text, Qt::black); // whatever the theme
    painter->save();
    painter->translate(0, shift);
    painter->setClipRect(context.clip);
    laidOut->documentLayout()->draw(painter, context);
    painter->restore();
}

void PrintedPages::paintLines(QPainter *painter, int page) const
{
    const qreal shift = shiftOf(page);
    const qreal start = starts.at(page) + shift;
    const qreal top = start - headHeight();
    const qreal end = endOf(page) + shift;
    QVector<qreal> across{top, start, end};
    for (const qreal y : rows) {
        if (y + shift > start && y + shift < end)
            across.append(y + shift);
    }

    painter->save();
    painter->setPen(QPen(lineColour, lineWidth, Qt::SolidLine, Qt::SquareCap));
    for (const qreal y : qAsConst(across))
        painter->drawLine(QPointF(columns.first(), y), QPointF(columns.last(), y));
    for (const qreal x : columns)
        painter->drawLine(QPointF(x, top), QPointF(x, end));
    painter->restore();
}

void PrintedPages::paintNumber(QPainter *painter, int page) const
{
    const qreal top = layoutSize.height() - margin + 2 * padding;
    const QRectF place(0, top, columns.last(), layoutSize.height() - top);
    painter->save();
    painter->setFont(laidOut->defaultFont());
    painter->setPen(Qt::black);
    painter->drawText(place, Qt::AlignRight | Qt::AlignTop,
                      QStringLiteral("%1 / %2").arg(page + 1).arg(count()));
    painter->restore();
}

QRectF PrintedPages::textRectInDocument(int row, int column) const
{
    const QTextTableCell cell = table->cellAt(row, column);
    const QTextBlock last = cell.lastCursorPosition().block();
    QRectF rect;
    for (QTextBlock block = cell.firstCursorPosition().block(); block.isValid(); block = block.next()) {
        rect |= laidOut->documentLayout()->blockBoundingRect(block);
        if (block == last)
            break;
    }
    return rect;
}

QRectF PrintedPages::shrunk(const QRectF &rect) const
{
    return {rect.topLeft() * shrinking, rect.size() * shrinking};
}

int PrintedPages::pageOfRow(int row) const
{
    const auto next = std::upper_bound(starts.begin(), starts.end(), rows.at(row));
    return std::max(int(next - starts.begin()) - 1, 0);
}

QRectF PrintedPages::cellRect(int row, int column) const
{
    const QRectF cell(QPointF(columns.at(column), rows.at(row)),
                      QPointF(columns.at(column + 1), rows.at(row + 1)));
    return shrunk(cell.translated(0, shiftOf(pageOfRow(row))));
}

QRectF PrintedPages::textRect(int row, int column) const
{
    return shrunk(textRectInDocument(row, column).translated(0, shiftOf(pageOfRow(row))));
}

QRectF PrintedPages::tableRect(int page) const
{
    const QRectF rect(QPointF(columns.first(), starts.at(page) - headHeight()),
                      QPointF(columns.last(), endOf(page)));
    return shrunk(rect.translated(0, shiftOf(page)));
}

QVector<int> pagesToPrint(const QPrinter &printer, int count)
{
    // Zero stands for "from the first" and "to the last".
    const int first = std::max(printer.fromPage(), 1);
    const int last = printer.toPage() > 0 ? std::min(printer.toPage(), count) : count;
    QVector<int> pages;
    for (int page = first; page <= last; ++page)
        pages.append(page - 1);
    if (printer.pageOrder() == QPrinter::LastPageFirst)
        std::reverse(pages.begin(), pages.end());
    return pages;
}

void printParameters(const QTextDocument &document, QPrinter *printer)
{
    QPainter painter(printer);
    if (!painter.isActive())
        return;
    const PrintedPages pages(document, printer, QSizeF(printer->width(), printer->height()));
    bool isFirst = true;
    const QVector<int> wanted = pagesToPrint(*printer, pages.count());
    for (const int page : wanted) {
        if (!isFirst && !printer->newPage())
            return;
        isFirst = false;
        pages.paint(&painter, page);
    }
}
