// SPDX-License-Identifier: GPL-3.0-or-later
// Clicks tool buttons, as all drivers of windows do. Main thread.
#pragma once

class QAction;
class QWidget;

// Clicks the tool button that shows the action; false if none is to be seen.
bool clickTool(const QAction *action);
// The same for the action of this object name below a window.
bool clickTool(const QWidget *window, const char *name);
