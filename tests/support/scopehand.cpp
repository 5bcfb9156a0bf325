// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/scopehand.h"

#include "scope/channelconfig.h"
#include "scope/channelpanels.h"
#include "scope/plotter.h"
#include "scope/scope.h"
#include "scope/scopetoolbar.h"
#include "shell/mainwindow.h"
#include "support/rununtil.h"
#include "support/workplace.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QTest>

#include <qcustomplot.h>

#include <algorithm>

namespace {

constexpr std::chrono::milliseconds streamFrame(5);
constexpr int waitLimit = 10000; // ms
constexpr int frameLimit = 200;  // ms

} // namespace

ScopeHand::ScopeHand(const MainWindow *shell)
{
    Workplace::clickAction(shell, "actionData_Scope");
    window = shell->findChild<Scope *>();
    if (!window)
        return;
    tools = window->findChild<ScopeToolBar *>();
    QObject::connect(window, &Scope::sendPlotterDataSignal, &context, [this] { ++batches; });
}

bool ScopeHand::showOnly(int row)
{
    const auto *const panels = window ? window->findChild<ChannelPanels *>() : nullptr;
    if (!panels)
        return false;
    for (int channel = 1; channel < 4; ++channel) {
        if (panels->channel(channel)->checkBox->isChecked())
            panels->channel(channel)->checkBox->click();
    }
    panels->channel(0)->comboBox->setCurrentIndex(row);
    return panels->channel(0)->checkBox->isChecked() && panels->channel(0)->comboBox->currentIndex() == row;
}

void ScopeHand::clickRun() const
{
    QTest::mouseClick(tools->widgetForAction(tools->action(ScopeToolBar::Run)), Qt::LeftButton);
}

bool ScopeHand::record(kt500sim::SimulatedDrive *drive, std::chrono::milliseconds time)
{
    drive->freeze();
    batches = 0;
    clickRun();
    if (!runUntil([drive] { return drive->isStreaming(); }, waitLimit))
        return false;
    // One frame at a time: the last of several in a chunk would be all that is taken. A frame that meets the
    // reply to another window's request in one chunk is lost.
    const int frames = int(time / streamFrame);
    for (int frame = 0; frame < frames; ++frame) {
        const int before = batches;
        drive->advance(streamFrame);
        runUntil([&] { return batches > before; }, frameLimit);
    }
    const int taken = batches;
    clickRun();
    drive->unfreeze();
    return runUntil([drive] { return !drive->isStreaming(); }, waitLimit) && taken >= frames * 9 / 10;
}

double ScopeHand::swing() const
{
    const PlotData &data = window->findChild<Plotter *>()->plotData();
    return data.highest(0) - data.lowest(0);
}

QPointF ScopeHand::peakOfSpectrum(double from, double to) const
{
    tools->action(ScopeToolBar::ShowAll)->trigger();
    tools->action(ScopeToolBar::MeasureX)->trigger();
    tools->action(ScopeToolBar::Fft)->trigger();
    const QCPGraph *const graph = window->findChild<QCustomPlot *>(QStringLiteral("CH1"))->graph(0);
    QPointF peak;
    for (const QCPGraphData &point : *graph->data()) {
        if (point.key >= from && point.key <= to && point.value > peak.y())
            peak = {point.key, point.value};
    }
    tools->action(ScopeToolBar::MeasureX)->trigger();
    return peak;
}
