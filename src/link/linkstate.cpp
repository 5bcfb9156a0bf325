// SPDX-License-Identifier: GPL-3.0-or-later
#include "link/linkstate.h"

#include "link/serialport.h"

bool isLinkOpen()
{
    return SerialPort::portOpened;
}

bool isLinkReconnecting()
{
    return SerialPort::reconnecting;
}

bool isScopeStreamRunning()
{
    return SerialPort::scopeRunning;
}

int linkRepeats()
{
    return SerialPort::repeatCount;
}
