// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/fittedheader.h"

#include <QEvent>
#include <QFontMetrics>

#include <algorithm>

FittedHeader::FittedHeader(int changingColumn, QWidget *table)
    : SteadyHeader(Qt::Horizontal, table)
    , column(changingColumn)
{
}

int FittedHeader::textWidth(int row) const
{
    const QString text = model()->index(row, column).data().toString();
    return parentWidget()->fontMetrics().horizontalAdvance(text);
}

int FittedHeader::widest() const
{
    return widths.isEmpty() ? 0 : *std::max_element(widths.begin(), widths.end());
}

// Fitting looks at every cell of every column: more than a millisecond, for each of the hundreds of replies
// of a page read and of the values that a poll cycle changes.
void FittedHeader::dataChanged(const QModelIndex &topLeft, const QModelIndex &bottomRight,
                               const QVector<int> &roles)
{
    if (topLeft.column() == column && bottomRight.column() == column) {
        for (int row = topLeft.row(); row <= bottomRight.row(); ++row)
            widths[row] = textWidth(row);
        const int width = widest();
        if (width == fittedWidth)
            return;
        fittedWidth = width;
    }
    SteadyHeader::dataChanged(topLeft, bottomRight, roles);
}

void FittedHeader::rowsInserted(const QModelIndex &parent, int start, int end)
{
    widths.insert(start, end - start + 1, 0);
    SteadyHeader::rowsInserted(parent, start, end);
}

void FittedHeader::rowsAboutToBeRemoved(const QModelIndex &parent, int start, int end)
{
    widths.remove(start, end - start + 1);
    SteadyHeader::rowsAboutToBeRemoved(parent, start, end);
}

void FittedHeader::reset()
{
    widths.fill(0, model() ? model()->rowCount() : 0);
    SteadyHeader::reset();
}

void FittedHeader::changeEvent(QEvent *event)
{
    SteadyHeader::changeEvent(event);
    if (event->type() != QEvent::FontChange)
        return;
    for (int row = 0; row < widths.size(); ++row)
        widths[row] = textWidth(row);
}
