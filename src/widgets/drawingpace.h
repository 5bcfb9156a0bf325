// SPDX-License-Identifier: GPL-3.0-or-later
// Lets a widget draw only so many times a second while its contents change much faster, as they do during a
// transfer: nobody sees more, and every drawing holds up the next request. Main thread; a child of the
// widget.
#pragma once

#include <QTimer>

class QWidget;

constexpr int drawingInterval = 40; // ms: 25 times a second

class DrawingPace : public QObject
{
    Q_OBJECT

public:
    // Milliseconds between two drawings: more for a widget whose drawing takes long.
    explicit DrawingPace(QWidget *pacedWidget, int interval = drawingInterval);

    // To be called before a change. The first is drawn at once, those that follow it together.
    void touch();

private:
    void tick();

    QWidget *const widget;
    QTimer timer;
};
