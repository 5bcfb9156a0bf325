// SPDX-License-Identifier: GPL-3.0-or-later
#include "simulator/model/positioncommand.h"

#include "simulator/model/units.h"

namespace kt500sim {
namespace {

enum Source { Pulses, Internal, Sections };

} // namespace

void PositionCommand::set(const PositionParameters &parameters, const LoopParameters &loops)
{
    // Another source ends a run of sections; the next one begins with the first.
    if (parameters.source != m_parameters.source || parameters.sectionMode != m_parameters.sectionMode) {
        m_runner.stop();
        m_sectionsStarted = false;
        m_pause = 0;
    }
    m_parameters = parameters;
    m_gear.set(parameters);
    m_average.setLength(static_cast<int>(nearest(loops.positionAverage * samplesPerSecond)));
    m_filter.setTimeConstant(loops.positionFilter);
}

void PositionCommand::follow(double counts)
{
    clearDeviation(counts);
    m_triggered = false;
    m_sectionsStarted = false;
    m_runner.stop();
    m_forwardLimited = false;
    m_reverseLimited = false;
}

void PositionCommand::clearDeviation(double counts)
{
    m_profile.stop();
    m_raw = counts;
    m_target = counts;
    m_exact = counts;
    m_smoothed = counts;
    m_speed = 0;
    m_pause = 0;
    m_blocked = false;
    m_average.reset(counts);
    m_filter.reset(counts);
}

void PositionCommand::noteInputs(const DigitalInputs &inputs)
{
    if (inputs.rose(DigitalInput::Trigger))
        m_triggered = true;
}

void PositionCommand::step(const DigitalInputs &inputs, const Prohibited &prohibited, bool watchesLimits)
{
    m_prohibited = prohibited;
    m_watchesLimits = watchesLimits;
    m_gear.select(inputs);
    if (m_parameters.source == Internal)
        stepInternal();
    else if (m_parameters.source == Sections)
        stepSections(inputs);
    m_triggered = false;

    const bool wasActive = m_profile.isActive();
    m_raw += m_profile.step();
    if (wasActive && !m_profile.isActive())
        m_raw = m_target;
    const double smoothed = m_filter.step(m_average.step(m_raw));
    m_speed = (smoothed - m_smoothed) * samplesPerSecond / countsPerRadian;
    m_smoothed = smoothed;
    m_blocked =
        wasActive && ((prohibited.forward && m_target > m_raw) || (prohibited.reverse && m_target < m_raw));
}

void PositionCommand::stepInternal()
{
    if (!m_triggered)
        return;
    if (!m_profile.isActive() || m_parameters.interruptible)
        move(m_parameters.move, m_parameters.absolute, false, m_profile.isActive());
}

void PositionCommand::stepSections(const DigitalInputs &inputs)
{
    const int mode = m_parameters.sectionMode;
    if (mode == SectionRunner::ByInputs) {
        if (m_triggered && !m_profile.isActive() && m_pause == 0)
            m_runner.start(SectionRunner::chosen(inputs));
    } else if (!m_sectionsStarted || (m_triggered && !m_runner.runs())) {
        // The servo itself is the start: the sections run for as long as it is on.
        m_runner.start();
    }
    m_sectionsStarted = true;
    if (m_pause > 0) {
        --m_pause;
        return;
    }
    if (!m_runner.runs() || m_profile.isActive())
        return;
    const MoveParameters &section = m_parameters.section[static_cast<std::size_t>(m_runner.section())];
    move(section, m_parameters.sectionsAbsolute, inputs.isOn(DigitalInput::SectionDirection), false);
    // Counted from now on: the way and then the pause. A section without a way still takes a moment.
    m_pause = nearest((m_profile.duration() + section.pause) * samplesPerSecond);
    m_runner.next(mode, m_parameters.lastSection);
}

void PositionCommand::move(const MoveParameters &move, bool absolute, bool reversed, bool interrupts)
{
    const double distance = m_gear.toCounts(reversed ? -static_cast<double>(move.distance) : move.distance);
    double target = absolute ? distance : m_exact + distance;
    if (interrupts && !absolute)
        target = m_raw + distance;
    m_forwardLimited = m_watchesLimits && target > m_gear.toCounts(m_parameters.forwardLimit);
    m_reverseLimited = m_watchesLimits && target < m_gear.toCounts(m_parameters.reverseLimit);
    if (m_forwardLimited)
        target = std::fmax(m_raw, m_gear.toCounts(m_parameters.forwardLimit));
    if (m_reverseLimited)
        target = std::fmin(m_raw, m_gear.toCounts(m_parameters.reverseLimit));
    if ((m_prohibited.forward && target > m_raw) || (m_prohibited.reverse && target < m_raw))
        return;
    if (move.speed <= 0)
        return;
    // The next way goes on from the exact place, so that fractions of a count never add up.
    m_exact = target;
    m_target = static_cast<double>(nearest(target));
    m_profile.start(m_target - m_raw, move.speed * countsPerRadian, move.acceleration * countsPerRadian);
}

} // namespace kt500sim
