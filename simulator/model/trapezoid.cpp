// SPDX-License-Identifier: GPL-3.0-or-later
#include "simulator/model/trapezoid.h"

#include "simulator/model/units.h"

namespace kt500sim {

void Trapezoid::start(double distance, double speed, double acceleration)
{
    *this = Trapezoid();
    speed = std::fabs(speed);
    if (distance == 0 || speed == 0)
        return;
    m_active = true;
    m_distance = distance;
    const double length = std::fabs(distance);
    if (acceleration > 0) {
        speed = std::fmin(speed, std::sqrt(length * acceleration));
        m_rampTime = speed / acceleration;
    }
    // The ramps together cover as much as one ramp's time at full speed.
    m_duration = m_rampTime + length / speed;
    m_speed = distance > 0 ? speed : -speed;
    m_acceleration = distance > 0 ? acceleration : -acceleration;
}

double Trapezoid::wayAt(double time) const
{
    if (time >= m_duration)
        return m_distance;
    if (time < m_rampTime)
        return m_acceleration * time * time / 2;
    const double rest = m_duration - time;
    if (rest < m_rampTime)
        return m_distance - m_acceleration * rest * rest / 2;
    return m_speed * (time - m_rampTime / 2);
}

double Trapezoid::step()
{
    if (!m_active)
        return 0;
    const double time = static_cast<double>(++m_steps) * stepTime;
    const double way = wayAt(time);
    const double moved = way - m_way;
    m_way = way;
    m_active = time < m_duration;
    return moved;
}

} // namespace kt500sim
