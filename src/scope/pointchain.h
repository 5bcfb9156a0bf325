// SPDX-License-Identifier: GPL-3.0-or-later
// Neighbouring samples of a curve on their way into the coverage: their y, and what lets many of them be
// added at once. A plain value; points at what its maker holds.
#pragma once

// Points in 64ths of a pixel. They come in groups that have their x in common: group g has xs[g], and its y
// begin at ys[begins[g]]; begins[groups] is behind the last one.
struct PointChain
{
    const int *xs = nullptr;
    const int *begins = nullptr;
    int groups = 0;
    const int *ys = nullptr;
    int lowest = 0;
    int highest = 0;
    bool isSlow = false; // y goes one way, by 0 or 1 from point to point
    // Several points have each x in common, and no x is left out: before they were cut, the first one stood
    // at firstX, the others xStep apart.
    bool isDense = false;
    double firstX = 0;
    double xStep = 0;
};

// How high these samples go, and whether slowly. Their x are left to the caller.
PointChain chainOf(const int *ys, int count);
