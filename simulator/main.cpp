// SPDX-License-Identifier: GPL-3.0-or-later
// The simulated drive as a program: opens a pseudo-terminal for any client and takes commands on standard
// input.
#include "simulator/console.h"

#include <QCommandLineParser>
#include <QCoreApplication>

#include <condition_variable>
#include <csignal>
#include <cstdio>
#include <deque>
#include <iostream>
#include <mutex>
#include <thread>

namespace {

using namespace kt500sim;

volatile std::sig_atomic_t endAsked = 0;

void askForEnd(int)
{
    endAsked = 1;
}

void print(const std::string &line)
{
    std::fprintf(stdout, "%s\n", line.c_str());
    std::fflush(stdout);
}

int complain(const QString &text)
{
    std::fprintf(stderr, "kt500-sim: %s\n", qPrintable(text));
    return 1;
}

/// Lines of standard input, read on a thread that may block in the read for ever.
class InputLines
{
public:
    void readAll()
    {
        std::string line;
        while (std::getline(std::cin, line))
            add(line, false);
        add({}, true);
    }

    /// Waits for a line, but not for long, as signals are looked for between; false when there is none.
    bool take(std::string *line)
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        const auto something = [this] { return !m_lines.empty(); };
        if (!m_changed.wait_for(lock, milliseconds(100), something))
            return false;
        *line = m_lines.front();
        m_lines.pop_front();
        return true;
    }

    bool isAtEnd()
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return m_ended && m_lines.empty();
    }

private:
    void add(const std::string &line, bool ended)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (!ended)
            m_lines.push_back(line);
        m_ended = ended;
        m_changed.notify_one();
    }

    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::deque<std::string> m_lines;
    bool m_ended = false;
};

/// The value of a whole-number option; false if it is none or below \a lowest.
bool numberOf(const QCommandLineParser &parser, const QString &name, int lowest, int *number)
{
    if (!parser.isSet(name))
        return true;
    bool ok = false;
    *number = parser.value(name).toInt(&ok);
    return ok && *number >= lowest;
}

void obey(Console &console)
{
    // Outlives this function: the reading thread can't be woken from a blocked read.
    static auto *const input = new InputLines;
    std::thread([] { input->readAll(); }).detach();

    const bool endsWithInput = standardInputIsTerminal();
    std::string line;
    while (endAsked == 0 && !console.wantsToQuit()) {
        if (!input->take(&line)) {
            // Ctrl-D at a terminal means the end; the end of a pipe or file only means no more commands.
            if (endsWithInput && input->isAtEnd())
                return;
            continue;
        }
        const QString answer = console.execute(QString::fromLocal8Bit(line.c_str()));
        if (!answer.isEmpty())
            print(answer.toStdString());
    }
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("kt500-sim"));

    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral(
            "A simulated KT500 servo drive on a pseudo-terminal.\n"
            "Prints the port that a client opens, then takes these commands on standard input:\n\n") +
        Console::help());
    parser.addHelpOption();
    parser.addOptions({
        {QStringLiteral("link"), QStringLiteral("Keep a symbolic link at <path> that leads to the port."),
         QStringLiteral("path")},
        {QStringLiteral("baud"), QStringLiteral("Take the wire time of <n> baud."), QStringLiteral("n")},
        {QStringLiteral("turnaround-us"), QStringLiteral("Wait <n> microseconds before each reply."),
         QStringLiteral("n")},
        {QStringLiteral("station"), QStringLiteral("Be station <n>; 1 unless given."), QStringLiteral("n")},
        {QStringLiteral("samples-per-frame"),
         QStringLiteral("Pack <n> samples into a stream frame, 1 to 255; 40 unless given."),
         QStringLiteral("n")},
        {QStringLiteral("log"), QStringLiteral("Write every frame to <file>."), QStringLiteral("file")},
        {QStringLiteral("fault"),
         QStringLiteral("Begin with a fault, such as \"noreply 3\"; may be repeated."),
         QStringLiteral("fault")},
        {QStringLiteral("garbage"), QStringLiteral("The same as --fault \"garbage on\".")},
        {QStringLiteral("stream"), QStringLiteral("The same as --fault \"stream on\".")},
    });
    parser.process(app);
    if (!parser.positionalArguments().isEmpty())
        return complain(
            QStringLiteral("unexpected argument \"%1\"").arg(parser.positionalArguments().first()));

    DriveOptions options;
    options.linkPath = parser.value(QStringLiteral("link"));
    int turnaround = 0;
    if (!numberOf(parser, QStringLiteral("baud"), 1, &options.pacing.baud) ||
        !numberOf(parser, QStringLiteral("turnaround-us"), 0, &turnaround) ||
        !numberOf(parser, QStringLiteral("station"), 1, &options.station) || options.station > 247 ||
        !numberOf(parser, QStringLiteral("samples-per-frame"), 1, &options.samplesPerFrame) ||
        options.samplesPerFrame > 255)
        return complain(QStringLiteral("an option's number is out of range; see --help"));
    options.pacing.turnaround = microseconds(turnaround);

    QStringList faultTexts = parser.values(QStringLiteral("fault"));
    if (parser.isSet(QStringLiteral("garbage")))
        faultTexts << QStringLiteral("garbage on");
    if (parser.isSet(QStringLiteral("stream")))
        faultTexts << QStringLiteral("stream on");
    QString error;
    std::vector<Fault> faults;
    for (const QString &text : qAsConst(faultTexts)) {
        const std::optional<Fault> fault = Fault::fromText(text, &error);
        if (!fault)
            return complain(error);
        faults.push_back(*fault);
    }

    std::signal(SIGINT, askForEnd);
    std::signal(SIGTERM, askForEnd);

    SimulatedDrive drive(options);
    if (parser.isSet(QStringLiteral("log")) && !drive.logToFile(parser.value(QStringLiteral("log")), &error))
        return complain(error);
    if (!drive.start(&error))
        return complain(error);
    print(drive.portName().toStdString());
    drive.setLineListener([&drive](bool up) {
        print(up ? "line is back: " + drive.portName().toStdString() : std::string("line is gone"));
    });

    for (const Fault &fault : faults)
        drive.setFault(fault);

    Console console(drive, print);
    obey(console);
    drive.stop();
    return 0;
}
