// SPDX-License-Identifier: GPL-3.0-or-later
// What a listener and the log file are told of the frames on the line.
#include "terminalclient.h"

#include "simulator/simulateddrive.h"

#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

#include <atomic>
#include <mutex>

using namespace kt500sim;

namespace {

const char probe[] = "010320600002cfd5";
const char probeReply[] = "0103044b540500af57";

} // namespace

class TestFrameLog : public QObject
{
    Q_OBJECT

private slots:
    void logLineNamesKindAndDirection_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<QByteArray>("line");
        QTest::newRow("request") << int(FrameKind::Request) << QByteArray("12.000345 < request    01 a0");
        QTest::newRow("foreign") << int(FrameKind::Foreign) << QByteArray("12.000345 < foreign    01 a0");
        QTest::newRow("unreadable") << int(FrameKind::Unreadable)
                                    << QByteArray("12.000345 < unreadable 01 a0");
        QTest::newRow("reply") << int(FrameKind::Reply) << QByteArray("12.000345 > reply      01 a0");
        QTest::newRow("stream") << int(FrameKind::StreamFrame) << QByteArray("12.000345 > stream     01 a0");
        QTest::newRow("noise") << int(FrameKind::Noise) << QByteArray("12.000345 > noise      01 a0");
    }
    void logLineNamesKindAndDirection()
    {
        QFETCH(int, kind);
        QFETCH(QByteArray, line);
        const LoggedFrame frame{microseconds(12000345), FrameKind(kind), Bytes{0x01, 0xa0}};
        QCOMPARE(QByteArray::fromStdString(toLine(frame)), line);
    }

    void listenerHearsEveryFrame()
    {
        SimulatedDrive drive;
        std::mutex mutex;
        QByteArrayList heard;
        drive.setFrameListener([&](const LoggedFrame &frame) {
            const std::lock_guard<std::mutex> lock(mutex);
            heard << QByteArray::number(int(frame.kind)) + ' ' + hexOf(frame.bytes);
        });
        QVERIFY(drive.start());
        TerminalClient client(drive.portName());
        QCOMPARE(client.ask(probe, 9), QByteArray(probeReply));
        QVERIFY(client.write("020320600002cfe6"));
        QVERIFY(becomesTrue([&] { return drive.counters().foreignFrames == 1; }));
        drive.setFrameListener({});
        QCOMPARE(client.ask(probe, 9), QByteArray(probeReply));
        drive.stop();
        QCOMPARE(heard, QByteArrayList({QByteArray::number(int(FrameKind::Request)) + ' ' + probe,
                                        QByteArray::number(int(FrameKind::Reply)) + ' ' + probeReply,
                                        QByteArray::number(int(FrameKind::Foreign)) + " 020320600002cfe6"}));
    }

    void listenerMayAskTheDrive()
    {
        SimulatedDrive drive;
        std::atomic<int> value{0};
        drive.setFrameListener([&](const LoggedFrame &) { value = drive.readRegister(7).value(); });
        QVERIFY(drive.start());
        TerminalClient client(drive.portName());
        QCOMPARE(client.ask(probe, 9), QByteArray(probeReply));
        QVERIFY(becomesTrue([&] { return value == 2000; }));
    }

    void logFileHasALineForEachFrame()
    {
        QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("frames.log"));
        SimulatedDrive drive;
        QVERIFY(drive.logToFile(path));
        QVERIFY(drive.start());
        TerminalClient client(drive.portName());
        QCOMPARE(client.ask(probe, 9), QByteArray(probeReply));
        QVERIFY(becomesTrue([&] { return drive.counters().replies == 1; }));
        QVERIFY(drive.logToFile(QString()));
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QRegularExpression form(
            QStringLiteral("^\\d+\\.\\d{6} < request    01 03 20 60 00 02 cf d5\n"
                           "\\d+\\.\\d{6} > reply      01 03 04 4b 54 05 00 af 57\n$"));
        const QString text = QString::fromLatin1(file.readAll());
        QVERIFY2(form.match(text).hasMatch(), qPrintable(text));
    }

    void logFileThatCantBeWrittenIsReported()
    {
        SimulatedDrive drive;
        QString error;
        QVERIFY(!drive.logToFile(QStringLiteral("/nonexistent/frames.log"), &error));
        QCOMPARE(error, QStringLiteral("/nonexistent/frames.log: can't be written"));
    }
};

QTEST_APPLESS_MAIN(TestFrameLog)
#include "tst_simulator_framelog.moc"
