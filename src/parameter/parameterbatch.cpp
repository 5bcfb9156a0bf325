// SPDX-License-Identifier: GPL-3.0-or-later
#include "parameter/parameterbatch.h"

#include "catalogue/parametercode.h"
#include "parameter/parametersymbols.h"
#include "parameter/parametertable.h"
#include "widgets/toolicons.h"

#include <QAction>
#include <QHeaderView>
#include <QIcon>
#include <QLabel>
#include <QSignalBlocker>
#include <QTableWidget>
#include <QToolBar>
#include <QVBoxLayout>

static_assert(ParameterBatch::ColumnCount == batchColumnCount);

namespace {

constexpr int toolBarHeight = 26; // pixels
constexpr int toolGap = 40;       // pixels
constexpr int pixelsPerRow = 25;
constexpr int markWidth = 33;         // pixels, of a column of marks
constexpr int cellMargin = 10;        // pixels, added to a column's widest text
constexpr int widestColumn = 300;     // pixels, which a foreign file's text may want more than
constexpr int descriptionWidth = 120; // pixels, the least that a narrow window leaves

const QString firstCode = QStringLiteral("Pn-000");
const QString unknown = QStringLiteral("F"); // in the cells of a code that no page holds

constexpr Qt::Alignment codeAlignment = Qt::AlignLeft | Qt::AlignVCenter;

bool isMarkColumn(int column)
{
    return column >= ParameterBatch::ReadOnlyColumn && column <= ParameterBatch::HexColumn;
}

// A tick is no change of the code, so it does not go out as a change of the cell: the row would be filled
// anew, and a value that was typed into it lost.
class CodeItem : public QTableWidgetItem
{
public:
    void setData(int role, const QVariant &value) override
    {
        const QSignalBlocker blocker(role == Qt::CheckStateRole ? tableWidget() : nullptr);
        QTableWidgetItem::setData(role, value);
    }
};

} // namespace

ParameterBatch::ParameterBatch(QWidget *parent)
    : QWidget(parent, Qt::Window)
{
    setWindowTitle(tr("Batch Parameter Modification"));
    setWindowIcon(QIcon(QStringLiteral(":/pic/pic/logo.ico")));
    resize(900, 600);

    toolBar = new QToolBar;
    toolBar->setFixedHeight(toolBarHeight);
    toolBar->setIconSize(toolIconSize);
    buildTable();

    auto *layout = new QVBoxLayout(this);
    layout->setSpacing(0);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(toolBar);
    layout->addWidget(batchTable);
}

void ParameterBatch::buildTable()
{
    batchTable = new QTableWidget(0, ColumnCount);
    batchTable->setObjectName(QStringLiteral("batchTable"));
    batchTable->setFont(QFont(QStringLiteral("微软雅黑"), 9));
    batchTable->setSelectionBehavior(QAbstractItemView::SelectRows);
    batchTable->setSelectionMode(QAbstractItemView::SingleSelection);
    batchTable->setAlternatingRowColors(true);
    batchTable->setWordWrap(false);
    setEditing(false);
    buildHeads();

    QHeaderView *const vertical = batchTable->verticalHeader();
    vertical->hide();
    vertical->setSectionResizeMode(QHeaderView::Fixed);
    vertical->setDefaultSectionSize(pixelsPerRow);

    QHeaderView *const horizontal = batchTable->horizontalHeader();
    horizontal->setFont(batchTable->font());
    horizontal->setSectionsClickable(false);
    horizontal->setHighlightSections(false);
    horizontal->setMinimumSectionSize(markWidth);
    for (int column = 0; column < ColumnCount; ++column) {
        if (isMarkColumn(column)) {
            horizontal->setSectionResizeMode(column, QHeaderView::Fixed);
            horizontal->resizeSection(column, markWidth);
        } else {
            horizontal->resizeSection(column, horizontal->sectionSizeHint(column) + cellMargin);
        }
    }
    horizontal->resizeSection(DescriptionColumn, descriptionWidth);
    horizontal->setSectionResizeMode(DescriptionColumn, QHeaderView::Stretch);
}

