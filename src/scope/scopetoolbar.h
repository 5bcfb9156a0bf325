// SPDX-License-Identifier: GPL-3.0-or-later
// The tool bar of the scope, its actions in their order of display. Main thread; owned by the scope window.
#pragma once

#include <QToolBar>

#include <array>

class ScopeToolBar : public QToolBar
{
    Q_OBJECT

public:
    enum Tool {
        Open,
        Save,
        PrintScreen,
        BackgroundColor,
        ZoomIn,
        ZoomOut,
        ShowAll,
        ShowAllAdjusted,
        ShiftLeft,
        ShiftRight,
        ShiftUp,
        ShiftDown,
        MeasureX,
        MeasureY,
        Clear,
        Fft,
        Run,
        ToolCount
    };

    explicit ScopeToolBar(QWidget *parent = nullptr);

    QAction *action(Tool tool) const { return toolActions.at(tool); }

    // The seven tools that make sense on a stopped picture only.
    void setPictureToolsEnabled(bool enabled);
    // Makes the run action offer a stop, or a start.
    void showRun(bool offersStop);

private:
    std::array<QAction *, ToolCount> toolActions{};
};
