// SPDX-License-Identifier: GPL-3.0-or-later
#include "demo-app/scopetour.h"

#include "demo-app/tour.h"
#include "scope/plotter.h"
#include "scope/scope.h"
#include "scope/spectrumwindow.h"
#include "shell/mainwindow.h"
#include "simulator/simulateddrive.h"
#include "support/scopedriver.h"
#include "support/toolclick.h"

#include <QElapsedTimer>
#include <QMdiSubWindow>
#include <QTest>
#include <QTimer>

#include <memory>

namespace {

constexpr int liveTime = 6000;      // ms
constexpr int reversal = 900;       // ms: the motor turns the other way each time
constexpr int shownSpeed = 8000;    // 0.1 rpm
constexpr double zoomedPart = 0.09; // of a minute: the run
// Speed, its command, torque and average torque.
const QStringList shownCodes{QStringLiteral("Pn-F00"), QStringLiteral("Pn-F01"), QStringLiteral("Pn-F03"),
                             QStringLiteral("Pn-F05")};

ScopeDriver scope()
{
    return ScopeDriver(Tour::visible<Scope>());
}

// Speed method, the servo on by register.
void startMotor(kt500sim::SimulatedDrive *drive)
{
    drive->writeRegister(100, 1);
    drive->writePair(401, shownSpeed);
    drive->writeRegister(200, 1);
    drive->writeRegister(202, 1);
}

void stopMotor(kt500sim::SimulatedDrive *drive)
{
    drive->writePair(401, 0);
    drive->writeRegister(202, 0);
}

void addRun(Tour *tour, kt500sim::SimulatedDrive *drive, const std::shared_ptr<QElapsedTimer> &live)
{
    auto *const toAndFro = new QTimer(tour);
    const auto speed = std::make_shared<int>(shownSpeed);
    QObject::connect(toAndFro, &QTimer::timeout, tour, [drive, speed] {
        *speed = -*speed;
        drive->writePair(401, *speed);
    });
    tour->add({QStringLiteral("scope shows its channels"),
               [] { return Tour::visible<Scope>() && scope().channels(); },
               [live, toAndFro] {
                   Tour::visible<Scope>()->parentWidget()->showMaximized();
                   scope().show(shownCodes);
                   scope().click(ScopeToolBar::Run);
                   live->start();
                   toAndFro->start(reversal);
               }});
    tour->add({QStringLiteral("waves have come"), [live] { return live->elapsed() > liveTime; },
               [toAndFro] {
                   scope().click(ScopeToolBar::Run);
                   toAndFro->stop();
               },
               QStringLiteral("20-scope-live"), QStringLiteral("scope/scopewindow.cpp ScopeWindow"),
               QStringLiteral("scope-live"), 2 * liveTime});
    tour->add({QStringLiteral("capture has stopped"),
               [] { return scope().isEnabled(ScopeToolBar::MeasureX); },
               [drive] {
                   stopMotor(drive);
                   scope().zoom(0, zoomedPart);
                   scope().click(ScopeToolBar::Fft);
               }});
}

void addMeasurement(Tour *tour, const std::shared_ptr<QElapsedTimer> &live)
{
    tour->addMessage(QStringLiteral("a spectrum needs the cursors"), "scope/plotter.cpp");
    tour->addClosed(QStringLiteral("cursors can be shown"), [live] {
        scope().click(ScopeToolBar::MeasureX);
        scope().click(ScopeToolBar::MeasureY);
        live->restart();
    });
    tour->add({QStringLiteral("cursors are shown"), [live] { return live->elapsed() > 1000; },
               [] { scope().click(ScopeToolBar::Fft); }, QStringLiteral("21-scope-cursors"), QString(),
               QStringLiteral("scope-cursors")});
    tour->add({QStringLiteral("spectrum comes"), [] { return Tour::visible<SpectrumWindow>() != nullptr; },
               [live] { live->restart(); }, QString(), QString(), QString(), 15000});
    tour->add({QStringLiteral("spectrum is shown"), [live] { return live->elapsed() > 500; },
               [] { Tour::visible<SpectrumWindow>()->close(); }, QStringLiteral("22-spectrum"),
               QStringLiteral("scope/spectrumwindow.cpp SpectrumWindow"), QStringLiteral("scope-fft")});
    tour->add({QStringLiteral("a point can be clicked"), [] { return !Tour::visible<SpectrumWindow>(); },
               [] {
                   Plotter *const plot = scope().plot();
                   QTest::mouseClick(plot, Qt::RightButton, {}, plot->rect().center());
               }});
    tour->add({QStringLiteral("values at a point are shown"),
               [] { return true; },
               {},
               QStringLiteral("22-values-at-a-point"),
               QString(),
               QStringLiteral("scope-tag")});
}

} // namespace

void addScopeTour(Tour *tour, MainWindow *window, kt500sim::SimulatedDrive *drive)
{
    tour->addClosed(QStringLiteral("scope can be opened"), [tour, window, drive] {
        // Four channels need the pace of USB.
        drive->setPacing({});
        startMotor(drive);
        if (!clickTool(window, "actionData_Scope"))
            tour->fail(QStringLiteral("the tool bar does not show \"Data Scope\""));
    });
    const auto live = std::make_shared<QElapsedTimer>();
    addRun(tour, drive, live);
    addMeasurement(tour, live);
    addScopeDialogsTour(tour);
    tour->addClosed(QStringLiteral("scope can be closed"),
                    [] { Tour::visible<Scope>()->parentWidget()->close(); });
}
