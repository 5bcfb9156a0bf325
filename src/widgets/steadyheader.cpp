// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/steadyheader.h"

#include <QEvent>

SteadyHeader::SteadyHeader(Qt::Orientation orientation, QWidget *table)
    : QHeaderView(orientation, table)
{
    setHighlightSections(true); // as the table's own headers
}

// Connected before the base class connects itself, which asks for the sizes when it is told.
void SteadyHeader::setModel(QAbstractItemModel *newModel)
{
    if (newModel == model())
        return;
    if (model())
        model()->disconnect(this);
    forget();
    if (newModel) {
        connect(newModel, &QAbstractItemModel::headerDataChanged, this, &SteadyHeader::forget);
        connect(newModel, &QAbstractItemModel::rowsInserted, this, &SteadyHeader::forget);
        connect(newModel, &QAbstractItemModel::rowsRemoved, this, &SteadyHeader::forget);
        connect(newModel, &QAbstractItemModel::columnsInserted, this, &SteadyHeader::forget);
        connect(newModel, &QAbstractItemModel::columnsRemoved, this, &SteadyHeader::forget);
        connect(newModel, &QAbstractItemModel::layoutChanged, this, &SteadyHeader::forget);
        connect(newModel, &QAbstractItemModel::modelReset, this, &SteadyHeader::forget);
    }
    QHeaderView::setModel(newModel);
}

void SteadyHeader::forget()
{
    sizes.clear();
}

void SteadyHeader::changeEvent(QEvent *event)
{
    forget();
    QHeaderView::changeEvent(event);
}

// A table that is hidden with its header needs no new layout.
bool SteadyHeader::viewportEvent(QEvent *event)
{
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        forget();
    if (event->type() == QEvent::Hide && !parentWidget()->isVisible())
        return QAbstractItemView::viewportEvent(event); // NOLINT(bugprone-parent-virtual-call)
    return QHeaderView::viewportEvent(event);
}

QSize SteadyHeader::sectionSizeFromContents(int logicalIndex) const
{
    ensurePolished(); // may change the font
    if (sizes.size() != count())
        sizes.fill(QSize(), count());
    if (logicalIndex >= sizes.size())
        return QHeaderView::sectionSizeFromContents(logicalIndex);
    QSize &size = sizes[logicalIndex];
    if (!size.isValid())
        size = QHeaderView::sectionSizeFromContents(logicalIndex);
    return size;
}
