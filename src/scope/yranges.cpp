// SPDX-License-Identifier: GPL-3.0-or-later
#include "scope/yranges.h"

#include "settings/settingskeys.h"

#include <QSettings>

namespace {

QString rangeKey(int channel, const char *end)
{
    return QStringLiteral("%1/Channel%2%3").arg(settingskey::needSetYaxis).arg(channel + 1).arg(end);
}

} // namespace

bool areYRangesKept()
{
    const QString key = QStringLiteral("%1/%2").arg(settingskey::needSetYaxis, settingskey::needSetYaxis);
    return QSettings(settingsFile, QSettings::IniFormat).value(key).toBool();
}

void storeYRanges(const PlotSettings &settings)
{
    QSettings file(settingsFile, QSettings::IniFormat);
    for (int c = 0; c < plotChannels; ++c) {
        file.setValue(rangeKey(c, "Max"), settings.maxY[c]);
        file.setValue(rangeKey(c, "Min"), settings.minY[c]);
    }
}

PlotSettings storedYRanges()
{
    const QSettings file(settingsFile, QSettings::IniFormat);
    PlotSettings settings;
    for (int c = 0; c < plotChannels; ++c) {
        settings.maxY[c] = file.value(rangeKey(c, "Max"), settings.maxY[c]).toDouble();
        settings.minY[c] = file.value(rangeKey(c, "Min"), settings.minY[c]).toDouble();
    }
    return settings;
}
