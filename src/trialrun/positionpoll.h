// SPDX-License-Identifier: GPL-3.0-or-later
// Looks at the motor's absolute position: at most one is under way, and one whose answer stays away is asked
// again. Main thread; a member of TrialSequence.
#pragma once

#include <QObject>
#include <QTimer>

class TrialExchange;

class PositionPoll : public QObject
{
    Q_OBJECT

public:
    explicit PositionPoll(TrialExchange *trialExchange, QObject *parent = nullptr);

    // Each answer is followed by another look while it is allowed.
    void allow(bool isAllowed);
    bool isAllowed() const { return positionPolling; }
    // Asks, unless that has been asked for.
    void ask();
    // What has been asked for counts as lost: asks again.
    void askAgain();
    void answered() { looksAsked = 0; }
    // Looks that have got no answer wait in the link, one behind the other.
    bool pilesUp() const { return looksAsked > 1; }

signals:
    void overdue();

private:
    TrialExchange *exchange;
    bool positionPolling = false;
    int looksAsked = 0;   // since the position was last told
    QTimer positionTimer; // over one look
};
