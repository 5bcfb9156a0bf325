// SPDX-License-Identifier: GPL-3.0-or-later
#include "simulator/model/inertiaestimator.h"

#include "simulator/model/units.h"

#include <algorithm>

namespace kt500sim {
namespace {

constexpr int samplesPerBlock = 16;
constexpr double blockTime = samplesPerBlock * stepTime;
constexpr double leastAcceleration = 60; // rad/s2; less tells about friction alone
constexpr double leastSpeed = 1;         // rad/s; below, the direction of friction is uncertain
constexpr double speedScale = 100;       // rad/s
constexpr double accelerationScale = 1000;
constexpr double firstSpread = 100;

} // namespace

void InertiaEstimator::setMode(int mode)
{
    constexpr std::array<double, 4> forgetting{1, 0.9995, 0.998, 0.992};
    m_forgetting = forgetting[static_cast<std::size_t>(std::clamp(mode, 0, 3))];
}

void InertiaEstimator::reset(double inertia)
{
    m_fit = {inertia / inertiaScale, 0, 0};
    for (std::size_t i = 0; i < 3; ++i) {
        m_spread[i].fill(0);
        m_spread[i][i] = firstSpread;
    }
    m_evidence = 0;
    interrupt();
}

void InertiaEstimator::step(std::int64_t counts, double torque)
{
    if (m_samples == 0)
        m_blockStart = counts;
    m_torqueSum += torque;
    if (++m_samples <= samplesPerBlock)
        return;
    const double speed = static_cast<double>(counts - m_blockStart) / countsPerRadian / blockTime;
    takeBlock(speed, (m_torqueSum - torque) / samplesPerBlock);
    m_blockStart = counts;
    m_torqueSum = torque;
    m_samples = 1;
}

void InertiaEstimator::takeBlock(double speed, double torque)
{
    const double acceleration = (speed - m_lastSpeed) / blockTime;
    const double meanTorque = (torque + m_lastTorque) / 2;
    const double meanSpeed = (speed + m_lastSpeed) / 2;
    const bool sameDirection = speed * m_lastSpeed > 0;
    m_lastSpeed = speed;
    m_lastTorque = torque;
    if (++m_blocks < 2 || !sameDirection || std::fabs(meanSpeed) < leastSpeed ||
        std::fabs(acceleration) < leastAcceleration)
        return;
    ++m_evidence;
    fit({acceleration / accelerationScale, meanSpeed / speedScale, meanSpeed > 0 ? 1.0 : -1.0}, meanTorque);
}

void InertiaEstimator::fit(const std::array<double, 3> &input, double torque)
{
    std::array<double, 3> weighted{};
    double scale = m_forgetting;
    double error = torque;
    for (std::size_t i = 0; i < 3; ++i) {
        for (std::size_t j = 0; j < 3; ++j)
            weighted[i] += m_spread[i][j] * input[j];
        scale += input[i] * weighted[i];
        error -= input[i] * m_fit[i];
    }
    for (std::size_t i = 0; i < 3; ++i) {
        m_fit[i] += weighted[i] / scale * error;
        for (std::size_t j = 0; j < 3; ++j)
            m_spread[i][j] = (m_spread[i][j] - weighted[i] * weighted[j] / scale) / m_forgetting;
    }
    // What the motion does not tell about would otherwise grow without end while the rest is forgotten.
    for (std::size_t i = 0; i < 3; ++i)
        m_spread[i][i] = std::min(m_spread[i][i], firstSpread);
}

} // namespace kt500sim
