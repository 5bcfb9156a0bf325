// SPDX-License-Identifier: GPL-3.0-or-later
#include "link/portlist.h"

#include "link/portstamp.h"

#include <QByteArray>
#include <QSerialPortInfo>

#include <algorithm>
#include <mutex>

namespace {

struct AddedPorts
{
    std::mutex mutex;
    QList<SerialPortEntry> entries;
};

AddedPorts &addedPorts()
{
    static AddedPorts ports;
    return ports;
}

SerialPortEntry entryOf(const QSerialPortInfo &info)
{
    SerialPortEntry entry{info.portName(), info.description(), info.manufacturer()};
    if (entry.manufacturer.isEmpty() && !info.hasVendorIdentifier())
        entry.manufacturer = QStringLiteral("(Standard port types)");
    return entry;
}

// What the system listed last, and the stamp that its ports had before.
struct SystemPorts
{
    std::mutex mutex;
    QByteArray stamp;
    QList<SerialPortEntry> entries;
};

QList<SerialPortEntry> systemPorts()
{
    static SystemPorts known;
    const QByteArray stamp = portStamp();
    const std::lock_guard<std::mutex> lock(known.mutex);
    if (!stamp.isEmpty() && stamp == known.stamp)
        return known.entries;
    known.stamp = stamp;
    known.entries.clear();
    const QList<QSerialPortInfo> infos = QSerialPortInfo::availablePorts();
    for (const QSerialPortInfo &info : infos)
        known.entries.append(entryOf(info));
    return known.entries;
}

} // namespace

QList<SerialPortEntry> serialPorts()
{
    const QList<SerialPortEntry> entries = systemPorts();
    AddedPorts &added = addedPorts();
    const std::lock_guard<std::mutex> lock(added.mutex);
    return entries + added.entries;
}

void addSerialPort(const SerialPortEntry &entry)
{
    AddedPorts &added = addedPorts();
    const std::lock_guard<std::mutex> lock(added.mutex);
    const auto same = std::find_if(added.entries.begin(), added.entries.end(),
                                   [&entry](const SerialPortEntry &e) { return e.name == entry.name; });
    if (same == added.entries.end())
        added.entries.append(entry);
    else
        *same = entry;
}

void removeSerialPort(const QString &name)
{
    AddedPorts &added = addedPorts();
    const std::lock_guard<std::mutex> lock(added.mutex);
    const auto gone = std::remove_if(added.entries.begin(), added.entries.end(),
                                     [&name](const SerialPortEntry &e) { return e.name == name; });
    added.entries.erase(gone, added.entries.end());
}
