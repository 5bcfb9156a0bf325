// SPDX-License-Identifier: GPL-3.0-or-later
// The product with a simulated drive in its port list; with --tour it walks through its own windows.
#include "demo-app/gaintuningtour.h"
#include "demo-app/monitortour.h"
#include "demo-app/parametertour.h"
#include "demo-app/scopetour.h"
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

namespace {

constexpr int baud = 115200;
constexpr std::chrono::microseconds turnaround(1000);

// A load that the factory's gains move, but not well: an inertia that the drive does not know of yet, and a
// shaft that rings from grade 16 on until a notch is set at 938 Hz.
constexpr kt500sim::PlantSettings machine{5, 3600, 0.006, 0.0003, 0.08, 0};

// The walk fills a screen of this size; a desktop keeps the size it remembers.
constexpr int tourWidth = 1280;
constexpr int tourHeight = 800;

void print(FILE *stream, const QString &text)
{
    std::fputs(qPrintable(text + QLatin1Char('\n')), stream);
    std::fflush(stream);
}

int runTour(MainWindow *window, kt500sim::SimulatedDrive *drive, const QString &folder,
            const QString &language)
{
    Tour tour(folder, language);
    ParameterTourResult result;
    addParameterTour(&tour, window, drive, &result);
    addParameterWindowsTour(&tour);
    addParameterPdfTour(&tour, QStringLiteral("%1/parameters-%2.pdf").arg(folder, language));
    addMonitorTour(&tour, window, drive);
    addTrialRunTour(&tour, window);
    addScopeTour(&tour, window, drive);
    addGainTuningTour(&tour, window);
    QObject::connect(&tour, &Tour::failed, qApp, [](const QString &step, const QString &reason) {
        print(stderr, QStringLiteral("tour failed at \"%1\": %2").arg(step, reason));
        QCoreApplication::exit(1);
    });
    QObject::connect(&tour, &Tour::finished, qApp, [&result, &language] {
        print(stdout,
              QStringLiteral("%1: %2 parameters read in %3 s, %4 frames on the line, %5 retransmissions")
                  .arg(language)
                  .arg(result.parametersRead)
                  .arg(result.seconds, 0, 'f', 1)
                  .arg(result.frames)
                  .arg(result.retransmissions));
        QCoreApplication::exit(0);
    });
    window->setGeometry(0, 0, tourWidth, tourHeight);
    tour.start();
    const int code = QApplication::exec();
    window->close();
    return code;
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
    const QCommandLineOption languageOption(QStringLiteral("language"),
                                            QStringLiteral("Language of this start, kept in the settings."),
                                            QStringLiteral("zh_CN|en_US"));
    parser.addOptions({tourOption, languageOption});
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
    return QApplication::exec();
}
