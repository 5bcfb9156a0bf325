// SPDX-License-Identifier: GPL-3.0-or-later
#include "link/silentgap.h"

std::chrono::microseconds silentGap(qint32 baudRate)
{
    constexpr qint32 fixedGapFrom = 19200;
    constexpr std::chrono::microseconds fixedGap(1750);
    constexpr qint64 bitMicroseconds = 35 * 1000000; // 3.5 characters of ten bits
    if (baudRate == usbBaudRate || baudRate <= 0)
        return std::chrono::microseconds(0);
    return baudRate >= fixedGapFrom ? fixedGap : std::chrono::microseconds(bitMicroseconds / baudRate);
}
