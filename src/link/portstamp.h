// SPDX-License-Identifier: GPL-3.0-or-later
// Tells whether a serial port may have come or gone since, at a hundredth of what asking the system for its
// list costs: the watch of the link asks once a second, on the main thread. Any thread.
#pragma once

#include <QByteArray>

// Another one after each port that has come, gone or been described anew; empty where the system doesn't
// tell.
QByteArray portStamp();
