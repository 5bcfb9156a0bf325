// SPDX-License-Identifier: GPL-3.0-or-later
#include "demo-app/trialruntour.h"

#include "demo-app/tour.h"
#include "shell/mainwindow.h"
#include "support/toolclick.h"
#include "support/trialrundriver.h"
#include "trialrun/holdbutton.h"
#include "trialrun/trialrun.h"

#include <QElapsedTimer>
#include <QMdiSubWindow>
#include <QRadioButton>
#include <QTableWidget>

#include <memory>

namespace {

constexpr int holdTime = 1200; // ms: long enough to see the range bar move
constexpr int shownRows = 2;   // of the table of positions

TrialRunDriver trialRun()
{
    return TrialRunDriver(Tour::visible<TrialRun>());
}

void addJog(Tour *tour)
{
    const auto held = std::make_shared<QElapsedTimer>();
    tour->add({QStringLiteral("drive is taken over"),
               [] { return Tour::visible<TrialRun>() && trialRun().servoOn()->isEnabled(); },
               [] { TrialRunDriver::type(trialRun().jogTable(), 0, QStringLiteral("fast")); }, QString(),
               QString(), QString(), 20000});
    tour->addMessage(QStringLiteral("a speed that is no number is refused"), "trialrun/trialrun.cpp");
    tour->addClosed(QStringLiteral("a speed can be typed"), [] {
        TrialRunDriver::type(trialRun().jogTable(), 0, QStringLiteral("200.0"));
        TrialRunDriver::click(trialRun().servoOn());
    });
    tour->add({QStringLiteral("direction buttons can be held"),
               [] { return trialRun().jogForward()->isEnabled(); },
               [held] {
                   TrialRunDriver::hold(trialRun().jogForward());
                   held->start();
               }});
    tour->add({QStringLiteral("motor has gone forward"),
               [held] { return held->elapsed() > holdTime && trialRun().currentPosition().toInt() != 0; },
               [] { TrialRunDriver::letGo(trialRun().jogForward()); }, QStringLiteral("18-jog-forward"),
               QStringLiteral("trialrun/trialrun.cpp TrialRun"), QStringLiteral("trial-run")});
    tour->add({QStringLiteral("motor is to go back"), [] { return true; },
               [held] {
                   TrialRunDriver::hold(trialRun().jogRollback());
                   held->start();
               }});
    tour->add({QStringLiteral("motor has gone back"), [held] { return held->elapsed() > 2 * holdTime; },
               [] { TrialRunDriver::letGo(trialRun().jogRollback()); }});
}

void addPositions(Tour *tour)
{
    tour->add({QStringLiteral("step three can be opened"),
               [] { return trialRun().positionRun()->isEnabled(); },
               [] { TrialRunDriver::click(trialRun().positionRun()); }});
    tour->add({QStringLiteral("a mode can be chosen"), [] { return trialRun().once()->isEnabled(); },
               [] { TrialRunDriver::click(trialRun().once()); }});
    tour->add({QStringLiteral("positions are shown"),
               [] {
                   const QTableWidget *const table = trialRun().positionTable();
                   return table->isEnabled() && table->item(1, 3) &&
                          !TrialRunDriver::cells(table).mid(0, shownRows).contains(QString());
               },
               {},
               QStringLiteral("19-positions"),
               QString(),
               QStringLiteral("trial-run-positions")});
}

} // namespace

void addTrialRunTour(Tour *tour, MainWindow *window)
{
    tour->addClosed(QStringLiteral("trial run can be opened"), [tour, window] {
        if (!clickTool(window, "actionTrial_run"))
            tour->fail(QStringLiteral("the tool bar does not show \"Trial run\""));
        Tour::visible<TrialRun>()->parentWidget()->showMaximized();
    });
    addJog(tour);
    addPositions(tour);
    tour->add({QStringLiteral("main window can be asked to close"), [] { return true; },
               [window] { window->close(); }});
    tour->addMessage(QStringLiteral("main window waits for the trial run"), "shell/mainwindow.cpp",
                     QStringLiteral("close-refused"));
    tour->addClosed(QStringLiteral("trial run can be closed"),
                    [] { Tour::visible<TrialRun>()->parentWidget()->close(); });
    tour->add({QStringLiteral("drive is given back"),
               [] { return !Tour::visible<TrialRun>(); },
               {},
               QString(),
               QString(),
               QString(),
               20000});
}
