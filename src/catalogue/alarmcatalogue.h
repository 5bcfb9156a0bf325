// SPDX-License-Identifier: GPL-3.0-or-later
// The drive's warnings and faults in words: AlarmError_*.xml. Pure functions; any thread.
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

// Rows of code, name, cause and corrective.
struct AlarmCatalogue
{
    QList<QStringList> alarms;
    QList<QStringList> faults;
};

// An error of the XML ends the read after the rows before it.
AlarmCatalogue readAlarmCatalogue(const QByteArray &xml);

// Code of a number that the drive reports: 1 is AL-001, and 100 AL-0100, which no row has.
QString alarmCode(int number);
QString faultCode(int number);
