// SPDX-License-Identifier: GPL-3.0-or-later
#include "link/conversation.h"

#include "link/requests.h"

Conversation::Conversation(int timeout, QObject *parent)
    : QObject(parent)
{
    watchdog.setSingleShot(true);
    watchdog.setInterval(timeout);
    connect(&watchdog, &QTimer::timeout, this, &Conversation::expire);
}

void Conversation::send(const QByteArray &frame)
{
    outstanding = true;
    lastAddress = addressOfRequest(frame);
    if (watchdog.interval() > 0)
        watchdog.start();
    emit frameReady(frame);
}

bool Conversation::takeReply()
{
    const bool awaited = outstanding;
    drop();
    return awaited;
}

void Conversation::drop()
{
    outstanding = false;
    watchdog.stop();
}

void Conversation::expire()
{
    outstanding = false;
    emit timedOut();
}
