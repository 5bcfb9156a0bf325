// SPDX-License-Identifier: GPL-3.0-or-later
// Which request of the trial run a reply answers. The link answers in the order of the requests, at most once
// each; a request may be lost with the link, and behind a disturbed one an answer may come twice.
// Main thread; owned by TrialSequence.
#pragma once

#include "link/replywatch.h"

#include <QByteArray>
#include <QElapsedTimer>
#include <QList>
#include <QObject>
#include <QTimer>

#include <optional>

class TrialExchange : public QObject
{
    Q_OBJECT

public:
    enum class Kind {
        Sequence, // the head of the queue
        Panel,    // a value of the control panel, past the queue
        Write,    // a cell or a choice, past the queue
        Position, // a look at the absolute position
    };
    struct Request
    {
        QByteArray frame;
        Kind kind = Kind::Sequence;
        int id = 0;
    };

    explicit TrialExchange(QObject *parent = nullptr);

    // Number that the next request will have.
    int nextId() const { return lastId + 1; }
    // Emits the frame; its answer may come before this returns.
    void send(const QByteArray &frame, Kind kind);
    // The same for a frame that must arrive: while a capture runs the link repeats nothing, so it is emitted
    // again every 100 ms until its own answer has come, 20 times at most. A value of the control panel that
    // the drive refuses is sent again at once, 10 times at most, unless another one has followed it.
    void sendSurely(const QByteArray &frame, Kind kind);

    // The request that this reply answers, which is waited for no longer; none for a reply that nobody asked
    // for. A reply that fits nothing belongs to what was taken back, or counts for the oldest request.
    std::optional<Request> take(const QByteArray &reply);

    // Takes back what has not left the link, and waits for nothing but a look at the position any more. What
    // comes back had no answer yet, oldest first: whether it has left can't be told.
    QList<Request> withdraw();
    // Nothing that was sent will be answered.
    void forget();
    void forget(Kind kind);

    bool isOutstanding(Kind kind) const;
    bool isIdle() const { return outstanding.isEmpty(); }
    // A value of the control panel other than zero whose echo has not come: it may be waiting in the link.
    bool hasUnconfirmedPress() const { return !unconfirmedPress.isEmpty(); }
    // The control panel's last value was not zero, and the drive has not been given its own value back.
    bool isPanelOn() const { return panelOn; }
    void panelRestored() { panelOn = false; }

    // A request was repeated on the line a moment ago, or a capture runs: the next reply may belong to
    // something older.
    bool isDoubtful();

    // True when the reply names what the request asked for, as far as a reply can.
    static bool fits(const QByteArray &request, const QByteArray &reply);

signals:
    void frameReady(QByteArray frame);
    void withdrawNeeded();
    // The last request of the sequence has had no answer for so long that none will come.
    void sequenceOverdue();

private:
    void post(const QByteArray &frame, Kind kind, int id, bool isSure = false);
    bool isStray();
    void repeat();
    void notePanel(const QByteArray &frame);

    QList<Request> outstanding; // oldest first
    int lastId = 0;
    int strays = 0; // answers that may still come to what was taken back
    QElapsedTimer sinceWithdrawal;
    QByteArray unconfirmedPress;
    bool panelOn = false;
    QByteArray insisted; // the control panel's last value, if it must arrive
    int refusals = 0;    // of that
    QTimer repeatTimer;
    Request repeated; // while repeatTimer runs
    int repeatsLeft = 0;
    int knownRepeats = 0; // of the link, when last looked at
    QElapsedTimer sinceRepeat;
    ReplyWatch sequenceWatch;
};
