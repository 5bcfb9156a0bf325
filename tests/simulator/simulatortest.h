// SPDX-License-Identifier: GPL-3.0-or-later
// What the tests of the simulated drive share: bytes as hexadecimal text, and a model whose samples are plain
// numbers.
#pragma once

#include "simulator/drivemodel.h"

#include "simulator/bytes.h"

#include <QByteArray>

/// Bytes from hexadecimal text; blanks are for the reader.
inline kt500sim::Bytes bytesOf(const QByteArray &hex)
{
    const QByteArray raw = QByteArray::fromHex(hex);
    return kt500sim::Bytes(raw.begin(), raw.end());
}

/// The other way round, in the form that test tables are written in, less the blanks.
inline QByteArray hexOf(const kt500sim::Bytes &bytes)
{
    return QByteArray(reinterpret_cast<const char *>(bytes.data()), static_cast<int>(bytes.size())).toHex();
}

/// Hexadecimal text without its blanks, to compare with hexOf().
inline QByteArray tight(QByteArray hex)
{
    return hex.replace(' ', "");
}

/// Item n at sample k is n * 0x10000 + k; the status register at 1500 counts samples.
class CountingModel : public kt500sim::DriveModel
{
public:
    void powerOn(kt500sim::RegisterFile &) override { m_samples = 0; }
    void advance(kt500sim::RegisterFile &, std::int64_t samples) override { m_samples += samples; }
    void refreshStatus(kt500sim::RegisterFile &registers) override
    {
        registers.set(1500, static_cast<std::uint16_t>(m_samples));
    }
    void registersWritten(kt500sim::RegisterFile &, int firstOffset, int count) override
    {
        lastWritten = firstOffset;
        lastWrittenCount = count;
    }
    std::int32_t scopeValue(int item) const override
    {
        return item * 0x10000 + static_cast<std::int32_t>(m_samples);
    }
    std::chrono::milliseconds longestRest() const override { return std::chrono::hours(1); }

    int lastWritten = -1;
    int lastWrittenCount = 0;

private:
    std::int64_t m_samples = 0;
};
