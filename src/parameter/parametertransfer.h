// SPDX-License-Identifier: GPL-3.0-or-later
// The conversation of the parameter editor with the drive: single requests, and runs over many parameters, a
// frame at a time. It knows neither windows nor tables and tells by signal what was answered. Main thread;
// owned by ParameterEditor.
#pragma once

#include "link/conversation.h"

#include <QByteArray>
#include <QList>
#include <QObject>
#include <QStringList>

class ParameterTransfer : public QObject
{
    Q_OBJECT

public:
    // What the next reply means. A state outlives its request; the next start overwrites it.
    enum RequestState {
        StateIdle = 0,
        StateReadCurrent = 2,
        StateReadPage = 3,
        StateWritePage = 4,
        StateWriteCurrent = 5,
        StateVerifyWrite = 8,
        StateReadBatch = 9
    };

    enum class End {
        ReadDone,
        WriteDone,
        BatchWriteDone,
        RequestTimeout,
        WriteTimeout,
        SilentTimeout, // nothing is said of it
        Cancelled
    };

    // The codes whose single reads and read-backs ask for two registers.
    explicit ParameterTransfer(QStringList pairCodes, QObject *parent = nullptr);

    // Each of these begins at once, or when the request that is outstanding, and what waits already, is over.
    void readOne(const QString &code);
    void writeOne(const QStringList &record, int base);
    // Works through what an earlier read has left, then through the codes. A tilde marks a pair.
    void readPages(const QStringList &codes);
    // The same for the batch window.
    void readBatch(const QStringList &codes);
    // Writes the records into the EEPROM; each must read back equal three times.
    void writePages(const QList<QStringList> &records);
    void writeBatch(const QList<QStringList> &records);

    // A reply from the link; one that nobody waits for means nothing.
    void takeReply(const QByteArray &reply);
    // The link's worker has ended and its request with it. The next reply answers the probe of the worker
    // that follows, so none is taken until this request is overdue.
    void loseReply();
    // Asks for the value of the record that is being written.
    void sendReadBack();
    // Ends what is under way as if its reply had not come in time.
    void timeOut();
    // Ends the run that is under way and forgets what waits. The reply that is outstanding is dropped when it
    // comes; until then, or until it is overdue, nothing else begins.
    void cancel();

    RequestState state() const { return requestState; }
    // True for a run that the batch window has started.
    bool isBatchRun() const;
    // True for a run that writes.
    bool isWriting() const { return requestState == StateWritePage || requestState == StateVerifyWrite; }
    // Codes still to read, the one just answered included.
    int readsLeft() const { return readQueue.size(); }

signals:
    void frameReady(QByteArray frame);
    // The data bytes of a reply to a read, and the register offset that it was asked for.
    void answered(int offset, QByteArray data);
    // Before a run's next frame leaves, and when the count has moved on.
    void progress(int value, int total);
    // The frames that have not left yet must not leave any more. Comes before the end is told.
    void withdrawn();
    // The object may be gone when the receivers have returned.
    void ended(ParameterTransfer::End end);

private:
    struct Task
    {
        RequestState state = StateIdle;
        QStringList codes;
        QList<QStringList> records;
        int base = 0;
        bool isBatch = false;
    };
    struct Rule;

    void start(const Task &task);
    void begin(const Task &task);
    void beginWaiting();
    static const Rule &ruleOf(RequestState state);
    bool isPair(const QString &code) const;

    void sendNextRead();
    void sendNextWrite();

    void ignore(const QByteArray &reply);
    void takeSingle(const QByteArray &reply);
    void takeOfMany(const QByteArray &reply);
    void takeAcknowledge(const QByteArray &reply);
    void takeReadBack(const QByteArray &reply);

    const QStringList doubleAddressList;
    Conversation conversation;
    QList<Task> waiting;
    QStringList readQueue;         // codes still to read; the head is in flight
    QList<QStringList> writeQueue; // records still to write; the head is in flight
    RequestState requestState = StateIdle;
    int readTotal = 0;
    int writeTotal = 0;
    bool batchWriteFlag = false; // the running write comes from the batch window
    bool isReplyLost = false;    // what comes answers another request
    bool isDiscarding = false;   // the outstanding reply belongs to a run that was cancelled
};
