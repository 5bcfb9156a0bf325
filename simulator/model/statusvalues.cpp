// SPDX-License-Identifier: GPL-3.0-or-later
#include "simulator/model/statusvalues.h"

#include "simulator/model/units.h"

#include <array>

namespace kt500sim {
namespace {

// The registers that the scope items show, by item number; -1 for the items of the loops.
constexpr std::array<int, scopeItemCount> itemOffsets{
    1500, 1501, 1502, 1503, 1504, 1505, 1506, 1507, 1509, 1511, 1513, 1515, 1517, 1518, 1520, 1522, 1523,
    1524, 1525, 1526, 1527, 1528, 1529, 1530, 1531, 1532, 1533, 1534, 1535, 1536, 1537, 1538, 1539, 1540,
    1542, 1544, 1546, 1550, 1550, 1552, -1,   -1,   -1,   -1,   -1,   -1,   -1,   -1,   -1,   1581};

constexpr std::array<int, 17> wideOffsets{1507, 1509, 1511, 1513, 1515, 1518, 1520, 1529, 1540,
                                          1542, 1544, 1553, 1563, 1565, 1567, 1573, 1581};

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

std::int64_t turns(std::int64_t counts)
{
    return counts >= 0 ? counts / countsPerTurn : -((countsPerTurn - 1 - counts) / countsPerTurn);
}

std::int32_t percent(double share)
{
    return cut(share * 100);
}

} // namespace

std::int32_t statusValue(const DriveState &s, int offset)
{
    switch (offset - statusStart) {
    case 0:
        return cut(rpm(s.speed));
    case 1:
        return cut(rpm(s.speedCommand));
    case 3:
        return percent(s.torqueCommandShare);
    case 5:
        return percent(s.averageTorque);
    case 6:
        return percent(s.peakTorque);
    case 11: // all the way of the encoder
    case 20:
        return cut(s.counts);
    case 13:
        return cut(s.userDeviation);
    case 15:
        return cut(s.userPosition);
    case 17:
        return cut(turns(s.counts));
    case 18:
        return cut(s.counts - turns(s.counts) * countsPerTurn);
    case 22: // 0.01 A
        return cut(std::fabs(s.quadratureCurrent) * 100);
    case 23: // 0.1 V
        return cut(s.busVoltage * 10);
    case 24: // 0.1 degrees
        return cut(s.temperature * 10);
    case 25:
        return s.inputs;
    case 26:
        return s.outputs;
    case 27:
        return s.warning;
    case 28:
        return s.fault;
    case 29: // 0.01 h
        return cut(std::floor(s.hours * 100));
    case 32:
        return percent(s.averageLoad);
    case 33:
        return percent(s.resistorLoad);
    case 34: // 0.1 V
        return cut(batteryVoltage * 10);
    case 36:
        return cut(s.resonance1);
    case 37:
        return cut(s.resonance2);
    case 38:
        return cut(s.resonance3);
    case 55: // low word of where the command ends
        return cut(s.positionTarget);
    case 56: // 0.1 1/s
        return cut(s.positionGain * 10);
    case 57: // 0.1 Hz
        return cut(s.speedGain * 10);
    case 58: // 0.1 ms
        return cut(s.integralTime * 1e4);
    case 59: // 0.01 kg cm2
        return cut(s.loadInertia * 1e6);
    case 60: // 0.01
        return cut(s.identifiedInertia * 100);
    case 62:
        return percent(s.overload);
    case 63:
        return cut(rpm(s.feedbackSpeed));
    case 67: // 0.01 A
        return cut(s.directCurrent * 100);
    case 69:
        return cut(s.quadratureCommand * 100);
    case 80: // low word
        return cut(s.counts);
    case 85:
        return cut(s.outputVoltage);
    default:
        return 0;
    }
}

bool isWideStatusValue(int offset)
{
    for (const int wide : wideOffsets) {
        if (wide == offset)
            return true;
    }
    return false;
}

int offsetOfScopeItem(int item)
{
    return item >= 0 && item < scopeItemCount ? itemOffsets[static_cast<std::size_t>(item)] : -1;
}

std::int32_t scopeItemValue(const DriveState &s, int item)
{
    switch (item) {
    case 40:
        return cut(s.positionTarget);
    case 41:
        return cut(s.positionCommand);
    case 42:
        return cut(s.counts);
    case 43:
        return cut(rpm(s.speedCommand));
    case 44:
        return cut(rpm(s.feedbackSpeed));
    case 46: // 0.01 A; the command of the direct axis, item 45, is zero
        return cut(s.directCurrent * 100);
    case 47:
        return cut(s.quadratureCommand * 100);
    case 48:
        return cut(s.quadratureCurrent * 100);
    default:
        break;
    }
    const int offset = offsetOfScopeItem(item);
    return offset < 0 ? 0 : statusValue(s, offset);
}

} // namespace kt500sim
