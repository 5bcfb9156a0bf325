// SPDX-License-Identifier: GPL-3.0-or-later
// The walk through the main window: its menus, a lost link and the languages. Main thread.
#pragma once

class MainWindow;
class Tour;

namespace kt500sim {
class SimulatedDrive;
}

// Appends the menus. The window must outlive the walk.
void addMenusTour(Tour *tour, MainWindow *window);

// Appends the end of the link; needs an open parameter editor. The drive must outlive the walk.
void addLostLinkTour(Tour *tour, kt500sim::SimulatedDrive *drive);

// Appends the change to the other language and back, which comes last.
void addLanguageTour(Tour *tour, MainWindow *window, bool isChinese);
