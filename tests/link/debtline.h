// SPDX-License-Identifier: GPL-3.0-or-later
// The debt of answers with a clock that the test moves, and the answers that its tests speak of. Any thread.
#pragma once

#include "link/answerdebt.h"
#include "support/wire.h"

namespace debtline {

inline const QByteArray answerA = wire::frame("010302000a");
inline const QByteArray answerB = wire::frame("010302000b");
inline const QByteArray answerC = wire::frame("010302000c");
inline const QByteArray nothing;

// A debt with a clock that the test moves, in milliseconds.
struct Line
{
    AnswerDebt debt;
    AnswerDebt::TimePoint now = AnswerDebt::TimePoint(std::chrono::hours(1));

    void pass(int milliseconds) { now += std::chrono::milliseconds(milliseconds); }
    // Asks, writing the request once and again after each of the waits.
    void ask(const QList<int> &repeatedAfter = {})
    {
        debt.begin(now);
        debt.written(now);
        for (const int wait : repeatedAfter) {
            pass(wait);
            debt.written(now);
        }
    }
    QByteArray good(const QByteArray &chunk) { return debt.goodChunk(chunk, now); }
    QByteArray bad(const QByteArray &chunk) { return debt.badChunk(chunk, now); }
    QByteArray unwanted(const QByteArray &chunk) { return debt.unwantedStreamChunk(chunk, now); }
    int holdLeft() const
    {
        return debt.isHolding() ? int((debt.holdEnd() - now) / std::chrono::milliseconds(1)) : 0;
    }
    QByteArray passHold()
    {
        now = debt.holdEnd();
        return debt.endHold(now);
    }
};

} // namespace debtline
