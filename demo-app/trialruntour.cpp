// SPDX-License-Identifier: GPL-3.0-or-later
#include "demo-app/trialruntour.h"

#include "demo-app/tour.h"
#include "shell/mainwindow.h"
#include "trialrun/trialrun.h"
#include "widgets/labelgrop.h"

#include <QAction>
#include <QElapsedTimer>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QTableWidget>
#include <QTest>

#include <memory>

namespace {

constexpr int holdTime = 1200; // ms: long enough to see the range bar move

template <typename T>
T *find(const char *name)
{
    const auto *const window = Tour::visible<TrialRun>();
    return window ? window->findChild<T *>(QLatin1String(name)) : nullptr;
}

int shown(const char *name)
{
    const auto *const group = find<LabelGrop>(name);
    return group ? group->valueLabel->text().toInt() : 0;
}

void click(const char *name)
{
    QTest::mouseClick(find<QPushButton>(name), Qt::LeftButton);
}

} // namespace

void addTrialRunTour(Tour *tour, MainWindow *window)
{
    const auto held = std::make_shared<QElapsedTimer>();
    tour->add({QStringLiteral("trial run can be opened"), [] { return !QApplication::activeModalWidget(); },
               [tour, window] {
                   if (!Tour::clickAction(window->findChild<QAction *>(QStringLiteral("actionTrial_run"))))
                       tour->fail(QStringLiteral("the tool bar does not show \"Trial run\""));
               },
               QString()});
    tour->add({QStringLiteral("drive is taken over"),
               [] {
                   const auto *const button = find<QPushButton>("servoOnButton");
                   return button && button->isEnabled();
               },
               [] { click("servoOnButton"); }, QString(), 20000});
    tour->add({QStringLiteral("direction buttons can be held"),
               [] { return find<QPushButton>("jogForwardButton")->isEnabled(); },
               [held] {
                   QTest::mousePress(find<QPushButton>("jogForwardButton"), Qt::LeftButton);
                   held->start();
               },
               QString()});
    tour->add({QStringLiteral("motor has gone forward"),
               [held] { return held->elapsed() > holdTime && shown("currentLabel") != 0; },
               [] { QTest::mouseRelease(find<QPushButton>("jogForwardButton"), Qt::LeftButton); },
               QStringLiteral("18-jog-forward")});
    tour->add({QStringLiteral("motor is to go back"), [] { return true; },
               [held] {
                   QTest::mousePress(find<QPushButton>("jogRollbackButton"), Qt::LeftButton);
                   held->start();
               },
               QString()});
    tour->add({QStringLiteral("motor has gone back"), [held] { return held->elapsed() > 2 * holdTime; },
               [] { QTest::mouseRelease(find<QPushButton>("jogRollbackButton"), Qt::LeftButton); },
               QString()});
    tour->add({QStringLiteral("step three can be opened"),
               [] { return find<QPushButton>("positionRunButton")->isEnabled(); },
               [] { click("positionRunButton"); }, QString()});
    tour->add({QStringLiteral("a mode can be chosen"),
               [] { return find<QRadioButton>("onceButton")->isEnabled(); },
               [] {
                   auto *const once = find<QRadioButton>("onceButton");
                   QTest::mouseClick(once, Qt::LeftButton, {}, QPoint(10, once->height() / 2));
               },
               QString()});
    tour->add({QStringLiteral("positions are shown"),
               [] {
                   const auto *const table = find<QTableWidget>("positionTable");
                   return table->isEnabled() && table->item(1, 3) && !table->item(1, 3)->text().isEmpty();
               },
               [] { Tour::visible<TrialRun>()->parentWidget()->close(); }, QStringLiteral("19-positions")});
    tour->add({QStringLiteral("drive is given back"),
               [] { return !Tour::visible<TrialRun>(); },
               {},
               QString(),
               20000});
}
