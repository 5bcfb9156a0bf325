// SPDX-License-Identifier: GPL-3.0-or-later
// Rows to print, the document that is made of them, and paper to paint it on. Main thread.
#pragma once

#include "parameter/parameterprint.h"
#include "parameter/printedpages.h"

#include <QImage>
#include <QPainter>
#include <QTextDocument>

namespace printsheets {

inline const QStringList heads{"Function Code", "★",    "■",   "●",   "▲",       "H",
                               "Value",         "Uint", "Min", "Max", "Default", "Description"};
inline const QList<QColor> markColours{QColor(0, 128, 128), QColor(0, 0, 255), QColor(255, 0, 0),
                                       QColor(0, 0, 0), QColor(188, 0, 243)};
inline const QString longName =
    QStringLiteral("A name of a parameter that is so long that it takes two lines of its column or three");
constexpr qreal a4Width = 8.27; // inches
constexpr qreal a4Height = 11.69;
constexpr qreal margin = 20 / 25.4; // inches

// Rows with names of one line and of more, by turns, so that page breaks meet both.
inline QList<QStringList> someRows(int count)
{
    QList<QStringList> rows;
    for (int i = 0; i < count; ++i)
        rows.append({QStringLiteral("Pn-%1").arg(i, 3, 10, QLatin1Char('0')), "★", "■", "●", "▲", "H",
                     QString::number(i), "0.01kg.cm2", "-2147483647", "2147483647", "0",
                     i % 3 == 0 ? longName : QStringLiteral("Reserved")});
    return rows;
}

inline void fill(QTextDocument *document, const QList<QStringList> &rows)
{
    ParameterPrint print(document);
    print.begin(heads);
    print.addRows(rows);
    print.finish();
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

// These rows on paper of this size.
class PrintedRows
{
public:
    explicit PrintedRows(const QList<QStringList> &rows, qreal width = a4Width, qreal height = a4Height)
        : sheet(width, height, 96)
        , pages(filled(rows), &sheet.image, sheet.size)
    {
    }
    Q_DISABLE_COPY_MOVE(PrintedRows)

    QTextDocument document;
    Sheet sheet;
    PrintedPages pages;

private:
    const QTextDocument &filled(const QList<QStringList> &rows)
    {
        fill(&document, rows);
        return document;
    }
};

} // namespace printsheets
