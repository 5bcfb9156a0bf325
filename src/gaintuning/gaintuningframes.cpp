// SPDX-License-Identifier: GPL-3.0-or-later
#include "gaintuning/gaintuningframes.h"

#include "link/framecodec.h"
#include "link/requests.h"

namespace gaintuning {

namespace {

constexpr int storeOffset = eepromBase - ramBase;

} // namespace

QList<QByteArray> gainModeReads()
{
    return {"010322590001", "0103225A0001", "010322620001", "010322630001", "010322640001",
            "010321F60001", "0103227D0001", "0103227E0001", "010322580001"};
}

QList<QByteArray> inertiaReads()
{
    return {"0103225D0001", "0103225E0001", "0103225F0001", "010322600001",
            "010326180001", "0103225A0001", "0103225C0001", "010322AE0001"};
}

QList<QByteArray> vibrationReads()
{
    return {"010326000001", "010326010001", "010326020001", "010322970001", "010322980001", "010322990001",
            "0103229A0001", "0103229B0001", "0103229C0001", "0103229D0001", "0103229E0001", "0103229F0001",
            "010322A00001", "010322A10001", "010322A20001", "010322960001"};
}

QByteArray closed(const QByteArray &hexFrame)
{
    return withCrc(QByteArray::fromHex(hexFrame));
}

bool isCyclic(const QByteArray &hexFrame)
{
    static const QList<QByteArray> cyclic{"010326180001", "010326000001", "010326010001", "010326020001"};
    return cyclic.contains(hexFrame);
}

QByteArray storeFrame(int readRegister, int value)
{
    return storeFrame(readRegister, QList<int>{value});
}

QByteArray storeFrame(int readRegister, const QList<int> &values)
{
    QByteArray data;
    for (const int value : values)
        data.append(char(value >> 8)).append(char(value));
    return writeMultipleRequest(readRegister + storeOffset, data);
}

QString valueText(int readRegister, quint32 value)
{
    switch (readRegister) {
    case RegisterTorqueFilterTime:
    case RegisterSpeedFeedforwardFilterTime:
    case RegisterCalculatedRatio:
        return QString::number(value * 0.01, 'f', 2);
    case RegisterPositionLoopGain:
    case RegisterSpeedLoopGain:
    case RegisterSpeedLoopIntegralTime:
    case RegisterInertiaRatio:
    case RegisterSpeedFeedforwardGain:
        return QString::number(value * 0.1, 'f', 1);
    default:
        return QString::number(double(value), 'g', 6);
    }
}

} // namespace gaintuning
