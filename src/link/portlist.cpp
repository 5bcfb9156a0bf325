// SPDX-License-Identifier: GPL-3.0-or-later
#include "link/portlist.h"

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

} // namespace

QList<SerialPortEntry> serialPorts()
{
    QList<SerialPortEntry> entries;
    const QList<QSerialPortInfo> infos = QSerialPortInfo::availablePorts();
    for (const QSerialPortInfo &info : infos)
        entries.append(entryOf(info));
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
