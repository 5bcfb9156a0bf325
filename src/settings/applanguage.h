// SPDX-License-Identifier: GPL-3.0-or-later
// The language that the settings file names; it fixes the translations and the catalogue files. Any thread.
#pragma once

#include <QString>

// The language key of the settings, or the system's locale name where there is none.
QString configuredLanguage();

// True for exactly the name of Chinese, "zh_CN"; any other text selects English.
bool isChinese(const QString &language);

// "<stem>_zh_CN.xml" or "<stem>_en_US.xml" by the configured language.
QString languageFile(const QString &stem);

void writeConfiguredLanguage(const QString &language);
