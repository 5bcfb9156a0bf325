// SPDX-License-Identifier: GPL-3.0-or-later
// "Read Parameters" of a whole catalogue on a line of 115200 baud and at "USB", beside the time that the line
// itself needs: every frame's wire time, the silent gap before each request and what the drive took to
// answer. At "USB" libmodbus and the barest client there can be do the same reads, from the same drive and in
// turn with ours: what they take longer than the line is the machine's.
#include "bareclient.h"
#include "benchmain.h"
#include "catalogueeditor.h"
#include "link/requests.h"
#include "link/serialport.h"
#include "link/silentgap.h"
#include "messageboxes.h"
#include "parameter/parametereditor.h"
#include "rawclient.h"
#include "registerread.h"
#include "report.h"
#include "settings/applanguage.h"
#include "simulator/simulateddrive.h"
#include "support/editortexts.h"
#include "wakeup.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#include <array>
#include <chrono>
#include <cstdio>
#include <functional>
#include <memory>
#include <stdexcept>

namespace {

constexpr int rounds = 9;
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

struct Client
{
    double measured = 0; // seconds
    double needed = 0;   // seconds that the line needs for the same frames
    // Microseconds from a reply to the next request, as the drive sees it.
    double medianBetween = 0;
    double meanBetween = 0;
};

struct Transfer
{
    Client ours;
    // Nothing where there is a silent gap, which these two don't keep.
    Client libmodbus;
    Client raw;
    double lateness = 0; // microseconds by which the drive answered us later than it should
    quint64 requests = 0;
    quint64 retransmissions = 0;
};

// What passed on the line, as the drive saw it.
class LineRecord
{
public:
    explicit LineRecord(kt500sim::SimulatedDrive *recorded)
        : drive(recorded)
    {
        drive->resetCounters();
        drive->setFrameListener([this](const kt500sim::LoggedFrame &frame) { note(frame); });
    }
    ~LineRecord() { drive->setFrameListener({}); }
    Q_DISABLE_COPY_MOVE(LineRecord)

    // What follows is to be asked when the last reply has been read: it has been noted by then.
    const QList<RegisterRead> &reads() const { return readList; }
    // Seconds from the requests to the ends of their replies: wire time and turnaround, and what the
    // system's timer has added to them.
    double answering() const { return std::chrono::duration<double>(answerTime).count(); }
    // Microseconds from a reply to the next request, for each request but the first.
    const QVector<double> &between() const { return clientTimes; }

private:
    void note(const kt500sim::LoggedFrame &frame)
    {
        if (frame.kind == kt500sim::FrameKind::Reply) {
            answered = frame.time;
            answerTime += answered - asked;
            return;
        }
        if (frame.kind != kt500sim::FrameKind::Request)
            return;
        asked = frame.time;
        if (!readList.isEmpty())
            clientTimes.append(std::chrono::duration<double, std::micro>(asked - answered).count());
        const QByteArray bytes(reinterpret_cast<const char *>(frame.bytes.data()), int(frame.bytes.size()));
        readList.append({addressOfRequest(bytes), registersOfRequest(bytes)});
    }

