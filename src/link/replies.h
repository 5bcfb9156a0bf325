// SPDX-License-Identifier: GPL-3.0-or-later
// What stands in a reply, CRC included, whose checksum the link has found good. Short and foreign frames give
// empty answers, never an error. Pure functions; any thread.
#pragma once

#include <QByteArray>

// True when the second byte is the function of a read, and not its exception.
bool isReadReply(const QByteArray &reply);

// True for a reply to a read of that many registers: function, byte count and length fit.
bool isReadReplyOf(const QByteArray &reply, int registers);

// True when the function byte carries the exception bit.
bool isExceptionReply(const QByteArray &reply);

// The byte count, byte 2 of a read's reply; 0 where there is none.
int replyByteCount(const QByteArray &reply);

// The data from the front: as many bytes behind the byte count as it says.
QByteArray payloadFromFront(const QByteArray &reply);

// The data from the back: the last count bytes before the CRC.
QByteArray payloadFromBack(const QByteArray &reply, int count);

// The bytes as one big-endian number.
quint32 unsignedNumber(const QByteArray &bytes);
// The same with the sign of its width: two bytes are a 16-bit number, four a 32-bit one.
qint32 signedNumber(const QByteArray &bytes);
