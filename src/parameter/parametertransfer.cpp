// SPDX-License-Identifier: GPL-3.0-or-later
#include "parameter/parametertransfer.h"

#include "catalogue/parametercode.h"
#include "link/framecodec.h"
#include "parameter/parameterframes.h"

#include <QPointer>

#include <array>

namespace {

constexpr int replyTimeout = 1000; // ms
constexpr int equalReadBacks = 3;

// Shared by all editors of the process. A run that does not come to its end leaves them, and the next one
// counts on from there.
quint16 readProgress = 0;
quint16 batchReadProgress = 0;
quint16 writeProgress = 0;
quint8 confirmCount = 0;

} // namespace

// The protocol: what a reply means in a state, and what is told when none comes.
struct ParameterTransfer::Rule
{
    RequestState state;
    void (ParameterTransfer::*onReply)(const QByteArray &reply);
    End onTimeout;
};

const ParameterTransfer::Rule &ParameterTransfer::ruleOf(RequestState state)
{
    using Transfer = ParameterTransfer;
    static const std::array<Rule, 7> rules{{
        {StateIdle, &Transfer::ignore, End::SilentTimeout},
        {StateReadCurrent, &Transfer::takeSingle, End::RequestTimeout},
        {StateReadPage, &Transfer::takeOfMany, End::RequestTimeout},
        {StateWritePage, &Transfer::takeAcknowledge, End::WriteTimeout},
        {StateWriteCurrent, &Transfer::ignore, End::WriteTimeout},
        {StateVerifyWrite, &Transfer::takeReadBack, End::SilentTimeout},
        {StateReadBatch, &Transfer::takeOfMany, End::SilentTimeout},
    }};
    for (const Rule &rule : rules) {
        if (rule.state == state)
            return rule;
    }
    return rules.front();
}

ParameterTransfer::ParameterTransfer(QStringList pairCodes, QObject *parent)
    : QObject(parent)
    , doubleAddressList(std::move(pairCodes))
    , conversation(replyTimeout)
{
    connect(&conversation, &Conversation::frameReady, this, &ParameterTransfer::frameReady);
    connect(&conversation, &Conversation::timedOut, this, &ParameterTransfer::timeOut);
}

bool ParameterTransfer::isPair(const QString &code) const
{
    return doubleAddressList.contains(shortCode(code));
}

bool ParameterTransfer::isBatchRun() const
{
    return requestState == StateReadBatch || (isWriting() && batchWriteFlag);
}

void ParameterTransfer::readOne(const QString &code)
{
    start({StateReadCurrent, {code}, {}, ramBase, false});
}

void ParameterTransfer::writeOne(const QStringList &record, int base)
{
    start({StateWriteCurrent, {}, {record}, base, false});
}

void ParameterTransfer::readPages(const QStringList &codes)
{
    start({StateReadPage, codes, {}, ramBase, false});
}

void ParameterTransfer::readBatch(const QStringList &codes)
{
    start({StateReadBatch, codes, {}, ramBase, true});
}

void ParameterTransfer::writePages(const QList<QStringList> &records)
{
    start({StateWritePage, {}, records, eepromBase, false});
}

void ParameterTransfer::writeBatch(const QList<QStringList> &records)
{
    start({StateWritePage, {}, records, eepromBase, true});
}

void ParameterTransfer::start(const Task &task)
{
    // A reply carries no register: a second request outstanding would be answered with the first one's value.
    if (conversation.isOutstanding() || !waiting.isEmpty())
        waiting.append(task);
    else
        begin(task);
}

void ParameterTransfer::begin(const Task &task)
{
    requestState = task.state;
    switch (task.state) {
    case StateReadCurrent:
        conversation.send(parameterReadFrame(task.codes.first(), isPair(task.codes.first())));
        break;
    case StateWriteCurrent:
        conversation.send(parameterWriteFrame(task.records.first(), task.base));
        break;
    case StateWritePage:
        batchWriteFlag = task.isBatch;
        writeQueue = task.records;
        writeTotal = writeQueue.size();
        sendNextWrite();
        break;
    default:
        readQueue.append(task.codes);
        readTotal = readQueue.size();
        sendNextRead();
        break;
    }
}

