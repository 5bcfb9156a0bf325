// SPDX-License-Identifier: GPL-3.0-or-later
// Works the scope window as a person would: its channels, a run, its picture and its spectrum.
// Main thread; the window outlives it.
#pragma once

#include "scope/scopetoolbar.h"
#include "simulator/simulateddrive.h"

#include <QPointF>
#include <QStringList>

#include <chrono>

class ChannelPanels;
class MainWindow;
class Plotter;
class Scope;
class ScopeSidePanel;

class ScopeDriver
{
public:
    // Opens the window by its tool button; window is null if none comes.
    explicit ScopeDriver(const MainWindow *shell);
    // Of a window that is there.
    explicit ScopeDriver(Scope *opened);

    void click(ScopeToolBar::Tool tool) const;
    bool isEnabled(ScopeToolBar::Tool tool) const;
    Plotter *plot() const;
    ChannelPanels *channels() const;
    ScopeSidePanel *sidePanel() const;
    // Switches the channels on, each with the item of its code.
    void show(const QStringList &codes) const;
    // Switches all channels but the first one off and gives that this row of the catalogue.
    bool showOnly(int row) const;
    // Draws the zoom's band over this part of the picture, in parts of its width.
    void zoom(double from, double to) const;
    // Runs for so long in the drive's time, which stands still otherwise meanwhile, and stops. False if more
    // than a tenth of it has not arrived.
    bool record(kt500sim::SimulatedDrive *drive, std::chrono::milliseconds time) const;
    // Of the first channel, in the picture.
    double swing() const;
    // Frequency (Hz) and amplitude of the highest point between two frequencies, in the spectrum of the whole
    // picture.
    QPointF peakOfSpectrum(double from, double to) const;

    Scope *window = nullptr;

private:
    QAction *action(ScopeToolBar::Tool tool) const;
};
