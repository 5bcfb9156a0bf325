// SPDX-License-Identifier: GPL-3.0-or-later
// The way of the torque command from the speed loop to the shaft: filters, notches, and the lag of the
// current loop.
//
// Lives on the thread of the Drive that owns the model.
#pragma once

#include "simulator/model/filters.h"
#include "simulator/model/parameters.h"
#include "simulator/model/velocityloop.h"

namespace kt500sim {

class TorquePath
{
public:
    TorquePath();

    void set(const LoopParameters &parameters);
    void setNotch(int index, const NotchSettings &settings);
    void reset();

    /// The torque command, filtered and within \a bounds.
    double shape(double torque, const TorqueBounds &bounds);
    /// The torque that the current loop makes of it (Nm).
    double drive(double command) { return m_current.step(command); }
    double torque() const { return m_current.value(); }

private:
    LowPass m_filter;
    Biquad m_second;
    std::array<Biquad, 4> m_notches;
    std::array<NotchSettings, 4> m_notchSettings{};
    LowPass m_current;
};

/// The section of a notch: grades of width count tenths of the frequency, grades of depth hundredths of gain.
Biquad notchSection(const NotchSettings &settings);

} // namespace kt500sim
