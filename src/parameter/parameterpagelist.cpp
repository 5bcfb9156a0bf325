// SPDX-License-Identifier: GPL-3.0-or-later
#include "parameter/parameterpagelist.h"

#include "catalogue/parametergroups.h"

namespace {

const char *const unfoldedHead = "-KT500";
const char *const foldedHead = "+KT500";

} // namespace

ParameterPageList::ParameterPageList(QWidget *parent)
    : QListWidget(parent)
{
    addItem(QString::fromLatin1(unfoldedHead));
    for (int index = 0; index < parameterGroupCount; ++index)
        addItem(parameterGroupLabel(index));
}

QSize ParameterPageList::sizeHint() const
{
    constexpr int margin = 8; // pixels
    // Asked for again at every page that a read turns over.
    if (namesWidth < 0)
        namesWidth = sizeHintForColumn(0);
    return {namesWidth + 2 * frameWidth() + margin, QListWidget::sizeHint().height()};
}

void ParameterPageList::changeEvent(QEvent *event)
{
    namesWidth = -1;
    QListWidget::changeEvent(event);
}

void ParameterPageList::toggleFold()
{
    const bool fold = !item(1)->isHidden();
    item(0)->setText(QString::fromLatin1(fold ? foldedHead : unfoldedHead));
    namesWidth = -1;
    for (int row = 1; row < count(); ++row)
        item(row)->setHidden(fold);
}
