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
    return {sizeHintForColumn(0) + 2 * frameWidth() + margin, QListWidget::sizeHint().height()};
}

void ParameterPageList::toggleFold()
{
    const bool fold = !item(1)->isHidden();
    item(0)->setText(QString::fromLatin1(fold ? foldedHead : unfoldedHead));
    for (int row = 1; row < count(); ++row)
        item(row)->setHidden(fold);
}
