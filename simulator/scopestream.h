// SPDX-License-Identifier: GPL-3.0-or-later
// The scope stream of the drive: takes a start request, collects samples and packs them into stream frames.
//
// Lives on the thread of the Drive that owns it.
#pragma once

#include "simulator/bytes.h"

#include <array>
#include <optional>

namespace kt500sim {

class DriveModel;

constexpr int scopeChannels = 4;

/// What one channel was asked to show.
struct ScopeChannel
{
    bool on = false;
    bool wide = false; ///< 32-bit samples
    int item = 0;

    /// In 16-bit words per sample instant.
    int words() const { return !on ? 0 : wide ? 2 : 1; }
};

using ScopeSelection = std::array<ScopeChannel, scopeChannels>;

class ScopeStream
{
public:
    /// All channels together may take this many 16-bit words per sample instant.
    static constexpr int wordBudget = 4;
    static constexpr std::size_t requestSize = 12;

    /// \a samplesPerFrame is kept within 1 to 255, the range of the count byte.
    explicit ScopeStream(int samplesPerFrame);

    /// Reads the body of a request of function 0x14, a flag and an item byte per channel. Nothing when a flag
    /// is none of 00, 10 and 20, or the selection exceeds the budget. No channel on means: stop.
    static std::optional<ScopeSelection> parseRequest(const Bytes &request);

    /// Begins a new stream, dropping samples not yet sent. A selection without channels stops.
    void start(const ScopeSelection &selection);
    void stop();
    bool isRunning() const { return m_running; }
    /// Sample instants until the frame that is being filled is complete, at least one.
    int samplesToFrame() const { return m_samplesPerFrame - m_count; }

    /// Takes one sample of each channel from \a model; gives the finished frame when it was the frame's last.
    std::optional<Bytes> takeSample(const DriveModel &model);

private:
    ScopeSelection m_selection{};
    std::array<Bytes, scopeChannels> m_samples; ///< wire bytes of the frame that is being filled
    int m_count = 0;                            ///< sample instants in it
    int m_samplesPerFrame;
    bool m_running = false;
};

} // namespace kt500sim
