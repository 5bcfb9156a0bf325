// SPDX-License-Identifier: GPL-3.0-or-later
#include "simulator/model/statusvalues.h"

#include "simulator/model/units.h"
#include "simulator/registertable.h"

#include <array>

namespace kt500sim {
namespace {

using Getter = std::int32_t (*)(const DriveState &s);

struct StatusRow
{
    int number; ///< the two digits of the code Pn-Fxx
    Getter get;
    bool wide = false; ///< takes two registers
};

struct ItemRow
{
    int item;
    Getter get;
};

constexpr int statusCount = registerSpace - statusStart;
constexpr double batteryVoltage = 3.6;

/// Wraps like the counters of the drive do.
std::int32_t cut(double value)
{
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(nearest(value)));
}

std::int32_t cut(std::int64_t value)
{
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(value));
}

std::int32_t percent(double share)
{
    return cut(share * 100);
}

std::int64_t turns(std::int64_t counts)
{
    return counts >= 0 ? counts / countsPerTurn : -((countsPerTurn - 1 - counts) / countsPerTurn);
}

std::int32_t zero(const DriveState &)
{
    return 0;
}

std::int32_t allCounts(const DriveState &s)
{
    return cut(s.counts);
}

// Numbers that are not listed are zero: nothing is wired to analog, pulse and second encoder inputs, and the
// encoder makes no errors.
constexpr StatusRow statusRows[] = {
    {0, [](const DriveState &s) { return cut(rpm(s.speed)); }},
    {1, [](const DriveState &s) { return cut(rpm(s.speedCommand)); }},
    {3, [](const DriveState &s) { return percent(s.torqueCommandShare); }},
    {5, [](const DriveState &s) { return percent(s.averageTorque); }},
    {6, [](const DriveState &s) { return percent(s.peakTorque); }},
    {7, zero, true},
    {9, zero, true},
    {11, allCounts, true},
    {13, [](const DriveState &s) { return cut(s.userDeviation); }, true},
    {15, [](const DriveState &s) { return cut(s.userPosition); }, true},
    {17, [](const DriveState &s) { return cut(turns(s.counts)); }},
    {18, [](const DriveState &s) { return cut(s.counts - turns(s.counts) * countsPerTurn); }, true},
    {20, allCounts, true},
    {22, [](const DriveState &s) { return cut(std::fabs(s.quadratureCurrent) * 100); }}, // 0.01 A
    {23, [](const DriveState &s) { return cut(s.busVoltage * 10); }},                    // 0.1 V
    {24, [](const DriveState &s) { return cut(s.temperature * 10); }},                   // 0.1 degrees
    {25, [](const DriveState &s) { return std::int32_t{s.inputs}; }},
    {26, [](const DriveState &s) { return std::int32_t{s.outputs}; }},
    {27, [](const DriveState &s) { return std::int32_t{s.warning}; }},
    {28, [](const DriveState &s) { return std::int32_t{s.fault}; }},
    {29, [](const DriveState &s) { return cut(std::floor(s.hours * 100)); }, true}, // 0.01 h
    {32, [](const DriveState &s) { return percent(s.averageLoad); }},
    {33, [](const DriveState &s) { return percent(s.resistorLoad); }},
    {34, [](const DriveState &) { return cut(batteryVoltage * 10); }}, // 0.1 V
    {36, [](const DriveState &s) { return cut(s.resonance1); }},
    {37, [](const DriveState &s) { return cut(s.resonance2); }},
    {38, [](const DriveState &s) { return cut(s.resonance3); }},
    {40, zero, true},
    {42, zero, true},
    {44, zero, true},
    {53, zero, true},
    {55, [](const DriveState &s) { return cut(s.positionTarget); }},          // its low word
    {56, [](const DriveState &s) { return cut(s.positionGain * 10); }},       // 0.1 1/s
    {57, [](const DriveState &s) { return cut(s.speedGain * 10); }},          // 0.1 Hz
    {58, [](const DriveState &s) { return cut(s.integralTime * 1e4); }},      // 0.1 ms
    {59, [](const DriveState &s) { return cut(s.loadInertia * 1e6); }},       // 0.01 kg cm2
    {60, [](const DriveState &s) { return cut(s.identifiedInertia * 100); }}, // 0.01
    {62, [](const DriveState &s) { return percent(s.overload); }},
    {63, [](const DriveState &s) { return cut(rpm(s.feedbackSpeed)); }, true},
    {65, zero, true},
    {67, [](const DriveState &s) { return cut(s.directCurrent * 100); }, true}, // 0.01 A
    {69, [](const DriveState &s) { return cut(s.quadratureCommand * 100); }},
    {73, zero, true},
    {80, allCounts}, // the low word
    {81, zero, true},
    {85, [](const DriveState &s) { return cut(s.outputVoltage); }},
};

