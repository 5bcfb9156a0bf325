// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/sunkenlabel.h"

SunkenLabel::SunkenLabel(const QString &text, const QString &weight, int pointSize, QWidget *parent)
    : QLabel(text, parent)
{
    constexpr int blackWeight = 95;
    constexpr int air = 2; // pixels between frame and text
    setFrameStyle(QFrame::Panel | QFrame::Sunken);
    setMargin(air);
    setAlignment(Qt::AlignHCenter | Qt::AlignVCenter);
    setFont(QFont(QStringLiteral("Tahoma"), pointSize,
                  weight == QLatin1String("Black") ? blackWeight : int(QFont::Normal)));
}
