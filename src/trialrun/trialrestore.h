// SPDX-License-Identifier: GPL-3.0-or-later
// What the drive held before the trial run, and the watch over its way back. Main thread; a member of
// TrialSequence.
#pragma once

#include "trialrun/trialframes.h"

#include <QByteArray>
#include <QObject>
#include <QTimer>

class TrialRestore : public QObject
{
    Q_OBJECT

public:
    explicit TrialRestore(QObject *parent = nullptr);

    void forget() { restoreFrames.clear(); }
    // Keeps what the drive holds in a register; false, and nothing is kept, when the reply is not of its
    // width.
    bool capture(const QByteArray &request, const QByteArray &reply);
    // The whole set of registers is known.
    bool isWhole() const { return restoreFrames.size() == savedReads().size(); }
    // The writes that give the drive back as it was.
    TrialFrames frames() const { return restoringOrder(restoreFrames); }

    // Begins the watch, unless it runs.
    void watch();
    void stopWatch() { restoreTimer.stop(); }
    // A write that the drive did not take.
    void countRefusal() { ++refused; }
    bool wasRefused() const { return refused > 0; }
    // Closing may go through from now on.
    void finish();
    bool isDone() const { return restoreDone; }

signals:
    void overdue();

private:
    TrialFrames restoreFrames; // in reading order
    QTimer restoreTimer;
    int refused = 0;
    bool restoreDone = false;
};
