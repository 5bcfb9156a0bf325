// SPDX-License-Identifier: GPL-3.0-or-later
// The names under which the working windows are known on the link: they travel with each request and route
// its reply. Case counts. Constant data; any thread.
#pragma once

#include <QLatin1String>

constexpr QLatin1String editorLinkName("Editor");
constexpr QLatin1String monitorLinkName("Monitor");
constexpr QLatin1String gainTuningLinkName("Gain Tuning");
constexpr QLatin1String trialRunLinkName("Trial Run");
// Travels with the frames of the stream's control, which have no reply to route.
constexpr QLatin1String scopeLinkName("Scope");
