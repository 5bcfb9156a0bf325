// SPDX-License-Identifier: GPL-3.0-or-later
// The chain of polls: which frames leave in which order, and what is made of each reply.
#include "pollerbench.h"

#include <QElapsedTimer>

namespace {

const QStringList &cycle = pollCycle;

} // namespace

class MonitorPollerTest : public QObject
{
    Q_OBJECT

private slots:
    void firstRequestLeavesAfterFiftyMilliseconds();
    void cycleAsksFifteenBlocksInOrder();
    void everyFrameCarriesItsChecksum();
    void cycleStartsAnewAfterAPause();
    void chainStandsWithoutAReply();
    void replyWithoutARequestIsDropped();
    void replyInThePauseIsDropped();
    void blockFallsApartIntoItems_data();
    void blockFallsApartIntoItems();
    void itemsGoToTheirPanels_data();
    void itemsGoToTheirPanels();
    void bytesStayAsTheyStandOnTheWire();
    void payloadIsCutFromTheBack();
    void exceptionEmitsNothingAndTheChainGoesOn();
    void shortReplyEmitsNothingAndTheChainGoesOn();
    void replyOfAnotherLengthEmitsNothingAndTheChainGoesOn_data();
    void replyOfAnotherLengthEmitsNothingAndTheChainGoesOn();
    void codeThatIsNotPolledAsksTenRegisters();
};

void MonitorPollerTest::firstRequestLeavesAfterFiftyMilliseconds()
{
    QElapsedTimer clock;
    clock.start();
    const PollerBench bench(false);
    QVERIFY(bench.frames.isEmpty());
    QVERIFY(bench.waitForFrames(1));
    QVERIFY(clock.elapsed() >= 45);
    QCOMPARE(bench.last(), cycle.first());
}

void MonitorPollerTest::cycleAsksFifteenBlocksInOrder()
{
    PollerBench bench;
    bench.finishCycle();
    QCOMPARE(bench.texts(), cycle);
}

void MonitorPollerTest::everyFrameCarriesItsChecksum()
{
    PollerBench bench;
    bench.finishCycle();
    for (int i = 0; i < cycle.size(); ++i)
        QCOMPARE(bench.frames.at(i), wire::frame(cycle.at(i).toLatin1().constData()));
}

void MonitorPollerTest::cycleStartsAnewAfterAPause()
{
    PollerBench bench;
    bench.finishCycle();
    QElapsedTimer clock;
    clock.start();
    QVERIFY(bench.waitForFrames(16));
    QVERIFY(clock.elapsed() >= 190);
    bench.finishCycle();
    QCOMPARE(bench.texts(), cycle + cycle);
}

void MonitorPollerTest::chainStandsWithoutAReply()
{
    const PollerBench bench;
    QVERIFY(!bench.waitForFrames(2, 1500));
}

void MonitorPollerTest::replyWithoutARequestIsDropped()
{
    PollerBench bench(false);
    bench.answerWith("0001 0002 0003 0004 0005 0006 0007");
    QVERIFY(bench.items.isEmpty());
    QVERIFY(bench.frames.isEmpty());
}

void MonitorPollerTest::replyInThePauseIsDropped()
{
    PollerBench bench;
    bench.finishCycle();
    bench.items.clear();
    bench.answer();
    QCOMPARE(bench.frames.size(), 15);
    QVERIFY(bench.items.isEmpty());
    QVERIFY(bench.waitForFrames(16));
    bench.answer();
    QCOMPARE(bench.last(), cycle.at(1));
}