// The items that show a register, by item number; 0 for the items of the loops, which follow.
constexpr std::array<int, scopeItemCount> itemOffsets{
    1500, 1501, 1502, 1503, 1504, 1505, 1506, 1507, 1509, 1511, 1513, 1515, 1517, 1518, 1520, 1522, 1523,
    1524, 1525, 1526, 1527, 1528, 1529, 1530, 1531, 1532, 1533, 1534, 1535, 1536, 1537, 1538, 1539, 1540,
    1542, 1544, 1546, 1550, 1550, 1552, 0,    0,    0,    0,    0,    0,    0,    0,    0,    1581};

constexpr ItemRow itemRows[] = {
    {40, [](const DriveState &s) { return cut(s.positionTarget); }},
    {41, [](const DriveState &s) { return cut(s.positionCommand); }},
    {42, allCounts},
    {43, [](const DriveState &s) { return cut(rpm(s.speedCommand)); }},
    {44, [](const DriveState &s) { return cut(rpm(s.feedbackSpeed)); }},
    {46, [](const DriveState &s) { return cut(s.directCurrent * 100); }}, // 0.01 A; 45, its command, is zero
    {47, [](const DriveState &s) { return cut(s.quadratureCommand * 100); }},
    {48, [](const DriveState &s) { return cut(s.quadratureCurrent * 100); }},
};

template <std::size_t N>
using Getters = std::array<Getter, N>;

constexpr Getters<statusCount> makeStatusGetters()
{
    Getters<statusCount> getters{};
    for (std::size_t i = 0; i < getters.size(); ++i)
        getters[i] = zero;
    for (const StatusRow &row : statusRows)
        getters[static_cast<std::size_t>(row.number)] = row.get;
    return getters;
}

constexpr Getters<statusCount> statusGetters = makeStatusGetters();

constexpr Getters<scopeItemCount> makeItemGetters()
{
    Getters<scopeItemCount> getters{};
    for (std::size_t i = 0; i < getters.size(); ++i)
        getters[i] = itemOffsets[i] == 0
                         ? zero
                         : statusGetters[static_cast<std::size_t>(itemOffsets[i] - statusStart)];
    for (const ItemRow &row : itemRows)
        getters[static_cast<std::size_t>(row.item)] = row.get;
    return getters;
}

constexpr Getters<scopeItemCount> itemGetters = makeItemGetters();

} // namespace

std::int32_t statusValue(const DriveState &state, int offset)
{
    return offset >= statusStart && offset < registerSpace
               ? statusGetters[static_cast<std::size_t>(offset - statusStart)](state)
               : 0;
}

bool isWideStatusValue(int offset)
{
    for (const StatusRow &row : statusRows) {
        if (row.wide && statusStart + row.number == offset)
            return true;
    }
    return false;
}

int offsetOfScopeItem(int item)
{
    const int offset = item >= 0 && item < scopeItemCount ? itemOffsets[static_cast<std::size_t>(item)] : 0;
    return offset == 0 ? -1 : offset;
}

std::int32_t scopeItemValue(const DriveState &state, int item)
{
    return item >= 0 && item < scopeItemCount ? itemGetters[static_cast<std::size_t>(item)](state) : 0;
}

} // namespace kt500sim
