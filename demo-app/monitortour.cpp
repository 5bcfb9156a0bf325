// SPDX-License-Identifier: GPL-3.0-or-later
#include "demo-app/monitortour.h"

#include "demo-app/tour.h"
#include "monitor/parameter_monitor.h"
#include "monitor/parameter_status.h"
#include "shell/mainwindow.h"
#include "simulator/simulateddrive.h"

#include <QAction>
#include <QComboBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QMdiSubWindow>
#include <QMessageBox>
#include <QPushButton>
#include <QTabWidget>
#include <QTableWidget>
#include <QTest>

#include <cstdlib>

namespace {

constexpr int shownFault = 16;
constexpr int shownSpeed = 750; // rpm

template <typename T>
T *find(const char *name)
{
    const auto *const monitor = Tour::visible<Parameter_Monitor>();
    return monitor ? monitor->findChild<T *>(QLatin1String(name)) : nullptr;
}

QString statusOf(const QString &code)
{
    const auto *const table = find<QTableWidget>("statusTable");
    for (int row = 0; table && row < table->rowCount(); ++row) {
        if (table->item(row, Parameter_Status::CodeColumn)->text() == code)
            return table->item(row, Parameter_Status::ValueColumn)->text();
    }
    return QString();
}

// The last of the functions that a cycle brings.
bool areFunctionsShown()
{
    return find<QTableWidget>("doTable")->item(15, 1)->text() != QLatin1String("Null ");
}

void click(const char *button)
{
    QTest::mouseClick(find<QPushButton>(button), Qt::LeftButton);
}

} // namespace

void addMonitorTour(Tour *tour, MainWindow *window, kt500sim::SimulatedDrive *drive)
{
    tour->add({QStringLiteral("monitor can be opened"),
               [] { return !Tour::visible<QMessageBox>() && !Tour::visible<QFileDialog>(); },
               [tour, window] {
                   auto *const action =
                       window->findChild<QAction *>(QStringLiteral("actionParameter_Monitor"));
                   if (!Tour::clickAction(action))
                       tour->fail(QStringLiteral("the tool bar does not show \"Parameter Monitor\""));
               },
               QString()});
    tour->add({QStringLiteral("monitor shows the drive"), [] { return !statusOf("Pn-F71").isEmpty(); },
               [] {
                   Tour::visible<Parameter_Monitor>()->parentWidget()->showMaximized();
                   find<QComboBox>("diSourceComboBox")->setCurrentIndex(1);
                   find<QComboBox>("methodComboBox")->setCurrentIndex(1);
               },
               QString()});
    tour->add({QStringLiteral("drive has the auxiliary source and the speed mode"),
               [drive] { return drive->readRegister(200) == 0xFFFF && drive->readRegister(100) == 1; },
               [] {
                   auto *const speed = find<QLineEdit>("lineEdit3");
                   speed->setText(QString::number(shownSpeed));
                   QTest::keyClick(speed, Qt::Key_Return);
               },
               QString()});
    tour->add({QStringLiteral("drive has the speed"),
               [drive] { return drive->readPair(401) == 10 * shownSpeed && areFunctionsShown(); },
               [] { click("enableButton"); }, QString()});
    tour->add({QStringLiteral("motor turns"),
               [] { return std::abs(statusOf("Pn-F00").toInt() - shownSpeed) < 30 && areFunctionsShown(); },
               [] { click("enableButton"); }, QStringLiteral("15-monitor"), 20000});
    tour->add({QStringLiteral("motor stands"), [] { return statusOf("Pn-F00").toInt() == 0; },
               [drive] { drive->raiseFault(shownFault); }, QString(), 20000});
    tour->add({QStringLiteral("fault is shown"),
               [] { return find<QPushButton>("faultResetButton")->isEnabled(); },
               [] { click("faultResetButton"); }, QStringLiteral("16-fault")});
    tour->add({QStringLiteral("fault is reset"),
               [] { return find<QLineEdit>("faultCurrentEdit")->text().isEmpty(); },
               [] { find<QTabWidget>("tabWidget")->setCurrentIndex(1); }, QString()});
    tour->add({QStringLiteral("record shows the fault"),
               [] { return !find<QTableWidget>("historyTable")->item(0, 1)->text().isEmpty(); },
               [] { Tour::visible<Parameter_Monitor>()->parentWidget()->close(); },
               QStringLiteral("17-fault-history")});
}
