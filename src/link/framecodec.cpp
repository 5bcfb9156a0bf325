// SPDX-License-Identifier: GPL-3.0-or-later
#include "link/framecodec.h"

namespace {

constexpr quint16 crcStart = 0xFFFF;
constexpr quint16 crcPolynomial = 0xA001;

// Two digits a byte; unlike QByteArray::fromHex an odd digit at the end is dropped, not put in front.
QByteArray bytesOfText(const QString &hexText)
{
    QByteArray digits;
    for (const QChar c : hexText) {
        if (!c.isSpace())
            digits.append(c.toLatin1());
    }
    digits.chop(digits.size() % 2);
    return QByteArray::fromHex(digits);
}

QString byteText(int byte)
{
    QString text = QString::number(byte, 16).toUpper();
    return text.size() == 1 ? QLatin1Char('0') + text : text;
}

} // namespace

quint16 crc16(const QByteArray &bytes)
{
    quint16 crc = crcStart;
    const int length = bytes.size() & 0xFFFF;
    for (int i = 0; i < length; ++i) {
        crc ^= static_cast<quint8>(bytes.at(i));
        for (int bit = 0; bit < 8; ++bit)
            crc =
                (crc & 1) ? static_cast<quint16>((crc >> 1) ^ crcPolynomial) : static_cast<quint16>(crc >> 1);
    }
    return crc;
}

QString crcText(const QString &hexFrame)
{
    const quint16 crc = crc16(bytesOfText(hexFrame));
    return byteText(crc & 0xFF) + byteText(crc >> 8);
}

bool hasGoodCrc(const QByteArray &frame)
{
    const QByteArray tail = frame.right(2);
    if (tail.size() != 2)
        return false;
    const quint16 crc = crc16(frame.left(frame.size() - 2));
    return static_cast<quint8>(tail.at(0)) == (crc & 0xFF) && static_cast<quint8>(tail.at(1)) == (crc >> 8);
}

QByteArray withCrc(const QByteArray &frameWithoutCrc)
{
    const quint16 crc = crc16(frameWithoutCrc);
    QByteArray frame = frameWithoutCrc;
    frame.append(static_cast<char>(crc & 0xFF));
    frame.append(static_cast<char>(crc >> 8));
    return frame;
}

bool isScopeFrame(const QByteArray &bytes)
{
    return bytes.size() >= 2 && bytes.at(0) == '\x01' && bytes.at(1) == '\x14';
}

bool isStopFrame(const QByteArray &bytes)
{
    return bytes.toHex() == stopFrameText;
}

QByteArray fitBytes(const QByteArray &value, int width)
{
    return value.right(width).rightJustified(width, '\0');
}

QString addressText(int registerNumber)
{
    return QString::number(registerNumber & 0xFFFF, 16).rightJustified(4, QLatin1Char('0'));
}

QByteArray packSingleWrite(const QString &paramCode, const QString &valueHex)
{
    const int low = paramCode.midRef(2, 1).toInt(nullptr, 16) * 100 + paramCode.midRef(3, 2).toInt();
    const QString frame = QLatin1String("0106") + addressText(ramBase + low) + valueHex;
    return withCrc(QByteArray::fromHex(frame.toLatin1()));
}
