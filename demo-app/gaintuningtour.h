// SPDX-License-Identifier: GPL-3.0-or-later
// The walk through gain tuning: what the drive holds, and a stiffer grade. Main thread.
#pragma once

class MainWindow;
class Tour;

// Appends the steps; needs a connected drive. The window must outlive the walk.
void addGainTuningTour(Tour *tour, MainWindow *window);
