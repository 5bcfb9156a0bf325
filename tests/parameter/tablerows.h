// SPDX-License-Identifier: GPL-3.0-or-later
// Catalogue rows for a parameter table, as the reader delivers them. Main thread.
#pragma once

#include "parameter/parametertable.h"

namespace tablerows {

// A catalogue row as the reader delivers it.
inline QStringList row(const QString &name, const QString &code, const QStringList &flags,
                       const QString &byDefault, const QString &unit, const QString &min, const QString &max)
{
    QStringList values{name, code};
    for (int i = 0; i < 11; ++i)
        values.append(flags.contains(QString::number(i)) ? QString::number(i) : QString());
    return values << byDefault << unit << min << max << QStringLiteral("description");
}

inline const QStringList version = row("CPU VERSION", "Pn-000", {"0"}, "", "", "", "");
inline const QStringList jogSpeed = row("JOG speed value", "Pn-007", {}, "200.0", "0.1rpm", "0.0", "6000.0");
inline const QStringList panel = row("Panel status display", "Pn-003", {"1"}, "", "", "0x000", "0x0199");
inline const QStringList allFlags =
    row("All", "Pn-044", {"0", "1", "2", "3", "4", "5", "6", "7", "8", "9", "10"}, "1", "", "0", "9");
inline const QStringList reserved = row("Reserved", "Pn-002", {}, "0", "", "0", "65535");

enum Column { Star, Square, Dot, Triangle, Hex, Value, Unit, Min, Max, Default, Description };

inline QColor valueColour(const ParameterTable &table, int row)
{
    return table.item(row, Value)->foreground().color();
}

} // namespace tablerows
