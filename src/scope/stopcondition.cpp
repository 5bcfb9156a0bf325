// SPDX-License-Identifier: GPL-3.0-or-later
#include "scope/stopcondition.h"

#include "scope/scopechannels.h"

#include <algorithm>

int StopCondition::channelIndex() const
{
    const int number = channel.mid(2).toInt();
    return number >= 1 && number <= scopeChannelCount ? number - 1 : -1;
}

bool StopCondition::isMetBy(const QVector<double> &samples, double stopValue) const
{
    return std::any_of(samples.begin(), samples.end(), [this, stopValue](double sample) {
        if (operation == QLatin1String(">="))
            return sample >= stopValue;
        if (operation == QLatin1String("<="))
            return sample <= stopValue;
        return operation == QLatin1String("=") && sample == stopValue;
    });
}