void ParameterTransfer::beginWaiting()
{
    // A run over nothing is over at once, and its receivers may end this object.
    const QPointer<ParameterTransfer> alive(this);
    while (alive && !conversation.isOutstanding() && !waiting.isEmpty())
        begin(waiting.takeFirst());
}

void ParameterTransfer::takeReply(const QByteArray &reply)
{
    // Nobody waits for this one: it comes after its time-out, or answers the probe of a restarted link, which
    // goes to the window that asked last.
    if (isReplyLost || !conversation.takeReply())
        return;
    const QPointer<ParameterTransfer> alive(this);
    if (isDiscarding)
        isDiscarding = false;
    else
        (this->*ruleOf(requestState).onReply)(reply);
    if (alive)
        beginWaiting();
}

void ParameterTransfer::loseReply()
{
    isReplyLost = conversation.isOutstanding();
}

void ParameterTransfer::timeOut()
{
    conversation.drop();
    isReplyLost = false;
    const QPointer<ParameterTransfer> alive(this);
    emit withdrawn();
    if (isDiscarding)
        isDiscarding = false;
    else
        emit ended(ruleOf(requestState).onTimeout);
    if (alive)
        beginWaiting();
}

void ParameterTransfer::cancel()
{
    if (!conversation.isOutstanding() || isDiscarding)
        return;
    isDiscarding = true;
    waiting.clear();
    emit withdrawn();
    emit ended(End::Cancelled);
}

void ParameterTransfer::ignore(const QByteArray &) {}

void ParameterTransfer::takeSingle(const QByteArray &reply)
{
    emit answered(conversation.address() - ramBase, replyData(reply));
}

void ParameterTransfer::takeOfMany(const QByteArray &reply)
{
    takeSingle(reply);
    readQueue.removeFirst();
    sendNextRead();
}

void ParameterTransfer::sendNextRead()
{
    const bool isBatch = requestState == StateReadBatch;
    quint16 &count = isBatch ? batchReadProgress : readProgress;
    if (readQueue.isEmpty()) {
        emit ended(End::ReadDone);
        count = 0;
        return;
    }
    emit progress(++count, readTotal);
    // A page read goes by the full code of the catalogue, and there the tilde marks a pair.
    const QString code = readQueue.first();
    conversation.send(parameterReadFrame(code, isBatch ? isPair(code) : code.contains(QLatin1Char('~'))));
}

void ParameterTransfer::sendNextWrite()
{
    emit progress(writeProgress, writeTotal);
    if (writeQueue.isEmpty()) {
        emit progress(writeTotal, writeTotal);
        requestState = StateIdle;
        emit ended(batchWriteFlag ? End::BatchWriteDone : End::WriteDone);
        writeProgress = 0;
        return;
    }
    conversation.send(parameterWriteFrame(writeQueue.first(), eepromBase));
    emit progress(++writeProgress, writeTotal);
}

void ParameterTransfer::takeAcknowledge(const QByteArray &)
{
    sendReadBack();
}

void ParameterTransfer::sendReadBack()
{
    if (writeQueue.isEmpty() || isDiscarding)
        return;
    requestState = StateVerifyWrite;
    const QString code = writeQueue.first().value(0);
    conversation.send(parameterReadFrame(code, isPair(code)));
}

void ParameterTransfer::takeReadBack(const QByteArray &reply)
{
    if (judgeReadBack(reply, writeQueue.first()) != ReadBack::Equal) {
        // Asked again without a limit: the value is not in the drive until the drive says so.
        sendReadBack();
    } else if (confirmCount < equalReadBacks - 1) {
        ++confirmCount;
        sendReadBack();
    } else {
        confirmCount = 0;
        writeQueue.removeFirst();
        requestState = StateWritePage;
        sendNextWrite();
    }
}
