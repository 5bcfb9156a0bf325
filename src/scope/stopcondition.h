// SPDX-License-Identifier: GPL-3.0-or-later
// The condition on one channel's samples that ends a run. Plain value; any thread.
#pragma once

#include <QString>
#include <QVector>

struct StopCondition
{
    QString channel;   // "CH1" to "CH4", as the radio button shows it; empty: none
    QString operation; // ">=", "=" or "<="

    // 0 to 3; -1 for a text that names none of the four.
    int channelIndex() const;
    // True when any of the samples meets the operation. "=" compares doubles exactly; any other text is
    // never met.
    bool isMetBy(const QVector<double> &samples, double stopValue) const;
};
