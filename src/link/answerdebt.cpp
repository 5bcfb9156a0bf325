// SPDX-License-Identifier: GPL-3.0-or-later
#include "link/answerdebt.h"

#include "link/framecodec.h"
#include "link/functioncodes.h"

#include <algorithm>

namespace {

constexpr int mostPieces = 512; // bytes; an answer is shorter than 260
constexpr quint8 exceptionBit = 0x80;

// The length of the answer that begins at a place, as its head tells; 0 where none begins, or too little of
// it has come.
int answerLength(const QByteArray &bytes, int at)
{
    constexpr int exceptionLength = 5;
    constexpr int shortLength = 8;
    constexpr int frameBytes = 5; // station, function, byte count and CRC
    if (at + 3 > bytes.size() || bytes.at(at) != 1)
        return 0;
    const auto function = static_cast<quint8>(bytes.at(at + 1));
    switch (static_cast<FunctionCode>(function & ~exceptionBit)) {
    case FunctionCode::Read:
        if (!(function & exceptionBit))
            return frameBytes + static_cast<quint8>(bytes.at(at + 2));
        return exceptionLength;
    case FunctionCode::WriteSingle:
    case FunctionCode::WriteMultiple:
        return function & exceptionBit ? exceptionLength : shortLength;
    case FunctionCode::Scope:
        break;
    }
    return 0;
}

// The length of the stream's frame that begins at a place, as its head tells; 0 where none begins.
int streamFrameLength(const QByteArray &bytes, int at)
{
    constexpr int headLength = 4;
    if (bytes.size() - at < headLength || bytes.at(at) != 1 || !isScopeFrame(bytes.mid(at, headLength)))
        return 0;
    const int length = static_cast<quint8>(bytes.at(at + 2)) * 256 + static_cast<quint8>(bytes.at(at + 3));
    return length < headLength ? 0 : length;
}

// The whole answers among the bytes, which are removed together with all that stands before the last of them
// or of the whole frames of a stream.
QList<QByteArray> takeAnswers(QByteArray *bytes)
{
    QList<QByteArray> answers;
    int at = 0;
    int end = 0;
    while (at < bytes->size()) {
        const int length = answerLength(*bytes, at);
        const QByteArray answer = bytes->mid(at, length);
        if (length > 0 && answer.size() == length && hasGoodCrc(answer)) {
            answers.append(answer);
            at += length;
            end = at;
        } else if (const int skipped = streamFrameLength(*bytes, at);
                   skipped > 0 && skipped <= bytes->size() - at) {
            // Samples may look like an answer.
            at += skipped;
            end = at;
        } else {
            ++at;
        }
    }
    bytes->remove(0, end);
    return answers;
}

} // namespace

void AnswerDebt::begin(TimePoint now)
{
    forgetIfOld(now);
    request = Request::Begun;
    writings = 0;
    doubtful = owed > 0;
}

void AnswerDebt::abandon()
{
    request = Request::None;
    holding = false;
    kept.clear();
    pieces.clear();
}

void AnswerDebt::written(TimePoint now)
{
    if (writings == 0)
        firstWriting = now;
    request = Request::Asked;
    ++writings;
    ++owed;
    lastEvent = now;
}

QByteArray AnswerDebt::goodChunk(const QByteArray &chunk, TimePoint now)
{
    pieces.clear();
    return takeAnswer(chunk, now);
}

QByteArray AnswerDebt::takeAnswer(const QByteArray &answer, TimePoint now)
{
    if (!holding && !isAnswerAwaited()) {
        // Nobody waits for it. It is an old answer, or the drive spoke unasked.
        forgetIfOld(now);
        const bool old = owed > 0;
        pay();
        lastEvent = now;
        return old || request == Request::Begun ? QByteArray() : answer;
    }
    if (!isAnswerAwaited())
        return leftover(answer, now);

    pay();
    lastEvent = now;
    holding = false;
    request = Request::Answered;
    slowest = std::max<std::chrono::nanoseconds>(slowest, now - firstWriting);
    if (owed == 0) {
        slowest = std::chrono::nanoseconds(0);
        return answer;
    }
    hold(now);
    if (!doubtful)
        return answer;
    kept = answer;
    return QByteArray();
}

QByteArray AnswerDebt::badChunk(const QByteArray &chunk, TimePoint now)
{
    pieces += chunk;
    const QList<QByteArray> answers = takeAnswers(&pieces);
    pieces = pieces.right(mostPieces);
    QByteArray delivered;
    for (const QByteArray &answer : answers) {
        if (!holding && request != Request::Overtaken) {
            pay();
            continue;
        }
        const QByteArray taken = takeAnswer(answer, now);
        if (delivered.isEmpty())
            delivered = taken;
    }
    return delivered;
}

QByteArray AnswerDebt::streamChunk()
{
    if (isAnswerAwaited())
        request = Request::Answered;
    owed = 0;
    doubtful = false;
    holding = false;
    slowest = std::chrono::nanoseconds(0);
    pieces.clear();
    return takeKept();
}

QByteArray AnswerDebt::unwantedStreamChunk(const QByteArray &chunk, TimePoint now)
{
    if (request == Request::Asked) {
        request = Request::Overtaken;
        holding = true;
        silentUntil = now + overtakenWait;
    }
    return badChunk(chunk, now);
}

QByteArray AnswerDebt::endHold(TimePoint now)
{
    if (!holding || now < silentUntil)
        return QByteArray();
    holding = false;
    if (request == Request::Overtaken)
        return QByteArray();
    // One answer at least was the current request's own. What an earlier one is still owed has had its time.
    owed = std::min(owed, std::max(writings - 1, 0));
    if (owed == 0)
        slowest = std::chrono::nanoseconds(0);
    return takeKept();
}

void AnswerDebt::forgetIfOld(TimePoint now)
{
    if (now - lastEvent <= longestHold)
        return;
    owed = 0;
    slowest = std::chrono::nanoseconds(0);
}

void AnswerDebt::pay()
{
    owed = std::max(owed - 1, 0);
}

void AnswerDebt::hold(TimePoint now)
{
    holding = true;
    const std::chrono::nanoseconds silence =
        owed == 0 ? settleTime : std::min<std::chrono::nanoseconds>(longestHold, slowest + settleTime);
    silentUntil = now + silence;
}

QByteArray AnswerDebt::leftover(const QByteArray &chunk, TimePoint now)
{
    pay();
    lastEvent = now;
    slowest = std::max<std::chrono::nanoseconds>(slowest, now - firstWriting);
    if (!kept.isEmpty())
        kept = chunk;
    hold(now);
    return owed == 0 ? takeKept() : QByteArray();
}

QByteArray AnswerDebt::takeKept()
{
    QByteArray answer;
    answer.swap(kept);
    return answer;
}
