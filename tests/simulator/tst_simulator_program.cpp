// SPDX-License-Identifier: GPL-3.0-or-later
#include "terminalclient.h"

#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include <csignal>

namespace {

const char probe[] = "010320600002cfd5";
const char probeReply[] = "0103044b540500af57";
constexpr int limitMs = 10000;

/// The program, running, with its port known.
class Program
{
public:
    explicit Program(const QStringList &arguments = {})
    {
        m_process.start(QStringLiteral(KT500_SIM_PROGRAM), arguments);
        port = readLine();
    }
    ~Program()
    {
        m_process.closeWriteChannel();
        m_process.terminate();
        m_process.waitForFinished(limitMs);
    }

    /// The next line that the program prints, empty if none comes.
    QString readLine()
    {
        while (!m_process.canReadLine()) {
            if (!m_process.waitForReadyRead(limitMs))
                break;
        }
        return QString::fromLocal8Bit(m_process.readLine()).trimmed();
    }

    QString command(const char *line)
    {
        tell(line);
        return readLine();
    }
    void tell(const char *line)
    {
        m_process.write(QByteArray(line) + '\n');
        m_process.waitForBytesWritten(limitMs);
    }

    QProcess *operator->() { return &m_process; }

    QString port;

private:
    QProcess m_process;
};

} // namespace

class TestProgram : public QObject
{
    Q_OBJECT

private slots:
    void portThatIsPrintedHasADrive()
    {
        Program program;
        TerminalClient client(program.port);
        QVERIFY(client.isOpen());
        QCOMPARE(client.ask(probe, 9), QByteArray(probeReply));
    }

    void optionsSetUpTheLine()
    {
        QTemporaryDir folder;
        const QString link = folder.filePath(QStringLiteral("drive"));
        const QString log = folder.filePath(QStringLiteral("frames.log"));
        Program program({QStringLiteral("--link"), link, QStringLiteral("--log"), log,
                         QStringLiteral("--baud"), QStringLiteral("115200"),
                         QStringLiteral("--turnaround-us"), QStringLiteral("20000"),
                         QStringLiteral("--fault"), QStringLiteral("exception 4 1"),
                         QStringLiteral("--fault"), QStringLiteral("badcrc 1")});
        QCOMPARE(program.port, link);
        // Faults are set right after the port is printed; the answer to a command comes later.
        QCOMPARE(program.command("port"), link);
        TerminalClient client(link);
        QElapsedTimer clock;
        clock.start();
        QCOMPARE(client.ask(probe, 5), QByteArray("018304400c"));
        QVERIFY2(clock.elapsed() >= 20, qPrintable(QString::number(clock.elapsed())));
        QCOMPARE(client.ask(probe, 9), QByteArray(probeReply));
        QFile file(log);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QVERIFY(file.readAll().contains("< request    01 03 20 60 00 02 cf d5\n"));
    }

    void commandsAreObeyed()
    {
        Program program;
        QCOMPARE(program.command("get Pn-007"),
                 QStringLiteral("Pn-007: working 0x07d0 (2000), stored 0x07d0 (2000)"));
        QCOMPARE(program.command("jump"), QStringLiteral("unknown command \"jump\"; \"help\" lists them"));
        program.tell("exception 4 1");
        QCOMPARE(program.command("port"), program.port);
        TerminalClient client(program.port);
        QCOMPARE(client.ask(probe, 5), QByteArray("01830440f3"));
        QCOMPARE(program.command("counters"), QStringLiteral("requests 1"));
    }

    void hangUpTellsTheNewPort()
    {
        Program program;
        TerminalClient client(program.port);
        QCOMPARE(program.command("hangup 1"), QStringLiteral("line is gone"));
        const QString back = program.readLine();
        QVERIFY2(back.startsWith(QLatin1String("line is back: ")), qPrintable(back));
        TerminalClient next(back.section(QLatin1Char(' '), -1));
        QCOMPARE(next.ask(probe, 9), QByteArray(probeReply));
    }

    void quitEndsTheProgram()
    {
        Program program;
        program.tell("quit");
        QVERIFY(program->waitForFinished(limitMs));
        QCOMPARE(program->exitStatus(), QProcess::NormalExit);
        QCOMPARE(program->exitCode(), 0);
    }

    void endOfAPipeKeepsTheDriveRunning()
    {
        Program program;
        program->closeWriteChannel();
        TerminalClient client(program.port);
        for (int i = 0; i < 3; ++i)
            QCOMPARE(client.ask(probe, 9), QByteArray(probeReply));
        QCOMPARE(program->state(), QProcess::Running);
    }

    void signalEndsTheProgramCleanly_data()
    {
        QTest::addColumn<int>("number");
        QTest::newRow("interrupt") << SIGINT;
        QTest::newRow("terminate") << SIGTERM;
    }
    void signalEndsTheProgramCleanly()
    {
        QFETCH(int, number);
        QTemporaryDir folder;
        const QString link = folder.filePath(QStringLiteral("drive"));
        Program program({QStringLiteral("--link"), link});
        QVERIFY(!QFile::symLinkTarget(link).isEmpty());
        QCOMPARE(::kill(static_cast<pid_t>(program->processId()), number), 0);
        QVERIFY(program->waitForFinished(limitMs));
        QCOMPARE(program->exitStatus(), QProcess::NormalExit);
        QCOMPARE(program->exitCode(), 0);
        QVERIFY(QFile::symLinkTarget(link).isEmpty());
    }

    void badArgumentsAreRefused_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("message");
        QTest::newRow("fault") << QStringList{QStringLiteral("--fault"), QStringLiteral("explode")}
                               << "kt500-sim: there is no fault \"explode\"";
        QTest::newRow("baud") << QStringList{QStringLiteral("--baud"), QStringLiteral("fast")}
                              << "kt500-sim: an option's number is out of range; see --help";
        QTest::newRow("samples") << QStringList{QStringLiteral("--samples-per-frame"), QStringLiteral("256")}
                                 << "kt500-sim: an option's number is out of range; see --help";
        QTest::newRow("position") << QStringList{QStringLiteral("ttyS0")}
                                  << "kt500-sim: unexpected argument \"ttyS0\"";
        QTest::newRow("log") << QStringList{QStringLiteral("--log"), QStringLiteral("/nonexistent/log")}
                             << "kt500-sim: /nonexistent/log: can't be written";
    }
    void badArgumentsAreRefused()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, message);
        QProcess process;
        process.start(QStringLiteral(KT500_SIM_PROGRAM), arguments);
        QVERIFY(process.waitForFinished(limitMs));
        QCOMPARE(process.exitCode(), 1);
        QCOMPARE(QString::fromLocal8Bit(process.readAllStandardError()).trimmed(), message);
    }
};

QTEST_GUILESS_MAIN(TestProgram)
#include "tst_simulator_program.moc"
