// SPDX-License-Identifier: GPL-3.0-or-later
// A short walk to one picture: scope and trial run side by side over a motor that a hand moves. Main thread.
#pragma once

class MainWindow;
class Tour;

namespace kt500sim {
class SimulatedDrive;
}

// Appends the steps behind the connection; needs a connected drive that stands. Window and drive must outlive
// the walk.
void addAliveTour(Tour *tour, MainWindow *window, kt500sim::SimulatedDrive *drive);
