// SPDX-License-Identifier: GPL-3.0-or-later
// The plot's y ranges in the settings file, from one start to the next. Main thread.
#pragma once

#include "scope/plotsettings.h"

// True when the user has asked for the ranges of the last session.
bool areYRangesKept();
void storeYRanges(const PlotSettings &settings);
// A view of the first minute with the ranges stored; a missing one is that of a view that nobody has changed.
PlotSettings storedYRanges();
