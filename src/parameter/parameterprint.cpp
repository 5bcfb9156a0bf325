// SPDX-License-Identifier: GPL-3.0-or-later
#include "parameter/parameterprint.h"

#include "parameter/parametersymbols.h"

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

constexpr qreal textSize = 8; // points
constexpr qreal cellPadding = 2.5;
constexpr qreal lineThickness = 0.6; // points
constexpr qreal marginWidth = 20;    // mm
constexpr qreal mmPerInch = 25.4;
constexpr qreal pointsPerInch = 72;
constexpr int firstMarkColumn = 1;
constexpr int descriptionColumn = ParameterPrint::columnCount - 1;
constexpr int longestUnbroken = 16; // characters of a value that is kept on one line
constexpr int longestWord = 24;     // characters; the catalogue's longest fits
constexpr int wordPiece = 12;       // characters

const QColor lineColour(0x80, 0x80, 0x80);

// The same in both languages.
const QString heading = QStringLiteral("<font size = \"9\" color = \"#000000\">KT500 Servo Parameter</font>");

// One family with both scripts where there is one, so that a line does not mix two.
QFont printFont()
{
    QFont font;
    font.setFamilies({QStringLiteral("微软雅黑"), QStringLiteral("WenQuanYi Micro Hei"),
                      QStringLiteral("Noto Sans CJK SC"), font.family()});
    font.setPointSizeF(textSize);
    return font;
}

QList<QTextCharFormat> columnFormats()
{
    QTextCharFormat plain;
    plain.setVerticalAlignment(QTextCharFormat::AlignMiddle);
    plain.setForeground(Qt::black);
    QList<QTextCharFormat> formats;
    for (int column = 0; column < ParameterPrint::columnCount; ++column)
        formats.append(plain);
    const auto symbols = parameterSymbols();
    for (int i = 0; i < parameterSymbolCount; ++i) {
        QTextCharFormat &mark = formats[firstMarkColumn + i];
        mark.setFontFamilies({symbols.at(i).font.family()});
        mark.setFontWeight(symbols.at(i).font.weight());
        mark.setForeground(symbols.at(i).colour);
    }
    return formats;
}

// A value from a foreign file may be one endless word; it gets places where a line may end, which do not
// show.
QString breakable(const QString &text)
{
    const QChar breakPlace(0x200B);
    QString result;
    int wordStart = 0;
    for (int i = 0; i <= text.size(); ++i) {
        if (i < text.size() && !text.at(i).isSpace())
            continue;
        const int length = i - wordStart;
        for (int j = 0; j < length; ++j) {
            if (length > longestWord && j > 0 && j % wordPiece == 0)
                result.append(breakPlace);
            result.append(text.at(wordStart + j));
        }
        if (i < text.size())
            result.append(text.at(i));
        wordStart = i + 1;
    }
    return result;
}

// Dots per inch that lengths in a text document are meant for.
qreal documentResolution()
{
    const QScreen *const screen = QGuiApplication::primaryScreen();
    if (!screen || QCoreApplication::testAttribute(Qt::AA_Use96Dpi))
        return 96;
    return std::round(screen->logicalDotsPerInchY());
}

} // namespace

ParameterPrint::ParameterPrint(QTextDocument *textDocument)
    : document(textDocument)
{
}

void ParameterPrint::begin(const QStringList &heads)
{
    document->setUndoRedoEnabled(false);
    document->clear();
    document->setDefaultFont(printFont());
    QTextOption option = document->defaultTextOption();
    option.setWrapMode(QTextOption::WordWrap);
    document->setDefaultTextOption(option);
    // Places letters by the font's own widths instead of whole pixels of a coarse printer.
    document->setUseDesignMetrics(true);

    edit = QTextCursor(document);
    edit.beginEditBlock();
    QTextBlockFormat centred;
    centred.setAlignment(Qt::AlignCenter);
    edit.setBlockFormat(centred);
    edit.insertText(QStringLiteral(" "));
    edit.insertBlock(centred);
    edit.insertHtml(heading);
    edit.insertBlock(centred, QTextCharFormat());
    table = edit.insertTable(1, columnCount);
    formats = columnFormats();
    fillRow(0, heads);
}

void ParameterPrint::addRows(const QList<QStringList> &rows)
{
    if (rows.isEmpty())
        return;
    int row = table->rows();
    table->appendRows(rows.size());
    for (const QStringList &texts : rows)
        fillRow(row++, texts);
}

