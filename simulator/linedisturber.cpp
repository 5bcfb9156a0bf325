// SPDX-License-Identifier: GPL-3.0-or-later
#include "simulator/linedisturber.h"

#include <algorithm>

namespace kt500sim {
namespace {

// The tail of an older reply that a slow reader left behind; short enough to be no frame by itself.
constexpr std::size_t staleTail = 4;

} // namespace

void LineDisturber::set(const Fault &fault)
{
    switch (fault.kind) {
    case FaultKind::NoReply:
        m_noReply = fault;
        break;
    case FaultKind::BadChecksum:
        m_badChecksum = fault;
        break;
    case FaultKind::SplitReply:
        m_split = fault;
        break;
    case FaultKind::Splinter:
        m_splinter = fault;
        break;
    case FaultKind::LateReply:
        m_late = fault;
        break;
    case FaultKind::StaleBytes:
        m_stale = fault;
        break;
    case FaultKind::Exception:
        m_exception = fault;
        break;
    default:
        break;
    }
}

void LineDisturber::clear()
{
    for (Fault *fault : {&m_noReply, &m_badChecksum, &m_split, &m_splinter, &m_late, &m_stale, &m_exception})
        *fault = Fault{};
}

int LineDisturber::takeExceptionCode()
{
    return take(&m_exception) ? m_exception.code : 0;
}

DisturbedReply LineDisturber::apply(Bytes reply)
{
    DisturbedReply result;
    const Bytes older = m_olderReply;
    m_olderReply = reply;
    if (take(&m_noReply)) {
        result.disturbed = true;
        return result;
    }

    if (take(&m_badChecksum)) {
        result.disturbed = true;
        reply.back() ^= 0xff;
    }
    if (take(&m_stale)) {
        result.disturbed = true;
        const std::size_t tail = std::min(staleTail, older.size());
        // Before the first reply two zeros stand for the older one.
        Bytes withStale(tail > 0 ? 0 : 2, 0x00);
        withStale.insert(withStale.end(), older.end() - static_cast<Bytes::difference_type>(tail),
                         older.end());
        withStale.insert(withStale.end(), reply.begin(), reply.end());
        reply = std::move(withStale);
    }
    nanoseconds delay{0};
    if (take(&m_late)) {
        result.disturbed = true;
        delay = milliseconds(m_late.milliseconds);
    }
    const auto cutOff = [&result, &reply, &delay](std::size_t parts, int gap) {
        result.disturbed = true;
        const auto cut = reply.begin() + static_cast<Bytes::difference_type>(reply.size() / parts);
        result.pieces.push_back({Bytes(reply.begin(), cut), delay});
        reply = Bytes(cut, reply.end());
        delay += milliseconds(gap);
    };
    if (take(&m_split)) {
        cutOff(2, m_split.milliseconds);
    } else if (take(&m_splinter)) {
        cutOff(3, m_splinter.milliseconds);
        cutOff(2, m_splinter.milliseconds);
    }
    result.pieces.push_back({std::move(reply), delay});
    return result;
}

bool LineDisturber::take(Fault *fault)
{
    if (fault->count <= 0)
        return false;
    --fault->count;
    return true;
}

} // namespace kt500sim
