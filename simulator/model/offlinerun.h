// SPDX-License-Identifier: GPL-3.0-or-later
// The run by which the inertia is found offline: triangles of speed, forward and back, within a stroke.
//
// Lives on the thread of the Drive that owns the model.
#pragma once

#include "simulator/model/parameters.h"
#include "simulator/model/ramp.h"

namespace kt500sim {

class OfflineRun
{
public:
    void start(const IdentificationParameters &parameters);
    void stop() { m_running = false; }
    bool isRunning() const { return m_running; }

    /// The speed command of the next sample period, rad/s.
    double step();

private:
    static constexpr int triangles = 8;

    bool m_running = false;
    Ramp m_ramp;
    double m_peak = 0;  ///< rad/s
    double m_slope = 0; ///< rad/s2
    int m_pause = 0;    ///< sample periods between two triangles
    int m_paused = 0;
    int m_triangle = 0;
    bool m_falling = false;
};

} // namespace kt500sim
