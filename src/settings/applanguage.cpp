// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/applanguage.h"

#include <QLocale>
#include <QSettings>

const char *const settingsFile = "settings.ini";

namespace {

const QLatin1String languageKey("Language");

} // namespace

QString configuredLanguage()
{
    QSettings settings(QLatin1String(settingsFile), QSettings::IniFormat);
    settings.beginGroup(languageKey);
    return settings.value(languageKey, QLocale::system().name()).toString();
}

bool isChinese(const QString &language)
{
    return language == QLocale(QLocale::Chinese).name();
}

QString languageFile(const QString &stem)
{
    return stem +
           (isChinese(configuredLanguage()) ? QLatin1String("_zh_CN.xml") : QLatin1String("_en_US.xml"));
}

void writeConfiguredLanguage(const QString &language)
{
    QSettings settings(QLatin1String(settingsFile), QSettings::IniFormat);
    settings.beginGroup(languageKey);
    settings.setValue(languageKey, language);
}
