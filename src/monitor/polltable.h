// SPDX-License-Identifier: GPL-3.0-or-later
// The poll cycle as data: what is asked in which order, and how a reply falls apart into single items.
// Constant data and pure functions; any thread.
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

// Registers that more than one place of the monitor tells apart.
namespace monitorregister {

constexpr int busVoltage = 9715;        // Pn-F23
constexpr int moduleTemperature = 9716; // Pn-F24
constexpr int diStatus = 9717;          // Pn-F25
constexpr int doStatus = 9718;          // Pn-F26
constexpr int warningCode = 9719;       // Pn-F27
constexpr int errorCode = 9720;         // Pn-F28
constexpr int motorPosition = 9772;     // Pn-F80
constexpr int diFunction = 8403;        // Pn-211, the first of sixteen
constexpr int doFunction = 8423;        // Pn-231, the first of sixteen
constexpr int faultHistory = 9042;      // Pn-850, the first of ten

} // namespace monitorregister

constexpr int terminalCount = 16; // DI rows, and DO rows
constexpr int historyWords = 10;

// Codes of the blocks of one cycle, in order.
QStringList pollCodes();

// Words of the block that a code begins; ten for a code that is not polled.
int pollWords(const QString &code);

// Address on the wire under which a code is read.
int readAddress(const QString &code);

// An input or an output of the drive.
struct Terminal
{
    bool isInput = true;
    int row = 0; // 0 to 15
};

// Whose function stands in this register, if anyone's.
std::optional<Terminal> terminalOf(int functionAddress);

// One register, or a pair of them, out of a reply.
struct PollItem
{
    // Who hears of it, beside the status table.
    enum class Kind { Status, DIDOStatus, AlarmError, DIDOFunction };

    int address = 0;
    QByteArray data; // two or four bytes, as they stand on the wire
    Kind kind = Kind::Status;
};

// The items of a block in order. Bytes left over at the end make no item.
QList<PollItem> cutBlock(int address, const QByteArray &payload);
