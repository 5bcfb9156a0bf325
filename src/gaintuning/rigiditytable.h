// SPDX-License-Identifier: GPL-3.0-or-later
// The 32 rigidity grades: the gains that each stands for and the colour that it has in the chart. The drive
// knows the same meaning of a grade. Constant data; any thread.
#pragma once

#include <QColor>
#include <QString>

namespace gaintuning {

constexpr int rigidityGrades = 32;

// The four gains of a grade, as the fields show them.
struct RigidityGains
{
    const char *positionLoopGain;      // 1/s
    const char *speedLoopGain;         // Hz
    const char *speedLoopIntegralTime; // ms
    const char *torqueFilterTime;      // ms
};

// Grade 0 to 31.
const RigidityGains &rigidityGains(int grade);

// Colour of a grade's bar while it is reached.
QColor rigidityColour(int grade);

// Height of a grade's bar.
constexpr int rigidityBarHeight(int grade)
{
    return (grade + 2) * grade + 10;
}

} // namespace gaintuning
