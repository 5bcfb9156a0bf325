// SPDX-License-Identifier: GPL-3.0-or-later
// The walk from the connection dialog to every parameter of the drive on the screen. Main thread.
#pragma once

#include "demo-app/tour.h"

class MainWindow;

namespace kt500sim {
class SimulatedDrive;
}

// What the walk has measured.
struct ParameterTourResult
{
    int parametersRead = 0;
    double seconds = 0;
    quint64 frames = 0;
    quint64 retransmissions = 0;
};

// Appends the steps. Window, drive and result must outlive the walk.
void addParameterTour(Tour *tour, MainWindow *window, kt500sim::SimulatedDrive *drive,
                      ParameterTourResult *result);

// Appends the windows that the editor opens: the setting helper on three kinds of rows, the batch window and
// the print preview.
void addParameterWindowsTour(Tour *tour);

// Appends the way to a PDF of all parameters, which is written to this file.
void addParameterPdfTour(Tour *tour, const QString &fileName);
