// SPDX-License-Identifier: GPL-3.0-or-later
// The flat catalogue of what the drive reports of itself: ParameterMonitor_*.xml. Pure function; any thread.
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

struct MonitorItem
{
    QString name;
    QString code;
    QString unit;
};

// All rows of the text in order. An error of the XML ends the read after the rows before it.
QList<MonitorItem> readMonitorItems(const QByteArray &xml);
