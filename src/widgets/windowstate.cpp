// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/windowstate.h"

#include <QWidget>

QString reportedWindowState(const QWidget *window, bool isClosing)
{
    return window->isMaximized() && !isClosing ? window->windowTitle() : QString();
}
