// SPDX-License-Identifier: GPL-3.0-or-later
// The colours of the scope in the settings file. Free functions; main thread.
#pragma once

#include "scope/scopechannels.h"

#include <QString>

struct ScopeColors
{
    std::array<QString, scopeChannelCount> channels{QStringLiteral("#FF0000"), QStringLiteral("#55ff7f"),
                                                    QStringLiteral("#ffaaff"), QStringLiteral("#FF00FF")};
    QString background = QStringLiteral("#FFFFFF");
};

// The settings' colours, the values above where there are none.
ScopeColors readScopeColors();

// Channel 0 to 3; "#rrggbb".
void writeScopeColor(int channel, const QString &color);
// "#aarrggbb".
void writeScopeBackground(const QString &color);
