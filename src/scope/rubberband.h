// SPDX-License-Identifier: GPL-3.0-or-later
// The rectangle that the user draws on a stopped picture to enlarge it. Main thread; owned by the plot.
#pragma once

#include <QColor>
#include <QPainter>
#include <QPoint>
#include <QRect>
#include <QRegion>

class RubberBand
{
public:
    bool isShown() const { return rubberBandShown; }
    // Pixels of the widget.
    void begin(const QPoint &corner)
    {
        rubberBandShown = true;
        rubberBandRect = QRect(corner, corner);
    }
    void moveTo(const QPoint &corner) { rubberBandRect.setBottomRight(corner); }
    void end() { rubberBandShown = false; }

    QRect band() const { return rubberBandRect.normalized(); }
    // A smaller one is a click.
    bool isLargeEnough() const { return band().width() >= smallest && band().height() >= smallest; }
    // Its four edges.
    QRegion edges() const
    {
        const QRect r = band();
        return QRegion(r) - QRegion(r.adjusted(1, 1, -1, -1));
    }
    void paint(QPainter *painter, const QColor &color) const
    {
        if (!rubberBandShown)
            return;
        painter->setPen(color);
        painter->drawRect(band().adjusted(0, 0, -1, -1));
    }

private:
    static constexpr int smallest = 3; // pixels

    bool rubberBandShown = false;
    QRect rubberBandRect;
};
