// SPDX-License-Identifier: GPL-3.0-or-later
// The peer that shows what a machine lets any client do: libmodbus, one thread, each read blocking until its
// reply is there. Called on the main thread, which does nothing else meanwhile.
#pragma once

#include "registerread.h"

#include <QByteArray>
#include <QList>

// Opens the device, reads all of the list once, one after another, closes it, and returns the seconds that
// the reads took. std::runtime_error on a line that fails.
double secondsOfBareReads(const QByteArray &path, const QList<RegisterRead> &reads);
