// SPDX-License-Identifier: GPL-3.0-or-later
#include "scope/scopecolors.h"

#include "settings/settingskeys.h"

#include <QSettings>

namespace {

const QLatin1String backgroundKey("backgroudColor");

QString colorKey(int channel)
{
    return QStringLiteral("color%1").arg(channel + 1);
}

void write(const QString &key, const QString &color)
{
    QSettings settings(settingsFile, QSettings::IniFormat);
    settings.beginGroup(settingskey::scopeColor);
    settings.setValue(key, color);
}

} // namespace

ScopeColors readScopeColors()
{
    ScopeColors colors;
    QSettings settings(settingsFile, QSettings::IniFormat);
    settings.beginGroup(settingskey::scopeColor);
    for (int channel = 0; channel < scopeChannelCount; ++channel) {
        QString &color = colors.channels.at(channel);
        color = settings.value(colorKey(channel), color).toString();
    }
    colors.background = settings.value(backgroundKey, colors.background).toString();
    return colors;
}

void writeScopeColor(int channel, const QString &color)
{
    write(colorKey(channel), color);
}

void writeScopeBackground(const QString &color)
{
    write(backgroundKey, color);
}
