// SPDX-License-Identifier: GPL-3.0-or-later
// What the tests of the trial run at a simulated drive share. Main thread.
#pragma once

#include "shell/mainwindow.h"
#include "support/rununtil.h"
#include "support/trialrundriver.h"
#include "support/workplace.h"
#include "trialrun/holdbutton.h"
#include "trialrun/trialrun.h"

#include <QElapsedTimer>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QTableWidget>
#include <QTest>
#include <QTimer>

#include <cstdlib>
#include <functional>

namespace trialplace {

constexpr int statusFrom = 1500; // the registers from here on are the drive's own
constexpr int positionOffset = 1515;
constexpr int panelOffset = 202;

inline bool connectTo(Workplace &place, const QString &speed = QStringLiteral("115200(485)"))
{
    place.connectTo(speed);
    return runUntil([&] { return place.isShownOnline(); }, 5000);
}

inline TrialRun *open(const Workplace &place)
{
    Workplace::clickAction(place.window(), "actionTrial_run");
    return place.window()->findChild<TrialRun *>();
}

inline bool isReady(TrialRun *window)
{
    return runUntil([=] { return TrialRunDriver(window).servoOn()->isEnabled(); }, 10000);
}

inline int position(const Workplace &place)
{
    return place.drive->readPair(positionOffset).value_or(0);
}

// The motor has had the time to stop, and then stays where it is.
inline bool standsStill(const Workplace &place)
{
    int last = position(place);
    QElapsedTimer calm;
    calm.start();
    return runUntil(
        [&] {
            const int now = position(place);
            if (std::abs(now - last) > 20) {
                last = now;
                calm.start();
            }
            return calm.elapsed() > 400;
        },
        10000);
}

inline QString difference(const Workplace &place, const kt500sim::RegisterSnapshot &before)
{
    const kt500sim::RegisterSnapshot now = place.drive->registers();
    QStringList differing;
    for (int offset = 0; offset < statusFrom; ++offset) {
        if (now.working.at(size_t(offset)) != before.working.at(size_t(offset)))
            differing.append(QStringLiteral("working %1: %2, was %3")
                                 .arg(offset)
                                 .arg(now.working.at(size_t(offset)))
                                 .arg(before.working.at(size_t(offset))));
        if (now.stored.at(size_t(offset)) != before.stored.at(size_t(offset)))
            differing.append(QStringLiteral("stored %1").arg(offset));
    }
    return differing.join(QStringLiteral("; "));
}

inline void atFrame(TrialRun *window, int count, const std::function<void()> &act)
{
    auto *const counter = new QObject(window);
    auto *const sent = new int(0);
    QObject::connect(counter, &QObject::destroyed, [sent] { delete sent; });
    QObject::connect(window, &TrialRun::writeToSerialPort, counter, [=] {
        if (++*sent == count)
            act();
    });
}

} // namespace trialplace
