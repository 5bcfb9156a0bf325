// SPDX-License-Identifier: GPL-3.0-or-later
// The frames of one parameter and what a reply to them says. Pure functions; any thread.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

// Read frame of a code, for one register or two: 01 03 address 00 NN CRC.
QByteArray parameterReadFrame(const QString &code, bool twoRegisters);

// Write frame of a record (code, mark, value, unit, min, max): 01 10 address 00 NN BC data CRC. The base
// alone, ramBase or eepromBase, says whether the drive keeps the value.
QByteArray parameterWriteFrame(const QStringList &record, int base);

// Value bytes of a record, as the write frame carries them.
QByteArray parameterBytes(const QStringList &record);

// The data bytes of a reply: as many before the CRC as the byte count says.
QByteArray replyData(const QByteArray &reply);

// What a read-back says of the record that was written.
enum class ReadBack {
    NotARead, // the reply is none to a read
    Differs,
    Equal
};
ReadBack judgeReadBack(const QByteArray &reply, const QStringList &record);
