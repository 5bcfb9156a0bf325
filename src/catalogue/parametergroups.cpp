// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/parametergroups.h"

#include <QCoreApplication>

#include <array>

namespace {

struct Group
{
    const char *name;
    const char *label;
};

constexpr const char *labelContext = "ParameterGroups";

constexpr std::array<Group, parameterGroupCount> groups{{
    {"Basic parameters", QT_TRANSLATE_NOOP("ParameterGroups", "  -Pn-0XX Basic parameters")},
    {"Basic control parameter", QT_TRANSLATE_NOOP("ParameterGroups", "  -Pn-1XX Basic control parameters")},
    {"DI/DO parameters", QT_TRANSLATE_NOOP("ParameterGroups", "  -Pn-2XX DI/DO parameters")},
    {"Position Control", QT_TRANSLATE_NOOP("ParameterGroups", "  -Pn-3XX Position Control parameters")},
    {"Speed control parameters", QT_TRANSLATE_NOOP("ParameterGroups", "  -Pn-4XX Speed control parameters")},
    {"Torque control parameters",
     QT_TRANSLATE_NOOP("ParameterGroups", "  -Pn-5XX Torque control parameters")},
    {"Gain class parameters", QT_TRANSLATE_NOOP("ParameterGroups", "  -Pn-6XX Gain class parameters")},
    {"Full closed loop function",
     QT_TRANSLATE_NOOP("ParameterGroups", "  -Pn-7XX Full closed loop function parameters")},
    {"Failure and protection",
     QT_TRANSLATE_NOOP("ParameterGroups", "  -Pn-8XX Failure and protection parameters")},
    {"Communication parameter", QT_TRANSLATE_NOOP("ParameterGroups", "  -Pn-9XX Communication parameters")},
    {"Multi-segment displacement group parameter",
     QT_TRANSLATE_NOOP("ParameterGroups", "  -Pn-AXX Multi-segment displacement group parameters")},
    {"Multi-segment speed group parameter",
     QT_TRANSLATE_NOOP("ParameterGroups", "  -Pn-BXX Multi-segment speed group parameters")},
}};

} // namespace

int parameterGroupIndex(const QString &name)
{
    for (int i = 0; i < parameterGroupCount; ++i) {
        if (name == QLatin1String(groups.at(i).name))
            return i;
    }
    return -1;
}

QString parameterGroupLabel(int index)
{
    return QCoreApplication::translate(labelContext, groups.at(index).label);
}
