// SPDX-License-Identifier: GPL-3.0-or-later
// The language that the settings file names; it fixes the translations and the catalogue files. Any thread.
#pragma once

#include <QString>

// The language that is held, else the language key of the settings, or the system's locale name where there
// is none.
QString configuredLanguage();

// Holds a language for the rest of this process, whatever other processes write into the settings; an empty
// text lets the settings count again.
void holdLanguage(const QString &language);

// True for exactly the name of Chinese, "zh_CN"; any other text selects English.
bool isChinese(const QString &language);

// "<stem>_zh_CN.xml" or "<stem>_en_US.xml" by the configured language.
QString languageFile(const QString &stem);

// Into the settings; what is held changes with it.
void writeConfiguredLanguage(const QString &language);
