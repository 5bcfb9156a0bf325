// SPDX-License-Identifier: GPL-3.0-or-later
// The editor's conversation with the drive by itself: one request at a time, and what a time-out says.
#include "transferexchange.h"

#include "parameter/parametertransfer.h"
#include "support/wire.h"

#include <QElapsedTimer>
#include <QTest>

using namespace transferexchange;

namespace {

const QByteArray keepJog = wire::frame("01 10 20 07 00 01 02 05 dc");
const QByteArray storeGear = wire::frame("01 10 e0 64 00 01 02 00 03");

void writeOne(ParameterTransfer &transfer)
{
    transfer.writeOne(jog, 0x2000);
}

} // namespace

class ParameterTransferTest : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();
    void timeOutIsToldByTheState_data();
    void timeOutIsToldByTheState();
    void missingReplyEndsTheWaitAfterASecond();
    void whatIsAskedMeanwhileWaitsItsTurn_data();
    void whatIsAskedMeanwhileWaitsItsTurn();
    void whatWaitsLeavesAfterATimeOut();
    void eachReplyGoesToItsOwnRegister();
    void replyAfterTheTimeOutIsNobodys();
    void replyBehindALostLinkIsNobodys();
};

// A read or write that comes to its end puts the counts of the process back.
void ParameterTransferTest::cleanup()
{
    Exchange exchange;
    exchange.transfer.readPages({});
    exchange.transfer.readBatch({});
    exchange.transfer.writePages({jog});
    exchange.answerAll();
}

void ParameterTransferTest::timeOutIsToldByTheState_data()
{
    QTest::addColumn<Start>("start");
    QTest::addColumn<int>("replies");
    QTest::addColumn<End>("end");
    QTest::newRow("idle") << Start([](ParameterTransfer &) {}) << 0 << End::SilentTimeout;
    QTest::newRow("single read") << Start(readOne) << 0 << End::RequestTimeout;
    QTest::newRow("single write") << Start(writeOne) << 0 << End::WriteTimeout;
    QTest::newRow("page read") << Start(readPages) << 0 << End::RequestTimeout;
    QTest::newRow("batch read") << Start(readBatch) << 0 << End::SilentTimeout;
    QTest::newRow("page write") << Start(writePages) << 0 << End::WriteTimeout;
    QTest::newRow("batch write") << Start(writeBatch) << 0 << End::WriteTimeout;
    QTest::newRow("read-back") << Start(writePages) << 1 << End::SilentTimeout;
}

void ParameterTransferTest::timeOutIsToldByTheState()
{
    QFETCH(const Start, start);
    QFETCH(const int, replies);
    QFETCH(const End, end);
    Exchange exchange;
    start(exchange.transfer);
    for (int i = 0; i < replies; ++i)
        exchange.answer();
    const int frames = exchange.peer.frames.size();
    int withdrawnBefore = 0;
    connect(&exchange.transfer, &ParameterTransfer::ended,
            [&] { withdrawnBefore = exchange.withdrawals.count(); });
    exchange.transfer.timeOut();
    QCOMPARE(exchange.ends.count(), 1);
    QVERIFY(std::get<0>(exchange.ends.calls.first()) == end);
    QCOMPARE(withdrawnBefore, 1);
    QCOMPARE(exchange.peer.frames.size(), frames);
}

void ParameterTransferTest::missingReplyEndsTheWaitAfterASecond()
{
    Exchange exchange;
    QElapsedTimer clock;
    clock.start();
    readOne(exchange.transfer);
    QTRY_COMPARE(exchange.ends.count(), 1);
    QVERIFY(std::get<0>(exchange.ends.calls.first()) == End::RequestTimeout);
    QVERIFY2(clock.elapsed() >= 940, qPrintable(QString::number(clock.elapsed())));
    QCOMPARE(exchange.peer.frames, QList<QByteArray>{readJog});
}

