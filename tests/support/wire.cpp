// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/wire.h"

#include "simulator/crc16.h"

#include <QList>

namespace wire {

QByteArray bytes(const char *hex)
{
    return QByteArray::fromHex(hex);
}

QByteArray frame(const QByteArray &bytesWithoutCrc)
{
    const auto *data = reinterpret_cast<const std::uint8_t *>(bytesWithoutCrc.constData());
    const std::uint16_t crc = kt500sim::crc16(data, static_cast<std::size_t>(bytesWithoutCrc.size()));
    return bytesWithoutCrc + char(crc & 0xFF) + char(crc >> 8);
}

QByteArray frame(const char *hex)
{
    return frame(bytes(hex));
}

QByteArray readReply(const QByteArray &data)
{
    return frame(bytes("0103") + char(data.size()) + data);
}

QByteArray replyTo(const QByteArray &request, const QByteArray &data)
{
    switch (request.size() > 1 ? request.at(1) : 0) {
    case 0x03:
        return readReply(data.left(2 * static_cast<quint8>(request.at(5))));
    case 0x06:
        return request;
    case 0x10:
        return frame(request.left(6));
    default:
        return QByteArray();
    }
}

QList<QByteArray> requests(QByteArray *stream)
{
    QList<QByteArray> found;
    while (stream->size() >= 2) {
        int length = stream->size();
        switch (stream->at(1)) {
        case 0x03:
        case 0x06:
            length = 8;
            break;
        case 0x10:
            if (stream->size() < 7)
                return found;
            length = 9 + static_cast<quint8>(stream->at(6));
            break;
        case 0x14:
            length = 12;
            break;
        default:
            break;
        }
        if (stream->size() < length)
            return found;
        found.append(stream->left(length));
        stream->remove(0, length);
    }
    return found;
}

} // namespace wire
