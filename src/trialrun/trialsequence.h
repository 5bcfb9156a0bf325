// SPDX-License-Identifier: GPL-3.0-or-later
// The trial run's conversation with the drive: reads 30 registers, sets the drive up, serves the window, and
// gives the drive back as it was. The stage table says what a reply means and what follows a batch of frames;
// how the frames get to the drive is TrialDelivery's. Main thread; owned by TrialRun.
#pragma once

#include "trialrun/positionpoll.h"
#include "trialrun/trialdelivery.h"
#include "trialrun/trialexchange.h"
#include "trialrun/trialframes.h"
#include "trialrun/trialqueue.h"
#include "trialrun/trialrestore.h"
#include "trialrun/trialstage.h"

#include <QByteArray>
#include <QObject>
#include <QTimer>

class TrialSequence : public QObject
{
    Q_OBJECT

public:
    enum class Closing { Now, WhenRestored };

    explicit TrialSequence(QObject *parent = nullptr);

    // Waits for the link, then saves what the trial run will change.
    void start();
    // Starts the saving if the link is up; what the waiting does on each tick.
    void saveInitValue();
    // Writes the set-up; the JOG table is read behind it.
    void initWrite();
    void readJogValues();
    // Asks for the position, unless that has been asked for; its reply asks again while polling is allowed.
    void readAbsolutePosition();

    // Queues the frames behind what is under way, one frame per reply. During the restore nothing is sent,
    // here and below, and the stage stays.
    void continueWith(TrialStage stage, const TrialFrames &frames);
    // The same, and what is under way is dropped.
    void startAnew(TrialStage stage, const TrialFrames &frames);
    // Behind what is under way too, but for the reads of a table, which are dropped.
    void replaceReads(TrialStage stage, const TrialFrames &frames);
    // A cell or a choice, past the queue.
    void writeNow(const QByteArray &frame);
    // Turns the servo on, or keeps a motion going: what must not leave later than the user's hand says.
    void press(TrialStage stage, int panelValue);
    // Queues a move: the distance, then the start. It stays in the queue only while it is held.
    void pressMove(TrialStage stage, int distance);
    // The end of a press, or of all motion, with the value that holds from now on. What has been pressed and
    // has not left is taken back first.
    void settle(TrialStage stage, int panelValue);
    void setPolling(bool allowed);
    void setStage(TrialStage newStage) { currentStage = isRestoring() ? currentStage : newStage; }

    void handleReply(const QByteArray &reply);
    // The link's worker has ended, and what was on the line with it.
    void linkEnded();
    // The window is asked to close. WhenRestored: it is asked again by restored() or restoreFailed().
    Closing requestClose();

    TrialStage stage() const { return currentStage; }
    bool isRestoring() const { return currentStage == TrialStage::Restoring; }
    // A table of the drive's values is being read.
    bool isReadingTable() const { return delivery.isReadingTable(); }

signals:
    void frameReady(QByteArray frame);
    // What the window has queued and the link has not sent is to be taken back.
    void withdrawNeeded();
    // The reply to a read of the saving, or of a table.
    void valueRead(TrialStage readIn, int address, QByteArray data);
    void positionTold(QByteArray data);
    void jogTableRead();
    void positionTableRead(TrialStage readIn);
    // Something was pressed without a link: it is to be taken for ended, as by a link that is lost.
    void linkMissed();
    // The link is gone, and with it every press.
    void motionEnded();
    void restored();
    void restoreFailed();

private:
    void takeAnswer(const TrialQueue::Entry &head, const QByteArray &reply);
    void startSavingAnew();
    void endBatch(TrialStage batch);
    void takeBack();
    void pressedInVain();
    void finishRestore();
    void giveUpRestore();
    void leaveSilently();

    TrialExchange exchange;
    PositionPoll poll;
    TrialDelivery delivery;
    TrialRestore restore;
    TrialStage currentStage = TrialStage::Idle;
    QTimer saveTimer; // until the link is open
};
