// SPDX-License-Identifier: GPL-3.0-or-later
#include "scope/spectrumwindow.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QScreen>
#include <QToolBar>
#include <QVBoxLayout>

#include <qcustomplot.h>

SpectrumWindow::SpectrumWindow(QWidget *parent)
    : QWidget(parent, Qt::Window)
{
    setWindowTitle(tr("Fast Fourier Transform"));
    resize(1200, 600);
    auto *layout = new QVBoxLayout(this);
    layout->setSpacing(0);
    auto *toolBar = new QToolBar(this);
    toolBar->setFixedHeight(26);
    layout->addWidget(toolBar);
    QHBoxLayout *row = nullptr;
    for (int c = 0; c < plotChannels; ++c) {
        if (c % 2 == 0) {
            row = new QHBoxLayout;
            layout->addLayout(row);
        }
        auto *plot = new QCustomPlot(this);
        const QString name = QStringLiteral("CH%1").arg(c + 1);
        plot->setObjectName(name);
        plot->resize(300, 150);
        plot->plotLayout()->insertRow(0);
        plot->plotLayout()->addElement(0, 0, new QCPTextElement(plot, name));
        row->addWidget(plot);
        plots[static_cast<size_t>(c)] = plot;
    }
}

void SpectrumWindow::showSpectrum(int channel, const Spectrum &spectrum, const QColor &color)
{
    clear(channel);
    QCustomPlot *plot = plots[static_cast<size_t>(channel)];
    plot->xAxis->setLabel(QStringLiteral("X/Hz"));
    plot->yAxis->setLabel(QStringLiteral("Y/An"));
    plot->xAxis->setLabelColor(color);
    plot->yAxis->setLabelColor(color);
    plot->setInteractions(QCP::iRangeDrag | QCP::iRangeZoom);
    if (!spectrum.frequency.isEmpty()) {
        QCPGraph *graph = plot->addGraph();
        graph->setPen(QPen(color));
        graph->setData(spectrum.frequency, spectrum.amplitude, true);
        plot->rescaleAxes();
    }
    plot->replot(QCustomPlot::rpQueuedReplot);
}

void SpectrumWindow::clear(int channel)
{
    QCustomPlot *plot = plots[static_cast<size_t>(channel)];
    plot->clearGraphs();
    plot->replot(QCustomPlot::rpQueuedReplot);
}

void SpectrumWindow::bringUp()
{
    hide();
    // On the smallest screen that the program is made for it would be wider than the screen, frame included.
    constexpr double partOfScreen = 0.9;
    constexpr int smallestScreen = 1024; // pixels
    const QScreen *const shownOn = screen();
    if (shownOn && shownOn->size().width() >= smallestScreen)
        resize(size().boundedTo(shownOn->availableSize() * partOfScreen));
    show();
}
