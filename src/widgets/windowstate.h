// SPDX-License-Identifier: GPL-3.0-or-later
// What a working window reports of its state, so that the main window can carry its title. Main thread.
#pragma once

#include <QString>

class QWidget;

// The window's title while it is maximized, otherwise an empty text. isClosing: the window has begun to
// close; the MDI area still reports a state after a maximized window has gone.
QString reportedWindowState(const QWidget *window, bool isClosing);
