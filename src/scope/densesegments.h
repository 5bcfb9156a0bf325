// SPDX-License-Identifier: GPL-3.0-or-later
// Segments between samples that stand so close to each other that several share each 64th of a pixel: where
// their costs stand in the table of ends. It is found for all of them in a loop without a jump, which the
// compiler turns into one over several segments at once. A plain value on the stack.
#pragma once

#include <array>

class DenseSegments
{
public:
    static constexpr int most = 250;

    // count segments from ys[0] on, in 64ths of a pixel; the first one stands at the place x, the others
    // xStep apart. Both in positionUnits of a 64th.
    void find(const int *ys, int count, int x, int xStep);

    // Of each segment the entries in the table of ends.
    const int *firstEnds() const { return firsts.data(); }
    const int *secondEnds() const { return seconds.data(); }

    static constexpr int positionBits = 20;
    static constexpr int positionUnits = 1 << positionBits;

private:
    std::array<int, most> firsts;
    std::array<int, most> seconds;
};
