// SPDX-License-Identifier: GPL-3.0-or-later
// Files that are read or replaced in one piece. Free functions without state; any thread.
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

// Far above any file of parameters; a larger one is something else that was picked by mistake.
constexpr qint64 wholeFileLimit = 4 * 1024 * 1024; // bytes

// What the file holds; nothing if it can't be opened, can't be read to its end or is larger
// than the limit.
std::optional<QByteArray> readWholeFile(const QString &name);

// Makes the bytes the content of the file. On false the file that stood there before is as it was, wherever
// the folder lets a second file be written beside it.
bool writeWholeFile(const QString &name, const QByteArray &bytes);
