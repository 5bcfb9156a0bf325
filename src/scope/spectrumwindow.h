// SPDX-License-Identifier: GPL-3.0-or-later
// The window of the spectra: four plots, one a channel. Main thread; owned by the plot, closing it hides it.
#pragma once

#include "scope/plotsettings.h"
#include "scope/spectrum.h"

#include <QColor>
#include <QWidget>

#include <array>

class QCustomPlot;

class SpectrumWindow : public QWidget
{
    Q_OBJECT

public:
    explicit SpectrumWindow(QWidget *parent);

    // Replaces the channel's graph; an empty spectrum has none.
    void showSpectrum(int channel, const Spectrum &spectrum, const QColor &color);
    void clear(int channel);
    // Brings the window up, also when it stands behind others.
    void bringUp();

private:
    std::array<QCustomPlot *, plotChannels> plots;
};
