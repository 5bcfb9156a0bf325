// SPDX-License-Identifier: GPL-3.0-or-later
// The one list of serial ports: the system's, and those that a program adds (the demo's simulated drive).
// Any thread.
#pragma once

#include <QList>
#include <QString>

struct SerialPortEntry
{
    QString name;         // system name: COM3, ttyUSB0, or an absolute device path
    QString description;  // what the connection dialog shows in front of the name
    QString manufacturer; // empty for an adapter that has gone, as the one-second watch understands it
};

// The system's ports in its order, then the added ones in the order of their adding. A built-in UART, for
// which the system knows neither a manufacturer nor a vendor, is listed under the maker "(Standard port
// types)".
QList<SerialPortEntry> serialPorts();

// Adds an entry; one of the same name is replaced in its place.
void addSerialPort(const SerialPortEntry &entry);

// Removes an added entry; a name that was not added is ignored.
void removeSerialPort(const QString &name);
