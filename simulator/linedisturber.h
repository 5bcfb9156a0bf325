// SPDX-License-Identifier: GPL-3.0-or-later
// Applies the counted faults to replies: each fault strikes the number of requests or replies that it was
// set for and is then used up.
//
// Lives on the thread of the loop that owns it.
#pragma once

#include "simulator/bytes.h"
#include "simulator/clock.h"
#include "simulator/linefault.h"

#include <vector>

namespace kt500sim {

/// One piece of a reply, to be written in one go.
struct ReplyPiece
{
    Bytes bytes;
    nanoseconds delay{0}; ///< after the time at which the undisturbed reply would have come
};

/// What becomes of a reply; no pieces when it is lost.
struct DisturbedReply
{
    std::vector<ReplyPiece> pieces;
    bool disturbed = false;
};

class LineDisturber
{
public:
    /// Takes one of the counted faults; a new count replaces what was left of the old. Ignores other kinds.
    void set(const Fault &fault);
    void clear();

    /// The code by which the next request is to be refused, using up one; 0 for none.
    int takeExceptionCode();

    /// Disturbs \a reply by every fault that is set, using up one of each. A lost reply uses up that alone.
    DisturbedReply apply(Bytes reply);

private:
    static bool take(Fault *fault);

    Fault m_noReply;
    Fault m_badChecksum;
    Fault m_split;
    Fault m_splinter;
    Fault m_late;
    Fault m_stale;
    Fault m_exception;
    Bytes m_olderReply;
};

} // namespace kt500sim
