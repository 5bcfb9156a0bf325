// SPDX-License-Identifier: GPL-3.0-or-later
#include "simulator/model/rigiditytable.h"

#include <algorithm>

namespace kt500sim {
namespace {

struct Row
{
    double position;     // 1/s
    double speed;        // Hz
    double integralTime; // ms
    double torqueFilter; // ms
};

constexpr std::array<Row, rigidityGrades> rows{{
    {2.0, 1.5, 370.0, 15.00},  {2.5, 2.0, 280.0, 11.00},  {3.0, 2.5, 220.0, 9.00},
    {4.0, 3.0, 190.0, 8.00},   {4.5, 3.5, 160.0, 6.00},   {5.5, 4.5, 120.0, 5.00},
    {7.5, 6.0, 90.0, 4.00},    {9.5, 7.5, 70.0, 3.00},    {11.5, 9.0, 60.0, 3.00},
    {14.0, 11.0, 50.0, 2.00},  {17.5, 14.0, 40.0, 2.00},  {32.0, 18.0, 31.0, 1.26},
    {39.0, 22.0, 25.0, 1.03},  {48.0, 27.0, 21.0, 0.84},  {63.0, 35.0, 16.0, 0.65},
    {72.0, 40.0, 14.0, 0.57},  {90.0, 50.0, 12.0, 0.45},  {108.0, 60.0, 11.0, 0.38},
    {135.0, 75.0, 9.0, 0.30},  {162.0, 90.0, 8.0, 0.25},  {206.0, 115.0, 7.0, 0.20},
    {251.0, 140.0, 6.0, 0.16}, {305.0, 170.0, 5.0, 0.13}, {377.0, 210.0, 4.0, 0.11},
    {449.0, 250.0, 4.0, 0.09}, {500.0, 280.0, 3.5, 0.08}, {560.0, 310.0, 3.0, 0.07},
    {610.0, 340.0, 3.0, 0.07}, {660.0, 370.0, 2.5, 0.06}, {720.0, 400.0, 2.5, 0.06},
    {810.0, 450.0, 2.0, 0.05}, {900.0, 500.0, 2.0, 0.05},
}};

} // namespace

RigidityGrade rigidityGrade(int grade)
{
    const Row &row = rows[static_cast<std::size_t>(std::clamp(grade, 0, rigidityGrades - 1))];
    return {{row.position, row.speed, row.integralTime / 1000}, row.torqueFilter / 1000};
}

} // namespace kt500sim
