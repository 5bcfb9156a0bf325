// SPDX-License-Identifier: GPL-3.0-or-later
// Reader of the parameter catalogue's XML form, as tolerant as a shipped file may need. Any thread.
#pragma once

#include <QByteArray>
#include <QStringList>

#include <functional>

// Called for each complete row: group index 0 to 11, the row's values and its detail lines.
using CatalogueRowHandler = std::function<void(int, const QStringList &, const QStringList &)>;

// Streams through the text once. Strings are appended in the order of the document, a group of unknown name
// leaves the index as it was, and an error of the XML ends the read after the rows before it.
void readParameterCatalogue(const QByteArray &xml, const CatalogueRowHandler &handler);
