// SPDX-License-Identifier: GPL-3.0-or-later
#include "scope/densesegments.h"

#include "scope/endcosts.h"

void DenseSegments::find(const int *ys, int count, int x, int xStep)
{
    for (int i = 0; i < count; ++i) {
        const int y1 = ys[i];
        const int y2 = ys[i + 1];
        const int place = ((x + i * xStep) >> positionBits) & (EndCosts::places - 1);
        const int part = place * EndCosts::perPlace;
        firsts.data()[i] = part + EndCosts::firstEnd(y1, y2);
        seconds.data()[i] = part + EndCosts::secondEnd(y1, y2);
    }
}
