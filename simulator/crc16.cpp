// SPDX-License-Identifier: GPL-3.0-or-later
#include "simulator/crc16.h"

#include <array>

namespace kt500sim {
namespace {

constexpr std::array<std::uint16_t, 256> makeTable()
{
    std::array<std::uint16_t, 256> table{};
    for (unsigned byte = 0; byte < 256; ++byte) {
        unsigned remainder = byte;
        for (int bit = 0; bit < 8; ++bit)
            remainder = (remainder & 1u) != 0 ? (remainder >> 1) ^ 0xa001u : remainder >> 1;
        table[byte] = static_cast<std::uint16_t>(remainder);
    }
    return table;
}

constexpr std::array<std::uint16_t, 256> table = makeTable();

} // namespace

std::uint16_t crc16(const std::uint8_t *data, std::size_t size)
{
    unsigned crc = 0xffff;
    for (std::size_t i = 0; i < size; ++i)
        crc = (crc >> 8) ^ table[(crc ^ data[i]) & 0xffu];
    return static_cast<std::uint16_t>(crc);
}

void appendCrc(Bytes &frame)
{
    const std::uint16_t crc = crc16(frame.data(), frame.size());
    frame.push_back(static_cast<std::uint8_t>(crc & 0xff));
    frame.push_back(static_cast<std::uint8_t>(crc >> 8));
}

bool endsWithItsCrc(const std::uint8_t *data, std::size_t size)
{
    if (size < 3)
        return false;
    const std::uint16_t crc = crc16(data, size - 2);
    return data[size - 2] == (crc & 0xff) && data[size - 1] == (crc >> 8);
}

} // namespace kt500sim