void ParameterTransferTest::whatIsAskedMeanwhileWaitsItsTurn_data()
{
    QTest::addColumn<Start>("first");
    QTest::addColumn<Start>("second");
    QTest::addColumn<QList<QByteArray>>("frames");
    const Start readOther = [](ParameterTransfer &transfer) { transfer.readOne(QStringLiteral("Pn-100")); };
    const QList<QByteArray> pageWrite{storeJog,  readJog,  readJog,  readJog,
                                      storeGear, readGear, readGear, readGear};
    QTest::newRow("two reads") << Start(readOne) << readOther << QList<QByteArray>{readJog, readGear};
    QTest::newRow("read, write") << Start(writeOne) << readOther << QList<QByteArray>{keepJog, readGear};
    QTest::newRow("write, read") << Start(readOne) << Start(writeOne) << QList<QByteArray>{readJog, keepJog};
    QTest::newRow("page read") << Start(readOne) << Start(readPages)
                               << QList<QByteArray>{readJog, readJog, readGear};
    QTest::newRow("batch read") << Start(readOne) << Start(readBatch)
                                << QList<QByteArray>{readJog, readJog, readGear};
    QTest::newRow("page write") << Start(readOne) << Start(writePages)
                                << QList<QByteArray>{readJog} + pageWrite;
    QTest::newRow("page write, read")
        << Start(writePages) << readOther << pageWrite + QList<QByteArray>{readGear};
    QTest::newRow("page read, page write")
        << Start(readPages) << Start(writeBatch) << QList<QByteArray>{readJog, readGear} + pageWrite;
}

void ParameterTransferTest::whatIsAskedMeanwhileWaitsItsTurn()
{
    QFETCH(const Start, first);
    QFETCH(const Start, second);
    QFETCH(const QList<QByteArray>, frames);
    Exchange exchange;
    first(exchange.transfer);
    second(exchange.transfer);
    QCOMPARE(exchange.peer.frames, frames.mid(0, 1));
    for (int i = 1; i < frames.size(); ++i) {
        exchange.answer();
        QCOMPARE(exchange.peer.frames, frames.mid(0, i + 1));
    }
    exchange.answer();
    QCOMPARE(exchange.peer.frames, frames);
}

void ParameterTransferTest::whatWaitsLeavesAfterATimeOut()
{
    Exchange exchange;
    readOne(exchange.transfer);
    exchange.transfer.readOne(QStringLiteral("Pn-100"));
    connect(&exchange.transfer, &ParameterTransfer::ended,
            [&exchange] { QCOMPARE(exchange.peer.frames, QList<QByteArray>{readJog}); });
    exchange.transfer.timeOut();
    QCOMPARE(exchange.ends.count(End::RequestTimeout), 1);
    QCOMPARE(exchange.peer.frames, (QList<QByteArray>{readJog, readGear}));
}

void ParameterTransferTest::eachReplyGoesToItsOwnRegister()
{
    Exchange exchange;
    exchange.peer.registers[0x2007] = 7;
    exchange.peer.registers[0x2064] = 100;
    exchange.peer.registers[0x2130] = 1;
    exchange.peer.registers[0x2131] = 2;
    exchange.transfer.readOne(QStringLiteral("Pn-100"));
    exchange.transfer.readOne(QStringLiteral("Pn-304"));
    readPages(exchange.transfer);
    exchange.answerAll();
    const QList<std::tuple<int, QByteArray>> wanted{{100, wire::bytes("00 64")},
                                                    {304, wire::bytes("00 01 00 02")},
                                                    {7, wire::bytes("00 07")},
                                                    {100, wire::bytes("00 64")}};
    QCOMPARE(exchange.answers.calls, wanted);
}

void ParameterTransferTest::replyAfterTheTimeOutIsNobodys()
{
    Exchange exchange;
    readPages(exchange.transfer);
    exchange.transfer.timeOut();
    exchange.answer();
    QCOMPARE(exchange.answers.count(), 0);
    QCOMPARE(exchange.peer.frames, QList<QByteArray>{readJog});
}

// It answers the probe of the worker that followed, which goes to the window that asked last.
void ParameterTransferTest::replyBehindALostLinkIsNobodys()
{
    Exchange exchange;
    readPages(exchange.transfer);
    exchange.transfer.loseReply();
    exchange.answer();
    QCOMPARE(exchange.answers.count(), 0);
    QCOMPARE(exchange.peer.frames, QList<QByteArray>{readJog});
    // The silence is told, and the next request has its reply again.
    exchange.transfer.timeOut();
    QCOMPARE(exchange.ends.count(End::RequestTimeout), 1);
    readOne(exchange.transfer);
    exchange.answer();
    QCOMPARE(exchange.answers.count(), 1);
    // Without a request under way nothing is lost.
    exchange.transfer.loseReply();
    readOne(exchange.transfer);
    exchange.answer();
    QCOMPARE(exchange.answers.count(), 2);
}

QTEST_GUILESS_MAIN(ParameterTransferTest)
#include "tst_parametertransfer.moc"
