// SPDX-License-Identifier: GPL-3.0-or-later
#include "link/portstamp.h"

QByteArray portStamp()
{
    return {};
}
