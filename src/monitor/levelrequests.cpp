// SPDX-License-Identifier: GPL-3.0-or-later
#include "monitor/levelrequests.h"

// A second press does not give the first more time.
void LevelRequests::notePressed(MonitorWrite kind)
{
    Level &level = of(kind);
    if (!level.pressed)
        level.pressed = clock.elapsed();
}

void LevelRequests::noteSent(MonitorWrite kind)
{
    Level &level = of(kind);
    level.sent = level.pressed;
    level.pressed.reset();
}

void LevelRequests::noteAnswered(MonitorWrite kind, int value)
{
    of(kind).sent.reset();
    of(kind).answeredLevels = value;
}

void LevelRequests::forget(MonitorWrite kind)
{
    of(kind).pressed.reset();
    of(kind).sent.reset();
}

bool LevelRequests::isOverdue(MonitorWrite kind) const
{
    const Level &level = of(kind);
    const std::optional<qint64> since = level.sent ? level.sent : level.pressed;
    return since && clock.elapsed() - *since >= longestRequestWait;
}
