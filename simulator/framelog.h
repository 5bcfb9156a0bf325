// SPDX-License-Identifier: GPL-3.0-or-later
// What passed on the line: counters, and single frames with their time for whoever listens.
//
// Plain values; a listener is called on the drive's loop thread.
#pragma once

#include "simulator/bytes.h"
#include "simulator/clock.h"

#include <functional>
#include <string>

namespace kt500sim {

enum class FrameKind {
    Request,     ///< received, checksum good, for this station
    Foreign,     ///< received, checksum good, for another station or too short for any
    Unreadable,  ///< received, checksum bad
    Reply,       ///< sent in answer, disturbed or not; a split reply is logged as its two pieces
    StreamFrame, ///< sent by the scope stream
    Noise        ///< sent as garbage
};

struct LoggedFrame
{
    nanoseconds time{0}; ///< since the drive was started
    FrameKind kind = FrameKind::Request;
    Bytes bytes;
};

using FrameListener = std::function<void(const LoggedFrame &frame)>;

/// One line: seconds with microseconds, "<" for what the drive received or ">" for what it sent, the kind,
/// and the bytes in hexadecimal.
std::string toLine(const LoggedFrame &frame);

/// Totals since the start or the last reset.
struct Counters
{
    std::uint64_t requests = 0;         ///< good requests to this station
    std::uint64_t retransmissions = 0;  ///< of these, the same again while the one before had no good reply
    std::uint64_t badChecksums = 0;     ///< frames received with a wrong checksum
    std::uint64_t foreignFrames = 0;    ///< good frames to other stations
    std::uint64_t replies = 0;          ///< replies that left, disturbed ones included
    std::uint64_t disturbedReplies = 0; ///< replies that a fault changed or swallowed
    std::uint64_t exceptions = 0;       ///< exception replies among the replies
    std::uint64_t streamFrames = 0;     ///< stream frames that left
    std::uint64_t streamFramesDropped = 0; ///< stream frames for which the line had no room
    std::uint64_t bytesReceived = 0;
    std::uint64_t bytesSent = 0;
    std::uint64_t hangUps = 0;
};

/// One "name value" line for each counter.
std::string toText(const Counters &counters);

} // namespace kt500sim
