// SPDX-License-Identifier: GPL-3.0-or-later
// The reads of gain tuning, frame by frame: the first read of everything and the endless round.
#include "gainlinkbench.h"
#include "link/serialport.h"

#include <QElapsedTimer>

class GainTuningLinkTest : public QObject, private GainLinkBench
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void firstReadAsksForEverythingInOrder();
    void firstReadIsFollowedByTheEndlessRound();
    void exceptionEndsTheFirstRead();
    void replyToAProbeIsIgnoredAndTheHeadAskedAgain();
    void replyToAProbeInThePauseAsksNothing();
    void repeatedRequestMayBeAnsweredTwice_data();
    void repeatedRequestMayBeAnsweredTwice();
    void roundsPauseForThreeTenthsOfASecond();
    void roundMonitorsItsFourRegisters();
    void roundWaitsForTheEndOfAScopeRun();
};

void GainTuningLinkTest::init()
{
    begin();
}

void GainTuningLinkTest::cleanup()
{
    end();
}

void GainTuningLinkTest::firstReadAsksForEverythingInOrder()
{
    const QList<QByteArray> texts{
        "010322590001", "0103225A0001", "010322620001", "010322630001", "010322640001", "010321F60001",
        "0103227D0001", "0103227E0001", "010322580001", "0103225D0001", "0103225E0001", "0103225F0001",
        "010322600001", "010326180001", "0103225A0001", "0103225C0001", "010322AE0001", "010326000001",
        "010326010001", "010326020001", "010322970001", "010322980001", "010322990001", "0103229A0001",
        "0103229B0001", "0103229C0001", "0103229D0001", "0103229E0001", "0103229F0001", "010322A00001",
        "010322A10001", "010322A20001", "010322960001"};
    QCOMPARE(texts.size(), allReads);
    const SignalLog<int, quint32> values(link.get(), &GainTuningLink::valueRead);
    link->start();
    for (int i = 0; i < allReads; ++i) {
        QCOMPARE(sent(), QList<QByteArray>{wire::frame(texts.at(i).constData())});
        QCOMPARE(link->state(), GainTuningLink::InitialRead);
        reply(valueReply(1000 + i), 0x2000 + i);
        QCOMPARE(values.count(), i + 1);
        QCOMPARE(std::get<0>(values.calls.at(i)), 0x2000 + i);
        QCOMPARE(std::get<1>(values.calls.at(i)), quint32(1000 + i));
    }
    QCOMPARE(link->state(), GainTuningLink::Idle);
    QVERIFY(sent().isEmpty());
}

void GainTuningLinkTest::firstReadIsFollowedByTheEndlessRound()
{
    finishFirstRead();
    for (int round = 0; round < 4; ++round) {
        QVERIFY(waitForRound());
        for (int i = 0; i < 4; ++i) {
            reply(valueReply(7));
            QCOMPARE(sent(), cycle.mid(i + 1, 1));
        }
    }
}

void GainTuningLinkTest::exceptionEndsTheFirstRead()
{
    const SignalLog<int, quint32> values(link.get(), &GainTuningLink::valueRead);
    link->start();
    sent();
    reply(exception);
    QCOMPARE(link->state(), GainTuningLink::Idle);
    QVERIFY(sent().isEmpty());
    QCOMPARE(values.count(), 0);
    QVERIFY(waitForRound());
}

void GainTuningLinkTest::replyToAProbeIsIgnoredAndTheHeadAskedAgain()
{
    const SignalLog<int, quint32> values(link.get(), &GainTuningLink::valueRead);
    link->start();
    const QList<QByteArray> head = sent();
    reply(probeReply, 0x2259);
    QCOMPARE(sent(), head);
    QCOMPARE(link->state(), GainTuningLink::InitialRead);
    QCOMPARE(values.count(), 0);
    reply(valueReply(5), 0x2259);
    QCOMPARE(values.count(), 1);
    QCOMPARE(sent(), QList<QByteArray>{wire::frame("0103225A0001")});
}

void GainTuningLinkTest::replyToAProbeInThePauseAsksNothing()
{
    finishFirstRead();
    reply(probeReply);
    QVERIFY(sent().isEmpty());
    QVERIFY(waitForRound());
}

void GainTuningLinkTest::repeatedRequestMayBeAnsweredTwice_data()
{
    QTest::addColumn<bool>("twice");
    QTest::newRow("lost with the old worker") << false;
    QTest::newRow("still queued when the link was lost") << true;
}

void GainTuningLinkTest::repeatedRequestMayBeAnsweredTwice()
{
    QFETCH(bool, twice);
    const SignalLog<int, quint32> values(link.get(), &GainTuningLink::valueRead);
    link->start();
    QList<QByteArray> queue = sent(); // of the worker; it survives the loss
    reply(probeReply, 0x2259);
    if (!twice)
        queue.clear();
    queue += sent();
    QCOMPARE(queue.size(), twice ? 2 : 1);
    while (!queue.isEmpty()) {
        const QByteArray request = queue.takeFirst();
        reply(valueReply(7), quint8(request.at(2)) << 8 | quint8(request.at(3)));
        queue += sent();
    }
    QCOMPARE(link->state(), GainTuningLink::Idle);
    // None of the values has been left for the endless round, which would not show it.
    QCOMPARE(values.count(), twice ? allReads + 1 : allReads);
    QCOMPARE(std::get<0>(values.calls.last()), 0x2296);
    QVERIFY(waitForRound());
}

void GainTuningLinkTest::roundsPauseForThreeTenthsOfASecond()
{
    finishFirstRead();
    QElapsedTimer time;
    time.start();
    QVERIFY(waitForRound());
    // A coarse timer may come up to a twentieth early.
    QVERIFY2(time.elapsed() >= 280, qPrintable(QString::number(time.elapsed())));
}

void GainTuningLinkTest::roundMonitorsItsFourRegisters()
{
    finishFirstRead();
    const SignalLog<int, quint32> values(link.get(), &GainTuningLink::valueMonitored);
    const SignalLog<int, quint32> full(link.get(), &GainTuningLink::valueRead);
    QVERIFY(waitForRound());
    reply(valueReply(325), 0x2618);
    reply(valueReply(1), 0x2600);
    reply(valueReply(440), 0x2601);
    reply(valueReply(2), 0x2602);
    QCOMPARE(values.count(), 4);
    QCOMPARE(std::get<0>(values.calls.at(2)), 0x2601);
    QCOMPARE(std::get<1>(values.calls.at(2)), 440u);
    QCOMPARE(full.count(), 0);
}

void GainTuningLinkTest::roundWaitsForTheEndOfAScopeRun()
{
    SerialPort::scopeRunning = true;
    finishFirstRead();
    const bool asked = QTest::qWaitFor([this] { return frames->count() > 0; }, 700);
    SerialPort::scopeRunning = false;
    QVERIFY(!asked);
    QVERIFY(waitForRound());
}

QTEST_GUILESS_MAIN(GainTuningLinkTest)
#include "tst_gaintuninglink.moc"
