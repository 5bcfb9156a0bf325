// SPDX-License-Identifier: GPL-3.0-or-later
// The twelve groups of parameters: the name in the catalogue files and the label of the page list.
// Constant data; any thread.
#pragma once

#include <QString>

constexpr int parameterGroupCount = 12;

// Index of the group with this name in the catalogue files, or -1.
int parameterGroupIndex(const QString &name);

// The page list's label of a group, 0 to 11, in the language of the user interface.
QString parameterGroupLabel(int index);
