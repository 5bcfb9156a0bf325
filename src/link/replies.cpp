// SPDX-License-Identifier: GPL-3.0-or-later
#include "link/replies.h"

#include "link/functioncodes.h"

namespace {

constexpr int functionPlace = 1;
constexpr int countPlace = 2;
constexpr int dataPlace = 3;
constexpr int crcLength = 2;
constexpr int exceptionBit = 0x80;

int byteAt(const QByteArray &reply, int place)
{
    return place < reply.size() ? quint8(reply.at(place)) : 0;
}

} // namespace

bool isReadReply(const QByteArray &reply)
{
    return byteAt(reply, functionPlace) == int(FunctionCode::Read);
}

bool isReadReplyOf(const QByteArray &reply, int registers)
{
    return isReadReply(reply) && replyByteCount(reply) == 2 * registers &&
           reply.size() == dataPlace + 2 * registers + crcLength;
}

bool isExceptionReply(const QByteArray &reply)
{
    return byteAt(reply, functionPlace) & exceptionBit;
}

int replyByteCount(const QByteArray &reply)
{
    return byteAt(reply, countPlace);
}

QByteArray payloadFromFront(const QByteArray &reply)
{
    return reply.mid(dataPlace, replyByteCount(reply));
}

QByteArray payloadFromBack(const QByteArray &reply, int count)
{
    return reply.chopped(qMin(crcLength, reply.size())).right(qMax(0, count));
}

quint32 unsignedNumber(const QByteArray &bytes)
{
    quint32 number = 0;
    for (const char byte : bytes)
        number = number << 8 | quint8(byte);
    return number;
}

qint32 signedNumber(const QByteArray &bytes)
{
    const quint32 number = unsignedNumber(bytes);
    return bytes.size() == 2 ? qint16(number) : qint32(number);
}
