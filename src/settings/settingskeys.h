// SPDX-License-Identifier: GPL-3.0-or-later
// The settings file and the groups and keys that more than one place reads or writes. Nobody keeps a
// QSettings open: each makes its own at the moment of use. Constant data; any thread.
#pragma once

#include <QLatin1String>

// Relative to the working directory.
constexpr QLatin1String settingsFile("settings.ini");

namespace settingskey {

constexpr QLatin1String geometry("geometry");
constexpr QLatin1String language("Language");           // group and key
constexpr QLatin1String splitterSizes("splitterSizes"); // group and key
constexpr QLatin1String needSetYaxis("NeedSetYaxis");   // group and key
constexpr QLatin1String scopeColor("ScopeColor");       // group
constexpr QLatin1String savePath("SavePath");           // group
constexpr QLatin1String openFilePath("openFilePath");
constexpr QLatin1String saveFilePath("saveFilePath");
constexpr QLatin1String savePixmapPath("savePixmapPath");

} // namespace settingskey
