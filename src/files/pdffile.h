// SPDX-License-Identifier: GPL-3.0-or-later
// Writes a PDF file as a whole or not at all. Main thread.
#pragma once

#include <QString>

#include <functional>

class QPrinter;

// Lets print paint on a printer of screen resolution and puts the result under this name. When that fails, on
// a full disk or in a folder that takes no file, what stood there before stays, and false is returned.
bool writePdfFile(const QString &fileName, const QString &title,
                  const std::function<void(QPrinter *)> &print);
