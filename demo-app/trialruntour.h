// SPDX-License-Identifier: GPL-3.0-or-later
// The walk through the trial run: the motor jogs both ways, and the drive is given back. Main thread.
#pragma once

class MainWindow;
class Tour;

// Appends the steps; needs a connected drive that stands. The window must outlive the walk.
void addTrialRunTour(Tour *tour, MainWindow *window);
