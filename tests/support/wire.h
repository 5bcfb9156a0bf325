// SPDX-License-Identifier: GPL-3.0-or-later
// Frames for tests, written in hexadecimal. The CRC comes from the simulated drive's table, a computation
// independent of the product's. Any thread.
#pragma once

#include <QByteArray>

namespace wire {

// Bytes of hexadecimal text; blanks are ignored.
QByteArray bytes(const char *hex);
// The same with the CRC behind them, low byte first.
QByteArray frame(const char *hex);
QByteArray frame(const QByteArray &bytesWithoutCrc);
// A good reply to a read (function 0x03) with these data bytes.
QByteArray readReply(const QByteArray &data);
// The drive's good reply to a read or write request, the registers read as the 16-bit values given.
QByteArray replyTo(const QByteArray &request, const QByteArray &data);
// What a received stream holds, cut into requests by their function; what is no request stays one piece.
QList<QByteArray> requests(QByteArray *stream);

} // namespace wire
