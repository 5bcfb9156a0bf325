// SPDX-License-Identifier: GPL-3.0-or-later
// The walk from the connection dialog to every parameter of the drive on the screen, and through all that the
// parameter editor opens. Main thread.
#pragma once

#include <QtGlobal>

class MainWindow;
class ParameterEditor;
class Tour;

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

// Appends the connection dialog and waits for the link. The window must outlive the walk.
void addConnectionTour(Tour *tour, MainWindow *window);

// Appends the steps behind the connection. Window, drive and result must outlive the walk.
void addParameterTour(Tour *tour, MainWindow *window, kt500sim::SimulatedDrive *drive,
                      ParameterTourResult *result);

// Appends the windows that the editor opens: the setting helper on all kinds of rows, the menu of a row and
// the batch window.
void addParameterWindowsTour(Tour *tour);

// Appends the files of the editor and the way to paper. A PDF of all parameters is left in the tour's folder
// as "parameters.pdf".
void addParameterFilesTour(Tour *tour);
