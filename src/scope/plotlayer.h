// SPDX-License-Identifier: GPL-3.0-or-later
// A transparent picture over a part of the plot, sharp on its screen: what stands in it costs memory and time
// by its own size, not by the widget's. A plain value; main thread.
#pragma once

#include <QFont>
#include <QPainter>
#include <QPixmap>
#include <QRect>
#include <QtGlobal>

class PlotLayer
{
public:
    PlotLayer() = default;
    // Around this part, in pixels of the widget; pixelRatio device pixels to one of them.
    PlotLayer(const QRect &part, double pixelRatio)
        : place(aligned(part))
        , pixmap(qRound(place.width() * pixelRatio), qRound(place.height() * pixelRatio))
    {
        pixmap.setDevicePixelRatio(pixelRatio);
        pixmap.fill(Qt::transparent);
    }

    // In pixels of the widget; empty for an empty layer.
    const QRect &area() const { return place; }
    void paintTo(QPainter *painter) const
    {
        if (!place.isEmpty())
            painter->drawPixmap(place.topLeft(), pixmap);
    }

    // Draws in the widget's pixels.
    class Painter : public QPainter
    {
    public:
        Painter(PlotLayer *layer, const QFont &font)
            : QPainter(&layer->pixmap)
        {
            translate(-layer->place.topLeft());
            setFont(font);
            setPen(Qt::red);
        }
    };

private:
    // Multiples of four lie between device pixels of no screen, those of a ratio of 1.25 among them.
    static QRect aligned(const QRect &part)
    {
        const int left = part.left() & ~3;
        const int top = part.top() & ~3;
        return {left, top, ((part.right() - left) | 3) + 1, ((part.bottom() - top) | 3) + 1};
    }

    QRect place;
    QPixmap pixmap;
};
