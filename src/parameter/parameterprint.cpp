// SPDX-License-Identifier: GPL-3.0-or-later
#include "parameter/parameterprint.h"

#include "parameter/parametersymbols.h"

#include <QTextDocument>
#include <QTextTable>

namespace {

constexpr qreal textSize = 8;       // points
constexpr int longestUnbroken = 16; // characters of a value that is kept on one line

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
        QTextCharFormat &mark = formats[ReadOnlyValue + i];
        mark.setFontFamilies({symbols.at(i).font.family()});
        mark.setFontWeight(symbols.at(i).font.weight());
        mark.setForeground(symbols.at(i).colour);
    }
    return formats;
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
        const QString text = texts.value(column);
        QTextCharFormat format = formats.at(column);
        if (isHead)
            format.setFontWeight(QFont::Bold);
        QTextTableCell cell = table->cellAt(row, column);
        cell.setFormat(format);
        QTextBlockFormat block;
        block.setAlignment(Qt::AlignCenter);
        block.setNonBreakableLines(!isHead && column != NameValue && text.size() <= longestUnbroken);
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