void MonitorPollerTest::blockFallsApartIntoItems_data()
{
    QTest::addColumn<int>("entry");
    QTest::addColumn<QList<int>>("addresses");
    QTest::addColumn<QList<int>>("pairs");
    QTest::newRow("Pn-F00") << 0 << QList<int>{0x25DC, 0x25DD, 0x25DE, 0x25DF, 0x25E0, 0x25E1, 0x25E2}
                            << QList<int>();
    QTest::newRow("Pn-F07") << 1 << QList<int>{0x25E3, 0x25E5, 0x25E7, 0x25E9, 0x25EB}
                            << QList<int>{0x25E3, 0x25E5, 0x25E7, 0x25E9, 0x25EB};
    QTest::newRow("Pn-F17") << 2 << QList<int>{0x25ED, 0x25EE, 0x25F0, 0x25F2, 0x25F3, 0x25F4}
                            << QList<int>{0x25EE, 0x25F0};
    QTest::newRow("Pn-F25") << 3 << QList<int>{0x25F5, 0x25F6, 0x25F7, 0x25F8} << QList<int>();
    QTest::newRow("Pn-F29") << 4 << QList<int>{0x25F9, 0x25FB, 0x25FC, 0x25FD, 0x25FE,
                                               0x25FF, 0x2600, 0x2601, 0x2602}
                            << QList<int>{0x25F9};
    QTest::newRow("Pn-F40") << 5 << QList<int>{0x2604, 0x2606, 0x2608} << QList<int>{0x2604, 0x2606, 0x2608};
    QTest::newRow("Pn-F46") << 6 << QList<int>{0x260A, 0x260B, 0x260C, 0x260D} << QList<int>();
    QTest::newRow("Pn-F50") << 7 << QList<int>{0x260E, 0x260F, 0x2610, 0x2611} << QList<int>{0x2611};
    QTest::newRow("Pn-F56") << 8 << QList<int>{0x2614, 0x2615, 0x2616, 0x2617, 0x2618, 0x2619, 0x261A}
                            << QList<int>();
    QTest::newRow("Pn-F70") << 9 << QList<int>{0x2622, 0x2623, 0x2624} << QList<int>();
    QTest::newRow("Pn-F80") << 10 << QList<int>{0x262C, 0x262D, 0x262F, 0x2630, 0x2631} << QList<int>{0x262D};
    QTest::newRow("Pn-211") << 11
                            << QList<int>{0x20D3, 0x20D4, 0x20D5, 0x20D6, 0x20D7, 0x20D8, 0x20D9, 0x20DA}
                            << QList<int>();
    QTest::newRow("Pn-219") << 12
                            << QList<int>{0x20DB, 0x20DC, 0x20DD, 0x20DE, 0x20DF, 0x20E0, 0x20E1, 0x20E2}
                            << QList<int>();
    QTest::newRow("Pn-231") << 13
                            << QList<int>{0x20E7, 0x20E8, 0x20E9, 0x20EA, 0x20EB, 0x20EC, 0x20ED, 0x20EE}
                            << QList<int>();
    QTest::newRow("Pn-239") << 14
                            << QList<int>{0x20EF, 0x20F0, 0x20F1, 0x20F2, 0x20F3, 0x20F4, 0x20F5, 0x20F6}
                            << QList<int>();
}

void MonitorPollerTest::blockFallsApartIntoItems()
{
    QFETCH(int, entry);
    QFETCH(QList<int>, addresses);
    QFETCH(QList<int>, pairs);
    PollerBench bench;
    for (int i = 0; i < entry; ++i)
        bench.answer();
    bench.items.clear();
    bench.answer();
    const QString wanted = entry < 11 ? QStringLiteral("Parameter") : QStringLiteral("DIDOFunction");
    QList<int> found;
    for (const PollerBench::Item &item : qAsConst(bench.items)) {
        if (item.signal != wanted)
            continue;
        found.append(item.address);
        QCOMPARE(item.data.size(), pairs.contains(item.address) ? 4 : 2);
    }
    QCOMPARE(found, addresses);
}

void MonitorPollerTest::itemsGoToTheirPanels_data()
{
    QTest::addColumn<int>("entry");
    QTest::addColumn<QStringList>("calls");
    QTest::newRow("levels and codes")
        << 3 << QStringList{"DIDOStatus 9717 0000", "Parameter 9717 0000",  "DIDOStatus 9718 0001",
                            "Parameter 9718 0001",  "AlarmError 9719 0002", "Parameter 9719 0002",
                            "AlarmError 9720 0003", "Parameter 9720 0003"};
    for (const int entry : {11, 12, 13, 14}) {
        const int first = QList<int>{8403, 8411, 8423, 8431}.at(entry - 11);
        QStringList calls;
        for (int i = 0; i < 8; ++i) {
            const QString rest = QStringLiteral(" %1 000%2").arg(first + i).arg(i);
            calls << QStringLiteral("DIDOFunction") + rest << QStringLiteral("io_DIDOFunc") + rest;
        }
        QTest::addRow("functions from %d", first) << entry << calls;
    }
    QStringList calls;
    for (int i = 0; i < 7; ++i)
        calls << QStringLiteral("Parameter %1 000%2").arg(0x25DC + i).arg(i);
    QTest::newRow("all others") << 0 << calls;
}

