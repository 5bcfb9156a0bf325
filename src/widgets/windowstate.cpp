// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/windowstate.h"

#include <QWidget>

QString reportedWindowState(const QWidget *window, bool isClosing)
{
    // A window that is minimized still counts as maximized when it was so before.
    const bool isShownMaximized = window->isMaximized() && !window->isMinimized();
    return isShownMaximized && !isClosing ? window->windowTitle() : QString();
}
