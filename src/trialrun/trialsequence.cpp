// SPDX-License-Identifier: GPL-3.0-or-later
#include "trialrun/trialsequence.h"

#include "link/linkstate.h"
#include "link/replies.h"
#include "link/requests.h"

namespace {

constexpr int saveInterval = 100; // ms
constexpr int jogReadDelay = 10;  // ms

} // namespace

TrialSequence::TrialSequence(QObject *parent)
    : QObject(parent)
    , poll(&exchange)
    , delivery(&exchange)
{
    connect(&exchange, &TrialExchange::frameReady, this, &TrialSequence::frameReady);
    connect(&exchange, &TrialExchange::withdrawNeeded, this, &TrialSequence::withdrawNeeded);
    saveTimer.setInterval(saveInterval);
    connect(&saveTimer, &QTimer::timeout, this, &TrialSequence::saveInitValue);
    connect(&delivery, &TrialDelivery::ranDry, this, [this] {
        if (isRestoring())
            finishRestore();
    });
    connect(&delivery, &TrialDelivery::calm, this, [this] {
        if (currentStage == TrialStage::Saving)
            start();
    });
    connect(&poll, &PositionPoll::overdue, this, [this] {
        if (currentStage == TrialStage::Polling && poll.isAllowed())
            poll.askAgain();
    });
    connect(&restore, &TrialRestore::overdue, this, &TrialSequence::giveUpRestore);
}

void TrialSequence::start()
{
    saveTimer.start();
}

void TrialSequence::saveInitValue()
{
    if (!isLinkOpen() || isRestoring())
        return;
    saveTimer.stop();
    restore.forget();
    startAnew(TrialStage::Saving, savedReads());
}

void TrialSequence::initWrite()
{
    startAnew(TrialStage::SettingUp, setUpFrames());
}

void TrialSequence::readJogValues()
{
    startAnew(TrialStage::ReadingJog, jogReads());
}

void TrialSequence::readAbsolutePosition()
{
    if (isRestoring())
        return;
    currentStage = TrialStage::Polling;
    poll.ask();
}

void TrialSequence::continueWith(TrialStage stage, const TrialFrames &frames)
{
    if (isRestoring())
        return;
    currentStage = stage;
    delivery.append(stage, frames);
    delivery.goOn();
}

void TrialSequence::startAnew(TrialStage stage, const TrialFrames &frames)
{
    if (isRestoring())
        return;
    delivery.clear();
    continueWith(stage, frames);
}

void TrialSequence::replaceReads(TrialStage stage, const TrialFrames &frames)
{
    if (isRestoring())
        return;
    delivery.drop([](const TrialQueue::Entry &queued) { return trialStageRule(queued.stage).fills; });
    continueWith(stage, frames);
}

void TrialSequence::writeNow(const QByteArray &frame)
{
    if (!isRestoring() && !frame.isEmpty())
        exchange.send(frame, TrialExchange::Kind::Write);
}

void TrialSequence::press(TrialStage stage, int panelValue)
{
    if (isRestoring())
        return;
    currentStage = stage;
    exchange.send(panelFrame(panelValue), TrialExchange::Kind::Panel);
    pressedInVain();
}

void TrialSequence::pressMove(TrialStage stage, int distance)
{
    if (isRestoring())
        return;
    currentStage = stage;
    delivery.append(stage, {distanceFrame(distance), panelFrame(trialpanel::startMove)}, true);
    delivery.goOn();
    pressedInVain();
}

// Without a link the press would wait in the queue for a drive that comes back when nobody thinks of it.
void TrialSequence::pressedInVain()
{
    if (isLinkOpen() || !restore.isWhole())
        return;
    QTimer::singleShot(0, this, [this] {
        if (!isLinkOpen())
            emit linkMissed();
    });
}

void TrialSequence::settle(TrialStage stage, int panelValue)
{
    if (isRestoring())
        return;
    currentStage = stage;
    delivery.drop([](const TrialQueue::Entry &queued) { return queued.isHeld; });
    // Looks at the position that pile up on a disturbed line must not hold this up either.
    if (exchange.hasUnconfirmedPress() || poll.pilesUp())
        takeBack();
    exchange.sendSurely(panelFrame(panelValue), TrialExchange::Kind::Panel);
    delivery.goOn();
}

// What was taken back goes out again in its order, but for values of the control panel: the one that follows
// every withdrawal stands in for them. A look at the position is asked for again by its time-out.
void TrialSequence::takeBack()
{
    const QList<TrialExchange::Request> unanswered = exchange.withdraw();
    for (const TrialExchange::Request &request : unanswered) {
        if (request.kind == TrialExchange::Kind::Write)
            exchange.send(request.frame, TrialExchange::Kind::Write);
        else if (request.kind == TrialExchange::Kind::Sequence)
            delivery.sendAgain(request.id);
    }
}

void TrialSequence::setPolling(bool allowed)
{
    if (!isRestoring())
        poll.allow(allowed);
}

