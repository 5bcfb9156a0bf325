// SPDX-License-Identifier: GPL-3.0-or-later
// What one read of the link delivered of the drive's stream, cut into the samples' bytes. Pure functions; any
// thread.
#pragma once

#include "scope/scopechannels.h"

#include <QByteArray>
#include <QVector>

// A frame is 01 14, its total length in two bytes, high byte first, and a block for each channel: flag,
// number of samples, samples. A channel that is off has the two bytes only. No checksum is tested.
struct StreamChunk
{
    // Bytes of samples that the blocks of each whole frame announce: four numbers a frame, 0 for a channel
    // that is off.
    QVector<int> counts;
    // The samples' bytes as they came. Deliberate: with several frames in a chunk each replaces the one
    // before, so that only the last frame's samples are seen.
    std::array<QByteArray, scopeChannelCount> samples;
};

// Frames are cut by their length; a part frame at the end, or all from a frame of length 0 on, is dropped,
// and so is all behind a frame that begins like none: the reply to another window's request, whose bytes
// would be read as samples. Which channels are on and how wide they are is told by the settings, not by the
// frame.
StreamChunk cutStreamChunk(const QByteArray &chunk, const ScopeChannelSettings &channels);
