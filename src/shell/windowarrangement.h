// SPDX-License-Identifier: GPL-3.0-or-later
// The three arrangements of the window menu. Main thread.
#pragma once

class QMdiArea;

// Each window at 0.85 of the area, 20 pixels right and down of the one before. The walk ends at the first
// minimized window, which becomes the active one.
void cascadeWindows(QMdiArea *area);

// Equal columns of full height. The walk ends at the first minimized window.
void tileWindowsSideBySide(QMdiArea *area);

// Equal rows of full width. The walk ends at the first minimized window.
void tileWindowsStacked(QMdiArea *area);
