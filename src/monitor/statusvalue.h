// SPDX-License-Identifier: GPL-3.0-or-later
// How a status register reads in the table. Pure function; any thread.
#pragma once

#include <QByteArray>
#include <QString>

// The text for raw register content, two or four bytes. unit is the row's own text, which decides the scale;
// isPair says that the row's code stands in the list of 32-bit registers.
QString statusText(const QByteArray &data, int address, const QString &unit, bool isPair);
