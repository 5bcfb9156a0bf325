// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/newcombox.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>

namespace {

QStringList digits()
{
    QStringList items;
    for (int digit = 0; digit <= 9; ++digit)
        items.append(QString::number(digit));
    return items;
}

} // namespace

NewCombox::NewCombox(const QString &caption, QWidget *parent)
    : NewCombox(caption, digits(), parent)
{
}

NewCombox::NewCombox(const QString &caption, const QStringList &items, QWidget *parent)
    : QWidget(parent)
    , label(new QLabel(caption))
    , comboBox(new QComboBox)
{
    setFont(QFont(QStringLiteral("Tahoma"), 10));
    comboBox->addItems(items);
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(label);
    layout->addWidget(comboBox, 1);
}
