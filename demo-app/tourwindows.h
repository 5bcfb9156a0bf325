// SPDX-License-Identifier: GPL-3.0-or-later
// All windows, dialogs, message boxes and menus of the product, by the source file that makes them: what the
// tour has to show. A test holds the list against the sources. Constant data; any thread.
#pragma once

#include <vector>

struct TourWindow
{
    const char *source; // below src
    const char *className;
    const char *whyNever = nullptr; // the tour can't show it, for this reason
};

const std::vector<TourWindow> &tourWindows();
