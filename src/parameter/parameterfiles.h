// SPDX-License-Identifier: GPL-3.0-or-later
// The two files of the parameter editor: .scp, which is read back, and .csv, which is not. Values in, values
// out, in the system's 8-bit encoding. Pure functions; any thread.
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

// What a .scp file holds of a page.
struct ScpPage
{
    QString firstCode;  // code of the page's first row; its group digit is what names the page
    QStringList values; // of each row, as displayed
};

// A Base64 line for each code and each value. A page without rows has no line.
QByteArray scpFile(const QList<ScpPage> &pages);

// A value of a .scp file and where its place in the file puts it.
struct ScpValue
{
    int page = 0;
    int row = 0;
    QString text;
};

// The values of a file in their order. rowCounts gives the rows of each page; what belongs to no page or lies
// beyond its last row is left out.
QList<ScpValue> readScpFile(const QByteArray &file, const QList<int> &rowCounts);

// What a .csv export holds of a page.
struct CsvPage
{
    QStringList heads;       // of the columns behind the code
    QList<QStringList> rows; // the code, then the text of each column
};

QByteArray csvExport(const QList<CsvPage> &pages);

// The fields, each with a comma behind it, and a line feed. Nothing is quoted.
QByteArray csvLine(const QStringList &fields);
