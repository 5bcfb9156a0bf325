// SPDX-License-Identifier: GPL-3.0-or-later
// What the conversations of all windows with the drive share: one request at a time, the register that it
// asked for (replies carry none), and a watchdog. Main thread; owned by the class that knows the protocol.
#pragma once

#include <QByteArray>
#include <QObject>
#include <QTimer>

class Conversation : public QObject
{
    Q_OBJECT

public:
    // Time-out in ms; 0 waits for ever.
    explicit Conversation(int timeout, QObject *parent = nullptr);

    // Emits the frame and waits for its reply. A request that is still outstanding is forgotten.
    void send(const QByteArray &frame);

    // Ends the wait with the reply that has just come; false when nobody waits for one.
    bool takeReply();

    // Ends the wait without a reply. One that comes later is nobody's.
    void drop();

    bool isOutstanding() const { return outstanding; }

    // Register of the last request, 0 to 65535; -1 before the first.
    int address() const { return lastAddress; }

signals:
    void frameReady(QByteArray frame);
    // The reply has not come in time; nothing is outstanding any more.
    void timedOut();

private:
    void expire();

    QTimer watchdog;
    bool outstanding = false;
    int lastAddress = -1;
};
