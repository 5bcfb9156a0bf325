// SPDX-License-Identifier: GPL-3.0-or-later
// What the scope costs while it is used: the main thread's share of a live tick and of dragging a cursor
// beside a QCustomPlot that draws the same samples, the part of a core that a run and an idle window take,
// and the memory of a long run. All in processor time, the simulated drive's apart.
#include "scope/scope.h"
#include "../tests/scope/curvescenes.h"
#include "benchmain.h"
#include "catalogueeditor.h"
#include "driveprocess.h"
#include "link/serialport.h"
#include "report.h"
#include "scope/plotter.h"
#include "settings/applanguage.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QMouseEvent>
#include <QTimer>

#include <algorithm>
#include <array>
#include <memory>

#include <qcustomplot.h>

#include <malloc.h>

namespace {

constexpr int kept = 800000;  // samples of a channel
constexpr int perTick = 1600; // samples of a channel between two ticks
constexpr int ticks = 50;
constexpr int watched = 8; // seconds
// At the USB entry the link gives a drive up that answers a start 20 ms late, as one does on a busy machine.
constexpr int baudRate = 115200;
const QSize plotSize(900, 600);

void runFor(int milliseconds)
{
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    loop.exec();
}

double megabytesInUse()
{
    const struct mallinfo2 info = ::mallinfo2();
    return static_cast<double>(info.uordblks + info.hblkhd) / 1e6;
}

double longest(const QVector<double> &values)
{
    return *std::max_element(values.cbegin(), values.cend());
}

// Milliseconds of the main thread for the work and the painting that it causes.
double mainThreadCost(const std::function<void()> &work)
{
    const double before = threadSeconds();
    work();
    QCoreApplication::processEvents();
    return 1e3 * (threadSeconds() - before);
}

void fill(Plotter *plotter, int samples)
{
    static const std::array<QVector<double>, plotChannels> y{
        {scenes::wave("noisy sine", perTick, 1), scenes::wave("noisy sine", perTick, 2),
         scenes::wave("noisy sine", perTick, 3), scenes::wave("noisy sine", perTick, 4)}};
    plotter->receivePlotterDataScopeSlot({}, {}, {}, {}); // the first batch is thrown away
    for (int from = 0; from < samples; from += perTick)
        plotter->receivePlotterDataScopeSlot(y[0], y[1], y[2], y[3]);
}

std::unique_ptr<QCustomPlot> customPlot(int samples)
{
    auto plot = std::make_unique<QCustomPlot>();
    plot->resize(plotSize);
    plot->setNotAntialiasedElements(QCP::aeNone);
    plot->setAntialiasedElements(QCP::aePlottables);
    QVector<double> x(samples);
    for (int i = 0; i < samples; ++i)
        x[i] = PointTrack::sampleStep * i;
    for (unsigned c = 0; c < plotChannels; ++c)
        plot->addGraph()->setData(x, scenes::wave("noisy sine", samples, c + 1), true);
    plot->rescaleAxes();
    plot->show();
    return plot;
}

QVector<double> tickCosts(Plotter *plotter)
{
    QVector<double> costs;
    for (int tick = 0; tick < ticks; ++tick) {
        fill(plotter, perTick);
        const double cost = mainThreadCost([plotter] { plotter->runTimerOutSlot(); });
        // The picture of the curves comes later, and is painted then.
        const double before = threadSeconds();
        runFor(60);
        costs.append(cost + 1e3 * (threadSeconds() - before));
    }
    return costs;
}

QVector<double> dragCosts(Plotter *plotter, bool isX)
{
    const auto send = [plotter](QEvent::Type type, const QPoint &at) {
        const bool isMove = type == QEvent::MouseMove;
        QMouseEvent event(type, at, isMove ? Qt::NoButton : Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(plotter, &event);
    };
    const QPoint handle = isX ? QPoint(50, 40) : QPoint(40, 50 + 65 * (plotter->height() - 100) / 100);
    send(QEvent::MouseButtonPress, handle);
    QVector<double> costs;
    for (int step = 1; step <= ticks; ++step) {
        const QPoint at = isX ? handle + QPoint(13 * step, 0) : handle - QPoint(0, 5 * step);
        costs.append(mainThreadCost([&] { send(QEvent::MouseMove, at); }));
    }
    send(QEvent::MouseButtonRelease, handle);
    return costs;
}

void measureMainThread()
{
    Plotter plotter;
    plotter.resize(plotSize);
    plotter.show();
    fill(&plotter, kept);
    plotter.receiveScopIsStopSlot(false);
    plotter.setLive(true);
    runFor(500);
    const QVector<double> tick = tickCosts(&plotter);
    plotter.setLive(false);
    plotter.receiveScopIsStopSlot(true);
    plotter.setXMeasurement(true);
    plotter.setYMeasurement(true);
    runFor(500);
    const QVector<double> xDrag = dragCosts(&plotter, true);
    const QVector<double> yDrag = dragCosts(&plotter, false);
    const std::unique_ptr<QCustomPlot> custom = customPlot(kept);
    runFor(200);
    QVector<double> replots;
    for (int round = 0; round < 10; ++round)
        replots.append(mainThreadCost([&] { custom->replot(QCustomPlot::rpImmediateRefresh); }));
    const auto row = [&](const char *name, const QVector<double> &costs) {
        return QStringList{name, figure(median(costs), 2), figure(longest(costs), 2),
                           figure(median(costs) / median(replots), 3)};
    };
    printTable(QStringLiteral("Main thread with 4 x 800,000 samples, 900 x 600, milliseconds"),
               {{"what", "median", "longest", "beside a replot of QCustomPlot"},
                row("live tick, painted", tick),
                row("step of an upright cursor", xDrag),
                row("step of a level cursor", yDrag),
                row("replot of QCustomPlot", replots)});
}

// Percent of a core over some seconds, and the batches of samples that came meanwhile.
QStringList share(const char *what, const int *batches)
{
    QElapsedTimer clock;
    clock.start();
    const int before = *batches;
    const double process = processSeconds();
    const double thread = threadSeconds();
    runFor(watched * 1000);
    const double passed = static_cast<double>(clock.nsecsElapsed()) * 1e-9;
    return {what, figure(100 * (processSeconds() - process) / passed, 2),
            figure(100 * (threadSeconds() - thread) / passed, 2), figure((*batches - before) / passed, 0)};
}

void measureRun(const QString &portName)
{
    writeConfiguredLanguage(QStringLiteral("en_US"));
    bool online = false;
    SerialPort port;
    Scope scope;
    QObject::connect(&port, &SerialPort::servoONOFFLine, &port, [&online](bool state) { online = state; });
    QObject::connect(&port, &SerialPort::handleParameterScope, &scope, &Scope::handleParameterScope);
    QObject::connect(&scope, &Scope::writeToSerialPort, &port, &SerialPort::writeScopeData);
    QObject::connect(&scope, &Scope::scopeRuning, &port, &SerialPort::scopeIsRunning);
    int batches = 0;
    QObject::connect(&scope, &Scope::sendPlotterDataSignal, &scope, [&batches] { ++batches; });
    scope.resize(900, 685);
    scope.show();
    port.getPortName(QStringLiteral("Drive(%1)").arg(portName), baudRate);
    waitUntil([&online] { return online; }, "the link");
    QVector<QStringList> rows{
        {"scope window, four channels", "all threads", "main thread", "batches a second, of 200"}};
    runFor(500);
    rows.append(share("before the first run", &batches));
    scope.runActSlot();
    waitUntil([&batches] { return batches > 100; }, "the stream");
    rows.append(share("live, the window stands", &batches));
    fill(scope.findChild<Plotter *>(), 600000);
    runFor(500);
    rows.append(share("live, the window rolls", &batches));
    scope.runActSlot();
    runFor(1000);
    rows.append(share("stopped", &batches));
    printTable(QStringLiteral("Percent of one core, over %1 s").arg(watched), rows);
    port.prepareShutdown();
    port.wait();
}

void measureMemory()
{
    const double before = megabytesInUse();
    const std::unique_ptr<QCustomPlot> custom = customPlot(kept);
    runFor(200);
    const double peer = megabytesInUse() - before;
    const double start = megabytesInUse();
    Plotter plotter;
    plotter.resize(plotSize);
    plotter.show();
    plotter.receiveScopIsStopSlot(false);
    plotter.setLive(true);
    const auto row = [&](const char *what) {
        const double used = megabytesInUse() - start;
        return QStringList{what, figure(used, 1), figure(used / peer, 2)};
    };
    QVector<QStringList> rows{{"run of four channels", "megabytes", "beside QCustomPlot"}};
    const auto runTicks = [&plotter](int count) {
        for (int tick = 0; tick < count; ++tick) {
            fill(&plotter, perTick);
            plotter.runTimerOutSlot();
        }
        runFor(300);
    };
    runTicks(5 * 120);
    rows.append(row("two minutes"));
    runTicks(5 * 600);
    rows.append(row("twelve minutes"));
    runTicks(5 * 2880);
    rows.append(row("an hour"));
    rows.append({"QCustomPlot with 4 x 800,000 samples", figure(peer, 1), "1.00"});
    printTable(QStringLiteral("Memory"), rows);
}

} // namespace

int main(int argc, char *argv[])
{
    // Before the first thread.
    const DriveProcess drive;
    return runBenchmark(argc, argv, [&drive] {
        measureMainThread();
        measureRun(drive.portName());
        measureMemory();
    });
}
