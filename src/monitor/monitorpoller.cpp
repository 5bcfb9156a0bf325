// SPDX-License-Identifier: GPL-3.0-or-later
#include "monitor/monitorpoller.h"

#include "link/linkstate.h"
#include "link/replies.h"
#include "link/requests.h"
#include "monitor/polltable.h"

namespace {

constexpr int cyclePause = 200;    // ms
constexpr int tabReturn = 10;      // ms
constexpr int watchInterval = 100; // ms
constexpr int settledLink = 1000;  // ms

// What a method that was not read is reported as: a number that no control method has.
constexpr int unknownMethod = methodCount;

} // namespace

MonitorPoller::MonitorPoller(int startDelay, QObject *parent)
    : QObject(parent)
    , pollList(pollCodes())
{
    updateTimer.setSingleShot(true);
    connect(&updateTimer, &QTimer::timeout, this, &MonitorPoller::HandleUpDataTimer);
    updateTimer.start(startDelay);
    connect(&watchTimer, &QTimer::timeout, this, &MonitorPoller::watch);
    watchTimer.start(watchInterval);
    linkUpSince.start();
    connect(&chainWatch, &ReplyWatch::overdue, this, &MonitorPoller::pushChain);
}

void MonitorPoller::packData(const QString &code)
{
    owed.clear();
    askBlock(code);
}

void MonitorPoller::HandleUpDataTimer()
{
    updateTimer.stop();
    if (pollIndex >= pollList.size())
        return;
    const QString code = pollList.at(pollIndex);
    ++pollIndex;
    askBlock(code);
}

void MonitorPoller::askBlock(const QString &code)
{
    OwedReply request;
    request.request = readRequest(readAddress(code), pollWords(code));
    ask(request);
}

// The chain follows the newest request, and stands while the second tab shows.
void MonitorPoller::ask(const OwedReply &request)
{
    OwedReply reply = request;
    if (reply.drivesChain) {
        owed.detachAll();
        reply.drivesChain = !faultTabActive;
        chainWatch.begin();
    }
    owed.append(reply);
    emit frameReady(reply.request);
}

void MonitorPoller::takeReply(const QByteArray &reply)
{
    const std::optional<OwedReply> answered = owed.take(reply);
    if (!answered)
        return;
    if (answered->writeKind >= 0) {
        const auto kind = static_cast<MonitorWrite>(answered->writeKind);
        if (LevelRequests::isLevel(kind))
            levels.noteAnswered(kind, answered->writeValue);
    }
    if (!answered->drivesChain)
        return;
    linkWasDown = false;
    if (answered->kind == OwedReply::Kind::Poll)
        decode(answered->request, reply);
    else if (answered->kind == OwedReply::Kind::SequenceStep)
        takeSequenceReply(*answered, reply);
    continueChain();
}

void MonitorPoller::decode(const QByteArray &request, const QByteArray &reply)
{
    const QList<PollItem> items = cutBlock(addressOfRequest(request), readPayload(request, reply));
    for (const PollItem &item : items) {
        switch (item.kind) {
        case PollItem::Kind::DIDOStatus:
            emit DIDOStatusSignal(item.data, item.address);
            break;
        case PollItem::Kind::AlarmError:
            emit AlarmErrorSignal(item.data, item.address);
            break;
        case PollItem::Kind::DIDOFunction:
            emit DIDOFunctionSignal(item.data, item.address);
            emit io_DIDOFuncSignal(item.data, item.address);
            continue; // a setting, not a status
        case PollItem::Kind::Status:
            break;
        }
        emit ParameterSignal(item.data, item.address);
    }
}

void MonitorPoller::continueChain()
{
    if (pollIndex >= pollList.size())
        endCycle();
    else if (!pending.isEmpty())
        serveWrite();
    else if (readSequenceActive)
        sendSequenceStep();
    else
        HandleUpDataTimer();
}

void MonitorPoller::endCycle()
{
    pollIndex = 0;
    if (updateTimer.isActive())
        return;
    updateTimer.start(cyclePause);
    if (!faultClearPending)
        return;
    faultClearPending = false;
    // A reset may set the motor going: one that the link has held up is not sent, and can be pressed again.
    if (faultClearPressed.elapsed() >= longestRequestWait)
        return;
    OwedReply clear;
    clear.kind = OwedReply::Kind::FaultClear;
    clear.request = faultClearFrame();
    clear.drivesChain = false;
    ask(clear);
}

// A write cuts the cycle short: its reply ends it.
void MonitorPoller::serveWrite()
{
    const PendingWrites::Write write = pending.takeFirst();
    if (LevelRequests::isLevel(write.kind))
        levels.noteSent(write.kind);
    pollIndex = pollList.size();
    OwedReply request;
    request.kind = OwedReply::Kind::Write;
    request.request = writeFrame(write.kind, write.number, write.value);
    request.writeKind = int(write.kind);
    request.writeValue = write.value;
    ask(request);
}

