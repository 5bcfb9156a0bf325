// SPDX-License-Identifier: GPL-3.0-or-later
#include "simulator/model/offlinerun.h"

#include <algorithm>

namespace kt500sim {

void OfflineRun::start(const IdentificationParameters &parameters)
{
    *this = OfflineRun();
    m_running = true;
    m_slope = parameters.speed / parameters.rampTime;
    m_pause = static_cast<int>(parameters.pause * samplesPerSecond);
    // A triangle covers its peak times the time of one ramp; a stroke of 0 is none at all.
    const double stroke = parameters.turns * 2 * pi;
    m_peak = std::min(parameters.speed, std::sqrt(stroke * m_slope));
    if (m_peak <= 0)
        m_running = false;
}

double OfflineRun::step()
{
    if (!m_running)
        return 0;
    if (m_paused > 0) {
        --m_paused;
        return 0;
    }
    const double peak = m_triangle % 2 == 0 ? m_peak : -m_peak;
    const double speed = m_ramp.step(m_falling ? 0 : peak, m_slope, m_slope);
    if (!m_falling && speed == peak) {
        m_falling = true;
    } else if (m_falling && speed == 0) {
        m_falling = false;
        m_paused = m_pause;
        m_running = ++m_triangle < triangles;
    }
    return speed;
}

} // namespace kt500sim