    kt500sim::SimulatedDrive *const drive;
    kt500sim::nanoseconds asked{0};
    kt500sim::nanoseconds answered{0};
    kt500sim::nanoseconds answerTime{0};
    QVector<double> clientTimes; // microseconds
    QList<RegisterRead> readList;
};

// Seconds from the click to the message that all is read.
double secondsOfPageRead(const QString &portName, int speed, const std::function<void()> &beginning)
{
    const auto editor = makeEditor();
    bool online = false;
    SerialPort port;
    QObject::connect(&port, &SerialPort::servoONOFFLine, &port, [&online](bool state) { online = state; });
    QObject::connect(editor.get(), qOverload<QByteArray, QString>(&ParameterEditor::writeToSerialPort), &port,
                     &SerialPort::writeSlot);
    QObject::connect(&port, &SerialPort::handleBaseParameter, editor.get(),
                     &ParameterEditor::handleBaseParameter);
    port.getPortName(QStringLiteral("Drive(%1)").arg(portName), speed);
    waitUntil([&online] { return online; }, "the link");

    beginning();
    QElapsedTimer clock;
    double seconds = 0;
    MessageBoxes boxes;
    boxes.shown = [&] { seconds = double(clock.nsecsElapsed()) * 1e-9; };
    clock.start();
    editor->readPageSlt();
    waitUntil([&seconds] { return seconds > 0; }, "the end of the reading", 60000);
    if (boxes.texts != QStringList(editortext::readingDone))
        throw std::runtime_error(qPrintable(boxes.texts.join(QLatin1Char('\n'))));
    return seconds;
}

// Microseconds that an answer took longer than wire and turnaround, in the mean.
double latenessOf(const LineRecord &record, const Line &line, const kt500sim::Counters &counters)
{
    const double wire = line.baudRate > 0 ? double(counters.bytesReceived + counters.bytesSent) *
                                                bitsPerCharacter / line.baudRate
                                          : 0;
    const auto requests = double(counters.requests);
    const double turnaround = std::chrono::duration<double>(line.turnaround).count();
    return ((record.answering() - wire) / requests - turnaround) * 1e6;
}

Client clientOf(double measured, double needed, const LineRecord &record)
{
    return {measured, needed, median(record.between()), mean(record.between())};
}

using ReadAll = double (*)(const QByteArray &path, const QList<RegisterRead> &reads);

// The reads by another client on the same drive.
Client readOnceMore(kt500sim::SimulatedDrive &drive, const QList<RegisterRead> &reads, ReadAll readAll)
{
    const LineRecord record(&drive);
    const double seconds = readAll(drive.portName().toLocal8Bit(), reads);
    drive.counters(); // asked on the drive's thread, behind all that it has noted
    return clientOf(seconds, record.answering(), record);
}

Transfer readCatalogue(const Line &line)
{
    kt500sim::DriveOptions options;
    options.pacing = {line.baudRate, line.turnaround};
    kt500sim::SimulatedDrive drive(options);
    QString error;
    if (!drive.start(&error))
        throw std::runtime_error(qPrintable(error));

    Transfer transfer;
    std::unique_ptr<LineRecord> record;
    const double seconds = secondsOfPageRead(drive.portName(), line.speed,
                                             [&] { record = std::make_unique<LineRecord>(&drive); });
    const kt500sim::Counters counters = drive.counters();
    const double gap = std::chrono::duration<double>(silentGap(line.speed)).count();
    transfer.ours = clientOf(seconds, record->answering() + double(counters.requests) * gap, *record);
    transfer.lateness = latenessOf(*record, line, counters);
    transfer.requests = counters.requests;
    transfer.retransmissions = counters.retransmissions;
    if (gap > 0)
        return transfer;

    const QList<RegisterRead> reads = record->reads();
    record.reset(); // before the next one takes its place as the listener
    transfer.libmodbus = readOnceMore(drive, reads, secondsOfBareReads);
    transfer.raw = readOnceMore(drive, reads, secondsOfRawReads);
    return transfer;
}

// Of one client over all rounds.
struct Figures
{
    void append(const Client &client)
    {
        measured.append(client.measured);
        needed.append(client.needed);
        medianBetween.append(client.medianBetween);
        meanBetween.append(client.meanBetween);
    }
    QStringList cells() const
    {
        return {figure(median(measured), 3),
                figure(median(needed), 3),
                figure(medianRatio(measured, needed), 3),
                ratioSpread(measured, needed),
                figure(median(medianBetween), 0),
                figure(median(meanBetween), 0)};
    }

    QVector<double> measured;
    QVector<double> needed;
    QVector<double> medianBetween;
    QVector<double> meanBetween;
};

// Of one line and catalogue over all rounds.
struct AllFigures
{
    void append(const Transfer &transfer)
    {
        ours.append(transfer.ours);
        if (transfer.libmodbus.measured > 0) {
            libmodbus.append(transfer.libmodbus);
            raw.append(transfer.raw);
        }
        lateness.append(transfer.lateness);
        retransmissions += transfer.retransmissions;
    }
    // How long the client took beside the two others, in the same rounds.
    QStringList besideOthers(const Figures &client) const
    {
        return {figure(medianRatio(client.measured, libmodbus.measured), 2),
                figure(medianRatio(client.measured, raw.measured), 2)};
    }

    Figures ours;
    Figures libmodbus;
    Figures raw;
    QVector<double> lateness;
    quint64 retransmissions = 0;
};

QVector<QStringList> measure(const Line &line, const QString &language)
{
    writeConfiguredLanguage(language);
    AllFigures all;
    quint64 requests = 0;
    for (int round = 0; round < rounds; ++round) {
        const Transfer transfer = readCatalogue(line);
        all.append(transfer);
        requests = transfer.requests;
    }
    const QStringList place{QString::fromLatin1(line.name), language, QString::number(requests)};
    const bool isAlone = all.libmodbus.measured.isEmpty();
    const auto row = [&](const char *name, const Figures &client) {
        return place + QStringList(QString::fromLatin1(name)) + client.cells() +
               (isAlone ? QStringList{QString(), QString()} : all.besideOthers(client));
    };
    QVector<QStringList> rows{
        row("the editor", all.ours) +
        QStringList{figure(median(all.lateness), 0), QString::number(all.retransmissions)}};
    if (!isAlone)
        rows += {row("libmodbus", all.libmodbus), row("write and read", all.raw)};
    return rows;
}

void printWakeUps()
{
    const WakeUpCost cost = wakeUpCost();
    std::printf(
        "\nA sleeping thread is awake %.0f microseconds after another one's call, and %.0f after its timer\n",
        cost.byThread, cost.byTimer);
}

} // namespace

int main(int argc, char *argv[])
{
    return runBenchmark(argc, argv, [] {
        printWakeUps();
        QVector<QStringList> rows{{"line", "catalogue", "requests", "client", "seconds", "line needs",
                                   "ratio", "spread", "us to next request", "mean", "to libmodbus",
                                   "to write and read", "drive late, us", "retransmissions"}};
        const QString only = QCoreApplication::arguments().value(1);
        for (const Line &line : lines) {
            if (!only.isEmpty() && only != QLatin1String(line.name))
                continue;
            for (const char *language : {"zh_CN", "en_US"})
                rows += measure(line, QString::fromLatin1(language));
        }
        printTable(QStringLiteral("Reading all parameters, 1 ms turnaround at 115200 baud and 0.5 ms at USB, "
                                  "median of %1 rounds")
                       .arg(rounds),
                   rows);
        printWakeUps();
    });
}
