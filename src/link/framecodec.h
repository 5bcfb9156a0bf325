// SPDX-License-Identifier: GPL-3.0-or-later
// The bytes of the frames on the serial link: bases, constant frames, CRC and the helpers that build
// requests. Pure functions; any thread.
#pragma once

#include <QByteArray>
#include <QString>

// Base of every read, and of writes to the drive's working copy only.
constexpr int ramBase = 0x2000;
// Base of writes that the drive also stores for the next power-on.
constexpr int eepromBase = 0xE000;

// Stops the scope stream: function 0x14 with an all-zero body. Lower case, as QByteArray::toHex gives it.
constexpr char stopFrameText[] = "01140000000000000000dec2";
// Sent first on every connection: read two registers from 0x2060.
constexpr char probeFrameText[] = "010320600002cfd5";

// CRC of a frame given without its CRC as hexadecimal text, as four upper-case digits, low byte first
// ("CFD5"). Blanks are skipped, a single digit left over at the end is ignored.
QString crcText(const QString &hexFrame);

// CRC-16/Modbus of the bytes (start 0xFFFF, polynomial 0xA001 reflected). Only the low 16 bits of the length
// count.
quint16 crc16(const QByteArray &bytes);

// True when the last two bytes of the frame are the CRC, low byte first, of all bytes before them.
bool hasGoodCrc(const QByteArray &frame);

// The frame with its CRC appended.
QByteArray withCrc(const QByteArray &frameWithoutCrc);

// True when the bytes begin with 01 14: a scope request, or a chunk of the scope stream.
bool isScopeFrame(const QByteArray &bytes);

// True for the stop frame and nothing else.
bool isStopFrame(const QByteArray &bytes);

// Gives a value the exact width of a field, in bytes: shorter input is right-aligned in zero bytes, longer
// input keeps its last bytes, so that a negative number printed as a 64-bit pattern keeps its low part.
QByteArray fitBytes(const QByteArray &value, int width);

// Complete 0x06 frame to the working copy for a code of the form "Pn202" (no hyphen: one hexadecimal group
// digit at position 2, two decimal digits behind it) and four hexadecimal digits of value.
QByteArray packSingleWrite(const QString &paramCode, const QString &valueHex);

// Register number as the four hexadecimal digits of a frame's address field.
QString addressText(int registerNumber);
