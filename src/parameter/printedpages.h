// SPDX-License-Identifier: GPL-3.0-or-later
// The pages on paper of a document that ParameterPrint has filled. Main thread; used on the stack of whoever
// prints.
#pragma once

#include <QRectF>
#include <QSizeF>
#include <QVector>

#include <memory>

class QPaintDevice;
class QPainter;
class QPrinter;
class QTextDocument;
class QTextTable;

// Cuts a column of rows into pages. rowEnds are the lower ends of the rows, one below the other from start;
// the first page takes firstRoom, each further one room. Gives the start of every page. Only a row that is
// higher than a page is cut through.
QVector<qreal> pageStarts(const QVector<qreal> &rowEnds, qreal start, qreal firstRoom, qreal room);

// The pages that a filled document makes on a device. Page breaks lie between rows and each page repeats the
// head row. Units are the device's pixels, from the page's corner.
class PrintedPages
{
public:
    // document is one that ParameterPrint has filled. pageSize is the paintable area of one sheet; a margin
    // of 2 cm is kept inside it, and the table is as wide as that leaves. On paper too narrow for it
    // everything becomes smaller; rows become slightly lower where that saves a last page of a row or two.
    PrintedPages(const QTextDocument &document, QPaintDevice *paintDevice, QSizeF pageSize);
    ~PrintedPages();
    Q_DISABLE_COPY_MOVE(PrintedPages)

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
    void fitOn(qreal cellPadding);
    void pullInRest();
    int rowsOnLastPage() const;
    void layOut(qreal enlargement);
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
    QPaintDevice *const device;
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
