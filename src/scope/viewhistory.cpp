// SPDX-License-Identifier: GPL-3.0-or-later
#include "scope/viewhistory.h"

void ViewHistory::push(const PlotSettings &settings)
{
    zoomStack.resize(static_cast<size_t>(curZoom) + 1);
    zoomStack.push_back(settings);
    if (size() > limit)
        zoomStack.erase(zoomStack.begin() + 1);
    curZoom = size() - 1;
}

void ViewHistory::goBack()
{
    if (canGoBack())
        --curZoom;
}

void ViewHistory::advance()
{
    if (canAdvance())
        ++curZoom;
}

void ViewHistory::reset(const PlotSettings &settings)
{
    zoomStack.assign(1, settings);
    curZoom = 0;
}

void ViewHistory::clear()
{
    zoomStack.resize(1);
    curZoom = 0;
}
