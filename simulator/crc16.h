// SPDX-License-Identifier: GPL-3.0-or-later
// The checksum that closes every request and reply: CRC-16 in the Modbus form, driven by a table.
//
// Free functions, for any thread.
#pragma once

#include "simulator/bytes.h"

#include <cstddef>

namespace kt500sim {

/// Start value 0xFFFF, reflected polynomial 0xA001, no final change. An empty range gives 0xFFFF.
std::uint16_t crc16(const std::uint8_t *data, std::size_t size);

/// Appends the checksum of everything in \a frame, low byte first.
void appendCrc(Bytes &frame);

/// True when the last two of \a size bytes are the checksum of those before them; false below three bytes.
bool endsWithItsCrc(const std::uint8_t *data, std::size_t size);

} // namespace kt500sim
