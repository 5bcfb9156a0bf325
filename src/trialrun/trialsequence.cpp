// SPDX-License-Identifier: GPL-3.0-or-later
#include "trialrun/trialsequence.h"

#include "link/linkstate.h"
#include "link/replies.h"
#include "link/requests.h"

#include <QThread>

namespace {

constexpr int saveInterval = 100; // ms
constexpr int calmTime = 250;     // ms, longer than a reply stays doubtful
constexpr int servoOffTime = 50;  // ms that the drive gets for the control panel before anything else
constexpr int jogReadDelay = 10;  // ms
constexpr int doubtLimit = 3;
constexpr int refusalLimit = 10;

} // namespace

TrialSequence::TrialSequence(QObject *parent)
    : QObject(parent)
    , poll(&exchange)
{
    connect(&exchange, &TrialExchange::frameReady, this, &TrialSequence::frameReady);
    connect(&exchange, &TrialExchange::withdrawNeeded, this, &TrialSequence::withdrawNeeded);
    connect(&exchange, &TrialExchange::sequenceOverdue, this, &TrialSequence::takeUpStalled);
    saveTimer.setInterval(saveInterval);
    connect(&saveTimer, &QTimer::timeout, this, &TrialSequence::saveInitValue);
    calmTimer.setInterval(calmTime);
    calmTimer.setSingleShot(true);
    connect(&calmTimer, &QTimer::timeout, this, [this] {
        if (currentStage == TrialStage::Saving && frameQueue.isEmpty())
            start();
        else
            sendHeadFrame(true);
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
    frameQueue.append(stage, frames);
    sendHeadFrame();
}

void TrialSequence::startAnew(TrialStage stage, const TrialFrames &frames)
{
    if (isRestoring())
        return;
    clearQueue();
    continueWith(stage, frames);
}

void TrialSequence::replaceReads(TrialStage stage, const TrialFrames &frames)
{
    if (isRestoring())
        return;
    drop([](const TrialQueue::Entry &queued) { return trialStageRule(queued.stage).fills; });
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
    frameQueue.append(stage, {distanceFrame(distance), panelFrame(trialpanel::startMove)}, true);
    sendHeadFrame();
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
    drop([](const TrialQueue::Entry &queued) { return queued.isHeld; });
    // Looks at the position that pile up on a disturbed line must not hold this up either.
    if (exchange.hasUnconfirmedPress() || poll.pilesUp())
        takeBack();
    exchange.sendSurely(panelFrame(panelValue), TrialExchange::Kind::Panel);
    sendHeadFrame();
}

// What was taken back goes out again in its order, but for values of the control panel: the one that follows
// every withdrawal stands in for them. A look at the position is asked for again by its time-out.
void TrialSequence::takeBack()
{
    const QList<TrialExchange::Request> unanswered = exchange.withdraw();
    for (const TrialExchange::Request &request : unanswered) {
        if (request.kind == TrialExchange::Kind::Write) {
            exchange.send(request.frame, TrialExchange::Kind::Write);
        } else if (request.kind == TrialExchange::Kind::Sequence && frameQueue.isHead(request.id)) {
            frameQueue.headLost();
            sendHeadFrame();
        }
    }
}

void TrialSequence::drop(const std::function<bool(const TrialQueue::Entry &)> &unwanted)
{
    if (frameQueue.drop(unwanted))
        calmTimer.stop();
}

void TrialSequence::setPolling(bool allowed)
{
    if (!isRestoring())
        poll.allow(allowed);
}

void TrialSequence::clearQueue()
{
    frameQueue.clear();
    calmTimer.stop();
}

void TrialSequence::sendHeadFrame(bool isCalm)
{
    if (frameQueue.isEmpty()) {
        if (isRestoring())
            finishRestore();
        return;
    }
    if (frameQueue.isHeadSent() || calmTimer.isActive())
        return;
    const TrialQueue::Entry head = frameQueue.head();
    if (isReadReply(head.frame) && !isCalm && exchange.isDoubtful() && !isScopeStreamRunning()) {
        calmTimer.start();
        return;
    }
    currentAddress = head.frame.mid(2, 2);
    frameQueue.headSent(exchange.nextId());
    if (mustArrive(head.frame))
        exchange.sendSurely(head.frame, TrialExchange::Kind::Sequence);
    else
        exchange.send(head.frame, TrialExchange::Kind::Sequence);
    // The servo goes off before anything else changes.
    if (!frameQueue.isEmpty() && isRestoring() && currentAddress.toHex().toUpper() == "20CA")
        QThread::msleep(servoOffTime);
}

bool TrialSequence::mustArrive(const QByteArray &frame) const
{
    return isRestoring() || frame == panelFrame(trialpanel::off);
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
    } else if (answered->kind == TrialExchange::Kind::Sequence && frameQueue.isHead(answered->id)) {
        takeHead(reply);
    }
}

void TrialSequence::takeHead(const QByteArray &reply)
{
    frameQueue.headLost();
    const TrialQueue::Entry head = frameQueue.head();
    if (mustAskAgain(head, reply)) {
        sendHeadFrame();
        return;
    }
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
    frameQueue.takeHead();
    sendHeadFrame();
    if (head.isLast)
        endBatch(head.stage);
}

// A request that the link has repeated may be answered twice, and then every answer behind it belongs to the
// request before. A read is asked again when the line is calm; a write unless its answer names it. What stops
// the motor, and a restoring write, is tried again when the drive refuses it, as a motor that still turns may
// make it do.
bool TrialSequence::mustAskAgain(const TrialQueue::Entry &head, const QByteArray &reply)
{
    if (mustArrive(head.frame) && isExceptionReply(reply)) {
        if (frameQueue.countTry() <= refusalLimit)
            return true;
        if (isRestoring())
            restore.countRefusal();
        return false;
    }
    if (!exchange.isDoubtful() || isScopeStreamRunning() || frameQueue.countTry() > doubtLimit)
        return false;
    if (!isReadReply(head.frame) && TrialExchange::fits(head.frame, reply))
        return false;
    calmTimer.start();
    return true;
}

// Whose answer that was can't be told, nor whose the answers before it were.
void TrialSequence::startSavingAnew()
{
    clearQueue();
    restore.forget();
    saveTimer.stop();
    calmTimer.start();
}

// A reply can get lost on a link that stays open. What belongs to a press waits for the hand, which takes it
// back, and the restore for its own watch, which a second closing begins.
void TrialSequence::takeUpStalled()
{
    if (!frameQueue.isHeadSent() || frameQueue.head().isHeld || isRestoring())
        return;
    exchange.forget(TrialExchange::Kind::Sequence);
    frameQueue.headLost();
    drop([](const TrialQueue::Entry &queued) { return isAddressless(queued.frame); });
    sendHeadFrame();
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
            if (currentStage == TrialStage::Idle && frameQueue.isEmpty())
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
    frameQueue.headLost();
    if (currentStage == TrialStage::Saving) {
        startSavingAnew();
        return;
    }
    if (isRestoring()) {
        sendHeadFrame();
        return;
    }
    drop([](const TrialQueue::Entry &queued) { return queued.isHeld || isAddressless(queued.frame); });
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
    const bool pending = !frameQueue.isEmpty();
    if (pending && !restore.isDone())
        restore.watch();
    if (restore.isDone())
        return Closing::Now;
    if (isRestoring())
        return Closing::WhenRestored;
    saveTimer.stop();
    setPolling(false);
    clearQueue();
    currentStage = TrialStage::Restoring;
    frameQueue.append(TrialStage::Restoring, restore.frames());
    if (frameQueue.isEmpty()) {
        restore.stopWatch();
        return Closing::Now;
    }
    sendHeadFrame();
    return Closing::WhenRestored;
}

// There is nobody to restore to, and nothing of this window must reach the drive behind its back later; all
// but a control panel of zero, which stops the motor.
void TrialSequence::leaveSilently()
{
    exchange.withdraw();
    exchange.forget();
    clearQueue();
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
    if (frameQueue.isEmpty())
        return;
    leaveSilently();
    restore.finish();
    emit restoreFailed();
}
