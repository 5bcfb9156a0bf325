// SPDX-License-Identifier: GPL-3.0-or-later
// Gain tuning's conversation at a drive that the test plays. Main thread; a base of a test class.
#pragma once

#include "gaintuning/gaintuninglink.h"
#include "support/signallog.h"
#include "support/wire.h"

#include <QTest>

#include <memory>

inline const QByteArray writeA = wire::frame("01 10 E2 58 00 01 02 00 01");
inline const QByteArray writeB = wire::frame("01 10 E2 59 00 01 02 00 0A");
inline const QByteArray writeC = wire::frame("01 10 E2 5A 00 01 02 00 14");
inline const QByteArray echo = wire::frame("01 10 E2 58 00 01");
inline const QByteArray exception = wire::frame("01 83 02");
inline const QByteArray probeReply = wire::frame("01 03 04 00 00 00 00");
inline const QList<QByteArray> cycle{wire::frame("01 03 26 18 00 01"), wire::frame("01 03 26 00 00 01"),
                                     wire::frame("01 03 26 01 00 01"), wire::frame("01 03 26 02 00 01")};
constexpr int allReads = 33;

inline QByteArray valueReply(int value)
{
    return wire::readReply(QByteArray().append(char(value >> 8)).append(char(value)));
}

class GainLinkBench
{
protected:
    void begin()
    {
        link = std::make_unique<GainTuningLink>();
        link->fillVibrationReads();
        link->fillInertiaReads();
        link->fillGainModeReads();
        frames = std::make_unique<SignalLog<QByteArray>>(link.get(), &GainTuningLink::frameReady);
    }
    void end()
    {
        frames.reset();
        link.reset();
    }
    void reply(const QByteArray &bytes, int address = 0) { link->takeReply(bytes, address); }
    void finishFirstRead()
    {
        link->start();
        for (int i = 0; i < allReads; ++i)
            reply(valueReply(0));
        frames->calls.clear();
    }
    QList<QByteArray> sent() const
    {
        QList<QByteArray> list;
        for (const auto &call : frames->calls)
            list.append(std::get<0>(call));
        frames->calls.clear();
        return list;
    }
    // The round of four that the pause has begun.
    bool waitForRound() const
    {
        return QTest::qWaitFor([this] { return frames->count() == 1; }, 2000) && sent() == cycle.mid(0, 1);
    }

    std::unique_ptr<GainTuningLink> link;
    std::unique_ptr<SignalLog<QByteArray>> frames;
};
