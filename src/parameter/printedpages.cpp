// SPDX-License-Identifier: GPL-3.0-or-later
#include "parameter/printedpages.h"

#include "parameter/parameterprint.h"

#include <QAbstractTextDocumentLayout>
#include <QGuiApplication>
#include <QPainter>
#include <QPrinter>
#include <QScreen>
#include <QTextDocument>
#include <QTextTable>

#include <algorithm>
#include <cmath>

namespace {

constexpr qreal lineThickness = 0.6; // points
constexpr qreal marginWidth = 20;    // mm
constexpr qreal mmPerInch = 25.4;
constexpr qreal pointsPerInch = 72;

const QColor lineColour(0x80, 0x80, 0x80);

// Dots per inch that lengths in a text document are meant for.
qreal documentResolution()
{
    const QScreen *const screen = QGuiApplication::primaryScreen();
    if (!screen || QCoreApplication::testAttribute(Qt::AA_Use96Dpi))
        return 96;
    return std::round(screen->logicalDotsPerInchY());
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

PrintedPages::PrintedPages(const QTextDocument &document, QPaintDevice *device, QSizeF pageSize)
    : laidOut(document.clone())
    , paperSize(pageSize)
{
    table = qobject_cast<QTextTable *>(laidOut->rootFrame()->childFrames().first());
    // The lines are painted here, where the page breaks are known.
    QTextTableFormat format = table->format();
    format.setBorder(0);
    table->setFormat(format);
    laidOut->documentLayout()->setPaintDevice(device);
    layOut(device, 1);
    const qreal available = layoutSize.width() - 2 * margin;
    const qreal needed = columns.last() - columns.first();
    // Whole pixels make a table that fits a little wider or narrower than its page.
    if (available > 0 && needed > available + margin / 10)
        layOut(device, needed / available);
    cutIntoPages();
}

PrintedPages::~PrintedPages() = default;

// The layout would cut rows of two lines at a page break, so it gets one long sheet.
void PrintedPages::layOut(QPaintDevice *device, qreal enlargement)
{
    shrinking = 1 / enlargement;
    layoutSize = paperSize * enlargement;
    const qreal toDevice = device->logicalDpiY() / documentResolution();
    margin = enlargement * marginWidth / mmPerInch * device->logicalDpiY();
    padding = ParameterPrint::cellPadding * toDevice;
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
    painter->restore();
    paintNumber(painter, page);
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
    painter->drawText(shrunk(place), Qt::AlignRight | Qt::AlignTop,
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
