// SPDX-License-Identifier: GPL-3.0-or-later
// The walk through the monitor: the servo on, the motor turning, a fault and its record. Main thread.
#pragma once

class MainWindow;
class Tour;

namespace kt500sim {
class SimulatedDrive;
}

// Appends the steps; needs a connected drive. Window and drive must outlive the walk.
void addMonitorTour(Tour *tour, MainWindow *window, kt500sim::SimulatedDrive *drive);
