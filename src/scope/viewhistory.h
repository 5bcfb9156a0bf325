// SPDX-License-Identifier: GPL-3.0-or-later
// The views that the plot has shown, for undo and redo: never empty. Main thread; owned by the plot.
#pragma once

#include "scope/plotsettings.h"

#include <cstddef>
#include <deque>

class ViewHistory
{
public:
    // A run adds five entries a second, and nobody steps back through hours of them. Beyond this the second
    // oldest goes; the oldest is the one that a clear returns to.
    static constexpr int limit = 100000;

    const PlotSettings &current() const { return zoomStack[static_cast<std::size_t>(curZoom)]; }
    // Changes the entry in use, which makes no step of the history.
    PlotSettings &current() { return zoomStack[static_cast<std::size_t>(curZoom)]; }
    int size() const { return static_cast<int>(zoomStack.size()); }
    int index() const { return curZoom; }
    bool canGoBack() const { return curZoom > 0; }
    bool canAdvance() const { return curZoom < size() - 1; }

    // Drops what stands behind the entry in use, appends this one and takes it into use.
    void push(const PlotSettings &settings);
    void goBack();
    void advance();
    // Makes this one the only entry.
    void reset(const PlotSettings &settings);
    // Leaves the oldest entry alone.
    void clear();

private:
    std::deque<PlotSettings> zoomStack = std::deque<PlotSettings>(1);
    int curZoom = 0;
};
