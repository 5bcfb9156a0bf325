// SPDX-License-Identifier: GPL-3.0-or-later
// The names under which the working windows are known on the link: they travel with each request and route
// its reply. Case counts. Constant data; any thread.
#pragma once

#include <QLatin1String>

const QLatin1String editorLinkName("Editor");
const QLatin1String monitorLinkName("Monitor");
const QLatin1String gainTuningLinkName("Gain Tuning");
const QLatin1String trialRunLinkName("Trial Run");
// Travels with the frames of the stream's control, which have no reply to route.
const QLatin1String scopeLinkName("Scope");
