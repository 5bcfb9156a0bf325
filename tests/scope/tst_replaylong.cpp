// SPDX-License-Identifier: GPL-3.0-or-later
// The replay of a record of eight million lines: memory stays bounded and the window answers.
#include "scopebench.h"

#include "support/filedialoganswers.h"
#include "support/testdirectory.h"

#include <QElapsedTimer>
#include <QFile>
#include <QTimer>

class TestReplayLong : public QObject
{
    Q_OBJECT

private slots:
    void eightMillionLinesKeepTheWindowResponsive();
};

namespace {

constexpr int lines = 8000000;
constexpr int memoryLimit = 150; // MiB above the start
constexpr int gapLimit = 500;    // ms between two turns of the event loop

// Resident memory of this process in MiB; 0 where the system doesn't tell.
int residentMemory()
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray &line : status.readAll().split('\n')) {
        if (line.startsWith("VmRSS:"))
            return line.mid(6).trimmed().split(' ').first().toInt() / 1024;
    }
    return 0;
}

} // namespace

void TestReplayLong::eightMillionLinesKeepTheWindowResponsive()
{
    const TestDirectory directory;
    directory.setLanguage(QStringLiteral("en_US"));
    {
        QFile file(QStringLiteral("long.txt"));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("Pn-F00Motor speed\r\n");
        QByteArray block;
        for (int i = 0; i < 100000; ++i)
            block += QByteArray::number(i % 2000 - 1000) + "\r\n";
        for (int written = 0; written < lines; written += 100000)
            QCOMPARE(file.write(block), qint64(block.size()));
    }
    ScopeBench bench;
    bench.scope->resize(900, 685);
    bench.scope->show();
    const int before = residentMemory();
    int most = before;
    qint64 longestGap = 0;
    QElapsedTimer sinceTurn;
    sinceTurn.start();
    QTimer turns;
    connect(&turns, &QTimer::timeout, this, [&] {
        longestGap = std::max(longestGap, sinceTurn.restart());
        most = std::max(most, residentMemory());
    });
    FileDialogAnswers dialogs;
    dialogs.expect(QStringLiteral("Open txt file"), QStringLiteral("long.txt"));
    bench.tool(ScopeToolBar::Open)->trigger();
    sinceTurn.restart();
    turns.start(20);
    QTRY_COMPARE_WITH_TIMEOUT(bench.runText(), QString("Run"), 240000);
    turns.stop();
    QVERIFY2(most - before < memoryLimit, qPrintable(QString::number(most - before)));
    QVERIFY2(longestGap < gapLimit, qPrintable(QString::number(longestGap)));
    QVERIFY(bench.plot->plotData().channelPoints[0].size() <= 801000);
    QCOMPARE(bench.data(1), QString("999"));
}

QTEST_MAIN(TestReplayLong)
#include "tst_replaylong.moc"
