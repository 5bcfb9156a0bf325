// SPDX-License-Identifier: GPL-3.0-or-later
#include "trialrun/trialqueue.h"

#include <algorithm>

TrialQueue::Entry TrialQueue::takeHead()
{
    headId = none;
    headTries = 0;
    return entries.takeFirst();
}

void TrialQueue::append(TrialStage stage, const TrialFrames &frames, bool isHeld)
{
    for (const QByteArray &frame : frames)
        entries.append({frame, stage, false, isHeld});
    if (!frames.isEmpty())
        entries.last().isLast = true;
}

void TrialQueue::clear()
{
    entries.clear();
    headId = none;
    headTries = 0;
}

bool TrialQueue::drop(const std::function<bool(const Entry &)> &unwanted)
{
    if (entries.isEmpty())
        return false;
    const bool isHeadUnwanted = unwanted(entries.first());
    if (isHeadUnwanted) {
        headId = none;
        headTries = 0;
    }
    entries.erase(std::remove_if(entries.begin(), entries.end(), unwanted), entries.end());
    return isHeadUnwanted;
}

bool TrialQueue::fillsTable() const
{
    return std::any_of(entries.begin(), entries.end(),
                       [](const Entry &entry) { return trialStageRule(entry.stage).fills; });
}
