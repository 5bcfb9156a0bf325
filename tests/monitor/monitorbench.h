// SPDX-License-Identifier: GPL-3.0-or-later
// A monitor window whose frames go to a peer that stands in for the link. Main thread; an object on the stack
// of a test function.
#pragma once

#include "monitor/parameter_monitor.h"
#include "support/monitordriver.h"
#include "support/registerpeer.h"
#include "support/testdirectory.h"
#include "support/wire.h"

#include <QTest>

#include <memory>

class MonitorBench
{
public:
    explicit MonitorBench(const char *language = "en_US")
    {
        directory.setLanguage(QString::fromLatin1(language));
        window = new Parameter_Monitor;
        driver = std::make_unique<MonitorDriver>(window);
        QObject::connect(window, qOverload<QByteArray, QString>(&Parameter_Monitor::writeToSerialPort), &peer,
                         &RegisterPeer::take);
        QObject::connect(&peer, &RegisterPeer::reply, window, &Parameter_Monitor::handleParameterMonitor);
        QObject::connect(&peer, &RegisterPeer::reply, window, [this](const QByteArray &reply) {
            // The link tells the record's reply once more.
            if (peer.frames.last().mid(2, 2) == wire::bytes("2352"))
                window->handleFalutHistory(reply);
        });
        QObject::connect(window, &Parameter_Monitor::withdrawRequests, window,
                         [this](const QString &name) { withdrawn << name; });
    }
    ~MonitorBench() { delete window; }
    Q_DISABLE_COPY_MOVE(MonitorBench)

    // Waits until so many cycles more have begun.
    bool waitForCycles(int count) const
    {
        const int wanted = cycles() + count;
        return QTest::qWaitFor([this, wanted] { return cycles() >= wanted; });
    }
    int cycles() const { return peer.frames.count(wire::frame("010325DC0007")); }
    // The frames that are no reads, without their CRC.
    QStringList writes() const
    {
        QStringList list;
        for (const QByteArray &frame : peer.frames) {
            if (frame.at(1) != 3)
                list << QString::fromLatin1(frame.chopped(2).toHex()).toUpper();
        }
        return list;
    }
    bool waitForWrites(int count) const
    {
        return QTest::qWaitFor([this, count] { return writes().size() >= count; });
    }

    TestDirectory directory;
    RegisterPeer peer;
    Parameter_Monitor *window = nullptr;
    std::unique_ptr<MonitorDriver> driver;
    QStringList withdrawn;
};
