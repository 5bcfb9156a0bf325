// SPDX-License-Identifier: GPL-3.0-or-later
// The gains that belong to each grade of rigidity.
//
// Free functions, for any thread.
#pragma once

#include "simulator/model/parameters.h"

namespace kt500sim {

constexpr int rigidityGrades = 32;

struct RigidityGrade
{
    Gains gains;
    double torqueFilter = 0; ///< s
};

/// \a grade is kept within 0 to 31.
RigidityGrade rigidityGrade(int grade);

} // namespace kt500sim
