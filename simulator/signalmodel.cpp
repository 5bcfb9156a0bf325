// SPDX-License-Identifier: GPL-3.0-or-later
#include "simulator/signalmodel.h"

#include <array>
#include <cmath>

namespace kt500sim {
namespace {

constexpr double pi = 3.14159265358979323846;
constexpr double encoderResolution = 131072; // pulses per revolution

// Speed as a sine of this height and frequency about a slow drift; the position below is its integral.
constexpr double speedAmplitude = 1500;  // rpm
constexpr double speedDrift = 30;        // rpm
constexpr double speedFrequency = 2;     // Hz
constexpr int runningHoursAtStart = 123; // what this drive had behind it before it was switched on

// Scope items by number, each the offset of the status register that it shows. Items past the end have no
// register and get a plain test sine.
constexpr std::array<int, 33> itemOffsets{1500, 1501, 1502, 1503, 1504, 1505, 1506, 1507, 1509, 1511, 1513,
                                          1515, 1517, 1518, 1520, 1522, 1523, 1524, 1525, 1526, 1527, 1528,
                                          1529, 1530, 1531, 1532, 1533, 1534, 1535, 1536, 1537, 1538, 1539};
constexpr int itemCount = 64;

// The values of the status area that take two registers.
constexpr std::array<int, 17> wideStatus{1507, 1509, 1511, 1513, 1515, 1518, 1520, 1529, 1540,
                                         1542, 1544, 1553, 1563, 1565, 1567, 1573, 1581};

bool isWideStatus(int offset)
{
    for (const int wide : wideStatus) {
        if (wide == offset)
            return true;
    }
    return false;
}

std::int32_t rounded(double value)
{
    return static_cast<std::int32_t>(std::lround(value));
}

/// Wraps like the 32-bit counters of the drive do.
std::int32_t wrapped(double value)
{
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(std::llround(value)));
}

double sine(double seconds, double frequency)
{
    return std::sin(2 * pi * frequency * seconds);
}

/// Between -1 and 1, rising first.
double triangle(double seconds, double frequency)
{
    const double phase = seconds * frequency + 0.25;
    return 1 - 4 * std::fabs(phase - std::floor(phase) - 0.5);
}

/// Between -1 and 1, the same at every run for the same sample: pictures and tests can be repeated.
double noise(std::int64_t sample, std::uint32_t seed)
{
    std::uint32_t bits = static_cast<std::uint32_t>(sample) * 2654435761u + seed * 40503u;
    bits ^= bits >> 15;
    bits *= 2246822519u;
    bits ^= bits >> 13;
    return static_cast<double>(bits & 0xffffu) / 32767.5 - 1;
}

} // namespace

void SignalModel::powerOn(RegisterFile &registers)
{
    m_samples = 0;
    refreshStatus(registers);
}

void SignalModel::advance(RegisterFile &, std::int64_t samples)
{
    m_samples += samples;
}

void SignalModel::refreshStatus(RegisterFile &registers)
{
    for (int offset = statusStart; offset < registerSpace; ++offset) {
        const std::int32_t value = statusValue(offset);
        if (isWideStatus(offset)) {
            registers.setPair(offset, value);
            ++offset;
        } else {
            registers.set(offset, static_cast<std::uint16_t>(value));
        }
    }
}

void SignalModel::registersWritten(RegisterFile &, int, int) {}

std::int32_t SignalModel::scopeValue(int item) const
{
    const int offset = offsetOfItem(item);
    if (offset >= 0)
        return statusValue(offset);
    if (item < 0 || item >= itemCount)
        return 0;
    return rounded(1000 * sine(seconds(), 5.0 * item));
}

std::chrono::milliseconds SignalModel::longestRest() const
{
    return std::chrono::hours(1);
}

int SignalModel::offsetOfItem(int item)
{
    return item >= 0 && item < static_cast<int>(itemOffsets.size())
               ? itemOffsets[static_cast<std::size_t>(item)]
               : -1;
}

