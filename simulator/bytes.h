// SPDX-License-Identifier: GPL-3.0-or-later
// Raw bytes of the wire and the big-endian fields inside them.
//
// Values and free functions, for any thread. Standard containers rather than Qt's shared ones, so that bytes
// pass between threads by value alone.
#pragma once

#include <cstdint>
#include <vector>

namespace kt500sim {

using Bytes = std::vector<std::uint8_t>;

/// The 16-bit field at byte \a at, most significant byte first. The caller has checked the length.
inline std::uint16_t wordAt(const Bytes &bytes, std::size_t at)
{
    return static_cast<std::uint16_t>((bytes[at] << 8) | bytes[at + 1]);
}

inline void appendWord(Bytes &bytes, std::uint16_t word)
{
    bytes.push_back(static_cast<std::uint8_t>(word >> 8));
    bytes.push_back(static_cast<std::uint8_t>(word & 0xff));
}

} // namespace kt500sim
