// SPDX-License-Identifier: GPL-3.0-or-later
// The settings file and the groups and keys that more than one place reads or writes. Nobody keeps a
// QSettings open: each makes its own at the moment of use. Constant data; any thread.
#pragma once

#include <QLatin1String>

// Relative to the working directory.
const QLatin1String settingsFile("settings.ini");

namespace settingskey {

const QLatin1String geometry("geometry");
const QLatin1String language("Language");           // group and key
const QLatin1String splitterSizes("splitterSizes"); // group and key
const QLatin1String needSetYaxis("NeedSetYaxis");   // group and key
const QLatin1String scopeColor("ScopeColor");       // group
const QLatin1String savePath("SavePath");           // group
const QLatin1String openFilePath("openFilePath");
const QLatin1String saveFilePath("saveFilePath");
const QLatin1String savePixmapPath("savePixmapPath");

} // namespace settingskey
