// SPDX-License-Identifier: GPL-3.0-or-later
// Writes a PDF file, as a whole or not at all where the folder lets it. Main thread.
#pragma once

#include <QString>

#include <functional>

class QPrinter;

// Lets print paint on a printer of screen resolution, into a file beside this name that replaces it when it
// is whole. When that fails, on a full disk for instance, what stood there before stays, and false is
// returned; only where the folder takes no second file the name itself is written.
bool writePdfFile(const QString &fileName, const QString &title,
                  const std::function<void(QPrinter *)> &print);
