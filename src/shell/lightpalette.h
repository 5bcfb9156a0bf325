// SPDX-License-Identifier: GPL-3.0-or-later
// The colours of the program on every desktop. The windows set backgrounds and signal colours of their own,
// which are made for dark text on light ground: a desktop's dark palette would leave it unreadable.
#pragma once

#include <QPalette>

// Every role of every group, so that nothing of the desktop's shines through. Main thread.
QPalette lightPalette();

// Gives the palette to the application that exists, its tool tips included.
void useLightPalette();
