// SPDX-License-Identifier: GPL-3.0-or-later
// The size of the icons in every tool bar and in the status bar: their pictures are drawn for it and for its
// double, and a bar of 26 pixels carries it unscaled. Constant data; any thread.
#pragma once

#include <QSize>

constexpr QSize toolIconSize(16, 16); // pixels
