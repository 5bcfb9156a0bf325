// SPDX-License-Identifier: GPL-3.0-or-later
// What the monitor has asked and not been answered yet, oldest first. A reply carries no register: with one
// request outstanding it is that one's; with more, function and byte count tell which.
// Plain values; the poller's thread.
#pragma once

#include <QByteArray>
#include <QList>

#include <optional>

struct OwedReply
{
    enum class Kind { Poll, Write, SequenceStep, FaultClear, History };

    Kind kind = Kind::Poll;
    QByteArray request;
    bool drivesChain = true; // the next request follows on its reply
    int sequence = 0;        // of a sequence step: which sequence asked
    int writeKind = -1;      // of a write: its MonitorWrite
    int writeValue = 0;      // of a write: what was sent
};

class OwedReplies
{
public:
    void append(const OwedReply &reply) { owed.append(reply); }
    bool isEmpty() const { return owed.isEmpty(); }
    void clear() { owed.clear(); }

    // The chain goes on by none of them any more.
    void detachAll();
    // The one that the chain goes on by; nothing when it goes on by none.
    std::optional<OwedReply> chainRequest() const;

    // Values of a read sequence that is on its way may come from elsewhere: they are not taken.
    void disownSequence();

    // The request that this reply answers. Replies come in order, so whatever is older has got none and is
    // forgotten. Nothing when nothing is owed.
    std::optional<OwedReply> take(const QByteArray &reply);

private:
    int find(const QByteArray &reply) const;
    void passChainTo(OwedReply *answered);

    QList<OwedReply> owed;
};

// The data of a reply to this read; empty for an exception and where the byte count is not that of the words
// asked.
QByteArray readPayload(const QByteArray &request, const QByteArray &reply);
