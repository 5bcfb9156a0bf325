// SPDX-License-Identifier: GPL-3.0-or-later
// Tells a conversation that the reply to its last request is lost although the link stays open: nothing else
// would ever move it on. A lost link has its own ways. Main thread; owned by the conversation.
#pragma once

#include <QObject>
#include <QTimer>

class ReplyWatch : public QObject
{
    Q_OBJECT

public:
    // Longer than the link waits, repeats and holds a request back before it gives up: what has not been
    // answered by then never will be.
    static constexpr int longestWait = 4000; // ms

    explicit ReplyWatch(int wait = longestWait, QObject *parent = nullptr);

    // A request has left: its reply is waited for from now on. Whether it has come is known to the owner.
    void begin();

signals:
    // Once for each begin(). The link was open for the whole wait, and no capture ran that takes replies
    // away.
    void overdue();

private:
    void tick();

    QTimer timer;
    int soundTicks = 0; // in a row
};
