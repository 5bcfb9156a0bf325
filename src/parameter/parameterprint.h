// SPDX-License-Identifier: GPL-3.0-or-later
// The printout of the parameters: a heading and one table in a rich-text document. Plain texts in, nothing
// known of the editor. Main thread; used on the stack of whoever prints.
#pragma once

#include "parameter/parameterrow.h"

#include <QList>
#include <QStringList>
#include <QTextCursor>

class QTextDocument;
class QTextTable;

// Fills a document. Between begin() and finish() the document holds back its layout, so nothing else may
// change it meanwhile.
class ParameterPrint
{
public:
    static constexpr double cellPadding = 2.5; // pixels of the document
    static constexpr int columnCount = RowValueCount;

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
