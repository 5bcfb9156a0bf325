// SPDX-License-Identifier: GPL-3.0-or-later
#include "simulator/registerfile.h"

namespace kt500sim {
namespace {

bool inSpace(int offset)
{
    return offset >= 0 && offset < registerSpace;
}

} // namespace

RegisterFile::RegisterFile(const RegisterTable &table)
{
    for (const RegisterEntry &entry : table) {
        for (int word = 0; word < entry.words; ++word) {
            const int offset = entry.offset + word;
            const auto at = static_cast<std::size_t>(offset);
            const int shift = 16 * (entry.words - 1 - word);
            m_exists.set(at);
            m_readOnly.set(at, entry.readOnly);
            m_factory[at] = static_cast<std::uint16_t>(entry.factory >> shift);
        }
    }
    factoryReset();
}

bool RegisterFile::exists(int offset) const
{
    return inSpace(offset) && m_exists.test(static_cast<std::size_t>(offset));
}

bool RegisterFile::isReadOnly(int offset) const
{
    return inSpace(offset) && m_readOnly.test(static_cast<std::size_t>(offset));
}

std::uint16_t RegisterFile::working(int offset) const
{
    return inSpace(offset) ? m_working[static_cast<std::size_t>(offset)] : std::uint16_t{0};
}

std::uint16_t RegisterFile::stored(int offset) const
{
    return inSpace(offset) ? m_stored[static_cast<std::size_t>(offset)] : std::uint16_t{0};
}

std::int32_t RegisterFile::workingPair(int offset) const
{
    const std::uint32_t high = working(offset);
    return static_cast<std::int32_t>((high << 16) | working(offset + 1));
}

void RegisterFile::set(int offset, std::uint16_t value, Copy copy)
{
    if (!exists(offset))
        return;
    m_working[static_cast<std::size_t>(offset)] = value;
    if (copy == Copy::WorkingAndStored)
        m_stored[static_cast<std::size_t>(offset)] = value;
}

void RegisterFile::setPair(int offset, std::int32_t value, Copy copy)
{
    const auto bits = static_cast<std::uint32_t>(value);
    set(offset, static_cast<std::uint16_t>(bits >> 16), copy);
    set(offset + 1, static_cast<std::uint16_t>(bits & 0xffff), copy);
}

void RegisterFile::powerCycle()
{
    m_working = m_stored;
}

void RegisterFile::factoryReset()
{
    m_stored = m_factory;
    m_working = m_factory;
}

} // namespace kt500sim
