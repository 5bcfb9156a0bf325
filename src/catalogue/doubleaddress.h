// SPDX-License-Identifier: GPL-3.0-or-later
// The lists of codes whose value takes two registers: address.txt and its like under :/config/config.
// Free functions; any thread.
#pragma once

#include <QString>
#include <QStringList>

// Lines of a list, trimmed; none when there is no such file.
QStringList readDoubleAddressList(const QString &path);

// True when the six-character code stands in address.txt: two registers, high word first. The list is read
// once.
bool isDouble(const QString &code);