std::int32_t SignalModel::statusValue(int offset) const
{
    const double t = seconds();
    switch (offset - statusStart) {
    case 0: // motor speed, rpm
        return rounded(speedAmplitude * sine(t, speedFrequency) + speedDrift + 3 * noise(m_samples, 0));
    case 1: // speed command, rpm
        return rounded(speedAmplitude * sine(t + 0.004, speedFrequency) + speedDrift);
    case 2: // speed analog command, 0.01 V
        return rounded(500 * triangle(t, 1));
    case 3: // torque command, %
        return rounded(80 * sine(t + 0.125, speedFrequency) + 4 * sine(t, 180) + 2 * noise(m_samples, 3));
    case 4: // torque analog command, 0.01 V
        return rounded(300 * triangle(t, 3));
    case 5: // average torque, %
        return rounded(51 + 2 * sine(t, 0.05));
    case 6: // peak torque, %
        return 86;
    case 7: // pulse input before the gear ratio
        return wrapped(20000 * t);
    case 9: // pulse input after the gear ratio
        return wrapped(40000 * t);
    case 11: // encoder feedback, pulses
    case 15: // absolute position, user units
    case 20: // absolute position, pulses
        return wrapped(encoderPosition());
    case 13: // position deviation, pulses
        return rounded(600 * sine(t + 0.01, speedFrequency) + 5 * noise(m_samples, 13));
    case 17: // turns
        return rounded(std::floor(encoderPosition() / encoderResolution));
    case 18: // position within the turn, pulses
        return rounded(std::floor(encoderPosition() -
                                  encoderResolution * std::floor(encoderPosition() / encoderResolution)));
    case 22: // motor current, 0.01 A
        return rounded(std::fabs(320 * sine(t + 0.125, speedFrequency)) + 12 + 6 * noise(m_samples, 22));
    case 23: // bus voltage, 0.1 V: ripple of a rectified three-phase supply
        return rounded(3110 + 25 * sine(t, 300) + 8 * sine(t, 0.3));
    case 24: // power module temperature, 0.1 degrees
        return rounded(412 - 30 * std::exp(-t / 300) + 6 * sine(t, 0.02));
    case 26: // digital outputs: ready
        return 1;
    case 29: // running time, 0.01 h
        return runningHoursAtStart * 100 + static_cast<std::int32_t>(t / 36);
    case 32: // average load, %
        return rounded(27 + 3 * sine(t, 0.03));
    case 33: // brake resistor load, %
        return rounded(4 + 3 * sine(t, 0.11));
    case 34: // encoder battery, 0.1 V
        return 36;
    case 36: // resonances, Hz
        return 410;
    case 37:
        return 865;
    case 38:
        return 1320;
    case 50: // current offsets, 0.01 V
        return rounded(2 * noise(m_samples / 800, 50));
    case 51:
        return rounded(2 * noise(m_samples / 800, 51));
    case 56: // position loop gain, 0.1 1/s
        return 400;
    case 57: // speed loop gain, 0.1 Hz
        return 250;
    case 58: // speed loop integral time, 0.1 ms
        return 300;
    case 60: // load inertia ratio, 0.01
        return rounded(150 + 50 * std::exp(-t / 10));
    case 62: // overload, %
        return rounded(31 + 4 * sine(t, 0.07));
    case 80: // motor position, the low word of the pulses
        return wrapped(encoderPosition()) & 0xffff;
    case 85: // output voltage, V
        return rounded(std::fabs(90 * sine(t, speedFrequency)) + 4);
    default:
        return 0;
    }
}

double SignalModel::seconds() const
{
    return static_cast<double>(m_samples) / samplesPerSecond;
}

double SignalModel::encoderPosition() const
{
    const double t = seconds();
    const double swing =
        speedAmplitude / 60 * (1 - std::cos(2 * pi * speedFrequency * t)) / (2 * pi * speedFrequency);
    return encoderResolution * (swing + speedDrift / 60 * t);
}

} // namespace kt500sim
