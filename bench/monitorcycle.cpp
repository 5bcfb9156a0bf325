// SPDX-License-Identifier: GPL-3.0-or-later
// The monitor's poll cycle over a simulated drive with a moving motor: cycles a second beside what the line
// and the pause of 200 ms need, and the share of one core that the main thread takes with the window open.
//
//   bench-monitorcycle [--seconds N] [--rounds N] [--line usb|serial] [--language en_US|zh_CN]
#include "benchmain.h"
#include "catalogueeditor.h"
#include "link/serialport.h"
#include "link/silentgap.h"
#include "monitor/parameter_monitor.h"
#include "report.h"
#include "settings/applanguage.h"
#include "simulator/simulateddrive.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QTimer>

#include <array>
#include <stdexcept>

namespace {

constexpr int baudRate = 115200;
constexpr int bitsPerCharacter = 10;
constexpr double exchangesPerCycle = 15;
constexpr double pause = 0.2; // seconds between two cycles

struct Line
{
    const char *option;
    const char *name;
    int speed; // as the link takes it
    kt500sim::Pacing pacing;
};

struct Watch
{
    double cycles = 0;  // a second
    double allowed = 0; // cycles a second that the line and the pause leave room for
    double share = 0;   // of one core, main thread
};

// An event loop that sleeps between events, as the application's does.
void runFor(int milliseconds)
{
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    loop.exec();
}

Watch watchMonitor(const Line &line, int seconds)
{
    kt500sim::DriveOptions options;
    options.pacing = line.pacing;
    kt500sim::SimulatedDrive drive(options);
    QString error;
    if (!drive.start(&error))
        throw std::runtime_error(qPrintable(error));
    // A motor that turns changes many rows in each cycle.
    drive.writeRegister(200, 0xFFFF);
    drive.writeRegister(100, 1);
    drive.writePair(401, 5000);
    drive.writeRegister(202, 1);

    bool online = false;
    SerialPort port;
    QObject::connect(&port, &SerialPort::servoONOFFLine, &port, [&online](bool state) { online = state; });
    Parameter_Monitor monitor(&port);
    QObject::connect(&monitor, qOverload<QByteArray, QString>(&Parameter_Monitor::writeToSerialPort), &port,
                     &SerialPort::writeSlot);
    QObject::connect(&port, &SerialPort::handleParameterMonitor, &monitor,
                     &Parameter_Monitor::handleParameterMonitor);
    monitor.resize(974, 640);
    monitor.show();
    port.getPortName(QStringLiteral("Drive(%1)").arg(drive.portName()), line.speed);
    waitUntil([&online] { return online; }, "the link");
    runFor(1000); // the first cycles fill every row

    drive.resetCounters();
    const double before = threadSeconds();
    QElapsedTimer clock;
    clock.start();
    runFor(seconds * 1000);
    const double measured = double(clock.nsecsElapsed()) * 1e-9;
    const kt500sim::Counters counters = drive.counters();

    Watch watch;
    watch.share = (threadSeconds() - before) / measured;
    watch.cycles = double(counters.requests) / exchangesPerCycle / measured;
    double needed = pause;
    if (line.speed != usbBaudRate) {
        const double bytes = double(counters.bytesReceived + counters.bytesSent) / double(counters.requests);
        const std::chrono::duration<double> around = silentGap(line.speed) + line.pacing.turnaround;
        needed += exchangesPerCycle * (bytes * bitsPerCharacter / line.speed + around.count());
    }
    watch.allowed = 1 / needed;
    return watch;
}

QStringList measure(const Line &line, const QString &language, int seconds, int rounds)
{
    writeConfiguredLanguage(language);
    QVector<double> cycles;
    QVector<double> allowed;
    QVector<double> share;
    for (int round = 0; round < rounds; ++round) {
        const Watch watch = watchMonitor(line, seconds);
        cycles.append(watch.cycles);
        allowed.append(watch.allowed);
        share.append(100 * watch.share);
    }
    return {QString::fromLatin1(line.name),
            language,
            figure(median(cycles), 2),
            figure(median(allowed), 2),
            figure(medianRatio(cycles, allowed), 3),
            ratioSpread(cycles, allowed),
            figure(median(share), 2)};
}

} // namespace

int main(int argc, char *argv[])
{
    return runBenchmark(argc, argv, [] {
        const QCommandLineOption seconds("seconds", "How long one watch lasts.", "N", "4");
        const QCommandLineOption rounds("rounds", "How many watches give the median.", "N", "5");
        const QCommandLineOption onlyLine("line", "Only this line: usb or serial.", "NAME");
        const QCommandLineOption onlyLanguage("language", "Only this catalogue: en_US or zh_CN.", "NAME");
        QCommandLineParser parser;
        parser.addOptions({seconds, rounds, onlyLine, onlyLanguage});
        parser.addHelpOption();
        parser.process(*QCoreApplication::instance());

        const std::array<Line, 2> lines{{{"usb", "USB, no latency", usbBaudRate, {}},
                                         {"serial",
                                          "115200 baud, 1 ms turnaround",
                                          baudRate,
                                          {baudRate, std::chrono::microseconds(1000)}}}};
        QVector<QStringList> rows{{"line", "catalogue", "cycles a second", "line and pause allow", "ratio",
                                   "spread", "main thread, % of a core"}};
        for (const Line &line : lines) {
            for (const QString &language : {QStringLiteral("en_US"), QStringLiteral("zh_CN")}) {
                if ((!parser.isSet(onlyLine) || parser.value(onlyLine) == QLatin1String(line.option)) &&
                    (!parser.isSet(onlyLanguage) || parser.value(onlyLanguage) == language))
                    rows.append(
                        measure(line, language, parser.value(seconds).toInt(), parser.value(rounds).toInt()));
            }
        }
        printTable(QStringLiteral("The monitor's poll cycle, motor turning, median of %1 rounds of %2 s")
                       .arg(parser.value(rounds), parser.value(seconds)),
                   rows);
    });
}
