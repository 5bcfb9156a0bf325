// SPDX-License-Identifier: GPL-3.0-or-later
#include "demo-app/gaintuningtour.h"

#include "demo-app/tour.h"
#include "gaintuning/gaintuning.h"
#include "shell/mainwindow.h"

#include <QAction>
#include <QComboBox>
#include <QScrollArea>
#include <QScrollBar>
#include <QSpinBox>

namespace {

constexpr int shownGrade = 22;

template <typename T>
T *find(const char *name)
{
    const auto *const window = Tour::visible<GainTuning>();
    return window ? window->findChild<T *>(QLatin1String(name)) : nullptr;
}

// The mode of the notches is read last.
bool hasReadAll()
{
    const auto *const mode = find<QComboBox>("comBoxNotchMode");
    return mode && mode->currentIndex() >= 0;
}

} // namespace

void addGainTuningTour(Tour *tour, MainWindow *window)
{
    tour->add({QStringLiteral("gain tuning can be opened"), [] { return !QApplication::activeModalWidget(); },
               [tour, window] {
                   if (!Tour::clickAction(window->findChild<QAction *>(QStringLiteral("actionGain_Tuning"))))
                       tour->fail(QStringLiteral("the tool bar does not show \"Gain Tuning\""));
               },
               QString()});
    tour->add({QStringLiteral("gain tuning shows the drive"), hasReadAll,
               [] {
                   find<QComboBox>("comBoxGainMode")->setCurrentIndex(1);
                   find<QSpinBox>("spinBoxRigidityGrade")->setValue(shownGrade);
               },
               QString()});
    tour->add({QStringLiteral("gains of the grade are shown"), [] { return true; },
               [] {
                   QScrollBar *const bar = find<QScrollArea>("scrollArea")->verticalScrollBar();
                   bar->setValue(bar->maximum());
               },
               QStringLiteral("23-gain-tuning")});
    tour->add({QStringLiteral("notch filters are shown"), [] { return true; },
               [] { Tour::visible<GainTuning>()->parentWidget()->close(); },
               QStringLiteral("24-notch-filters")});
}
