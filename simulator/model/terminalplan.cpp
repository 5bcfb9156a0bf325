// SPDX-License-Identifier: GPL-3.0-or-later
#include "simulator/model/terminalplan.h"

#include <array>

namespace kt500sim {

TerminalPlan terminalPlan(std::uint16_t plan)
{
    constexpr std::array<int, 16> delays{0, 1, 2, 3, 4, 5, 6, 8, 10, 15, 20, 30, 50, 100, 200, 500};
    const int ones = plan & 0xf;
    const int tens = plan >> 4 & 0xf;
    TerminalPlan result;
    result.function = ones > 9 || tens > 9 ? 0 : 10 * tens + ones;
    result.inverted = (plan >> 8 & 0xf) == 1;
    result.delay = delays[plan >> 12 & 0xf];
    return result;
}

} // namespace kt500sim