void ParameterBatch::buildHeads()
{
    // Named as in the pages of the editor.
    const QStringList texts{tr("Function code"),
                            QString(),
                            QString(),
                            QString(),
                            QString(),
                            QString(),
                            ParameterTable::tr("Value"),
                            ParameterTable::tr("Uint"),
                            ParameterTable::tr("Min"),
                            ParameterTable::tr("Max"),
                            ParameterTable::tr("Default"),
                            ParameterTable::tr("Description"),
                            tr("Real")};
    const auto symbols = parameterSymbols();
    for (int column = 0; column < ColumnCount; ++column) {
        auto *head = new QTableWidgetItem(texts.at(column));
        if (isMarkColumn(column)) {
            const ParameterSymbol &symbol = symbols.at(column - ReadOnlyColumn);
            head->setText(symbol.symbol);
            head->setFont(symbol.font);
            head->setForeground(symbol.colour);
            head->setToolTip(symbol.legend);
        }
        head->setTextAlignment(Qt::AlignCenter);
        batchTable->setHorizontalHeaderItem(column, head);
    }
}

QAction *ParameterBatch::addTool(const QString &icon, const QString &text)
{
    QAction *const action = toolBar->addAction(QIcon(QStringLiteral(":/pic/pic/") + icon), text);
    action->setStatusTip(text);
    // A tool button takes no focus, so an open editor would keep its text to itself.
    connect(action, &QAction::triggered, batchTable, [this] { batchTable->setFocus(); });
    return action;
}

void ParameterBatch::addToolGap()
{
    toolBar->addSeparator();
    auto *gap = new QLabel;
    gap->setFixedWidth(toolGap);
    toolBar->addWidget(gap);
}

int ParameterBatch::appendRow()
{
    const QSignalBlocker blocker(batchTable);
    const int row = batchTable->rowCount();
    batchTable->insertRow(row);
    setCode(row, firstCode, true);
    setCell(row, RealColumn, tr("default"));
    batchTable->scrollToBottom();
    return row;
}

void ParameterBatch::removeLastRow()
{
    batchTable->removeRow(batchTable->rowCount() - 1);
}

void ParameterBatch::setAllTicked(bool ticked)
{
    for (int row = 0; row < batchTable->rowCount(); ++row)
        batchTable->item(row, CodeColumn)->setCheckState(ticked ? Qt::Checked : Qt::Unchecked);
}

void ParameterBatch::setEditing(bool on)
{
    batchTable->setEditTriggers(on ? QAbstractItemView::DoubleClicked : QAbstractItemView::NoEditTriggers);
}

void ParameterBatch::setCode(int row, const QString &code, bool ticked)
{
    auto *item = new CodeItem;
    item->setText(code);
    item->setTextAlignment(codeAlignment);
    item->setCheckState(ticked ? Qt::Checked : Qt::Unchecked);
    batchTable->setItem(row, CodeColumn, item);
}

void ParameterBatch::setCell(int row, int column, const QString &text)
{
    auto *item = new QTableWidgetItem(text);
    item->setTextAlignment(Qt::AlignCenter);
    // Going on with the tabulator would open the editor of any cell that has one.
    if (column != ValueColumn)
        item->setFlags(item->flags() & ~Qt::ItemIsEditable);
    if (isMarkColumn(column)) {
        const auto symbols = parameterSymbols();
        const ParameterSymbol &symbol = symbols.at(column - ReadOnlyColumn);
        if (text == symbol.symbol) {
            item->setFont(symbol.font);
            item->setForeground(symbol.colour);
        }
    }
    if (column == DescriptionColumn)
        item->setToolTip(text);
    batchTable->setItem(row, column, item);
}

