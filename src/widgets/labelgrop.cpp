// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/labelgrop.h"

#include <QLabel>
#include <QVBoxLayout>

LabelGrop::LabelGrop(const QString &caption, QWidget *parent)
    : QWidget(parent)
    , captionLabel(new QLabel(caption))
    , valueLabel(new QLabel)
{
    captionLabel->setAlignment(Qt::AlignHCenter | Qt::AlignVCenter);
    valueLabel->setAlignment(Qt::AlignHCenter | Qt::AlignVCenter);
    valueLabel->setStyleSheet(
        QStringLiteral("background-color:rgb(232, 238, 247);border:2px solid rgb(0, 0, 0)"));
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(captionLabel);
    layout->addWidget(valueLabel);
}