void ParameterPrint::fillRow(int row, const QStringList &texts)
{
    const bool isHead = row == 0;
    for (int column = 0; column < columnCount; ++column) {
        const QString text = breakable(texts.value(column));
        QTextCharFormat format = formats.at(column);
        if (isHead)
            format.setFontWeight(QFont::Bold);
        QTextTableCell cell = table->cellAt(row, column);
        cell.setFormat(format);
        QTextBlockFormat block;
        block.setAlignment(Qt::AlignCenter);
        block.setNonBreakableLines(!isHead && column != descriptionColumn && text.size() <= longestUnbroken);
        QTextCursor cursor = cell.firstCursorPosition();
        cursor.setBlockFormat(block);
        cursor.insertText(text, format);
    }
}

void ParameterPrint::finish()
{
    QTextTableFormat format = table->format();
    format.setCellPadding(cellPadding);
    format.setCellSpacing(0);
    table->setFormat(format);
    edit.endEditBlock();
}

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

ParameterPages::ParameterPages(const QTextDocument &document, QPaintDevice *device, QSizeF pageSize)
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

ParameterPages::~ParameterPages() = default;

// The layout would cut rows of two lines at a page break, so it gets one long sheet.
void ParameterPages::layOut(QPaintDevice *device, qreal enlargement)
{
    shrinking = 1 / enlargement;
    layoutSize = paperSize * enlargement;
    const qreal toDevice = device->logicalDpiY() / documentResolution();
    margin = enlargement * marginWidth / mmPerInch * device->logicalDpiY();
    padding = cellPadding * toDevice;
    lineWidth = lineThickness / pointsPerInch * device->logicalDpiY();
    QTextFrameFormat format = laidOut->rootFrame()->frameFormat();
    format.setMargin(margin / toDevice);
    laidOut->rootFrame()->setFrameFormat(format);
    laidOut->setTextWidth(layoutSize.width());
    measureTable();
}

void ParameterPages::measureTable()
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

void ParameterPages::cutIntoPages()
{
    const qreal bodyEnd = layoutSize.height() - margin;
    // Paper that is hardly higher than its margins would cut a row into countless pieces.
    const qreal room = bodyEnd - margin - headHeight();
    starts = pageStarts(rows.mid(2), rows.at(1), std::max(bodyEnd - rows.at(1), 0.0),
                        room < headHeight() ? 0 : room);
}

qreal ParameterPages::headHeight() const
{
    return rows.at(1) - rows.at(0);
}

qreal ParameterPages::shiftOf(int page) const
{
    return page == 0 ? 0 : margin + headHeight() - starts.at(page);
}

qreal ParameterPages::endOf(int page) const
{
    return page + 1 < count() ? starts.at(page + 1) : rows.last();
}

int ParameterPages::count() const
{
    return starts.size();
}

void ParameterPages::paint(QPainter *painter, int page) const
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

void ParameterPages::paintPart(QPainter *painter, qreal top, qreal bottom, qreal shift) const
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

void ParameterPages::paintLines(QPainter *painter, int page) const
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

void ParameterPages::paintNumber(QPainter *painter, int page) const
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

QRectF ParameterPages::textRectInDocument(int row, int column) const
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

QRectF ParameterPages::shrunk(const QRectF &rect) const
{
    return {rect.topLeft() * shrinking, rect.size() * shrinking};
}

int ParameterPages::pageOfRow(int row) const
{
    const auto next = std::upper_bound(starts.begin(), starts.end(), rows.at(row));
    return std::max(int(next - starts.begin()) - 1, 0);
}

QRectF ParameterPages::cellRect(int row, int column) const
{
    const QRectF cell(QPointF(columns.at(column), rows.at(row)),
                      QPointF(columns.at(column + 1), rows.at(row + 1)));
    return shrunk(cell.translated(0, shiftOf(pageOfRow(row))));
}

QRectF ParameterPages::textRect(int row, int column) const
{
    return shrunk(textRectInDocument(row, column).translated(0, shiftOf(pageOfRow(row))));
}

QRectF ParameterPages::tableRect(int page) const
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
    const ParameterPages pages(document, printer, QSizeF(printer->width(), printer->height()));
    bool isFirst = true;
    const QVector<int> wanted = pagesToPrint(*printer, pages.count());
    for (const int page : wanted) {
        if (!isFirst && !printer->newPage())
            return;
        isFirst = false;
        pages.paint(&painter, page);
    }
}
