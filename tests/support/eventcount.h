// SPDX-License-Identifier: GPL-3.0-or-later
// Counts what one kind of event does to a widget. Main thread; an object on the stack of a test function.
#pragma once

#include <QEvent>
#include <QWidget>

class EventCount : public QObject
{
public:
    EventCount(QWidget *widget, QEvent::Type wanted)
        : type(wanted)
    {
        widget->installEventFilter(this);
    }

    int count = 0;

protected:
    bool eventFilter(QObject *object, QEvent *event) override
    {
        count += event->type() == type;
        return QObject::eventFilter(object, event);
    }

private:
    QEvent::Type type;
};
