// SPDX-License-Identifier: GPL-3.0-or-later
#include "simulator/scopestream.h"

#include "simulator/drivemodel.h"

#include <algorithm>

namespace kt500sim {
namespace {

constexpr std::uint8_t flagOff = 0x00;
constexpr std::uint8_t flagNarrow = 0x10;
constexpr std::uint8_t flagWide = 0x20;

} // namespace

ScopeStream::ScopeStream(int samplesPerFrame)
    : m_samplesPerFrame(std::clamp(samplesPerFrame, 1, 255))
{
}

std::optional<ScopeSelection> ScopeStream::parseRequest(const Bytes &request)
{
    if (request.size() != requestSize)
        return std::nullopt;
    ScopeSelection selection{};
    int words = 0;
    for (std::size_t channel = 0; channel < scopeChannels; ++channel) {
        const std::uint8_t flag = request[2 + 2 * channel];
        if (flag != flagOff && flag != flagNarrow && flag != flagWide)
            return std::nullopt;
        selection[channel].on = flag != flagOff;
        selection[channel].wide = flag == flagWide;
        selection[channel].item = request[3 + 2 * channel];
        words += selection[channel].words();
    }
    if (words > wordBudget)
        return std::nullopt;
    return selection;
}

void ScopeStream::start(const ScopeSelection &selection)
{
    m_selection = selection;
    m_count = 0;
    for (Bytes &samples : m_samples)
        samples.clear();
    m_running = std::any_of(selection.begin(), selection.end(), [](const ScopeChannel &c) { return c.on; });
}

void ScopeStream::stop()
{
    start(ScopeSelection{});
}

std::optional<Bytes> ScopeStream::takeSample(const DriveModel &model)
{
    if (!m_running)
        return std::nullopt;
    for (std::size_t channel = 0; channel < scopeChannels; ++channel) {
        if (!m_selection[channel].on)
            continue;
        const auto value = static_cast<std::uint32_t>(model.scopeValue(m_selection[channel].item));
        if (m_selection[channel].wide)
            appendWord(m_samples[channel], static_cast<std::uint16_t>(value >> 16));
        appendWord(m_samples[channel], static_cast<std::uint16_t>(value & 0xffff));
    }
    if (++m_count < m_samplesPerFrame)
        return std::nullopt;

    // The length field counts the whole frame, head included, and no checksum follows.
    std::size_t length = 4;
    for (const Bytes &samples : m_samples)
        length += 2 + samples.size();
    Bytes frame{0x01, 0x14};
    frame.reserve(length);
    appendWord(frame, static_cast<std::uint16_t>(length));
    for (std::size_t channel = 0; channel < scopeChannels; ++channel) {
        const ScopeChannel &selected = m_selection[channel];
        frame.push_back(!selected.on ? flagOff : selected.wide ? flagWide : flagNarrow);
        frame.push_back(selected.on ? static_cast<std::uint8_t>(m_count) : std::uint8_t{0});
        frame.insert(frame.end(), m_samples[channel].begin(), m_samples[channel].end());
        m_samples[channel].clear();
    }
    m_count = 0;
    return frame;
}

} // namespace kt500sim
