// SPDX-License-Identifier: GPL-3.0-or-later
// The two buttons that step through the history of views. They are made and kept up to date, but no one shows
// them: the keys "+" and "-" step. Main thread; the plot owns the buttons as their parent.
#pragma once

#include "scope/viewhistory.h"

class QToolButton;
class QWidget;

class HistoryButtons
{
public:
    explicit HistoryButtons(QWidget *plot);

    QToolButton *backButton = nullptr;
    QToolButton *advanceButton = nullptr;

    void follow(const ViewHistory &history) const;
    // At the top right of a plot of this width, in pixels.
    void place(int width) const;
};
