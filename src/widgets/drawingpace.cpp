// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/drawingpace.h"

#include <QWidget>

DrawingPace::DrawingPace(QWidget *pacedWidget, int interval)
    : QObject(pacedWidget)
    , widget(pacedWidget)
{
    timer.setSingleShot(true);
    timer.setInterval(interval);
    connect(&timer, &QTimer::timeout, this, &DrawingPace::tick);
}

void DrawingPace::touch()
{
    if (timer.isActive())
        widget->setUpdatesEnabled(false);
    else
        timer.start();
}

void DrawingPace::tick()
{
    if (widget->updatesEnabled())
        return;
    widget->setUpdatesEnabled(true);
    timer.start();
}
