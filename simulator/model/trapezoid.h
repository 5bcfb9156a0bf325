// SPDX-License-Identifier: GPL-3.0-or-later
// A way from rest to rest with a steady acceleration and a highest speed.
//
// Lives on the thread of the Drive that owns the model. The way is a formula of the time, so that it ends
// where it was told to, whatever the number of steps.
#pragma once

#include <cstdint>

namespace kt500sim {

class Trapezoid
{
public:
    /// \a distance in any unit, \a speed per second, \a acceleration per second squared; an acceleration of 0
    /// is none: the way is run at its speed at once. With no speed the way is never run.
    void start(double distance, double speed, double acceleration);
    /// Ends it where it is.
    void stop() { m_active = false; }
    bool isActive() const { return m_active; }

    /// The way made in the next sample period.
    double step();
    double duration() const { return m_duration; } ///< s

private:
    double wayAt(double time) const;

    bool m_active = false;
    double m_distance = 0;
    double m_speed = 0; ///< reached, of the way's sign like the acceleration
    double m_acceleration = 0;
    double m_rampTime = 0;
    double m_duration = 0;
    double m_way = 0;
    std::int64_t m_steps = 0;
};

} // namespace kt500sim
