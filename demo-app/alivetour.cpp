// SPDX-License-Identifier: GPL-3.0-or-later
#include "demo-app/alivetour.h"

#include "demo-app/tour.h"
#include "scope/scope.h"
#include "shell/mainwindow.h"
#include "simulator/simulateddrive.h"
#include "support/scopedriver.h"
#include "support/toolclick.h"
#include "support/trialrundriver.h"
#include "trialrun/holdbutton.h"
#include "trialrun/trialrun.h"

#include <QAction>
#include <QElapsedTimer>
#include <QMdiSubWindow>

#include <memory>

namespace {

constexpr int holdTime = 1500;   // ms
constexpr int zoomedTime = 5000; // ms of the picture
constexpr int shownTime = 60000; // ms
// Speed, its command, torque and average torque.
const QStringList shownCodes{QStringLiteral("Pn-F00"), QStringLiteral("Pn-F01"), QStringLiteral("Pn-F03"),
                             QStringLiteral("Pn-F05")};

TrialRunDriver trialRun()
{
    return TrialRunDriver(Tour::visible<TrialRun>());
}

ScopeDriver scope()
{
    return ScopeDriver(Tour::visible<Scope>());
}

// Holds a direction for a while; the picture, if there is one, is taken while it is held.
void addHold(Tour *tour, HoldButton *(TrialRunDriver::*button)() const, const QString &guide)
{
    const auto held = std::make_shared<QElapsedTimer>();
    tour->add({QStringLiteral("a direction can be held"),
               [button] { return (trialRun().*button)()->isEnabled(); },
               [button, held] {
                   TrialRunDriver::hold((trialRun().*button)());
                   held->start();
               }});
    tour->add({QStringLiteral("the motor turns"), [held] { return held->elapsed() > holdTime; },
               [button] { TrialRunDriver::letGo((trialRun().*button)()); }, QString(), QString(), guide});
}

} // namespace

void addAliveTour(Tour *tour, MainWindow *window, kt500sim::SimulatedDrive *drive)
{
    tour->addClosed(QStringLiteral("trial run can be opened"), [window, drive] {
        drive->setPacing({});
        clickTool(window, "actionTrial_run");
    });
    tour->add({QStringLiteral("drive is taken over"),
               [] { return Tour::visible<TrialRun>() && trialRun().servoOn()->isEnabled(); },
               [window] {
                   TrialRunDriver::click(trialRun().servoOn());
                   clickTool(window, "actionData_Scope");
                   window->findChild<QAction *>(QStringLiteral("actionTitle_Horizontally"))->trigger();
               },
               QString(), QString(), QString(), 20000});
    tour->add({QStringLiteral("the motor can be moved"), [] { return trialRun().jogForward()->isEnabled(); },
               [] {
                   scope().show(shownCodes);
                   scope().click(ScopeToolBar::Run);
               }});
    addHold(tour, &TrialRunDriver::jogForward, QString());
    addHold(tour, &TrialRunDriver::jogRollback, QString());
    addHold(tour, &TrialRunDriver::jogForward, QString());
    tour->add({QStringLiteral("scope can be stopped"), [] { return true; },
               [] { scope().click(ScopeToolBar::Run); }});
    // The run fills the plot once it stands, and the motor goes on.
    tour->add({QStringLiteral("the run can be looked at"),
               [] { return scope().isEnabled(ScopeToolBar::MeasureX); },
               [] { scope().zoom(0, double(zoomedTime) / shownTime); }});
    addHold(tour, &TrialRunDriver::jogRollback, QStringLiteral("alive"));
    tour->add({QStringLiteral("windows can be closed"), [] { return true; },
               [] {
                   Tour::visible<Scope>()->parentWidget()->close();
                   Tour::visible<TrialRun>()->parentWidget()->close();
               }});
    tour->add({QStringLiteral("drive is given back"),
               [] { return !Tour::visible<TrialRun>(); },
               {},
               QString(),
               QString(),
               QString(),
               20000});
}
