// SPDX-License-Identifier: GPL-3.0-or-later
// Which section of a multi-segment run is at work: once to the last, over and over, or as the inputs choose.
//
// Lives on the thread of the Drive that owns the model.
#pragma once

#include "simulator/model/digitalinputs.h"

namespace kt500sim {

class SectionRunner
{
public:
    enum Mode { Once, Cyclic, ByInputs };

    void start() { m_section = 0, m_runs = true; }
    void start(int section) { m_section = section, m_runs = true; }
    void stop() { m_runs = false; }
    bool runs() const { return m_runs; }
    int section() const { return m_section; }

    /// The present section has ended: goes on to the next, or stops.
    void next(int mode, int lastSection)
    {
        if (mode == ByInputs) {
            m_runs = false;
        } else if (m_section + 1 < lastSection) {
            ++m_section;
        } else {
            m_section = 0;
            m_runs = mode == Cyclic;
        }
    }

    /// The section that the inputs choose, from 0.
    static int chosen(const DigitalInputs &inputs)
    {
        return (inputs.isOn(DigitalInput::Section4) ? 8 : 0) + (inputs.isOn(DigitalInput::Section3) ? 4 : 0) +
               (inputs.isOn(DigitalInput::Section2) ? 2 : 0) + (inputs.isOn(DigitalInput::Section1) ? 1 : 0);
    }

private:
    int m_section = 0;
    bool m_runs = false;
};

} // namespace kt500sim
