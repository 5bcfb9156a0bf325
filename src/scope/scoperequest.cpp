// SPDX-License-Identifier: GPL-3.0-or-later
#include "scope/scoperequest.h"

#include "link/framecodec.h"
#include "link/functioncodes.h"

#include <algorithm>

namespace {

constexpr char station = 0x01;
constexpr char wideFlag = 0x20;
constexpr char narrowFlag = 0x10;

} // namespace

QByteArray scopeStartRequest(const ScopeChannelSettings &channels, const ScopeItems &items)
{
    QByteArray frame;
    frame.append(station).append(char(FunctionCode::Scope));
    for (const ScopeChannelSetting &channel : channels) {
        if (!channel.on) {
            frame.append(2, '\0');
            continue;
        }
        frame.append(channel.wide ? wideFlag : narrowFlag);
        frame.append(char(std::max(0, scopeItemNumber(items, channel.code))));
    }
    return withCrc(frame);
}

QByteArray scopeStopRequest()
{
    return QByteArray::fromHex(stopFrameText);
}
