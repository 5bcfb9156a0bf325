// SPDX-License-Identifier: GPL-3.0-or-later
#include "trialrun/trialdelivery.h"

#include "link/linkstate.h"
#include "link/replies.h"
#include "trialrun/trialexchange.h"
#include "trialrun/trialframes.h"

#include <QThread>

namespace {

constexpr int calmTime = 250;    // ms, longer than a reply stays doubtful
constexpr int servoOffTime = 50; // ms that the drive gets for the control panel before anything else
constexpr int doubtLimit = 3;
constexpr int refusalLimit = 10;

bool isRestoring(const TrialQueue::Entry &entry)
{
    return entry.stage == TrialStage::Restoring;
}

bool mustArrive(const TrialQueue::Entry &entry)
{
    return isRestoring(entry) || entry.frame == panelFrame(trialpanel::off);
}

} // namespace

TrialDelivery::TrialDelivery(TrialExchange *trialExchange, QObject *parent)
    : QObject(parent)
    , exchange(trialExchange)
{
    calmTimer.setInterval(calmTime);
    calmTimer.setSingleShot(true);
    connect(&calmTimer, &QTimer::timeout, this, &TrialDelivery::takeUpCalm);
    connect(exchange, &TrialExchange::sequenceOverdue, this, &TrialDelivery::takeUpStalled);
}

void TrialDelivery::append(TrialStage stage, const TrialFrames &frames, bool isHeld)
{
    frameQueue.append(stage, frames, isHeld);
}

void TrialDelivery::clear()
{
    frameQueue.clear();
    calmTimer.stop();
}

void TrialDelivery::drop(const std::function<bool(const TrialQueue::Entry &)> &unwanted)
{
    if (frameQueue.drop(unwanted))
        calmTimer.stop();
}

void TrialDelivery::sendHead(bool isCalm)
{
    if (frameQueue.isEmpty()) {
        emit ranDry();
        return;
    }
    if (frameQueue.isHeadSent() || calmTimer.isActive())
        return;
    const TrialQueue::Entry head = frameQueue.head();
    if (isReadReply(head.frame) && !isCalm && exchange->isDoubtful() && !isScopeStreamRunning()) {
        calmTimer.start();
        return;
    }
    currentAddress = head.frame.mid(2, 2);
    frameQueue.headSent(exchange->nextId());
    if (mustArrive(head))
        exchange->sendSurely(head.frame, TrialExchange::Kind::Sequence);
    else
        exchange->send(head.frame, TrialExchange::Kind::Sequence);
    // The servo goes off before anything else changes.
    if (!frameQueue.isEmpty() && isRestoring(frameQueue.head()) && currentAddress.toHex().toUpper() == "20CA")
        QThread::msleep(servoOffTime);
}

std::optional<TrialQueue::Entry> TrialDelivery::take(int id, const QByteArray &reply)
{
    if (!frameQueue.isHead(id))
        return {};
    frameQueue.headLost();
    const TrialQueue::Entry head = frameQueue.head();
    if (!mustAskAgain(head, reply))
        return head;
    sendHead();
    return {};
}

void TrialDelivery::finishHead()
{
    frameQueue.takeHead();
    sendHead();
}

// A request that the link has repeated may be answered twice, and then every answer behind it belongs to the
// request before. A read is asked again when the line is calm; a write unless its answer names it. What stops
// the motor, and a restoring write, is tried again when the drive refuses it, as a motor that still turns may
// make it do.
bool TrialDelivery::mustAskAgain(const TrialQueue::Entry &head, const QByteArray &reply)
{
    if (mustArrive(head) && isExceptionReply(reply))
        return frameQueue.countTry() <= refusalLimit;
    if (!exchange->isDoubtful() || isScopeStreamRunning() || frameQueue.countTry() > doubtLimit)
        return false;
    if (!isReadReply(head.frame) && TrialExchange::fits(head.frame, reply))
        return false;
    calmTimer.start();
    return true;
}

void TrialDelivery::sendAgain(int id)
{
    if (!frameQueue.isHead(id))
        return;
    frameQueue.headLost();
    sendHead();
}

// A reply can get lost on a link that stays open. What belongs to a press waits for the hand, which takes it
// back, and the restore for its own watch, which a second closing begins.
void TrialDelivery::takeUpStalled()
{
    if (!frameQueue.isHeadSent() || frameQueue.head().isHeld || isRestoring(frameQueue.head()))
        return;
    exchange->forget(TrialExchange::Kind::Sequence);
    frameQueue.headLost();
    drop([](const TrialQueue::Entry &queued) { return isAddressless(queued.frame); });
    sendHead();
}

void TrialDelivery::takeUpCalm()
{
    if (frameQueue.isEmpty())
        emit calm();
    else
        sendHead(true);
}
