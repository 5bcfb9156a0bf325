// SPDX-License-Identifier: GPL-3.0-or-later
// Brings the queued frames of the trial run to the drive, one per reply, and each at the moment when its
// answer can be trusted: asks again what was answered in doubt, refused although it must arrive, or lost.
// What an answer means is the sequence's. Main thread; a member of TrialSequence.
#pragma once

#include "trialrun/trialqueue.h"

#include <QByteArray>
#include <QObject>
#include <QTimer>

#include <functional>
#include <optional>

class TrialExchange;

class TrialDelivery : public QObject
{
    Q_OBJECT

public:
    explicit TrialDelivery(TrialExchange *trialExchange, QObject *parent = nullptr);

    // Behind what is queued already.
    void append(TrialStage stage, const TrialFrames &frames, bool isHeld = false);
    // Sends the head, unless it is on the line or the line has to become calm first.
    void goOn() { sendHead(); }
    void clear();
    void drop(const std::function<bool(const TrialQueue::Entry &)> &unwanted);

    // The head, when this reply to the request of that number settles it; it stays the head. None when the
    // request was not the head's, or the head is asked again.
    std::optional<TrialQueue::Entry> take(int id, const QByteArray &reply);
    // The head is done with: the next frame leaves.
    void finishHead();

    // Nothing will answer the head any more. It stays, and leaves again by goOn().
    void loseHead() { frameQueue.headLost(); }
    // The same, and it leaves at once, when it was sent by the request of that number.
    void sendAgain(int id);
    // Nothing leaves until no second answer to an older request can come.
    void waitForCalm() { calmTimer.start(); }

    bool isEmpty() const { return frameQueue.isEmpty(); }
    bool isReadingTable() const { return frameQueue.fillsTable(); }

signals:
    // It was to go on, and nothing is queued. The receiver may delete this.
    void ranDry();
    // The line is calm, and nothing is queued.
    void calm();

private:
    void sendHead(bool isCalm = false);
    bool mustAskAgain(const TrialQueue::Entry &head, const QByteArray &reply);
    void takeUpStalled();
    void takeUpCalm();

    TrialExchange *exchange;
    TrialQueue frameQueue;
    QByteArray currentAddress; // of the frame last sent
    QTimer calmTimer;          // until no second answer to an older request can come
};
