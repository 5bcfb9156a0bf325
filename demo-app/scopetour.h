// SPDX-License-Identifier: GPL-3.0-or-later
// The walk through the scope: four channels of a motor that goes to and fro, live and stopped, cursors, the
// spectrum, and the files and colours. Main thread.
#pragma once

class MainWindow;
class Tour;

namespace kt500sim {
class SimulatedDrive;
}

// Appends the steps; needs a connected drive that stands. Window and drive must outlive the walk.
void addScopeTour(Tour *tour, MainWindow *window, kt500sim::SimulatedDrive *drive);

// Appends the dialogs of the stopped scope, which is open.
void addScopeDialogsTour(Tour *tour);
