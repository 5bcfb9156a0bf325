// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/indicationlable.h"

#include <QPainter>
#include <QPixmap>

IndicationLable::IndicationLable(QWidget *parent)
    : QLabel(parent)
{
}

double IndicationLable::markerX(int barWidth) const
{
    const int mid = (rollbackValue + forwardValue) / 2;
    double x = barWidth * 0.5 - 17;
    if (currentValue > mid && spanValue > 0) {
        x = (barWidth - 40) * (0.5 - (currentValue - mid) / spanValue);
        if (x < 3)
            x = 5;
    } else if (currentValue < mid && spanValue > 0) {
        x = (barWidth - 40) * ((mid - currentValue) / spanValue + 0.5);
        if (x > barWidth - 41)
            x = barWidth - 39;
    }
    return x;
}

void IndicationLable::paintEvent(QPaintEvent *)
{
    const double depth = height() / 1.15;
    const QPixmap marker(QStringLiteral(":/pic/pic/sanjiao.png"));
    QPainter painter(this);
    QPen pen = painter.pen();
    pen.setWidth(6);
    painter.setPen(pen);
    painter.drawLine(QPointF(0, depth / 2), QPointF(width(), depth / 2));
    painter.drawLine(QPointF(3, 0), QPointF(3, depth));
    painter.drawLine(QPointF(width() - 3, 0), QPointF(width() - 3, depth));
    painter.drawPixmap(QPointF(markerX(width()), depth / 2 - marker.height() / marker.devicePixelRatio()),
                       marker);
}
