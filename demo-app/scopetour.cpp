// SPDX-License-Identifier: GPL-3.0-or-later
#include "demo-app/scopetour.h"

#include "demo-app/tour.h"
#include "scope/channelconfig.h"
#include "scope/channelpanels.h"
#include "scope/plotter.h"
#include "scope/scope.h"
#include "scope/scopetoolbar.h"
#include "scope/spectrumwindow.h"
#include "shell/mainwindow.h"
#include "simulator/simulateddrive.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QElapsedTimer>
#include <QTest>
#include <QTimer>

#include <memory>

namespace {

constexpr int liveTime = 6000;   // ms
constexpr int reversal = 900;    // ms: the motor turns the other way each time
constexpr int shownSpeed = 8000; // 0.1 rpm
// Speed, its command, torque and average torque.
const QStringList shownCodes{QStringLiteral("Pn-F00"), QStringLiteral("Pn-F01"), QStringLiteral("Pn-F03"),
                             QStringLiteral("Pn-F05")};

template <typename T>
T *find()
{
    const auto *const scope = Tour::visible<Scope>();
    return scope ? scope->findChild<T *>() : nullptr;
}

void clickTool(ScopeToolBar::Tool tool)
{
    auto *const tools = find<ScopeToolBar>();
    QTest::mouseClick(tools->widgetForAction(tools->action(tool)), Qt::LeftButton);
}

void chooseChannels()
{
    auto *const panels = find<ChannelPanels>();
    for (int channel = 0; channel < panels->channels().size(); ++channel) {
        const int row = panels->rowOf(shownCodes.at(channel));
        if (row >= 0)
            panels->channel(channel)->comboBox->setCurrentIndex(row);
        if (!panels->channel(channel)->checkBox->isChecked() && panels->channel(channel)->isEnabled())
            panels->channel(channel)->checkBox->click();
    }
}

// Draws the zoom's band around the first seconds of the picture.
void zoomIntoTheRun()
{
    constexpr int frame = 50;           // pixels around the plot area
    constexpr double shownTime = 60000; // ms
    constexpr double zoomedTime = 5400; // ms
    auto *const plot = find<Plotter>();
    const QPoint from(frame + 1, frame + 1);
    const QPoint to(frame + int((plot->width() - 2 * frame) * zoomedTime / shownTime),
                    plot->height() - frame - 1);
    QTest::mousePress(plot, Qt::LeftButton, {}, from);
    QTest::mouseMove(plot, to);
    QTest::mouseRelease(plot, Qt::LeftButton, {}, to);
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

} // namespace

void addScopeTour(Tour *tour, MainWindow *window, kt500sim::SimulatedDrive *drive)
{
    const auto live = std::make_shared<QElapsedTimer>();
    auto *const toAndFro = new QTimer(tour);
    const auto speed = std::make_shared<int>(shownSpeed);
    QObject::connect(toAndFro, &QTimer::timeout, tour, [drive, speed] {
        *speed = -*speed;
        drive->writePair(401, *speed);
    });

    tour->add({QStringLiteral("scope can be opened"), [] { return !QApplication::activeModalWidget(); },
               [tour, window, drive] {
                   // Four channels need the pace of USB.
                   drive->setPacing({});
                   startMotor(drive);
                   if (!Tour::clickAction(window->findChild<QAction *>(QStringLiteral("actionData_Scope"))))
                       tour->fail(QStringLiteral("the tool bar does not show \"Data Scope\""));
               },
               QString()});
    tour->add({QStringLiteral("scope shows its channels"), [] { return find<ChannelPanels>() != nullptr; },
               [live, toAndFro] {
                   Tour::visible<Scope>()->parentWidget()->showMaximized();
                   chooseChannels();
                   clickTool(ScopeToolBar::Run);
                   live->start();
                   toAndFro->start(reversal);
               },
               QString()});
    tour->add({QStringLiteral("waves have come"), [live] { return live->elapsed() > liveTime; },
               [toAndFro] {
                   clickTool(ScopeToolBar::Run);
                   toAndFro->stop();
               },
               QStringLiteral("20-scope-live"), 2 * liveTime});
    tour->add({QStringLiteral("capture has stopped"),
               [] { return find<ScopeToolBar>()->action(ScopeToolBar::MeasureX)->isEnabled(); },
               [drive] {
                   stopMotor(drive);
                   zoomIntoTheRun();
                   clickTool(ScopeToolBar::MeasureX);
                   clickTool(ScopeToolBar::MeasureY);
               },
               QString()});
    tour->add({QStringLiteral("cursors are shown"), [live] { return live->elapsed() > liveTime + 1500; },
               [] { clickTool(ScopeToolBar::Fft); }, QStringLiteral("21-scope-cursors")});
    tour->add({QStringLiteral("spectrum comes"), [] { return Tour::visible<SpectrumWindow>() != nullptr; },
               [live] { live->restart(); }, QString(), 15000});
    tour->add({QStringLiteral("spectrum is shown"), [live] { return live->elapsed() > 500; },
               [] { Tour::visible<SpectrumWindow>()->close(); }, QStringLiteral("22-spectrum")});
    tour->add({QStringLiteral("a point can be clicked"), [] { return !Tour::visible<SpectrumWindow>(); },
               [] {
                   auto *const plot = find<Plotter>();
                   QTest::mouseClick(plot, Qt::RightButton, {}, plot->rect().center());
               },
               QString()});
    tour->add({QStringLiteral("scope can be closed"), [] { return true; },
               [] { Tour::visible<Scope>()->parentWidget()->close(); },
               QStringLiteral("22-values-at-a-point")});
}
