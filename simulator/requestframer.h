// SPDX-License-Identifier: GPL-3.0-or-later
// Cuts the byte stream that the client sends into frames.
//
// Lives on the thread of the loop that feeds it. A frame ends where its function says that it ends, if the
// checksum agrees; anything else ends at a silent gap, as on a real line, so that the framer is in step again
// after garbage, after half a frame, and after a function that it does not know.
#pragma once

#include "simulator/bytes.h"
#include "simulator/clock.h"

#include <deque>
#include <optional>

namespace kt500sim {

struct ReceivedFrame
{
    Bytes bytes;
    bool checksumGood = false;
};

class RequestFramer
{
public:
    explicit RequestFramer(nanoseconds silentGap);

    /// Takes bytes that arrived at \a now.
    void feed(const std::uint8_t *data, std::size_t size, TimePoint now);

    /// The next complete frame, or nothing until more bytes or the silent gap complete one.
    std::optional<ReceivedFrame> next(TimePoint now);

    /// When the silent gap will close what has been received so far; nothing if no bytes wait.
    std::optional<TimePoint> gapEnd() const;

    void clear();

private:
    void closeAtGap(TimePoint now);
    void closeWholeFrames();
    void close(std::size_t size, bool checksumGood);

    nanoseconds m_silentGap;
    Bytes m_pending;
    TimePoint m_lastByte{};
    std::deque<ReceivedFrame> m_closed;
};

} // namespace kt500sim
