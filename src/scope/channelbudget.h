// SPDX-License-Identifier: GPL-3.0-or-later
// Keeps the channels chosen within the four 16-bit words that the drive streams per sample instant; a 32-bit
// channel takes two. Pure functions; any thread.
#pragma once

#include "scope/scopechannels.h"

#include <QVector>

struct BudgetChannel
{
    bool enabled = true; // the panel as a whole
    bool checked = true;
    bool wide = false; // its Type says "32bit"
};

using BudgetChannels = std::array<BudgetChannel, scopeChannelCount>;

// After a channel was switched on or off: which panels are open and which boxes stay checked.
BudgetChannels limitedAfterCheck(BudgetChannels channels);

// After a checked channel has got another item: the channels to disable and uncheck, in order. All others are
// to be enabled first.
QVector<int> excludedByItem(const BudgetChannels &channels, int changedChannel);
