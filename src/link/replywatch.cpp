// SPDX-License-Identifier: GPL-3.0-or-later
#include "link/replywatch.h"

#include "link/linkstate.h"

namespace {

constexpr int ticks = 40;

} // namespace

ReplyWatch::ReplyWatch(int wait, QObject *parent)
    : QObject(parent)
{
    timer.setInterval(wait / ticks);
    connect(&timer, &QTimer::timeout, this, &ReplyWatch::tick);
}

void ReplyWatch::begin()
{
    soundTicks = 0;
    timer.start();
}

// Ticks are counted, and no clock is read: while the thread is busy elsewhere replies wait in its event
// queue.
void ReplyWatch::tick()
{
    if (!isLinkOpen() || isScopeStreamRunning()) {
        soundTicks = 0;
        return;
    }
    if (++soundTicks < ticks)
        return;
    timer.stop();
    emit overdue();
}
