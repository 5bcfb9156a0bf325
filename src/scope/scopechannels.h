// SPDX-License-Identifier: GPL-3.0-or-later
// The four channels of the scope: what each is asked for, and one batch of their samples. Plain values; any
// thread.
#pragma once

#include <QString>
#include <QVector>

#include <array>

constexpr int scopeChannelCount = 4;

struct ScopeChannelSetting
{
    bool on = false;
    bool wide = false; // 32-bit samples
    QString code;      // of the catalogue row chosen
};

// CH1 to CH4.
using ScopeChannelSettings = std::array<ScopeChannelSetting, scopeChannelCount>;

// Samples of CH1 to CH4 in engineering units, oldest first.
using ScopeSamples = std::array<QVector<double>, scopeChannelCount>;
