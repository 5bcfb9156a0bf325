// SPDX-License-Identifier: GPL-3.0-or-later
// What the drive is going to send, in order, each piece with the time at which it is to leave.
//
// Lives on the thread of the loop that owns it.
#pragma once

#include "simulator/bytes.h"
#include "simulator/clock.h"
#include "simulator/framelog.h"

#include <algorithm>
#include <deque>
#include <optional>

namespace kt500sim {

struct OutgoingChunk
{
    TimePoint due{};
    FrameKind kind = FrameKind::Reply;
    Bytes bytes;
    bool answersCleanly = false; ///< the last piece of a reply that no fault touched
};

class Outbox
{
public:
    /// Queues \a chunk behind all others; it never leaves before them, whatever its due time.
    void push(OutgoingChunk chunk)
    {
        if (!m_chunks.empty())
            chunk.due = std::max(chunk.due, m_chunks.back().due);
        m_chunks.push_back(std::move(chunk));
    }

    /// The first chunk if it is due at \a now.
    std::optional<OutgoingChunk> takeDue(TimePoint now)
    {
        if (m_chunks.empty() || m_chunks.front().due > now)
            return std::nullopt;
        OutgoingChunk chunk = std::move(m_chunks.front());
        m_chunks.pop_front();
        return chunk;
    }

    std::optional<TimePoint> nextDue() const
    {
        return m_chunks.empty() ? std::nullopt : std::optional<TimePoint>(m_chunks.front().due);
    }

    void clear() { m_chunks.clear(); }

private:
    std::deque<OutgoingChunk> m_chunks;
};

} // namespace kt500sim
