// SPDX-License-Identifier: GPL-3.0-or-later
// A model for tests of the line: every status register and scope item follows a waveform of its own, without
// a motor behind it.
//
// Lives on the thread of the Drive that owns it. All values are closed formulas of the number of samples
// since power-on, so any step costs the same.
#pragma once

#include "simulator/drivemodel.h"

namespace kt500sim {

class SignalModel : public DriveModel
{
public:
    void powerOn(RegisterFile &registers) override;
    void advance(RegisterFile &registers, std::int64_t samples) override;
    void refreshStatus(RegisterFile &registers) override;
    void registersWritten(RegisterFile &registers, int firstOffset, int count) override;
    std::int32_t scopeValue(int item) const override;
    std::chrono::milliseconds longestRest() const override;

    /// The register offset whose value scope item number \a item shows; -1 for an item that is not known.
    static int offsetOfItem(int item);

    /// The present value of the status register at \a offset, in its raw unit; 0 for one that stands still.
    std::int32_t statusValue(int offset) const;

private:
    double seconds() const;
    double encoderPosition() const;

    std::int64_t m_samples = 0; ///< since power-on
};

} // namespace kt500sim
