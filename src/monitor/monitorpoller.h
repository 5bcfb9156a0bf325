// SPDX-License-Identifier: GPL-3.0-or-later
// The monitor's conversation with the drive: a chain of reads in which each reply asks for the next, and
// between two of them what the user has asked for. Has no queue of its own.
// Main thread; owned by Parameter_Monitor.
#pragma once

#include "link/replywatch.h"
#include "monitor/levelrequests.h"
#include "monitor/monitorwrites.h"
#include "monitor/owedreplies.h"

#include <QByteArray>
#include <QElapsedTimer>
#include <QObject>
#include <QStringList>
#include <QTimer>

class MonitorPoller : public QObject
{
    Q_OBJECT

public:
    // The cycle starts after this many ms.
    explicit MonitorPoller(int startDelay, QObject *parent = nullptr);

    // Asks for the block of a code at once. What was asked before is forgotten.
    void packData(const QString &code);
    // Asks for the next block of the cycle.
    void HandleUpDataTimer();
    void takeReply(const QByteArray &reply);
    // The second tab shows: the chain stops, and the record is asked once. Or it shows no more.
    void showFaultTab(bool isShown);

    void requestFaultClear();
    void requestWrite(MonitorWrite kind, int number, int value);
    // Reads the run parameters of the drive's control method, from the start if that is under way.
    void requestRead();

    // The link has ended: what was on the wire is lost, and the next reply may be that of the link's probe.
    void noteLostLink();
    bool isAnswerOwed() const { return !owed.isEmpty(); }

signals:
    void frameReady(QByteArray frame);
    // What the link has queued for the monitor must not leave any more.
    void withdrawNeeded();
    // A request for levels is given up: these are the last ones that the drive has answered.
    void levelsWithdrawn(MonitorWrite kind, int levels);

    void DIDOStatusSignal(QByteArray data, int address);
    void DIDOFunctionSignal(QByteArray data, int address);
    void AlarmErrorSignal(QByteArray data, int address);
    void ParameterSignal(QByteArray data, int address);
    void io_DIDOFuncSignal(QByteArray data, int address);
    void readFinishSignal(int index, QStringList paraList);

private:
    void ask(const OwedReply &request);
    void askBlock(const QString &code);
    void continueChain();
    void endCycle();
    void serveWrite();
    void decode(const QByteArray &request, const QByteArray &reply);
    void sendSequenceStep();
    void takeSequenceReply(const OwedReply &step, const QByteArray &reply);
    void finishSequence();
    void watch();
    void withdraw(MonitorWrite kind);
    void restartChain();
    void pushChain();

    const QStringList pollList;
    int pollIndex = 0; // of the next entry to ask for
    QTimer updateTimer;
    bool faultTabActive = false;
    bool faultClearPending = false;
    QElapsedTimer faultClearPressed;
    OwedReplies owed;
    PendingWrites pending;
    LevelRequests levels;

    bool readSequenceActive = false;
    int readSequence = 0;       // counts the presses
    int readSequenceMethod = 0; // control method that the drive has answered
    int readSequenceStep = 0;   // 0 the method, then the frames of the method's list from 1
    QStringList readSequenceValues;

    QTimer watchTimer;
    QElapsedTimer linkUpSince;
    ReplyWatch chainWatch;    // over the chain's newest request
    bool linkWasDown = false; // since the chain has moved last
};
