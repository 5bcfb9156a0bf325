// SPDX-License-Identifier: GPL-3.0-or-later
// What it costs on this machine that a thread sleeps. Linux and other POSIX systems; any thread.
#pragma once

struct WakeUpCost
{
    double byThread =
        0; // microseconds from another thread's write to a pipe to the sleeper's next instruction
    double byTimer = 0; // microseconds that a sleep of half a millisecond takes longer than it should
};

// The medians of a thousand sleeps, as long as those between two exchanges.
WakeUpCost wakeUpCost();
