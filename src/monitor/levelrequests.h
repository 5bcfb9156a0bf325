// SPDX-License-Identifier: GPL-3.0-or-later
// How long the requests for forced levels have waited for the drive's answer, and which levels it has
// answered last: the servo is enabled through one of them, so none may leave long after the press.
// Plain values; the poller's thread.
#pragma once

#include "monitor/monitorwrites.h"

#include <QElapsedTimer>

#include <array>
#include <optional>

// What a user asks the drive to do leaves within this time or not at all, in ms.
constexpr int longestRequestWait = 3000;

class LevelRequests
{
public:
    LevelRequests() { clock.start(); }

    static bool isLevel(MonitorWrite kind)
    {
        return kind == MonitorWrite::DILevel || kind == MonitorWrite::DOLevel;
    }

    void notePressed(MonitorWrite kind);
    void noteSent(MonitorWrite kind);
    void noteAnswered(MonitorWrite kind, int value);
    void forget(MonitorWrite kind);

    bool isSent(MonitorWrite kind) const { return of(kind).sent.has_value(); }
    // The oldest request of this kind has waited for too long.
    bool isOverdue(MonitorWrite kind) const;
    int answered(MonitorWrite kind) const { return of(kind).answeredLevels; }

private:
    struct Level
    {
        std::optional<qint64> pressed; // ms of the clock; a press that has not been sent
        std::optional<qint64> sent;    // ms of the clock at the press; sent, not answered
        int answeredLevels = 0;
    };

    Level &of(MonitorWrite kind) { return kinds.at(kind == MonitorWrite::DILevel ? 0 : 1); }
    const Level &of(MonitorWrite kind) const { return kinds.at(kind == MonitorWrite::DILevel ? 0 : 1); }

    QElapsedTimer clock;
    std::array<Level, 2> kinds;
};
