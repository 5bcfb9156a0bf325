// SPDX-License-Identifier: GPL-3.0-or-later
#include "scope/endcosts.h"

namespace {

// A cost in a row, and what goes on in the rows below it.
PairSums difference(const PairSums &inRow, const PairSums &below)
{
    return {inRow.left, inRow.right, below.left - inRow.left, below.right - inRow.right};
}

PairSums negative(const PairSums &sums)
{
    return sums * ~uint32_t(0);
}

} // namespace

// A segment that crosses rows costs its share of the first and of the last and the whole of those between.
void EndCosts::set(const uint32_t *costs)
{
    for (int place = 0; place < places; ++place) {
        const int alpha = 4 * place;
        const auto cost = [=](int share) {
            return PairSums{costs[((255 - alpha) * share) >> 6], costs[(alpha * share) >> 6]};
        };
        PairSums *const part = entries.data() + place * perPlace;
        const PairSums whole = cost(64);
        for (int y = 0; y < 64; ++y) {
            part[y] = difference(cost(64 - y), whole);
            part[lowerEnds + y] = difference(cost(y) + negative(whole), negative(whole));
            part[withinRow + y] = difference(cost(y), {});
        }
    }
}
