// SPDX-License-Identifier: GPL-3.0-or-later
#include "trialrun/positionpoll.h"

#include "trialrun/trialexchange.h"
#include "trialrun/trialframes.h"

namespace {

constexpr int positionTimeLimit = 300; // ms

} // namespace

PositionPoll::PositionPoll(TrialExchange *trialExchange, QObject *parent)
    : QObject(parent)
    , exchange(trialExchange)
{
    positionTimer.setInterval(positionTimeLimit);
    positionTimer.setSingleShot(true);
    connect(&positionTimer, &QTimer::timeout, this, &PositionPoll::overdue);
}

void PositionPoll::allow(bool isAllowed)
{
    positionPolling = isAllowed;
    if (isAllowed)
        return;
    positionTimer.stop();
    looksAsked = 0;
}

void PositionPoll::ask()
{
    if (exchange->isOutstanding(TrialExchange::Kind::Position))
        return;
    positionTimer.start();
    ++looksAsked;
    exchange->send(positionRead(), TrialExchange::Kind::Position);
}

void PositionPoll::askAgain()
{
    exchange->forget(TrialExchange::Kind::Position);
    ask();
}