void MonitorPollerTest::itemsGoToTheirPanels()
{
    QFETCH(int, entry);
    QFETCH(QStringList, calls);
    PollerBench bench;
    for (int i = 0; i < entry; ++i)
        bench.answer();
    bench.items.clear();
    QByteArray data;
    for (char i = 0; i < bench.frames.last().at(5); ++i)
        data.append('\0').append(i);
    bench.poller.takeReply(wire::readReply(data));
    QStringList found;
    for (const PollerBench::Item &item : qAsConst(bench.items))
        found << QStringLiteral("%1 %2 %3")
                     .arg(item.signal)
                     .arg(item.address)
                     .arg(QString::fromLatin1(item.data.toHex()));
    QCOMPARE(found, calls);
}

void MonitorPollerTest::bytesStayAsTheyStandOnTheWire()
{
    PollerBench bench;
    bench.answer();
    bench.items.clear();
    bench.answerWith("01020304 FFFFFFFE 80000000 7FFFFFFF 00000001");
    QCOMPARE(bench.items.size(), 5);
    QCOMPARE(bench.items.at(0).data, wire::bytes("01020304"));
    QCOMPARE(bench.items.at(1).data, wire::bytes("FFFFFFFE"));
    QCOMPARE(bench.items.at(4).data, wire::bytes("00000001"));
}

void MonitorPollerTest::payloadIsCutFromTheBack()
{
    PollerBench bench;
    // One byte too many stands between the head and the data.
    bench.poller.takeReply(wire::frame("01030E AA 0001 0002 0003 0004 0005 0006 0007"));
    QCOMPARE(bench.items.size(), 7);
    QCOMPARE(bench.items.first().data, wire::bytes("0001"));
    QCOMPARE(bench.items.last().data, wire::bytes("0007"));
}

void MonitorPollerTest::exceptionEmitsNothingAndTheChainGoesOn()
{
    PollerBench bench;
    bench.poller.takeReply(wire::frame("018302"));
    QVERIFY(bench.items.isEmpty());
    QCOMPARE(bench.last(), cycle.at(1));
    // An exception as long as the data that were asked for is an exception all the same.
    bench.poller.takeReply(wire::frame("018314 0001 0002 0003 0004 0005 0006 0007 0008 0009 000A"));
    QVERIFY(bench.items.isEmpty());
    QCOMPARE(bench.last(), cycle.at(2));
}

void MonitorPollerTest::shortReplyEmitsNothingAndTheChainGoesOn()
{
    PollerBench bench;
    for (const char *reply : {"", "01", "0103", "01030E", "01030E0001"}) {
        const int before = bench.frames.size();
        bench.poller.takeReply(wire::bytes(reply));
        QVERIFY(bench.items.isEmpty());
        QCOMPARE(bench.frames.size(), before + 1);
    }
    QCOMPARE(bench.last(), cycle.at(5));
}

void MonitorPollerTest::replyOfAnotherLengthEmitsNothingAndTheChainGoesOn_data()
{
    QTest::addColumn<QByteArray>("data");
    QTest::newRow("none") << QByteArray();
    QTest::newRow("a word") << wire::bytes("0001");
    QTest::newRow("a pair, as the link's probe has it") << wire::bytes("00010002");
    QTest::newRow("a word too few") << wire::bytes("0001 0002 0003 0004 0005 0006");
    QTest::newRow("a word too many") << wire::bytes("0001 0002 0003 0004 0005 0006 0007 0008");
}

void MonitorPollerTest::replyOfAnotherLengthEmitsNothingAndTheChainGoesOn()
{
    QFETCH(QByteArray, data);
    PollerBench bench;
    bench.poller.takeReply(wire::readReply(data));
    QVERIFY(bench.items.isEmpty());
    QCOMPARE(bench.last(), cycle.at(1));
}

void MonitorPollerTest::codeThatIsNotPolledAsksTenRegisters()
{
    PollerBench bench(false);
    bench.poller.packData(QStringLiteral("Pn-850"));
    QCOMPARE(bench.last(), QStringLiteral("01032352000A"));
    bench.poller.packData(QStringLiteral("Pn-F70"));
    QCOMPARE(bench.last(), cycle.at(9));
}

QTEST_GUILESS_MAIN(MonitorPollerTest)

#include "tst_monitorpoller.moc"
