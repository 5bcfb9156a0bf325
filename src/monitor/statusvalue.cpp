// SPDX-License-Identifier: GPL-3.0-or-later
#include "monitor/statusvalue.h"

#include "link/replies.h"
#include "monitor/polltable.h"

namespace {

// Deliberate: the motor position is one register and is shown without sign all the same.
bool isUnsigned(int address)
{
    return address == monitorregister::motorPosition;
}

bool isScaled(int address, const QString &unit)
{
    return unit.contains(QLatin1Char('.')) || address == monitorregister::busVoltage ||
           address == monitorregister::moduleTemperature;
}

} // namespace

QString statusText(const QByteArray &data, int address, const QString &unit, bool isPair)
{
    if (address == monitorregister::diStatus || address == monitorregister::doStatus)
        return QString::fromLatin1(data.toHex()).toUpper();
    const quint32 raw = unsignedNumber(data);
    const double number = isPair || isUnsigned(address) ? qint32(raw) : qint16(raw);
    if (!isScaled(address, unit))
        return QString::number(number, 'f', 0);
    return QString::number(number * (unit.contains(QLatin1String("0.01")) ? 0.01 : 0.1), 'f', 2);
}
