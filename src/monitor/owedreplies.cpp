// SPDX-License-Identifier: GPL-3.0-or-later
#include "monitor/owedreplies.h"

#include "link/functioncodes.h"
#include "link/replies.h"
#include "link/requests.h"

namespace {

constexpr int functionPlace = 1;
constexpr int exceptionBit = 0x80;

int functionOf(const QByteArray &frame)
{
    return frame.size() > functionPlace ? quint8(frame.at(functionPlace)) & ~exceptionBit : 0;
}

bool fits(const QByteArray &request, const QByteArray &reply)
{
    if (functionOf(request) != functionOf(reply))
        return false;
    return functionOf(request) != int(FunctionCode::Read) || isExceptionReply(reply) ||
           replyByteCount(reply) == 2 * registersOfRequest(request);
}

} // namespace

QByteArray readPayload(const QByteArray &request, const QByteArray &reply)
{
    const int count = 2 * registersOfRequest(request);
    constexpr int frameAround = 5; // head of three bytes, CRC of two
    if (isExceptionReply(reply) || replyByteCount(reply) != count || reply.size() < count + frameAround)
        return QByteArray();
    return payloadFromBack(reply, count);
}

void OwedReplies::detachAll()
{
    for (OwedReply &reply : owed)
        reply.drivesChain = false;
}

std::optional<OwedReply> OwedReplies::chainRequest() const
{
    for (const OwedReply &reply : owed) {
        if (reply.drivesChain)
            return reply;
    }
    return std::nullopt;
}

void OwedReplies::disownSequence()
{
    for (OwedReply &reply : owed)
        reply.sequence = 0;
}

std::optional<OwedReply> OwedReplies::take(const QByteArray &reply)
{
    if (owed.isEmpty())
        return std::nullopt;
    const int place = owed.size() > 1 ? find(reply) : 0;
    OwedReply answered = owed.at(place);
    owed.erase(owed.begin(), owed.begin() + place + 1);
    passChainTo(&answered);
    return answered;
}

// A reply that fits none is the oldest one's, spoilt.
int OwedReplies::find(const QByteArray &reply) const
{
    for (int place = 0; place < owed.size(); ++place) {
        if (fits(owed.at(place).request, reply))
            return place;
    }
    return 0;
}

// After a change of tab, or when a reply was long in coming, the same read may be owed twice. The first
// answer is as good as the second: the chain goes on with it, and the second is dropped.
void OwedReplies::passChainTo(OwedReply *answered)
{
    const bool isRead =
        answered->kind == OwedReply::Kind::Poll || answered->kind == OwedReply::Kind::SequenceStep;
    if (answered->drivesChain || !isRead || owed.isEmpty())
        return;
    OwedReply &last = owed.last();
    if (!last.drivesChain || last.request != answered->request || last.sequence != answered->sequence)
        return;
    last.drivesChain = false;
    answered->drivesChain = true;
}
