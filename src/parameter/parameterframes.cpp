// SPDX-License-Identifier: GPL-3.0-or-later
#include "parameter/parameterframes.h"

#include "catalogue/parametercode.h"
#include "link/framecodec.h"

namespace {

constexpr int readFunction = 0x03;

QByteArray frameOf(const QString &text, const QByteArray &data = QByteArray())
{
    return withCrc(QByteArray::fromHex(text.toLatin1()) + data);
}

// The two hexadecimal digits of the byte count are read as a decimal number, which is right for 2 and 4.
int byteCount(const QByteArray &reply)
{
    return reply.mid(2, 1).toHex().toInt();
}

} // namespace

QByteArray parameterReadFrame(const QString &code, bool twoRegisters)
{
    return frameOf(QLatin1String("0103") + addressText(ramBase + registerOf(code)) +
                   (twoRegisters ? QLatin1String("0002") : QLatin1String("0001")));
}

QByteArray parameterBytes(const QStringList &record)
{
    return encodeValue(record.value(0), record.value(1), record.value(2), record.value(3), record.value(4),
                       record.value(5));
}

QByteArray parameterWriteFrame(const QStringList &record, int base)
{
    const QByteArray data = parameterBytes(record);
    return frameOf(QLatin1String("0110") + addressText(base + registerOf(record.value(0))) +
                       (data.size() == 4 ? QLatin1String("000204") : QLatin1String("000102")),
                   data);
}

int registerOfFrame(const QByteArray &frame)
{
    bool ok = false;
    const int number = frame.mid(2, 2).toHex().toInt(&ok, 16);
    return ok ? number : -1;
}

QString replyData(const QByteArray &reply)
{
    const int count = byteCount(reply);
    return QString::fromLatin1(reply.chopped(qMin(2, reply.size())).right(count).toHex());
}

ReadBack judgeReadBack(const QByteArray &reply, const QStringList &record)
{
    if (reply.size() < 2 || reply.at(1) != readFunction)
        return ReadBack::NotARead;
    const int count = byteCount(reply);
    if (count != 2 && count != 4)
        return ReadBack::Differs;
    return reply.mid(3, count) == parameterBytes(record) ? ReadBack::Equal : ReadBack::Differs;
}
