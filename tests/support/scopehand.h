// SPDX-License-Identifier: GPL-3.0-or-later
// Works the scope window as a person would: one channel, a run, its picture and its spectrum.
// Main thread; the window outlives it.
#pragma once

#include "simulator/simulateddrive.h"

#include <QObject>
#include <QPointF>

#include <chrono>

class MainWindow;
class Scope;
class ScopeToolBar;

class ScopeHand
{
public:
    // Opens the window by its tool button; window is null if none comes.
    explicit ScopeHand(const MainWindow *shell);

    // Switches all channels but the first one off and gives that this row of the catalogue.
    bool showOnly(int row);
    // Runs for so long in the drive's time, which stands still otherwise meanwhile, and stops. False if more
    // than a tenth of it has not arrived.
    bool record(kt500sim::SimulatedDrive *drive, std::chrono::milliseconds time);
    // Of the first channel, in the picture.
    double swing() const;
    // Frequency (Hz) and amplitude of the highest point between two frequencies, in the spectrum of the whole
    // picture.
    QPointF peakOfSpectrum(double from, double to) const;

    Scope *window = nullptr;

private:
    void clickRun() const;

    ScopeToolBar *tools = nullptr;
    int batches = 0;
    QObject context; // of the connections
};
