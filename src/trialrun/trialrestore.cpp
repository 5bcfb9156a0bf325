// SPDX-License-Identifier: GPL-3.0-or-later
#include "trialrun/trialrestore.h"

#include "link/replies.h"
#include "link/requests.h"

namespace {

constexpr int restoreTime = 4000; // ms

} // namespace

TrialRestore::TrialRestore(QObject *parent)
    : QObject(parent)
{
    restoreTimer.setInterval(restoreTime);
    restoreTimer.setSingleShot(true);
    restoreTimer.setTimerType(Qt::PreciseTimer);
    connect(&restoreTimer, &QTimer::timeout, this, &TrialRestore::overdue);
}

bool TrialRestore::capture(const QByteArray &request, const QByteArray &reply)
{
    if (!isReadReplyOf(reply, registersOfRequest(request)))
        return false;
    restoreFrames.append(restoringFrame(addressOfRequest(request), payloadFromFront(reply)));
    return true;
}

void TrialRestore::watch()
{
    if (!restoreTimer.isActive())
        restoreTimer.start();
}

void TrialRestore::finish()
{
    stopWatch();
    restoreDone = true;
}
