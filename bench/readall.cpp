// SPDX-License-Identifier: GPL-3.0-or-later
// "Read Parameters" of a whole catalogue on a line of 115200 baud and at "USB", beside the time that the line
// itself needs: every frame's wire time, the silent gap before each request and the drive's turnaround.
#include "benchmain.h"
#include "catalogueeditor.h"
#include "link/serialport.h"
#include "link/silentgap.h"
#include "messageboxes.h"
#include "parameter/parametereditor.h"
#include "report.h"
#include "settings/applanguage.h"
#include "simulator/simulateddrive.h"
#include "support/editortexts.h"

#include <QElapsedTimer>

#include <array>
#include <chrono>
#include <stdexcept>

namespace {

constexpr int rounds = 5;
constexpr int bitsPerCharacter = 10;

struct Line
{
    const char *name;
    int speed;    // as the connection dialog gives it
    int baudRate; // of the drive; 0: its bytes take no time
    std::chrono::microseconds turnaround;
};
constexpr std::array<Line, 2> lines{{
    {"115200", 115200, 115200, std::chrono::microseconds(1000)},
    {"USB", usbBaudRate, 0, std::chrono::microseconds(500)},
}};

struct Transfer
{
    double measured = 0; // seconds
    double needed = 0;   // seconds that the line needs for the same frames
    int parameters = 0;
    quint64 requests = 0;
    quint64 retransmissions = 0;
};

Transfer readCatalogue(const Line &line)
{
    kt500sim::DriveOptions options;
    options.pacing = {line.baudRate, line.turnaround};
    kt500sim::SimulatedDrive drive(options);
    QString error;
    if (!drive.start(&error))
        throw std::runtime_error(qPrintable(error));

    const auto editor = makeEditor();
    bool online = false;
    SerialPort port;
    QObject::connect(&port, &SerialPort::servoONOFFLine, &port, [&online](bool state) { online = state; });
    QObject::connect(editor.get(), qOverload<QByteArray, QString>(&ParameterEditor::writeToSerialPort), &port,
                     &SerialPort::writeSlot);
    QObject::connect(&port, &SerialPort::handleBaseParameter, editor.get(),
                     &ParameterEditor::handleBaseParameter);
    port.getPortName(QStringLiteral("Drive(%1)").arg(drive.portName()), line.speed);
    waitUntil([&online] { return online; }, "the link");

    drive.resetCounters();
    QElapsedTimer clock;
    Transfer transfer;
    MessageBoxes boxes;
    boxes.shown = [&] { transfer.measured = double(clock.nsecsElapsed()) * 1e-9; };
    clock.start();
    editor->readPageSlt();
    waitUntil([&transfer] { return transfer.measured > 0; }, "the end of the reading", 60000);
    if (boxes.texts != QStringList(editortext::readingDone))
        throw std::runtime_error(qPrintable(boxes.texts.join(QLatin1Char('\n'))));

    const kt500sim::Counters counters = drive.counters();
    const double wire = line.baudRate > 0 ? double(counters.bytesReceived + counters.bytesSent) *
                                                bitsPerCharacter / line.baudRate
                                          : 0;
    const double pause = std::chrono::duration<double>(silentGap(line.speed) + line.turnaround).count();
    transfer.needed = wire + double(counters.requests) * pause;
    transfer.parameters = parameterCount(*editor);
    transfer.requests = counters.requests;
    transfer.retransmissions = counters.retransmissions;
    return transfer;
}

QStringList measure(const Line &line, const QString &language)
{
    writeConfiguredLanguage(language);
    QVector<double> measured;
    QVector<double> needed;
    Transfer last;
    quint64 retransmissions = 0;
    for (int round = 0; round < rounds; ++round) {
        last = readCatalogue(line);
        measured.append(last.measured);
        needed.append(last.needed);
        retransmissions += last.retransmissions;
    }
    return {QString::fromLatin1(line.name),
            language,
            QString::number(last.parameters),
            QString::number(last.requests),
            figure(median(measured), 3),
            figure(median(needed), 3),
            figure(medianRatio(measured, needed), 3),
            ratioSpread(measured, needed),
            QString::number(retransmissions)};
}

} // namespace

int main(int argc, char *argv[])
{
    return runBenchmark(argc, argv, [] {
        QVector<QStringList> rows{{"line", "catalogue", "parameters", "requests", "seconds", "line needs",
                                   "ratio", "spread", "retransmissions"}};
        for (const Line &line : lines) {
            for (const char *language : {"zh_CN", "en_US"})
                rows.append(measure(line, QString::fromLatin1(language)));
        }
        printTable(QStringLiteral("Reading all parameters, 1 ms turnaround at 115200 baud and 0.5 ms at USB, "
                                  "median of %1 rounds")
                       .arg(rounds),
                   rows);
    });
}
