// SPDX-License-Identifier: GPL-3.0-or-later
// Whether the drive can be asked for a single parameter, and the notice when it can't. Main thread.
#pragma once

// True when the link is open; else the user is told, in a box that is waited for.
bool isOnlineOrTold();
