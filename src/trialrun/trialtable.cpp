// SPDX-License-Identifier: GPL-3.0-or-later
#include "trialrun/trialtable.h"

#include <QHeaderView>
#include <QSignalBlocker>

namespace {

constexpr int lineHeight = 23; // pixels
constexpr int valueWidth = 90; // pixels

} // namespace

TrialTable::TrialTable(const QStringList &headers, int rows, QWidget *parent)
    : QTableWidget(rows, ColumnCount, parent)
{
    setHorizontalHeaderLabels(headers);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setMinimumSectionSize(lineHeight);
    verticalHeader()->setDefaultSectionSize(lineHeight);
    horizontalHeader()->setFixedHeight(lineHeight);
    horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    horizontalHeader()->setSectionResizeMode(NameColumn, QHeaderView::Stretch);
    // All rows are seen at once: one that is scrolled away is one that is forgotten.
    setFixedHeight((rows + 1) * lineHeight + 2 * frameWidth());
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < ColumnCount; ++column) {
            auto *const cell = new QTableWidgetItem;
            cell->setTextAlignment(Qt::AlignCenter);
            if (column != ValueColumn)
                cell->setFlags(cell->flags() & ~Qt::ItemIsEditable);
            setItem(row, column, cell);
        }
    }
}

void TrialTable::setRow(int row, const QString &name, const QString &range, const QString &unit)
{
    const QSignalBlocker quiet(this);
    item(row, NameColumn)->setText(name);
    item(row, NameColumn)->setToolTip(name);
    item(row, RangeColumn)->setText(range);
    item(row, UnitColumn)->setText(unit);
}

QStringList TrialTable::values() const
{
    QStringList texts;
    for (int row = 0; row < rowCount(); ++row)
        texts.append(value(row));
    return texts;
}

void TrialTable::setValue(int row, const QString &text)
{
    const QSignalBlocker quiet(this);
    item(row, ValueColumn)->setText(text);
    viewport()->update();
}

void TrialTable::clearValues()
{
    for (int row = 0; row < rowCount(); ++row)
        setValue(row, QString());
}

void TrialTable::setRowEditable(int row, bool editable)
{
    const QSignalBlocker quiet(this);
    QTableWidgetItem *const cell = item(row, ValueColumn);
    cell->setFlags(editable ? cell->flags() | Qt::ItemIsEditable : cell->flags() & ~Qt::ItemIsEditable);
}

void TrialTable::chooseTriggers(int column)
{
    setEditTriggers(column == ColumnCount - 1
                        ? QAbstractItemView::DoubleClicked | QAbstractItemView::SelectedClicked
                        : QAbstractItemView::NoEditTriggers);
}

bool TrialTable::edit(const QModelIndex &index, EditTrigger trigger, QEvent *event)
{
    return acceptsEdits && QTableWidget::edit(index, trigger, event);
}

int TrialTable::sizeHintForColumn(int column) const
{
    const int content = QTableWidget::sizeHintForColumn(column);
    return column == ValueColumn ? qMax(content, valueWidth) : content;
}
