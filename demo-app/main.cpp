// SPDX-License-Identifier: GPL-3.0-or-later
// The product with a simulated drive in its port list; with --tour it walks through its own windows.
#include "demo-app/alivetour.h"
#include "demo-app/gaintuningtour.h"
#include "demo-app/monitortour.h"
#include "demo-app/parametertour.h"
#include "demo-app/scopetour.h"
#include "demo-app/shelltour.h"
#include "demo-app/tour.h"
#include "demo-app/trialruntour.h"
#include "link/portlist.h"
#include "settings/applanguage.h"
#include "shell/mainwindow.h"
#include "shell/startup.h"
#include "simulator/simulateddrive.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QTemporaryDir>

#include <cstdio>
#include <functional>

namespace {

constexpr int baud = 115200;
constexpr std::chrono::microseconds turnaround(1000);

// A load that the factory's gains move, but not well: an inertia that the drive does not know of yet, and a
// shaft that rings from grade 16 on until a notch is set at 938 Hz.
constexpr kt500sim::PlantSettings machine{5, 3600, 0.006, 0.0003, 0.08, 0};

void print(FILE *stream, const QString &text)
{
    std::fputs(qPrintable(text + QLatin1Char('\n')), stream);
    std::fflush(stream);
}

void addSteps(Tour *tour, MainWindow *window, kt500sim::SimulatedDrive *drive, ParameterTourResult *result,
              const QString &language)
{
    addConnectionTour(tour, window);
    addParameterTour(tour, window, drive, result);
    addParameterWindowsTour(tour);
    addParameterFilesTour(tour);
    addMonitorTour(tour, window, drive);
    addTrialRunTour(tour, window);
    addScopeTour(tour, window, drive);
    addGainTuningTour(tour, window);
    addMenusTour(tour, window);
    addLostLinkTour(tour, drive);
    addLanguageTour(tour, window, isChinese(language));
}

void printFaults(const Tour &tour)
{
    const QStringList faults = tour.faults();
    for (const QString &fault : faults)
        print(stderr, QStringLiteral("fault: ") + fault);
}

// Says what was seen; true when nothing was wrong with it.
bool report(const Tour &tour, const ParameterTourResult &result, const QString &language)
{
    print(stdout, QStringLiteral("%1: %2 parameters read in %3 s, %4 frames on the line, %5 retransmissions")
                      .arg(language)
                      .arg(result.parametersRead)
                      .arg(result.seconds, 0, 'f', 1)
                      .arg(result.frames)
                      .arg(result.retransmissions));
    printFaults(tour);
    const QStringList missing = tour.missing();
    for (const QString &window : missing)
        print(stderr, QStringLiteral("not visited: ") + window);
    return tour.faults().isEmpty() && missing.isEmpty();
}

// Walks to the end; 0 when nothing failed and what was seen is good.
int walk(Tour *tour, MainWindow *window, const std::function<bool()> &isGood)
{
    QObject::connect(tour, &Tour::failed, qApp, [tour](const QString &step, const QString &reason) {
        printFaults(*tour);
        print(stderr, QStringLiteral("tour failed at \"%1\": %2").arg(step, reason));
        QCoreApplication::exit(1);
    });
    QObject::connect(tour, &Tour::finished, qApp, [&] { QCoreApplication::exit(isGood() ? 0 : 1); });
    window->showMaximized();
    tour->start();
    const int code = QApplication::exec();
    window->close();
    return code;
}

int runTour(MainWindow *window, kt500sim::SimulatedDrive *drive, const QString &folder,
            const QString &language)
{
    Tour tour(folder, language);
    ParameterTourResult result;
    addSteps(&tour, window, drive, &result, language);
    return walk(&tour, window, [&] { return report(tour, result, language); });
}

int runAlive(MainWindow *window, kt500sim::SimulatedDrive *drive, const QString &folder,
             const QString &language)
{
    Tour tour(folder, language);
    addConnectionTour(&tour, window);
    addAliveTour(&tour, window, drive);
    return walk(&tour, window, [] { return true; });
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QApplication application(argc, argv);

    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Velmora with a simulated KT500 drive in its port list."));
    parser.addHelpOption();
    const QCommandLineOption tourOption(
        QStringLiteral("tour"), QStringLiteral("Walk through the windows and put pictures into <folder>."),
        QStringLiteral("folder"));
    const QCommandLineOption aliveOption(
        QStringLiteral("alive"), QStringLiteral("Put a picture of scope and trial run into <folder>."),
        QStringLiteral("folder"));
    const QCommandLineOption languageOption(QStringLiteral("language"),
                                            QStringLiteral("Language of this start, kept in the settings."),
                                            QStringLiteral("zh_CN|en_US"));
    parser.addOptions({tourOption, aliveOption, languageOption});
    parser.process(application);
    if (parser.isSet(languageOption))
        writeConfiguredLanguage(parser.value(languageOption));

    const QTemporaryDir linkFolder;
    kt500sim::DriveOptions options;
    options.linkPath = linkFolder.filePath(QStringLiteral("kt500"));
    options.pacing = {baud, turnaround};
    kt500sim::SimulatedDrive drive(options);
    drive.setPlant(machine);
    QString error;
    if (!drive.start(&error)) {
        print(stderr, QStringLiteral("The simulated drive does not start: ") + error);
        return 1;
    }
    // The maker's word puts the entry on top of the connection dialog's list.
    addSerialPort(
        {drive.portName(), QStringLiteral("Brennic KT500 simulated drive"), QStringLiteral("Brennic")});

    const Application velmora = startApplication();
    if (parser.isSet(tourOption))
        return runTour(velmora.window.get(), &drive, parser.value(tourOption), configuredLanguage());
    if (parser.isSet(aliveOption))
        return runAlive(velmora.window.get(), &drive, parser.value(aliveOption), configuredLanguage());
    return QApplication::exec();
}
