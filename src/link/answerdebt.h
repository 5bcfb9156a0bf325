// SPDX-License-Identifier: GPL-3.0-or-later
// How many answers the drive still owes, and what of them may be delivered: a reply doesn't say what it
// answers, so an answer that comes after its request was answered already would be taken for the next one's.
// Times are given, nothing waits here. On the link's worker; owned by SerialPort.
//
// Each writing of a request is owed one answer. When a request has been answered and more are owed, the link
// is held: nothing new is asked, and what comes is a leftover and thrown away, until the line has been silent
// for a while. If answers are missing even then, they may have been lost or be later still. So the next
// request's answer is not believed at once: the last one that comes is it, since answers keep their order.
//
// A chunk of a stream that nobody wants completes a request without being its answer. That may stand in the
// same chunk, or in one of the next: it is waited for a moment before anything new is asked.
#pragma once

#include <QByteArray>
#include <QList>

#include <chrono>

class AnswerDebt
{
public:
    using Clock = std::chrono::steady_clock;
    using TimePoint = Clock::time_point;

    // The silence that ends a hold when every answer has come: an adapter delivers every 16 ms.
    static constexpr std::chrono::milliseconds settleTime{20};
    // No answer is waited for longer.
    static constexpr std::chrono::milliseconds longestHold{500};
    // What a stream that nobody wants has overtaken holds the link no longer than any request waits.
    static constexpr std::chrono::milliseconds overtakenWait{50};

    // A new request is the current one; not while isHolding().
    void begin(TimePoint now);
    // The current request is given up without an answer, as at the end of a worker.
    void abandon();
    // The current request has been written, for the first time or again.
    void written(TimePoint now);

    // Takes a chunk with a good checksum, or a bad one, and gives what is to be delivered now, mostly the
    // chunk itself; empty for a leftover and for what is kept until it is certain.
    QByteArray goodChunk(const QByteArray &chunk, TimePoint now);
    // Noise, a piece of an answer, or several joined. Whole answers in it, or in the pieces so far, are no
    // longer owed. They complete nothing, but that of an overtaken request is given.
    QByteArray badChunk(const QByteArray &chunk, TimePoint now);
    // A chunk of the scope stream ends hold and debt; gives what was kept.
    QByteArray streamChunk();
    // A chunk of a stream that nobody wants overtakes the current request. Hold and debt stay, and answers
    // before, between and behind the stream's frames count like chunks by themselves.
    QByteArray unwantedStreamChunk(const QByteArray &chunk, TimePoint now);

    // The current request has not been written yet: no chunk can be its answer.
    bool awaitsWriting() const { return request == Request::Begun; }
    bool isHolding() const { return holding; }
    // When the hold ends if nothing comes; of meaning while isHolding().
    TimePoint holdEnd() const { return silentUntil; }
    // Ends the hold if its time has come; gives what was kept.
    QByteArray endHold(TimePoint now);

private:
    enum class Request { None, Begun, Asked, Overtaken, Answered };

    bool isAnswerAwaited() const { return request == Request::Asked || request == Request::Overtaken; }
    void forgetIfOld(TimePoint now);
    QByteArray takeAnswer(const QByteArray &answer, TimePoint now);
    void pay();
    void hold(TimePoint now);
    QByteArray leftover(const QByteArray &chunk, TimePoint now);
    QByteArray takeKept();

    Request request = Request::None;
    int owed = 0;          // answers, those of earlier requests included
    int writings = 0;      // of the current request
    bool doubtful = false; // answers to an earlier request were owed when the current one began
    TimePoint firstWriting{};
    TimePoint lastEvent{};               // the last writing or good chunk
    std::chrono::nanoseconds slowest{0}; // the longest that an answer took since the debt arose
    bool holding = false;
    TimePoint silentUntil{};
    QByteArray kept;   // the answer to a doubtful request, until it is certain
    QByteArray pieces; // bad chunks since the last good one
};
