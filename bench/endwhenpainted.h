// SPDX-License-Identifier: GPL-3.0-or-later
// Ends the process, without any cleaning up, when a window and all that is in it has been painted.
// Main thread; on the stack of main(). Header only, so that the bare program links nothing of ours.
#pragma once

#include <QCoreApplication>
#include <QEvent>
#include <QTimer>
#include <QWidget>

#include <cstdlib>

class EndWhenPainted : public QObject
{
public:
    explicit EndWhenPainted(const QWidget *paintedWindow)
        : window(paintedWindow)
    {
        QCoreApplication::instance()->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject *object, QEvent *event) override
    {
        // What is in the window is painted behind it, before the event loop goes on.
        if (object == window && event->type() == QEvent::Paint)
            QTimer::singleShot(0, this, [] { std::_Exit(EXIT_SUCCESS); });
        return false;
    }

private:
    const QWidget *window;
};
