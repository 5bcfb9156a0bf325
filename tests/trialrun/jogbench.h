// SPDX-License-Identifier: GPL-3.0-or-later
// A trial run whose servo is on and whose looks at the position are answered by hand. Main thread.
#pragma once

#include "trialbench.h"

namespace jogbench {

inline void servoOn(TrialBench &bench)
{
    bench.peer.held = true;
    TrialRunDriver::click(bench.drive().servoOn());
    bench.window->handleTrialRun(panel("0001"));
}

// Answers the look that is outstanding.
inline void tellPosition(TrialBench &bench, const char *hex)
{
    bench.window->handleTrialRun(wire::readReply(wire::bytes(hex)));
}

} // namespace jogbench
