// SPDX-License-Identifier: GPL-3.0-or-later
// The frames that the trial run has still to send, one per reply: the head is on the line, or waits for a
// calm moment. Main thread; a member of TrialDelivery.
#pragma once

#include "trialrun/trialframes.h"
#include "trialrun/trialstage.h"

#include <QByteArray>
#include <QList>

#include <functional>

class TrialQueue
{
public:
    struct Entry
    {
        QByteArray frame;
        TrialStage stage = TrialStage::Idle; // in which it was queued: what its reply means
        bool isLast = false;                 // of its batch
        bool isHeld = false;                 // belongs to a press
    };

    bool isEmpty() const { return entries.isEmpty(); }
    // Only while there is one.
    const Entry &head() const { return entries.first(); }
    Entry takeHead();
    void append(TrialStage stage, const TrialFrames &frames, bool isHeld = false);
    void clear();
    // True when the head was among what went.
    bool drop(const std::function<bool(const Entry &)> &unwanted);
    // A table of the drive's values is being read.
    bool fillsTable() const;

    // The request by which the head is on the line, and how often it was asked again.
    void headSent(int id) { headId = id; }
    void headLost() { headId = none; }
    bool isHeadSent() const { return headId != none; }
    bool isHead(int id) const { return isHeadSent() && headId == id; }
    int countTry() { return ++headTries; }

private:
    static constexpr int none = -1;

    QList<Entry> entries;
    int headId = none;
    int headTries = 0;
};
