// SPDX-License-Identifier: GPL-3.0-or-later
#include "parameter/parameterframes.h"

#include "catalogue/parametercode.h"
#include "link/framecodec.h"
#include "link/replies.h"
#include "link/requests.h"

namespace {

// The two hexadecimal digits of the byte count are read as a decimal number, which is right for 2 and 4.
int byteCount(const QByteArray &reply)
{
    return reply.mid(2, 1).toHex().toInt();
}

} // namespace

QByteArray parameterReadFrame(const QString &code, bool twoRegisters)
{
    return readRequest(ramBase + registerOf(code), twoRegisters ? 2 : 1);
}

QByteArray parameterBytes(const QStringList &record)
{
    return encodeValue(record.value(0), record.value(1), record.value(2), record.value(3), record.value(4),
                       record.value(5));
}

QByteArray parameterWriteFrame(const QStringList &record, int base)
{
    return writeMultipleRequest(base + registerOf(record.value(0)), parameterBytes(record));
}

QByteArray replyData(const QByteArray &reply)
{
    return payloadFromBack(reply, byteCount(reply));
}

ReadBack judgeReadBack(const QByteArray &reply, const QStringList &record)
{
    if (!isReadReply(reply))
        return ReadBack::NotARead;
    const int count = byteCount(reply);
    if (count != 2 && count != 4)
        return ReadBack::Differs;
    return reply.mid(3, count) == parameterBytes(record) ? ReadBack::Equal : ReadBack::Differs;
}
