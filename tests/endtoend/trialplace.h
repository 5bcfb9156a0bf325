// SPDX-License-Identifier: GPL-3.0-or-later
// What the tests of the trial run at a simulated drive share. Main thread.
#pragma once

#include "shell/mainwindow.h"
#include "support/modalanswers.h"
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

// The entry: 30 reads, 6 writes of the set-up, 5 reads for the table. And the way back.
constexpr int entryFrames = 41;
constexpr int restoreFrames = 30;

constexpr int statusFrom = 1500; // the registers from here on are the drive's own
constexpr int positionOffset = 1515;
constexpr int panelOffset = 202;

inline bool connectTo(Workplace &place, const QString &speed)
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

// A fault of the line that ends by itself, or is ended a moment later, at a speed whose link bears it: on USB
// a silence of 70 ms ends the link.
struct LineFault
{
    QString begin;
    QString end;
    QString speed;
};

const QString linkFailed = QStringLiteral("Fail to connect to the device via \nRead Modbus Failed!");
const QString usb = QStringLiteral("USB");
const QString rs485 = QStringLiteral("115200(485)");

inline const QList<LineFault> &passingFaults()
{
    static const QList<LineFault> faults{
        {QStringLiteral("noreply 3"), {}, usb},
        {QStringLiteral("badcrc 3"), {}, usb},
        {QStringLiteral("split 2 5"), {}, usb},
        {QStringLiteral("splinter 2 5"), {}, usb},
        {QStringLiteral("late 1 40"), {}, usb},
        {QStringLiteral("stale 2"), {}, usb},
        {QStringLiteral("exception 2 4"), {}, usb},
        {QStringLiteral("silence 40"), {}, usb},
        {QStringLiteral("garbage on"), QStringLiteral("garbage off"), rs485}};
    return faults;
}

// A row of each fault by its name.
inline void addFaultRows(bool withGoodLine)
{
    QTest::addColumn<int>("fault"); // of passingFaults(), or -1
    if (withGoodLine)
        QTest::newRow("good line") << -1;
    for (int i = 0; i < passingFaults().size(); ++i)
        QTest::newRow(qPrintable(passingFaults().at(i).begin)) << i;
}

inline void strike(const Workplace &place, const LineFault &fault)
{
    constexpr int duration = 150; // ms
    kt500sim::SimulatedDrive *const drive = place.drive.get();
    drive->setFault(fault.begin);
    if (!fault.end.isEmpty())
        QTimer::singleShot(duration, place.window(), [drive, end = fault.end] { drive->setFault(end); });
}

// As a person closes it: by its frame.
inline void close(TrialRun *window)
{
    window->parentWidget()->close();
}

inline bool isGone(const QPointer<TrialRun> &window)
{
    return runUntil([&] { return window.isNull(); }, 8000);
}

// Runs an act that gives a complaint, or none. On USB 70 ms of silence end the link, and a busy machine is
// enough for that: what the act says of a lost link is another matter, and it is run anew on a drive as new.
inline QString onWholeLink(const Workplace &place, ModalAnswers &boxes, const std::function<QString()> &act)
{
    constexpr int tries = 5;
    for (int i = 0; i < tries; ++i) {
        boxes.allowPassing(linkFailed);
        const int seen = boxes.seen.size();
        const QString complaint = act();
        place.drive->clearFaults();
        if (boxes.seen.size() == seen && place.isShownOnline())
            return complaint;
        runUntil([&] { return place.isShownOnline() && boxes.seen.size() > seen; }, 15000);
        const QPointer<TrialRun> window = place.window()->findChild<TrialRun *>();
        if (window) {
            close(window);
            if (!isGone(window))
                return QStringLiteral("the window stays");
        }
        place.drive->factoryReset();
    }
    return QStringLiteral("the link is lost again and again");
}

} // namespace trialplace
