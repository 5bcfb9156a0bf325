// SPDX-License-Identifier: GPL-3.0-or-later
// A stopped plot of known samples, to be measured. Main thread.
#pragma once

#include "plotterbench.h"

#include <memory>

namespace plotmeasurebench {

using plotterbench::List;

// 800 by 600: 700 and 500 pixels of window. 80,000 samples, 7 units a pixel from 0: the sample at pixel p has
// the integer part 7 (p - 50).
inline std::unique_ptr<Plotter> makeStopped(const List &data1, const List &data2 = {})
{
    auto plotter = plotterbench::makePlotter();
    plotterbench::run(plotter.get(), data1, data2);
    PlotSettings settings;
    for (int c = 0; c < plotChannels; ++c)
        settings.maxX[c] = 4900;
    plotter->setPlotSettings(settings);
    return plotter;
}

inline List ramp(int count)
{
    List values(count);
    for (int i = 0; i < count; ++i)
        values[i] = i;
    return values;
}

inline void keepPicture(QWidget *widget, const char *name)
{
    if (qEnvironmentVariableIsSet("PLOT_PICTURES"))
        widget->grab().save(qEnvironmentVariable("PLOT_PICTURES") + QLatin1Char('/') + QLatin1String(name));
}

} // namespace plotmeasurebench
