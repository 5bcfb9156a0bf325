// SPDX-License-Identifier: GPL-3.0-or-later
// The faults of the line by name: what can go wrong between the drive and its client, on request.
//
// Plain values, for any thread.
#pragma once

#include <QString>

#include <optional>

namespace kt500sim {

enum class FaultKind {
    NoReply,       ///< the next replies are lost on the way; the requests are executed
    BadChecksum,   ///< the next replies carry a wrong checksum
    SplitReply,    ///< the next replies come in two pieces with a gap between
    Splinter,      ///< the next replies come in three pieces with gaps between
    LateReply,     ///< the next replies come late, and those behind them too
    StaleBytes,    ///< the next replies have bytes of an older reply before them
    Exception,     ///< the next requests are refused with a given code and not executed
    Silence,       ///< the drive neither hears nor speaks for a time
    HangUp,        ///< the line is gone for a time, as when an adapter is unplugged
    Garbage,       ///< random bytes without end, and nothing else gets through
    UnaskedStream, ///< a scope stream that nobody asked for; a stop frame ends it
    Clear          ///< ends every fault
};

struct Fault
{
    FaultKind kind = FaultKind::Clear;
    int count = 0;        ///< how many requests or replies it strikes
    int milliseconds = 0; ///< gap, delay or duration; for HangUp 0 means until Clear
    int code = 0;         ///< of Exception, 1 to 255
    bool on = false;      ///< of Garbage and UnaskedStream

    static Fault noReply(int count);
    static Fault badChecksum(int count);
    static Fault splitReply(int count, int gapMilliseconds);
    static Fault splinter(int count, int gapMilliseconds);
    static Fault lateReply(int count, int delayMilliseconds);
    static Fault staleBytes(int count);
    static Fault exception(int code, int count);
    static Fault silence(int milliseconds);
    static Fault hangUp(int milliseconds);
    static Fault garbage(bool on);
    static Fault unaskedStream(bool on);
    static Fault clear();

    /// Reads "noreply N", "badcrc N", "split N MS", "splinter N MS", "late N MS", "stale N", "exception CODE
    /// N", "silence MS", "hangup MS", "garbage on|off", "stream on|off" or "clear". Nothing for any other
    /// text; \a error (if given) then says what is wrong.
    static std::optional<Fault> fromText(const QString &text, QString *error = nullptr);
    /// The text that fromText() reads.
    QString toText() const;

    /// True for a first word that belongs to a fault, whatever follows it.
    static bool isFaultWord(const QString &word);
    /// One line of usage for each fault.
    static QString usage();
};

} // namespace kt500sim
