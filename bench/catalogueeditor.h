// SPDX-License-Identifier: GPL-3.0-or-later
// A parameter editor that is shown and has read its catalogue, and a wait with a limit. Main thread.
#pragma once

#include <functional>
#include <memory>

class ParameterEditor;

// Runs the event loop until the condition holds; throws std::runtime_error after the limit.
void waitUntil(const std::function<bool()> &condition, const char *what, int limitMs = 10000);

// Shown in a window of the size that the main window gives it, with the catalogue of the settings' language.
std::unique_ptr<ParameterEditor> makeEditor();

// Rows of all pages.
int parameterCount(const ParameterEditor &editor);
