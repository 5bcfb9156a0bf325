// SPDX-License-Identifier: GPL-3.0-or-later
// The window of a list of parameters, drawn from any page, that are read or written together. It holds the
// list; what its tools do is the editor's. Main thread; a top-level window owned by ParameterEditor, and only
// hidden when the user closes it.
#pragma once

#include "parameter/parameterbatchfile.h"
#include "parameter/parameterrow.h"

#include <QList>
#include <QStringList>
#include <QWidget>

class QAction;
class QTableWidget;
class QTableWidgetItem;
class QToolBar;

class ParameterBatch : public QWidget
{
    Q_OBJECT

public:
    // A row's texts, and behind them what the drive holds.
    enum Column {
        CodeColumn = CodeValue,
        ReadOnlyColumn = ReadOnlyValue,
        HexColumn = HexValue,
        ValueColumn = TextValue,
        UnitColumn = UnitValue,
        MinColumn = MinValue,
        MaxColumn = MaxValue,
        DescriptionColumn = NameValue,
        RealColumn = RowValueCount,
        ColumnCount
    };

    explicit ParameterBatch(QWidget *parent = nullptr);

    // Adds a tool behind those there are; icon is a file name of the pictures. A value that is still being
    // typed is taken over before the tool's action is heard elsewhere.
    QAction *addTool(const QString &icon, const QString &text);
    void addToolGap();

    // Emits cellChanged for what is typed or filled in, and not when a row is ticked.
    QTableWidget *table() const { return batchTable; }

    // Appends a row of the first parameter, ticked and not yet filled; returns its number.
    int appendRow();
    void removeLastRow();
    void setAllTicked(bool ticked);
    // Whether a double-click opens the editor of a code or a value.
    void setEditing(bool on);

    // Fills a row from the texts of a page's row; with none it is marked as unknown.
    void fillRow(int row, const QStringList &rowValues);
    // Corrects the spelling of a row's code; the row is not filled anew.
    void spellCode(int row, const QString &code);
    // Shows the data bytes of a reply beside the value. A row that is not there is passed over.
    void showReply(int row, const QByteArray &bytes);

    QString text(int row, Column column) const;
    bool isTicked(int row) const;
    // True for a row that was filled without a page's row.
    bool isUnknown(int row) const;
    // Codes of all rows, ticked or not.
    QStringList codes() const;
    // The texts of a row, its code first, without what the drive holds.
    QStringList rowTexts(int row) const;

    QStringList heads() const;
    QList<BatchRow> rows() const;
    void setRows(const QList<BatchRow> &rows);

    // Hides the window and shows it again, which puts it before the others.
    void bringToFront();

private:
    void buildTable();
    void buildHeads();
    void setCode(int row, const QString &code, bool ticked);
    void setCell(int row, int column, const QString &text);
    void widenColumns(int row);

    QToolBar *toolBar = nullptr;
    QTableWidget *batchTable = nullptr;
};