void MonitorPoller::requestFaultClear()
{
    faultClearPending = true;
    faultClearPressed.start();
}

void MonitorPoller::requestWrite(MonitorWrite kind, int number, int value)
{
    const bool isFunction = kind == MonitorWrite::DIFunction || kind == MonitorWrite::DOFunction;
    if (isFunction && (number < 0 || number >= terminalCount))
        return;
    if (writeFrame(kind, number, value).isEmpty())
        return;
    pending.set({kind, number, value});
    if (LevelRequests::isLevel(kind))
        levels.notePressed(kind);
}

void MonitorPoller::requestRead()
{
    readSequenceActive = true;
    readSequenceStep = 0;
    ++readSequence;
}

void MonitorPoller::sendSequenceStep()
{
    pollIndex = 0;
    OwedReply step;
    step.kind = OwedReply::Kind::SequenceStep;
    step.sequence = readSequence;
    step.request = readSequenceStep == 0 ? methodReadFrame()
                                         : runReadFrames(readSequenceMethod).at(readSequenceStep - 1);
    ask(step);
}

void MonitorPoller::takeSequenceReply(const OwedReply &step, const QByteArray &reply)
{
    // Asked before the last press, or answered by a link that has been away: the present step is asked again.
    if (step.sequence != readSequence)
        return;
    const QByteArray payload = readPayload(step.request, reply);
    if (readSequenceStep == 0) {
        readSequenceMethod = payload.isEmpty() ? unknownMethod : int(unsignedNumber(payload));
        readSequenceValues.clear();
    } else {
        readSequenceValues.append(QString::fromLatin1(payload.toHex()));
    }
    ++readSequenceStep;
    if (readSequenceStep > runReadFrames(readSequenceMethod).size())
        finishSequence();
}

void MonitorPoller::finishSequence()
{
    readSequenceActive = false;
    emit readFinishSignal(readSequenceMethod, readSequenceValues);
}

void MonitorPoller::showFaultTab(bool isShown)
{
    if (isShown) {
        faultTabActive = true;
        owed.detachAll();
        OwedReply history;
        history.kind = OwedReply::Kind::History;
        history.request = readRequest(monitorregister::faultHistory, historyWords);
        history.drivesChain = false;
        ask(history);
        return;
    }
    faultTabActive = false;
    if (updateTimer.isActive())
        return;
    updateTimer.start(tabReturn);
    pollIndex = 0;
}

void MonitorPoller::noteLostLink()
{
    linkWasDown = true;
    linkUpSince.restart();
    owed.disownSequence();
}

// Runs all the time, since neither the age of a press nor the state of the link comes with a signal of its
// own kind.
void MonitorPoller::watch()
{
    for (const MonitorWrite kind : {MonitorWrite::DILevel, MonitorWrite::DOLevel}) {
        if (levels.isOverdue(kind))
            withdraw(kind);
    }
    // While the scope's stream runs, a request gets no reply of its own.
    if (!isLinkOpen() || isScopeStreamRunning()) {
        linkWasDown = true;
        linkUpSince.restart();
    } else if (linkWasDown && linkUpSince.elapsed() >= settledLink) {
        linkWasDown = false;
        restartChain();
    }
}

// A reply can get lost on a link that stays open: in the stream of a drive that nobody asked for one. A read
// is asked again. A write is not, since it may have been carried out: the chain goes on without its reply.
void MonitorPoller::pushChain()
{
    if (faultTabActive || updateTimer.isActive())
        return;
    const std::optional<OwedReply> lost = owed.chainRequest();
    if (lost && lost->kind != OwedReply::Kind::Write) {
        // Should it still be queued, it is not asked twice.
        emit withdrawNeeded();
        ask(*lost);
        return;
    }
    pollIndex = 0;
    HandleUpDataTimer();
}

void MonitorPoller::withdraw(MonitorWrite kind)
{
    const bool hasLeft = levels.isSent(kind);
    pending.clear(kind);
    levels.forget(kind);
    if (hasLeft) {
        // With it goes whatever else the link has queued, so the chain stands until it is started again.
        owed.clear();
        linkWasDown = true;
        linkUpSince.restart();
        emit withdrawNeeded();
    }
    emit levelsWithdrawn(kind, levels.answered(kind));
}

void MonitorPoller::restartChain()
{
    if (faultTabActive || updateTimer.isActive())
        return;
    for (const MonitorWrite kind : {MonitorWrite::DILevel, MonitorWrite::DOLevel}) {
        if (levels.isSent(kind))
            withdraw(kind);
    }
    linkWasDown = false;
    owed.clear();
    emit withdrawNeeded();
    pollIndex = 0;
    HandleUpDataTimer();
}