void ParameterBatch::widenColumns(int row)
{
    QHeaderView *const horizontal = batchTable->horizontalHeader();
    for (int column = 0; column < ColumnCount; ++column) {
        if (horizontal->sectionResizeMode(column) != QHeaderView::Interactive)
            continue;
        const QModelIndex index = batchTable->model()->index(row, column);
        const int wanted = batchTable->sizeHintForIndex(index).width();
        const int width = qMin(wanted + cellMargin, widestColumn);
        if (width > horizontal->sectionSize(column))
            horizontal->resizeSection(column, width);
    }
}

void ParameterBatch::spellCode(int row, const QString &code)
{
    const QSignalBlocker blocker(batchTable);
    batchTable->item(row, CodeColumn)->setText(code);
}

void ParameterBatch::fillRow(int row, const QStringList &pageCells)
{
    const QSignalBlocker blocker(batchTable);
    for (int column = ReadOnlyColumn; column <= DescriptionColumn; ++column)
        setCell(row, column, pageCells.isEmpty() ? unknown : pageCells.value(column - ReadOnlyColumn));
    widenColumns(row);
}

void ParameterBatch::showReply(int row, const QString &replyHex)
{
    if (row < 0 || row >= batchTable->rowCount())
        return;
    const QSignalBlocker blocker(batchTable);
    setCell(row, RealColumn,
            decodeValue(replyHex, text(row, HexColumn), text(row, UnitColumn), text(row, MinColumn),
                        text(row, MaxColumn)));
    widenColumns(row);
}

QString ParameterBatch::text(int row, Column column) const
{
    const QTableWidgetItem *const cell = batchTable->item(row, column);
    return cell ? cell->text() : QString();
}

bool ParameterBatch::isTicked(int row) const
{
    return batchTable->item(row, CodeColumn)->checkState() == Qt::Checked;
}

QStringList ParameterBatch::codes() const
{
    QStringList all;
    for (int row = 0; row < batchTable->rowCount(); ++row)
        all.append(text(row, CodeColumn));
    return all;
}

QList<QStringList> ParameterBatch::writeRecords() const
{
    const QString readOnlyMark = parameterSymbols().front().symbol;
    const QString reservedName = ParameterTable::tr("Reserved");
    QList<QStringList> records;
    for (int row = 0; row < batchTable->rowCount(); ++row) {
        if (text(row, ReadOnlyColumn) == readOnlyMark || text(row, DescriptionColumn) == reservedName ||
            !isTicked(row))
            continue;
        records.append({shortCode(text(row, CodeColumn)), text(row, HexColumn), text(row, ValueColumn),
                        text(row, UnitColumn), text(row, MinColumn), text(row, MaxColumn)});
    }
    return records;
}

QStringList ParameterBatch::heads() const
{
    QStringList texts;
    for (int column = 0; column < ColumnCount; ++column)
        texts.append(batchTable->horizontalHeaderItem(column)->text());
    return texts;
}

QList<BatchRow> ParameterBatch::rows() const
{
    QList<BatchRow> all;
    for (int row = 0; row < batchTable->rowCount(); ++row) {
        BatchRow content{isTicked(row), {}};
        for (int column = 0; column < ColumnCount; ++column)
            content.cells.append(text(row, Column(column)));
        all.append(content);
    }
    return all;
}

void ParameterBatch::setRows(const QList<BatchRow> &rows)
{
    const QSignalBlocker blocker(batchTable);
    batchTable->clearContents();
    batchTable->setRowCount(rows.size());
    for (int row = 0; row < rows.size(); ++row) {
        const BatchRow &content = rows.at(row);
        setCode(row, catalogueSpelling(content.cells.value(CodeColumn)), content.ticked);
        for (int column = ReadOnlyColumn; column < ColumnCount; ++column)
            setCell(row, column, content.cells.value(column));
        widenColumns(row);
    }
}

void ParameterBatch::bringToFront()
{
    hide();
    setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
}
