// SPDX-License-Identifier: GPL-3.0-or-later
// Looks through the widgets of a window for what a person would call broken: texts cut off, tools without a
// picture or out of sight, and widgets on top of each other. Main thread; free functions that look only.
#pragma once

#include <QString>
#include <QVector>

class QWidget;

struct WidgetFault
{
    QString widget; // its path, from the window down
    QString what;

    QString text() const { return widget + QLatin1String(": ") + what; }
};

// Of the visible widgets of this window, top-level windows of its own left out.
QVector<WidgetFault> widgetFaults(const QWidget *window);

// False for a top-level window that is not on its screen with its whole frame.
bool isOnScreen(const QWidget *window);

// Object names from the window down to the widget; of one without a name its class.
QString widgetPath(const QWidget *widget);
