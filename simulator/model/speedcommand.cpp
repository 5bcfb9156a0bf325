// SPDX-License-Identifier: GPL-3.0-or-later
#include "simulator/model/speedcommand.h"

#include "simulator/model/units.h"

namespace kt500sim {
namespace {

enum Source { Analog, Internal, Sections };

double permitted(double speed, const Prohibited &prohibited)
{
    if ((prohibited.forward && speed > 0) || (prohibited.reverse && speed < 0))
        return 0;
    return speed;
}

} // namespace

void SpeedCommand::set(const SpeedParameters &parameters)
{
    if (parameters.source != m_parameters.source || parameters.sectionMode != m_parameters.sectionMode)
        m_sectionsStarted = false;
    m_parameters = parameters;
    m_smoothing.setLength(static_cast<int>(nearest(parameters.smoothing * samplesPerSecond)));
    m_filter.setTimeConstant(parameters.filter);
}

void SpeedCommand::follow(double speed)
{
    m_ramp.reset(speed);
    m_smoothing.reset(speed);
    m_filter.reset(speed);
    m_sectionsStarted = false;
    m_runner.stop();
    m_target = 0;
}

SpeedCommand::Wish SpeedCommand::internalWish() const
{
    return {m_parameters.command, m_parameters.acceleration, m_parameters.deceleration};
}

SpeedCommand::Wish SpeedCommand::sectionWish(const DigitalInputs &inputs)
{
    const int mode = m_parameters.sectionMode;
    if (mode == SectionRunner::ByInputs)
        m_runner.start(SectionRunner::chosen(inputs));
    else if (!m_sectionsStarted)
        m_runner.start();
    if (!m_sectionsStarted)
        m_held = 0;
    m_sectionsStarted = true;

    const SpeedSection *section = &m_parameters.section[static_cast<std::size_t>(m_runner.section())];
    if (!m_runner.runs())
        return {0, section->acceleration, section->deceleration};
    const double speed = inputs.isOn(DigitalInput::SectionDirection) ? -section->speed : section->speed;
    // A section's time counts from the moment that its speed is reached.
    if (mode != SectionRunner::ByInputs && m_ramp.value() == speed &&
        static_cast<double>(++m_held) >= section->time * samplesPerSecond) {
        m_held = 0;
        m_runner.next(mode, m_parameters.lastSection);
    }
    return {speed, section->acceleration, section->deceleration};
}

double SpeedCommand::clamped(double speed, const DigitalInputs &inputs) const
{
    if (m_parameters.zeroClamp == 0 || !inputs.isOn(DigitalInput::ZeroClamp))
        return speed;
    const bool always = m_parameters.zeroClamp != 3;
    return always || std::fabs(speed) < m_parameters.clampThreshold ? 0 : speed;
}

double SpeedCommand::step(const DigitalInputs &inputs, const Prohibited &prohibited)
{
    Wish wish;
    if (m_parameters.source == Internal)
        wish = internalWish();
    else if (m_parameters.source == Sections)
        wish = sectionWish(inputs);
    if (inputs.isOn(DigitalInput::Reverse))
        wish.speed = -wish.speed;
    m_target = permitted(clamped(wish.speed, inputs), prohibited);
    return m_filter.step(m_smoothing.step(m_ramp.step(m_target, wish.acceleration, wish.deceleration)));
}

double SpeedCommand::stepJog(const JogParameters &jog, const DigitalInputs &inputs,
                             const Prohibited &prohibited)
{
    const bool forward = inputs.isOn(DigitalInput::JogForward);
    const bool reverse = inputs.isOn(DigitalInput::JogReverse);
    m_target = forward == reverse ? 0 : permitted(forward ? jog.speed : -jog.speed, prohibited);
    return m_ramp.step(m_target, jog.acceleration, jog.deceleration);
}

} // namespace kt500sim
