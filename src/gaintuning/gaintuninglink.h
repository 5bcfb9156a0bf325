// SPDX-License-Identifier: GPL-3.0-or-later
// Gain tuning's conversation with the drive: the first read of everything, the endless round of four
// registers with its pause, and the writes between them. Knows no widgets. Main thread; owned by GainTuning.
#pragma once

#include "link/replywatch.h"

#include <QByteArray>
#include <QList>
#include <QObject>
#include <QTimer>

class GainTuningLink : public QObject
{
    Q_OBJECT

public:
    enum State {
        InitialRead = 0,  // what replies change in widgets writes nothing
        Idle = 15,        // the endless round
        SingleWrite = 16, // one write in flight
        BatchWrite = 18,  // batchFrames are worked off, one a reply
        NotchWrite = 19   // notchFrames are worked off, paced by a timer
    };

    explicit GainTuningLink(QObject *parent = nullptr);

    State state() const { return linkState; }

    // The read lists of the three groups, filled anew.
    void fillVibrationReads();
    void fillInertiaReads();
    void fillGainModeReads();
    // Begins the first read of what the lists hold.
    void start();
    // Begins the next round.
    void startRound();
    // Takes a reply and the register of its request.
    void takeReply(const QByteArray &reply, int address);

    // The following do nothing during the first read. A write during a batch or notch write goes in its turn.
    void write(const QByteArray &frame);
    // Sends the frame at once, if there is one, and the others one a reply.
    void writeBatch(const QByteArray &atOnce, const QList<QByteArray> &frames);
    void writeNotches(const QList<QByteArray> &frames);

signals:
    void frameReady(QByteArray frame);
    // A value of the first read, and one of the endless round.
    void valueRead(int address, quint32 value);
    void valueMonitored(int address, quint32 value);
    // Still during the first read, behind its last value or at its refusal.
    void firstReadEnds();
    void batchWritten();
    void notchesWritten();

private:
    enum class ReplyKind { Read, Other };
    enum class Decoder { None, Full, Monitor };
    enum class Reads { Next, Drop };
    struct Step;

    static const Step &stepOf(State state, ReplyKind kind);
    void decode(Decoder decoder, const QByteArray &reply);
    void sendHead();
    void goOnAfterLoss();
    bool isSecondReplyOfARepeat();
    void dropHead();
    void continueBatch();
    void continueNotches();
    void sendNextNotchFrame();

    QList<QByteArray> gainModeFrames;
    QList<QByteArray> inertiaFrames;
    QList<QByteArray> vibrationFrames;
    QList<QByteArray> pendingReads; // of this round; the head is in flight
    QList<QByteArray> cyclicFrames; // the endless round
    QList<QByteArray> batchFrames;
    QList<QByteArray> notchFrames;
    State linkState = InitialRead;
    bool batchRuns = false; // from the click on "==>" until the last frame has been answered
    bool notchesRun = false;
    int lastAddress = 0;      // of the reply in hand
    int repeatedAddress = -1; // of a read that was sent a second time and may be answered twice; -1: none
    bool isStale = false;     // a write was lost: what is shown may not be what the drive holds
    int cycleCount = 0;       // 0, 1, 2, 0 at each round; nothing reads it
    QTimer roundTimer;        // the pause between two rounds
    QTimer notchTimer;
    ReplyWatch replyWatch; // over the frame that left last
};
