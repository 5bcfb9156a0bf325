// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/applanguage.h"

#include "settings/settingskeys.h"

#include <QLocale>
#include <QMutex>
#include <QSettings>

namespace {

struct HeldLanguage
{
    QMutex mutex;
    QString text; // guarded by the mutex; empty: none
};

HeldLanguage &heldLanguage()
{
    static HeldLanguage held;
    return held;
}

} // namespace

void holdLanguage(const QString &language)
{
    HeldLanguage &held = heldLanguage();
    const QMutexLocker locker(&held.mutex);
    held.text = language;
}

QString configuredLanguage()
{
    HeldLanguage &held = heldLanguage();
    const QMutexLocker locker(&held.mutex);
    if (!held.text.isEmpty())
        return held.text;
    QSettings settings(settingsFile, QSettings::IniFormat);
    settings.beginGroup(settingskey::language);
    return settings.value(settingskey::language, QLocale::system().name()).toString();
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
    {
        HeldLanguage &held = heldLanguage();
        const QMutexLocker locker(&held.mutex);
        if (!held.text.isEmpty())
            held.text = language;
    }
    QSettings settings(settingsFile, QSettings::IniFormat);
    settings.beginGroup(settingskey::language);
    settings.setValue(settingskey::language, language);
}
