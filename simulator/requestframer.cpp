// SPDX-License-Identifier: GPL-3.0-or-later
#include "simulator/requestframer.h"

#include "simulator/crc16.h"

namespace kt500sim {
namespace {

// No request is longer than this, so more bytes without a frame in them are noise.
constexpr std::size_t longestRequest = 256;

/// The length that the head of a request announces; 0 while that can't be told.
std::size_t announcedLength(const Bytes &bytes)
{
    if (bytes.size() < 2)
        return 0;
    switch (bytes[1]) {
    case 0x03:
    case 0x06:
        return 8;
    case 0x10:
        return bytes.size() < 7 ? 0 : 9 + std::size_t{bytes[6]};
    case 0x14:
        return 12;
    default:
        return 0;
    }
}

} // namespace

RequestFramer::RequestFramer(nanoseconds silentGap)
    : m_silentGap(silentGap)
{
}

void RequestFramer::feed(const std::uint8_t *data, std::size_t size, TimePoint now)
{
    closeAtGap(now);
    m_pending.insert(m_pending.end(), data, data + size);
    m_lastByte = now;
    closeWholeFrames();
    if (m_pending.size() > longestRequest)
        close(m_pending.size(), false);
}

std::optional<ReceivedFrame> RequestFramer::next(TimePoint now)
{
    closeAtGap(now);
    if (m_closed.empty())
        return std::nullopt;
    ReceivedFrame frame = std::move(m_closed.front());
    m_closed.pop_front();
    return frame;
}

std::optional<TimePoint> RequestFramer::gapEnd() const
{
    if (m_pending.empty())
        return std::nullopt;
    return m_lastByte + m_silentGap;
}

void RequestFramer::clear()
{
    m_pending.clear();
    m_closed.clear();
}

void RequestFramer::closeAtGap(TimePoint now)
{
    // A frame of a good checksum and an odd length is still a frame: the drive answers it with an exception.
    if (!m_pending.empty() && now - m_lastByte >= m_silentGap)
        close(m_pending.size(), endsWithItsCrc(m_pending.data(), m_pending.size()));
}

void RequestFramer::closeWholeFrames()
{
    for (;;) {
        const std::size_t length = announcedLength(m_pending);
        if (length == 0 || m_pending.size() < length || !endsWithItsCrc(m_pending.data(), length))
            return;
        close(length, true);
    }
}

void RequestFramer::close(std::size_t size, bool checksumGood)
{
    const auto end = m_pending.begin() + static_cast<Bytes::difference_type>(size);
    m_closed.push_back({Bytes(m_pending.begin(), end), checksumGood});
    m_pending.erase(m_pending.begin(), end);
}

} // namespace kt500sim
