// SPDX-License-Identifier: GPL-3.0-or-later
// The printout of the parameters: a heading and one table in a rich-text document, and its pages on paper.
// Plain texts in, nothing known of the editor. Main thread; used on the stack of whoever prints.
#pragma once

#include <QList>
#include <QRectF>
#include <QSizeF>
#include <QStringList>
#include <QTextCursor>
#include <QVector>

#include <memory>

class QPaintDevice;
class QPainter;
class QPrinter;
class QTextDocument;
class QTextTable;

// Fills a document. Between begin() and finish() the document holds back its layout, so nothing else may
// change it meanwhile.
class ParameterPrint
{
public:
    static constexpr int columnCount = 12; // code, five marks, value, unit, min, max, default, description

    explicit ParameterPrint(QTextDocument *document);

    // Clears the document and writes the heading and the head row.
    void begin(const QStringList &heads);
    // Adds a row of columnCount texts each; what a row lacks stays empty.
    void addRows(const QList<QStringList> &rows);
    void finish();

private:
    void fillRow(int row, const QStringList &texts);

    QTextDocument *document;
    QList<QTextCharFormat> formats; // of the columns
    QTextTable *table = nullptr;    // the one under construction
    QTextCursor edit;               // holds the edit block open
};

// Cuts a column of rows into pages. rowEnds are the lower ends of the rows, one below the other from start;
// the first page takes firstRoom, each further one room. Gives the start of every page. Only a row that is
// higher than a page is cut through.
QVector<qreal> pageStarts(const QVector<qreal> &rowEnds, qreal start, qreal firstRoom, qreal room);

// The pages that a filled document makes on a device. Page breaks lie between rows and each page repeats the
// head row. Units are the device's pixels, from the page's corner.
class ParameterPages
{
public:
    // document is one that ParameterPrint has filled. pageSize is the paintable area of one sheet; a margin
    // of 2 cm is kept inside it. On paper too narrow for the table everything becomes smaller.
    ParameterPages(const QTextDocument &document, QPaintDevice *device, QSizeF pageSize);
    ~ParameterPages();
    Q_DISABLE_COPY_MOVE(ParameterPages)

    int count() const;
    // Paints a page, from 0, with its number, at the painter's origin.
    void paint(QPainter *painter, int page) const;

    // Page that shows a row of the table, row 0 being the head.
    int pageOfRow(int row) const;
    // A cell, from line to line, and the text in it.
    QRectF cellRect(int row, int column) const;
    QRectF textRect(int row, int column) const;
    // The table on a page, the head with it.
    QRectF tableRect(int page) const;

private:
    void layOut(QPaintDevice *device, qreal enlargement);
    void measureTable();
    void cutIntoPages();
    void paintPart(QPainter *painter, qreal top, qreal bottom, qreal shift) const;
    void paintLines(QPainter *painter, int page) const;
    void paintNumber(QPainter *painter, int page) const;
    QRectF textRectInDocument(int row, int column) const;
    QRectF shrunk(const QRectF &rect) const;
    qreal headHeight() const;
    // From the document, which is one long sheet, to the page.
    qreal shiftOf(int page) const;
    qreal endOf(int page) const;

    std::unique_ptr<QTextDocument> laidOut;
    QTextTable *table = nullptr; // of laidOut
    QSizeF paperSize;
    qreal shrinking = 1;
    // The rest is in pixels of the document, larger than the device's where everything is shrunk.
    QSizeF layoutSize; // of a page
    qreal margin = 0;
    qreal padding = 0;
    qreal lineWidth = 1;
    QVector<qreal> columns; // x of the lines
    QVector<qreal> rows;    // y of the lines, from above the head to below the last row
    QVector<qreal> starts;  // y at which the rows of each page start
};

// The pages, from 0, that the printer's settings ask for, in the order in which they leave it.
QVector<int> pagesToPrint(const QPrinter &printer, int count);

// Prints these pages of a document that ParameterPrint has filled.
void printParameters(const QTextDocument &document, QPrinter *printer);
