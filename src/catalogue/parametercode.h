// SPDX-License-Identifier: GPL-3.0-or-later
// Rules from a parameter's code and its row's texts to the wire and back: register, width, fixed point.
// Pure functions; any thread.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

// Register offset of a code "Pn-XYY": group digit X read in hexadecimal, times 100, plus YY read in decimal.
// The group is 100 registers wide, so Pn-A04 is 1004. Whatever text stands in the code is taken as it is.
int registerOf(const QString &code);

// The number of a code within its group: characters 4 and 5, read in decimal.
int numberInGroup(const QString &code);

// Where a reply belongs: the group and the number within it of a register offset.
struct ParameterPlace
{
    int group = -1; // 0 to 11, or -1 when no group of the editor holds the offset
    int number = 0; // 0 to 99
};
ParameterPlace placeOfOffset(int offset);

// The first six characters, by which a row and its register are named; of a pair, the first code.
QString shortCode(const QString &code);

// The code as the catalogue spells it, for a text whose characters 3 to 5 name a group and a number, which
// may have one digit where the text ends behind it; any other text as it is. Blanks around it do not count.
// By it the register's width is looked up.
QString catalogueSpelling(const QString &code);

// What a hexadecimal text begins with.
const QLatin1String hexPrefix("0x");

// True for a number with a fraction.
bool hasPoint(const QString &text);

// "0x" and the four digits of a register.
constexpr int hexTextLength = 6;

// A hexadecimal text with fewer digits, filled up with zeros behind its "0x"; any other text as it is.
QString filledUpHex(QString text);

// Display text to the bytes of a write frame, two for a 16-bit parameter and four for a 32-bit one, high byte
// first. hexMark is the row's "H" or empty. A text that is no number gives 0; one beyond 32 bits the nearest
// 32-bit number.
QByteArray encodeValue(const QString &code, const QString &hexMark, const QString &valueText,
                       const QString &unit, const QString &min, const QString &max);

// Bytes as the hexadecimal text that decodeValue() reads.
QString hexText(const QByteArray &bytes);

// The data bytes of a reply, as hexadecimal text, to the display text of a row.
QString decodeValue(const QString &replyHex, const QString &hexMark, const QString &unit, const QString &min,
                    const QString &max);
