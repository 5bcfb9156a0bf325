// SPDX-License-Identifier: GPL-3.0-or-later
// What the link costs while nothing is asked: processor time and wake-ups of a process that is connected at
// the USB entry, of one whose adapter has been pulled out since, and of an empty Qt program beside them.
// Linux only: the kernel counts both for every thread. With --link and a port it is one of these processes,
// with --bare the empty one.
#include "benchmain.h"
#include "link/portlist.h"
#include "link/serialport.h"
#include "link/silentgap.h"
#include "report.h"
#include "simulator/simulateddrive.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QThread>

#include <cstdio>
#include <stdexcept>

namespace {

constexpr int measuredTime = 20;  // s
constexpr int settleTime = 1500;  // ms; the link's own start, and the watch's first look, are over by then
constexpr int startLimit = 10000; // ms

const QString linkArgument = QStringLiteral("--link");
const QString bareArgument = QStringLiteral("--bare");

struct Usage
{
    double seconds = 0; // of processor time
    double wakeUps = 0; // how often a thread has gone to sleep by itself
};

QByteArray contentsOf(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw std::runtime_error(qPrintable(path + QLatin1String(" can't be read")));
    return file.readAll();
}

Usage usageOf(qint64 process)
{
    Usage usage;
    const QString tasks = QStringLiteral("/proc/%1/task").arg(process);
    const QStringList threads = QDir(tasks).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString &thread : threads) {
        const QString task = tasks + QLatin1Char('/') + thread;
        usage.seconds += contentsOf(task + QLatin1String("/schedstat")).split(' ').first().toDouble() * 1e-9;
        const QByteArrayList lines = contentsOf(task + QLatin1String("/status")).split('\n');
        for (const QByteArray &line : lines) {
            if (line.startsWith("voluntary_ctxt_switches:"))
                usage.wakeUps += line.mid(line.indexOf(':') + 1).trimmed().toDouble();
        }
    }
    return usage;
}

// A process of this program that says when it has reached the state to be measured.
class IdleProcess
{
public:
    explicit IdleProcess(const QStringList &arguments)
    {
        process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        process.start(QCoreApplication::applicationFilePath(), arguments);
        if (!process.waitForReadyRead(startLimit))
            throw std::runtime_error("the idle process does not start");
    }
    ~IdleProcess()
    {
        process.kill();
        process.waitForFinished();
    }
    Q_DISABLE_COPY_MOVE(IdleProcess)

    void begin() { before = usageOf(process.processId()); }
    // The row of the table, and nothing that the reading of it costs is in it.
    QStringList row(const char *name, double seconds) const
    {
        const Usage now = usageOf(process.processId());
        return {QString::fromLatin1(name), figure((now.seconds - before.seconds) / seconds * 100, 3),
                figure((now.wakeUps - before.wakeUps) / seconds, 1)};
    }

private:
    QProcess process;
    Usage before;
};

void startDrive(kt500sim::SimulatedDrive *drive)
{
    QString error;
    if (!drive->start(&error))
        throw std::runtime_error(qPrintable(error));
}

void measure()
{
    kt500sim::SimulatedDrive drive;
    kt500sim::SimulatedDrive pulledOut;
    startDrive(&drive);
    startDrive(&pulledOut);
    IdleProcess connected({linkArgument, drive.portName()});
    IdleProcess vanished({linkArgument, pulledOut.portName()});
    IdleProcess bare({bareArgument});
    pulledOut.hangUp(kt500sim::milliseconds(0));
    QThread::msleep(settleTime);

    QElapsedTimer clock;
    clock.start();
    for (IdleProcess *process : {&connected, &vanished, &bare})
        process->begin();
    QThread::sleep(measuredTime);
    const double seconds = double(clock.nsecsElapsed()) * 1e-9;
    printTable(QStringLiteral("Idle processes over %1 s").arg(measuredTime),
               {{"process", "% of a core", "wake-ups per second"},
                connected.row("link connected at USB", seconds),
                vanished.row("link whose adapter has gone", seconds),
                bare.row("empty Qt program", seconds)});
}

void sayReady()
{
    std::puts("ready");
    std::fflush(stdout);
}

int runLink(const QString &path)
{
    addSerialPort({path, QStringLiteral("Drive"), QStringLiteral("Maker")});
    SerialPort port;
    bool online = false;
    QObject::connect(&port, &SerialPort::servoONOFFLine, &port, [&online](bool state) {
        if (state && !online)
            sayReady();
        online = state;
    });
    port.getPortName(QStringLiteral("Drive(%1)").arg(path), usbBaudRate);
    return QApplication::exec();
}

int runBare()
{
    sayReady();
    return QApplication::exec();
}

} // namespace

int main(int argc, char *argv[])
{
    if (argc == 1)
        return runBenchmark(argc, argv, measure);
    useNoScreen();
    const QApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() == 3 && arguments.at(1) == linkArgument)
        return runLink(arguments.at(2));
    if (arguments.size() == 2 && arguments.at(1) == bareArgument)
        return runBare();
    std::fprintf(stderr, "usage: %s\n", argv[0]);
    return 2;
}
