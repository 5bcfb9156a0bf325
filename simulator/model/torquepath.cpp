// SPDX-License-Identifier: GPL-3.0-or-later
#include "simulator/model/torquepath.h"

#include <algorithm>

namespace kt500sim {
namespace {

constexpr double currentLoopBandwidth = 1200; // Hz
constexpr int notchOff = 5000;                // Hz

} // namespace

Biquad notchSection(const NotchSettings &settings)
{
    if (settings.frequency >= notchOff)
        return Biquad();
    return Biquad::notch(settings.frequency, std::max(settings.width, 1) * 0.1,
                         std::min(settings.depth, 100) * 0.01);
}

TorquePath::TorquePath()
{
    m_current.setTimeConstant(1 / (2 * pi * currentLoopBandwidth));
}

void TorquePath::set(const LoopParameters &parameters)
{
    m_filter.setTimeConstant(parameters.torqueFilter);
    m_second.retune(parameters.secondFilterFrequency >= notchOff
                        ? Biquad()
                        : Biquad::lowPass(parameters.secondFilterFrequency, parameters.secondFilterQuality));
    for (int i = 0; i < 4; ++i)
        setNotch(i, parameters.notches[static_cast<std::size_t>(i)]);
}

void TorquePath::setNotch(int index, const NotchSettings &settings)
{
    const auto at = static_cast<std::size_t>(index);
    NotchSettings &present = m_notchSettings[at];
    if (present.frequency == settings.frequency && present.width == settings.width &&
        present.depth == settings.depth)
        return;
    present = settings;
    m_notches[at].retune(notchSection(settings));
}

void TorquePath::reset()
{
    m_filter.reset(0);
    m_second.reset(0);
    for (Biquad &notch : m_notches)
        notch.reset(0);
}

double TorquePath::shape(double torque, const TorqueBounds &bounds)
{
    torque = m_filter.step(torque);
    torque = m_second.step(torque);
    for (Biquad &notch : m_notches)
        torque = notch.step(torque);
    return clampTo(torque, -bounds.negative, bounds.positive);
}

} // namespace kt500sim
