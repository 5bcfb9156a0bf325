// SPDX-License-Identifier: GPL-3.0-or-later
#include "simulator/framelog.h"

#include <cstdio>

namespace kt500sim {
namespace {

const char *nameOf(FrameKind kind)
{
    switch (kind) {
    case FrameKind::Request:
        return "request";
    case FrameKind::Foreign:
        return "foreign";
    case FrameKind::Unreadable:
        return "unreadable";
    case FrameKind::Reply:
        return "reply";
    case FrameKind::StreamFrame:
        return "stream";
    case FrameKind::Noise:
        return "noise";
    }
    return "";
}

bool isReceived(FrameKind kind)
{
    return kind == FrameKind::Request || kind == FrameKind::Foreign || kind == FrameKind::Unreadable;
}

} // namespace

std::string toLine(const LoggedFrame &frame)
{
    char head[64];
    const long long microsecondsTotal = frame.time.count() / 1000;
    std::snprintf(head, sizeof head, "%lld.%06lld %c %-10s", microsecondsTotal / 1'000'000,
                  microsecondsTotal % 1'000'000, isReceived(frame.kind) ? '<' : '>', nameOf(frame.kind));
    std::string line = head;
    for (const std::uint8_t byte : frame.bytes) {
        char digits[4];
        std::snprintf(digits, sizeof digits, " %02x", static_cast<unsigned>(byte));
        line += digits;
    }
    return line;
}

std::string toText(const Counters &counters)
{
    std::string text;
    const auto add = [&text](const char *name, std::uint64_t value) {
        text += std::string(name) + ' ' + std::to_string(value) + '\n';
    };
    add("requests", counters.requests);
    add("retransmissions", counters.retransmissions);
    add("bad-checksums", counters.badChecksums);
    add("foreign-frames", counters.foreignFrames);
    add("replies", counters.replies);
    add("disturbed-replies", counters.disturbedReplies);
    add("exceptions", counters.exceptions);
    add("stream-frames", counters.streamFrames);
    add("stream-frames-dropped", counters.streamFramesDropped);
    add("bytes-received", counters.bytesReceived);
    add("bytes-sent", counters.bytesSent);
    add("hang-ups", counters.hangUps);
    return text;
}

} // namespace kt500sim
