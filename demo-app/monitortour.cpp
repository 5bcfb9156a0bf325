// SPDX-License-Identifier: GPL-3.0-or-later
#include "demo-app/monitortour.h"

#include "demo-app/tour.h"
#include "monitor/parameter_monitor.h"
#include "shell/mainwindow.h"
#include "simulator/simulateddrive.h"
#include "support/monitordriver.h"
#include "support/toolclick.h"

#include <QElapsedTimer>
#include <QLineEdit>
#include <QMdiSubWindow>
#include <QPushButton>
#include <QTabWidget>
#include <QTableWidget>

#include <cstdlib>
#include <memory>

namespace {

constexpr int enablingFunction = 1; // of an input: it enables the servo
constexpr int shownFault = 16;
constexpr int shownSpeed = 750; // rpm
constexpr int tabCount = 3;     // of the ways to run

bool isOpen()
{
    return Tour::visible<Parameter_Monitor>() != nullptr;
}

MonitorDriver monitor()
{
    return MonitorDriver(Tour::visible<Parameter_Monitor>());
}

// The last of the functions that a cycle brings.
bool areFunctionsShown()
{
    return monitor().table("doTable")->item(15, 1)->text() != QLatin1String("Null ");
}

// The first input has been read with this function, and so has what comes behind it in the cycle.
bool isRead(const std::shared_ptr<QElapsedTimer> &since, const QString &symbol)
{
    constexpr int twoCycles = 1500; // ms
    return since->elapsed() > twoCycles && monitor().symbol(QStringLiteral("di"), 1).trimmed() == symbol;
}

void addRun(Tour *tour, kt500sim::SimulatedDrive *drive)
{
    const auto since = std::make_shared<QElapsedTimer>();
    tour->add({QStringLiteral("monitor shows the drive"), [] { return isOpen() && areFunctionsShown(); },
               [since] {
                   monitor().choose(QStringLiteral("diFunctionComboBox1"), 0);
                   monitor().choose(QStringLiteral("diSourceComboBox"), 1);
                   since->start();
               },
               QString(), QString(), QString(), 20000});
    tour->add({QStringLiteral("no input enables the servo"),
               [since] { return isRead(since, QStringLiteral("NULL")); },
               [] { monitor().click(QStringLiteral("enableButton")); }});
    tour->addMessage(QStringLiteral("the servo is not enabled without an input for it"),
                     "monitor/control_run.cpp");
    tour->addClosed(QStringLiteral("an input can be given the enabling"), [since] {
        monitor().choose(QStringLiteral("diFunctionComboBox1"), enablingFunction);
        monitor().choose(QStringLiteral("methodComboBox"), 1);
        since->start();
    });
    tour->add({QStringLiteral("an input enables the servo"),
               [since] { return isRead(since, QStringLiteral("SON")); },
               {}});
    tour->add({QStringLiteral("drive has the auxiliary source and the speed mode"),
               [drive] { return drive->readRegister(200) == 0xFFFF && drive->readRegister(100) == 1; },
               [] { monitor().type(QStringLiteral("lineEdit3"), QString::number(shownSpeed)); }});
    tour->add({QStringLiteral("drive has the speed"),
               [drive] { return drive->readPair(401) == 10 * shownSpeed && areFunctionsShown(); },
               [] { monitor().click(QStringLiteral("enableButton")); }});
    tour->add({QStringLiteral("motor turns"),
               [] {
                   return std::abs(monitor().status(QStringLiteral("Pn-F00")).toInt() - shownSpeed) < 30 &&
                          areFunctionsShown();
               },
               [] { monitor().click(QStringLiteral("enableButton")); }, QStringLiteral("15-monitor"),
               QStringLiteral("monitor/parameter_monitor.cpp Parameter_Monitor"), QStringLiteral("monitor"),
               20000});
}

void addFault(Tour *tour, kt500sim::SimulatedDrive *drive)
{
    tour->add({QStringLiteral("motor stands"),
               [] { return monitor().status(QStringLiteral("Pn-F00")) == QLatin1String("0"); },
               [drive] { drive->raiseFault(shownFault); }, QString(), QString(), QString(), 20000});
    tour->add({QStringLiteral("fault is shown"),
               [] { return monitor().button(QStringLiteral("faultResetButton"))->isEnabled(); },
               [] { monitor().click(QStringLiteral("faultResetButton")); }, QStringLiteral("16-fault"),
               QString(), QStringLiteral("monitor-fault")});
    tour->add({QStringLiteral("fault is reset"),
               [] { return monitor().edit(QStringLiteral("faultCurrentEdit"))->text().isEmpty(); },
               [] { monitor().tabs()->setCurrentIndex(1); }});
    tour->add({QStringLiteral("record shows the fault"), [] { return !monitor().recordCodes().isEmpty(); },
               [] { Tour::visible<Parameter_Monitor>()->parentWidget()->close(); },
               QStringLiteral("17-fault-history"), QString(), QStringLiteral("monitor-history")});
}

} // namespace

void addMonitorTour(Tour *tour, MainWindow *window, kt500sim::SimulatedDrive *drive)
{
    tour->addClosed(QStringLiteral("monitor can be opened"), [tour, window] {
        if (!clickTool(window, "actionParameter_Monitor"))
            tour->fail(QStringLiteral("the tool bar does not show \"Parameter Monitor\""));
        Tour::visible<Parameter_Monitor>()->parentWidget()->showMaximized();
    });
    addRun(tour, drive);
    // Each way to run has fields of its own.
    for (int tab = 0; tab < tabCount; ++tab) {
        tour->add({QStringLiteral("way %1 to run can be chosen").arg(tab + 1), [] { return true; },
                   [tab] {
                       auto *const ways = Tour::visible<QTabWidget>(QStringLiteral("methodTabs"));
                       ways->setCurrentIndex(qMin(tab, ways->count() - 1));
                   }});
        tour->add({QStringLiteral("way %1 to run is shown").arg(tab + 1),
                   [] { return true; },
                   {},
                   QStringLiteral("15-monitor-way-%1").arg(tab + 1)});
    }
    addFault(tour, drive);
}