void TrialSequence::handleReply(const QByteArray &reply)
{
    const auto answered = exchange.take(reply);
    if (!answered)
        return;
    if (answered->kind == TrialExchange::Kind::Position) {
        if (currentStage == TrialStage::Polling && poll.isAllowed() && isReadReplyOf(reply, 2)) {
            poll.answered();
            emit positionTold(payloadFromFront(reply));
            readAbsolutePosition();
        }
    } else if (answered->kind == TrialExchange::Kind::Sequence) {
        if (const auto head = delivery.take(answered->id, reply))
            takeAnswer(*head, reply);
    }
}

void TrialSequence::takeAnswer(const TrialQueue::Entry &head, const QByteArray &reply)
{
    if (isRestoring() && isExceptionReply(reply))
        restore.countRefusal();
    const TrialStageRule &rule = trialStageRule(head.stage);
    if (rule.saves && !restore.capture(head.frame, reply)) {
        startSavingAnew();
        return;
    }
    if ((rule.saves || rule.fills) && isReadReply(head.frame) &&
        isReadReplyOf(reply, registersOfRequest(head.frame)))
        emit valueRead(head.stage, addressOfRequest(head.frame), payloadFromFront(reply));
    if (isRestoring() && addressOfRequest(head.frame) == trialregister::panel)
        exchange.panelRestored();
    delivery.finishHead();
    if (head.isLast)
        endBatch(head.stage);
}

// Whose answer that was can't be told, nor whose the answers before it were.
void TrialSequence::startSavingAnew()
{
    delivery.clear();
    restore.forget();
    saveTimer.stop();
    delivery.waitForCalm();
}

void TrialSequence::endBatch(TrialStage batch)
{
    switch (trialStageRule(batch).end) {
    case TrialEnd::Nothing:
        return;
    case TrialEnd::SetUp:
        initWrite();
        return;
    case TrialEnd::ReadJog:
        if (currentStage != batch)
            return;
        currentStage = TrialStage::Idle;
        QTimer::singleShot(jogReadDelay, this, [this] {
            if (currentStage == TrialStage::Idle && delivery.isEmpty())
                readJogValues();
        });
        return;
    case TrialEnd::JogRead:
    case TrialEnd::TableRead:
    case TrialEnd::Mirror:
        if (currentStage == batch)
            currentStage = TrialStage::Idle;
        if (batch == TrialStage::ReadingJog)
            emit jogTableRead();
        else
            emit positionTableRead(batch);
        return;
    }
}

void TrialSequence::linkEnded()
{
    const QList<TrialExchange::Request> unanswered = exchange.withdraw();
    exchange.forget();
    delivery.loseHead();
    if (currentStage == TrialStage::Saving) {
        startSavingAnew();
        return;
    }
    if (isRestoring()) {
        delivery.goOn();
        return;
    }
    delivery.drop(
        [](const TrialQueue::Entry &queued) { return queued.isHeld || isAddressless(queued.frame); });
    bool isPanelUnconfirmed = false;
    for (const TrialExchange::Request &request : unanswered) {
        if (request.kind == TrialExchange::Kind::Write)
            exchange.send(request.frame, TrialExchange::Kind::Write);
        isPanelUnconfirmed |= request.kind == TrialExchange::Kind::Panel;
    }
    // A zero that has left with a worker that found no drive is lost like any other request.
    if (!exchange.isPanelOn() && !isPanelUnconfirmed)
        return;
    // A motor that ran when the line broke is stopped by the first request that gets through.
    setPolling(false);
    currentStage = TrialStage::ServoOff;
    exchange.sendSurely(panelFrame(trialpanel::off), TrialExchange::Kind::Panel);
    emit motionEnded();
}

TrialSequence::Closing TrialSequence::requestClose()
{
    if (!isLinkOpen()) {
        leaveSilently();
        return Closing::Now;
    }
    const bool pending = !delivery.isEmpty();
    if (pending && !restore.isDone())
        restore.watch();
    if (restore.isDone())
        return Closing::Now;
    if (isRestoring())
        return Closing::WhenRestored;
    saveTimer.stop();
    setPolling(false);
    delivery.clear();
    currentStage = TrialStage::Restoring;
    delivery.append(TrialStage::Restoring, restore.frames());
    if (delivery.isEmpty()) {
        restore.stopWatch();
        return Closing::Now;
    }
    delivery.goOn();
    return Closing::WhenRestored;
}

// There is nobody to restore to, and nothing of this window must reach the drive behind its back later; all
// but a control panel of zero, which stops the motor.
void TrialSequence::leaveSilently()
{
    exchange.withdraw();
    exchange.forget();
    delivery.clear();
    saveTimer.stop();
    restore.stopWatch();
    setPolling(false);
    if (exchange.isPanelOn())
        exchange.send(panelFrame(trialpanel::off), TrialExchange::Kind::Panel);
}

void TrialSequence::finishRestore()
{
    restore.finish();
    if (restore.wasRefused())
        emit restoreFailed();
    else
        emit restored();
}

void TrialSequence::giveUpRestore()
{
    if (delivery.isEmpty())
        return;
    leaveSilently();
    restore.finish();
    emit restoreFailed();
}
