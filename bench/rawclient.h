// SPDX-License-Identifier: GPL-3.0-or-later
// The barest client that there can be: one thread that writes a frame to the open device and sleeps until the
// whole reply is there; nothing is decoded. What it takes beyond the drive's answering is the machine's
// alone. Called on the main thread, which does nothing else meanwhile. POSIX only.
#pragma once

#include "registerread.h"

#include <QByteArray>
#include <QList>

// Opens the device, reads all of the list once, one after another, closes it, and returns the seconds that
// the reads took. std::runtime_error on a line that fails.
double secondsOfRawReads(const QByteArray &path, const QList<RegisterRead> &reads);
