// SPDX-License-Identifier: GPL-3.0-or-later
#include "scope/scopetoolbar.h"

#include "widgets/toolicons.h"

#include <QAction>

namespace {

constexpr int toolBarHeight = 26; // pixels

struct ToolFace
{
    const char *text;
    const char *picture;
};

// In the order of ScopeToolBar::Tool.
const std::array<ToolFace, ScopeToolBar::ToolCount> faces{{
    {QT_TRANSLATE_NOOP("ScopeToolBar", "Open a SCP File"), ":/pic/pic/OpenSCP.png"},
    {QT_TRANSLATE_NOOP("ScopeToolBar", "Save as a SCP File"), ":/pic/pic/saveScp.png"},
    {QT_TRANSLATE_NOOP("ScopeToolBar", "Print Screen"), ":/pic/pic/saveImage.png"},
    {QT_TRANSLATE_NOOP("ScopeToolBar", "Change Backgrond Color"), ":/pic/pic/scopeBg.png"},
    {QT_TRANSLATE_NOOP("ScopeToolBar", "Zoom in"), ":/pic/pic/ZoomIn.png"},
    {QT_TRANSLATE_NOOP("ScopeToolBar", "Zoom Out"), ":/pic/pic/ZoomOut.png"},
    {QT_TRANSLATE_NOOP("ScopeToolBar", "Show all data in screen"), ":/pic/pic/showAllData.png"},
    {QT_TRANSLATE_NOOP("ScopeToolBar", "Show all data in screen, and adjust max/min value automatically"),
     ":/pic/pic/showAllDataMaxMin.png"},
    {QT_TRANSLATE_NOOP("ScopeToolBar", "Shift Left"), ":/pic/pic/wavaLeft.png"},
    {QT_TRANSLATE_NOOP("ScopeToolBar", "Shift Right"), ":/pic/pic/waveRight.png"},
    {QT_TRANSLATE_NOOP("ScopeToolBar", "Shift Up"), ":/pic/pic/waveTop.png"},
    {QT_TRANSLATE_NOOP("ScopeToolBar", "Shift Down"), ":/pic/pic/waveBottom.png"},
    {QT_TRANSLATE_NOOP("ScopeToolBar", "X-Axis measurement"), ":/pic/pic/xAxis.png"},
    {QT_TRANSLATE_NOOP("ScopeToolBar", "Y-Axis measurement"), ":/pic/pic/yAxis.png"},
    {QT_TRANSLATE_NOOP("ScopeToolBar", "Clear Screen"), ":/pic/pic/ClearScreen.png"},
    {QT_TRANSLATE_NOOP("ScopeToolBar", "FFT"), ":/pic/pic/FFT.png"},
    {QT_TRANSLATE_NOOP("ScopeToolBar", "Run"), ":/pic/pic/start.png"},
}};

} // namespace

ScopeToolBar::ScopeToolBar(QWidget *parent)
    : QToolBar(parent)
{
    setFixedHeight(toolBarHeight);
    setIconSize(toolIconSize);
    for (std::size_t tool = 0; tool < faces.size(); ++tool) {
        if (tool == Run)
            addSeparator();
        // Without a tool tip of its own an action shows its text, also when that changes.
        toolActions.at(tool) =
            addAction(QIcon(QLatin1String(faces.at(tool).picture)), tr(faces.at(tool).text));
    }
    for (const Tool tool : {ZoomIn, ZoomOut})
        action(tool)->setEnabled(false);
    setPictureToolsEnabled(false);
}

void ScopeToolBar::setPictureToolsEnabled(bool enabled)
{
    for (const Tool tool : {Clear, PrintScreen, ShowAll, ShowAllAdjusted, MeasureX, MeasureY, Fft})
        action(tool)->setEnabled(enabled);
}

void ScopeToolBar::showRun(bool offersStop)
{
    action(Run)->setText(offersStop ? tr("Stop") : tr("Run"));
    action(Run)->setIcon(
        QIcon(offersStop ? QStringLiteral(":/pic/pic/stop.png") : QStringLiteral(":/pic/pic/start.png")));
}
