// SPDX-License-Identifier: GPL-3.0-or-later
#include "monitor/polltable.h"

#include "catalogue/parametercode.h"
#include "link/framecodec.h"

#include <algorithm>
#include <array>

namespace {

struct Block
{
    const char *code;
    int words;
};

constexpr std::array<Block, 15> blocks{{
    {"Pn-F00", 7},
    {"Pn-F07", 10},
    {"Pn-F17", 8},
    {"Pn-F25", 4},
    {"Pn-F29", 10},
    {"Pn-F40", 6},
    {"Pn-F46", 4},
    {"Pn-F50", 5},
    {"Pn-F56", 7},
    {"Pn-F70", 3},
    {"Pn-F80", 6},
    {"Pn-211", 8},
    {"Pn-219", 8},
    {"Pn-231", 8},
    {"Pn-239", 8},
}};
constexpr int usualWords = 10;

// Registers within the blocks at which a 32-bit item begins.
constexpr std::array<int, 13> pairs{0x25E3, 0x25E5, 0x25E7, 0x25E9, 0x25EB, 0x25EE, 0x25F0,
                                    0x25F9, 0x2604, 0x2606, 0x2608, 0x2611, 0x262D};

bool isPair(int address)
{
    return std::find(pairs.begin(), pairs.end(), address) != pairs.end();
}

PollItem::Kind kindOf(int address)
{
    if (address == monitorregister::diStatus || address == monitorregister::doStatus)
        return PollItem::Kind::DIDOStatus;
    if (address == monitorregister::warningCode || address == monitorregister::errorCode)
        return PollItem::Kind::AlarmError;
    if (terminalOf(address))
        return PollItem::Kind::DIDOFunction;
    return PollItem::Kind::Status;
}

} // namespace

QStringList pollCodes()
{
    QStringList codes;
    for (const Block &block : blocks)
        codes.append(QLatin1String(block.code));
    return codes;
}

int pollWords(const QString &code)
{
    const auto *const found = std::find_if(blocks.begin(), blocks.end(), [&code](const Block &block) {
        return code == QLatin1String(block.code);
    });
    return found == blocks.end() ? usualWords : found->words;
}

int readAddress(const QString &code)
{
    return ramBase + registerOf(code);
}

std::optional<Terminal> terminalOf(int functionAddress)
{
    const int input = functionAddress - monitorregister::diFunction;
    if (input >= 0 && input < terminalCount)
        return Terminal{true, input};
    const int output = functionAddress - monitorregister::doFunction;
    if (output >= 0 && output < terminalCount)
        return Terminal{false, output};
    return std::nullopt;
}

QList<PollItem> cutBlock(int address, const QByteArray &payload)
{
    QList<PollItem> items;
    for (int place = 0; place < payload.size();) {
        const int words = isPair(address) ? 2 : 1;
        const QByteArray data = payload.mid(place, 2 * words);
        if (data.size() == 2 * words)
            items.append({address, data, kindOf(address)});
        address += words;
        place += 2 * words;
    }
    return items;
}
