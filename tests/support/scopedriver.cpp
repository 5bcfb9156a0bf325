// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/scopedriver.h"

#include "scope/channelconfig.h"
#include "scope/channelpanels.h"
#include "scope/plotter.h"
#include "scope/scope.h"
#include "scope/scopesidepanel.h"
#include "shell/mainwindow.h"
#include "support/rununtil.h"
#include "support/toolclick.h"

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

ScopeDriver::ScopeDriver(const MainWindow *shell)
{
    clickTool(shell, "actionData_Scope");
    window = shell->findChild<Scope *>();
}

ScopeDriver::ScopeDriver(Scope *opened)
    : window(opened)
{
}

QAction *ScopeDriver::action(ScopeToolBar::Tool tool) const
{
    return window->findChild<ScopeToolBar *>()->action(tool);
}

void ScopeDriver::click(ScopeToolBar::Tool tool) const
{
    clickTool(action(tool));
}

bool ScopeDriver::isEnabled(ScopeToolBar::Tool tool) const
{
    return action(tool)->isEnabled();
}

Plotter *ScopeDriver::plot() const
{
    return window->findChild<Plotter *>();
}

ChannelPanels *ScopeDriver::channels() const
{
    return window ? window->findChild<ChannelPanels *>() : nullptr;
}

ScopeSidePanel *ScopeDriver::sidePanel() const
{
    return window->findChild<ScopeSidePanel *>();
}

void ScopeDriver::show(const QStringList &codes) const
{
    const ChannelPanels *const panels = channels();
    for (int index = 0; index < codes.size(); ++index) {
        const ChannelConfig *const channel = panels->channel(index);
        channel->comboBox->setCurrentIndex(panels->rowOf(codes.at(index)));
        if (!channel->checkBox->isChecked())
            channel->checkBox->click();
    }
}

bool ScopeDriver::showOnly(int row) const
{
    const ChannelPanels *const panels = channels();
    if (!panels)
        return false;
    for (int channel = 1; channel < 4; ++channel) {
        if (panels->channel(channel)->checkBox->isChecked())
            panels->channel(channel)->checkBox->click();
    }
    panels->channel(0)->comboBox->setCurrentIndex(row);
    return panels->channel(0)->checkBox->isChecked() && panels->channel(0)->comboBox->currentIndex() == row;
}

void ScopeDriver::zoom(double from, double to) const
{
    constexpr int frame = 50; // pixels around the plot area
    Plotter *const picture = plot();
    const int room = picture->width() - 2 * frame;
    const QPoint begin(frame + 1 + int(room * from), frame + 1);
    const QPoint end(frame + int(room * to), picture->height() - frame - 1);
    QTest::mousePress(picture, Qt::LeftButton, {}, begin);
    QTest::mouseMove(picture, end);
    QTest::mouseRelease(picture, Qt::LeftButton, {}, end);
}

bool ScopeDriver::record(kt500sim::SimulatedDrive *drive, std::chrono::milliseconds time) const
{
    int batches = 0;
    QObject context; // of the connection
    QObject::connect(window, &Scope::sendPlotterDataSignal, &context, [&batches] { ++batches; });
    drive->freeze();
    click(ScopeToolBar::Run);
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
    click(ScopeToolBar::Run);
    drive->unfreeze();
    return runUntil([drive] { return !drive->isStreaming(); }, waitLimit) && taken >= frames * 9 / 10;
}

double ScopeDriver::swing() const
{
    const PlotData &data = plot()->plotData();
    return data.highest(0) - data.lowest(0);
}

QPointF ScopeDriver::peakOfSpectrum(double from, double to) const
{
    action(ScopeToolBar::ShowAll)->trigger();
    action(ScopeToolBar::MeasureX)->trigger();
    action(ScopeToolBar::Fft)->trigger();
    const QCPGraph *const graph = window->findChild<QCustomPlot *>(QStringLiteral("CH1"))->graph(0);
    QPointF peak;
    for (const QCPGraphData &point : *graph->data()) {
        if (point.key >= from && point.key <= to && point.value > peak.y())
            peak = {point.key, point.value};
    }
    action(ScopeToolBar::MeasureX)->trigger();
    return peak;
}
