// SPDX-License-Identifier: GPL-3.0-or-later
// A poller whose frames are recorded and answered by hand, reply by reply. Main thread; an object on the
// stack of a test function.
#pragma once

#include "monitor/monitorpoller.h"
#include "support/wire.h"

#include <QList>
#include <QString>
#include <QTest>

// The requests of one cycle without their CRC, in order.
const QStringList pollCycle{"010325DC0007", "010325E3000A", "010325ED0008", "010325F50004", "010325F9000A",
                            "010326040006", "0103260A0004", "0103260E0005", "010326140007", "010326220003",
                            "0103262C0006", "010320D30008", "010320DB0008", "010320E70008", "010320EF0008"};

class PollerBench
{
public:
    struct Item
    {
        QString signal;
        int address = 0;
        QByteArray data;
    };

    // The first poll is out when the bench stands, unless it is told otherwise.
    explicit PollerBench(bool isStarted = true)
    {
        QObject::connect(&poller, &MonitorPoller::frameReady, &poller,
                         [this](const QByteArray &frame) { frames.append(frame); });
        QObject::connect(&poller, &MonitorPoller::withdrawNeeded, &poller, [this] { ++withdrawals; });
        record("DIDOStatus", &MonitorPoller::DIDOStatusSignal);
        record("DIDOFunction", &MonitorPoller::DIDOFunctionSignal);
        record("AlarmError", &MonitorPoller::AlarmErrorSignal);
        record("Parameter", &MonitorPoller::ParameterSignal);
        record("io_DIDOFunc", &MonitorPoller::io_DIDOFuncSignal);
        if (isStarted)
            poller.HandleUpDataTimer();
    }

    // Answers the newest request as the drive would, all registers 0.
    void answer() { answer(frames.last()); }
    void answer(const QByteArray &request)
    {
        const int words = request.at(1) == 3 ? request.at(5) : 0;
        poller.takeReply(wire::replyTo(request, QByteArray(2 * words, '\0')));
    }
    // The data as hexadecimal text.
    void answerWith(const char *hex) { poller.takeReply(wire::readReply(wire::bytes(hex))); }
    // Answers polls until the pause at the end of the cycle.
    void finishCycle()
    {
        int sent = 0;
        while (sent != frames.size()) {
            sent = frames.size();
            answer();
        }
    }
    // The newest request without its CRC, in upper case.
    QString last() const { return text(frames.last()); }
    QStringList texts() const
    {
        QStringList list;
        for (const QByteArray &frame : frames)
            list.append(text(frame));
        return list;
    }
    bool waitForFrames(int count, int limit = 5000) const
    {
        return QTest::qWaitFor([this, count] { return frames.size() >= count; }, limit);
    }

    MonitorPoller poller{50};
    QList<QByteArray> frames;
    QList<Item> items;
    int withdrawals = 0;

private:
    static QString text(const QByteArray &frame)
    {
        return QString::fromLatin1(frame.chopped(2).toHex()).toUpper();
    }
    template <typename Signal>
    void record(const char *name, Signal signal)
    {
        QObject::connect(&poller, signal, &poller, [this, name](const QByteArray &data, int address) {
            items.append({QString::fromLatin1(name), address, data});
        });
    }
};
