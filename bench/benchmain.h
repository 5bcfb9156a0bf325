// SPDX-License-Identifier: GPL-3.0-or-later
// What the benchmarks have in common: a screenless application in an empty directory of its own. Main thread.
#pragma once

#include <functional>

// Selects the offscreen platform for this process and those it starts, unless the environment names another.
void useNoScreen();

// Runs the benchmark inside a QApplication. Gives main()'s result: 1, with the reason on stderr, if the
// benchmark throws a std::exception.
int runBenchmark(int argc, char *argv[], const std::function<void()> &benchmark);
