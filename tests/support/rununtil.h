// SPDX-License-Identifier: GPL-3.0-or-later
// Waits as an application does, in an event loop: QTest's waits sleep between two looks at the events, which
// makes a transfer of two thousand replies last twenty seconds.
// Main thread.
#pragma once

#include <functional>

// Runs events until the condition holds; false if it does not within the limit (ms).
bool runUntil(const std::function<bool()> &condition, int limit);
