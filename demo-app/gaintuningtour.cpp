// SPDX-License-Identifier: GPL-3.0-or-later
#include "demo-app/gaintuningtour.h"

#include "demo-app/tour.h"
#include "gaintuning/gaintuning.h"
#include "shell/mainwindow.h"
#include "support/gaintuningdriver.h"
#include "support/toolclick.h"

#include <QMdiSubWindow>

#include <memory>

namespace {

constexpr int shownGrade = 22;
constexpr int growing = 1500; // ms

GainTuningDriver gainTuning()
{
    return GainTuningDriver(Tour::visible<GainTuning>());
}

} // namespace

void addGainTuningTour(Tour *tour, MainWindow *window)
{
    const auto opened = std::make_shared<QElapsedTimer>();
    tour->addClosed(QStringLiteral("gain tuning can be opened"), [tour, window] {
        if (!clickTool(window, "actionGain_Tuning"))
            tour->fail(QStringLiteral("the tool bar does not show \"Gain Tuning\""));
        Tour::visible<GainTuning>()->parentWidget()->showMaximized();
    });
    tour->add({QStringLiteral("gain tuning shows the drive"),
               [] { return Tour::visible<GainTuning>() && gainTuning().hasReadAll(); },
               [opened] {
                   gainTuning().choose("comBoxGainMode", 1);
                   gainTuning().setGrade(shownGrade);
                   opened->start();
               }});
    // The bars of the grades grow for a second.
    tour->add({QStringLiteral("grades are shown"), [opened] { return opened->elapsed() > growing; },
               [] { gainTuning().scrollDown(); }, QStringLiteral("23-gain-tuning"),
               QStringLiteral("gaintuning/gaintuning.ui GainTuning"), QStringLiteral("gain-tuning")});
    tour->add({QStringLiteral("notch filters are shown"), [] { return true; },
               [] { gainTuning().typeIntoTable(0, QStringLiteral("99999")); },
               QStringLiteral("24-notch-filters"), QString(), QStringLiteral("gain-tuning-notch")});
    tour->addMessage(QStringLiteral("a value out of range is refused"), "gaintuning/gainfieldwidgets.cpp");
    tour->addClosed(QStringLiteral("gain tuning can be closed"),
                    [] { Tour::visible<GainTuning>()->parentWidget()->close(); });
}
