// SPDX-License-Identifier: GPL-3.0-or-later
// The request that starts the drive's stream, and the one that stops it. Pure functions; any thread.
#pragma once

#include "scope/scopechannels.h"

#include "catalogue/scopecatalogue.h"

#include <QByteArray>

// 01 14, a flag and an item byte for each channel, CRC: 12 bytes. The flag is 20 for 32-bit samples, 10 for
// 16-bit ones; a channel that is off has 00 00. With all channels off this is the stop request.
QByteArray scopeStartRequest(const ScopeChannelSettings &channels, const ScopeItems &items);

QByteArray scopeStopRequest();
