// SPDX-License-Identifier: GPL-3.0-or-later
// The editor's conversation with the drive by itself: one request at a time, what a time-out says, and how a
// run is ended.
#include "parameter/parametertransfer.h"
#include "support/registerpeer.h"
#include "support/signallog.h"
#include "support/wire.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QPointer>
#include <QTest>

#include <functional>

using End = ParameterTransfer::End;

namespace {

// A transfer whose frames go to a peer that answers when it is told to.
class Exchange
{
public:
    Exchange()
        : transfer({QStringLiteral("Pn-304")})
    {
        peer.held = true;
        QObject::connect(&transfer, &ParameterTransfer::frameReady, &peer,
                         [this](const QByteArray &frame) { peer.take(frame, QString()); });
        QObject::connect(&peer, &RegisterPeer::reply, &transfer, &ParameterTransfer::takeReply);
    }

    // Lets what is held back come in, and what it sets going, as far as the next frame.
    void answer()
    {
        peer.release();
        peer.held = true;
        QCoreApplication::processEvents();
    }
    // Answers until nothing is asked any more.
    void answerAll()
    {
        for (int count = 0; count != peer.frames.size();) {
            count = peer.frames.size();
            answer();
        }
    }

    RegisterPeer peer;
    ParameterTransfer transfer;
    SignalLog<int, QByteArray> answers{&transfer, &ParameterTransfer::answered};
    SignalLog<End> ends{&transfer, &ParameterTransfer::ended};
    SignalLog<> withdrawals{&transfer, &ParameterTransfer::withdrawn};
    SignalLog<int, int> counts{&transfer, &ParameterTransfer::progress};
};

using Start = std::function<void(ParameterTransfer &)>;

const QStringList jog{"Pn-007", "", "150.0", "0.1rpm", "0.0", "6000.0"};
const QStringList gear{"Pn-100", "", "3", "", "0", "8"};

const QByteArray readJog = wire::frame("01 03 20 07 00 01");
const QByteArray readGear = wire::frame("01 03 20 64 00 01");
const QByteArray storeJog = wire::frame("01 10 e0 07 00 01 02 05 dc");
const QByteArray keepJog = wire::frame("01 10 20 07 00 01 02 05 dc");
const QByteArray storeGear = wire::frame("01 10 e0 64 00 01 02 00 03");

void readOne(ParameterTransfer &transfer)
{
    transfer.readOne(QStringLiteral("Pn-007"));
}

void writeOne(ParameterTransfer &transfer)
{
    transfer.writeOne(jog, 0x2000);
}

void readPages(ParameterTransfer &transfer)
{
    transfer.readPages({"Pn-007", "Pn-100"});
}

void readBatch(ParameterTransfer &transfer)
{
    transfer.readBatch({"Pn-007", "Pn-100"});
}

void writePages(ParameterTransfer &transfer)
{
    transfer.writePages({jog, gear});
}

void writeBatch(ParameterTransfer &transfer)
{
    transfer.writeBatch({jog, gear});
}

} // namespace

Q_DECLARE_METATYPE(Start)
Q_DECLARE_METATYPE(End)

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
    void cancelEndsARun_data();
    void cancelEndsARun();
    void nothingBeginsBeforeTheReplyOfACancelledRun();
    void cancelledReplyThatStaysAwayIsNotTold();
    void cancelForgetsWhatWaits();
    void restOfACancelledReadIsReadFirst();
    void writeAfterACancelledWriteStartsOver();
    void cancelWithoutARunSaysNothing();
    void readBackOfACancelledWriteIsNotSent();
    void receiverMayEndTheTransfer();
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

void ParameterTransferTest::cancelEndsARun_data()
{
    QTest::addColumn<Start>("start");
    QTest::addColumn<int>("replies");
    QTest::newRow("page read") << Start(readPages) << 0;
    QTest::newRow("page read, second code") << Start(readPages) << 1;
    QTest::newRow("batch read") << Start(readBatch) << 1;
    QTest::newRow("page write") << Start(writePages) << 0;
    QTest::newRow("page write, read-back") << Start(writePages) << 2;
    QTest::newRow("batch write") << Start(writeBatch) << 0;
    QTest::newRow("batch write, second record") << Start(writeBatch) << 4;
}

void ParameterTransferTest::cancelEndsARun()
{
    QFETCH(const Start, start);
    QFETCH(const int, replies);
    Exchange exchange;
    start(exchange.transfer);
    for (int i = 0; i < replies; ++i)
        exchange.answer();
    const int frames = exchange.peer.frames.size();
    const int answers = exchange.answers.count();
    exchange.transfer.cancel();
    QCOMPARE(exchange.ends.count(), 1);
    QCOMPARE(exchange.ends.count(End::Cancelled), 1);
    QCOMPARE(exchange.withdrawals.count(), 1);
    exchange.transfer.cancel();
    exchange.answer();
    QCOMPARE(exchange.ends.count(), 1);
    QCOMPARE(exchange.answers.count(), answers);
    QCOMPARE(exchange.peer.frames.size(), frames);
}

void ParameterTransferTest::nothingBeginsBeforeTheReplyOfACancelledRun()
{
    Exchange exchange;
    exchange.peer.registers[0x2007] = 7;
    exchange.peer.registers[0x2064] = 100;
    readPages(exchange.transfer);
    exchange.transfer.cancel();
    exchange.transfer.readOne(QStringLiteral("Pn-100"));
    QCOMPARE(exchange.peer.frames, QList<QByteArray>{readJog});
    exchange.answer();
    QCOMPARE(exchange.peer.frames, (QList<QByteArray>{readJog, readGear}));
    QCOMPARE(exchange.answers.count(), 0);
    exchange.answer();
    const QList<std::tuple<int, QByteArray>> wanted{{100, wire::bytes("00 64")}};
    QCOMPARE(exchange.answers.calls, wanted);
}

void ParameterTransferTest::cancelledReplyThatStaysAwayIsNotTold()
{
    Exchange exchange;
    writePages(exchange.transfer);
    exchange.transfer.cancel();
    exchange.transfer.readOne(QStringLiteral("Pn-100"));
    // The wait for the dropped reply ends by itself.
    QTRY_COMPARE(exchange.peer.frames, (QList<QByteArray>{storeJog, readGear}));
    QCOMPARE(exchange.ends.count(), 1);
    QCOMPARE(exchange.ends.count(End::Cancelled), 1);
}

void ParameterTransferTest::cancelForgetsWhatWaits()
{
    Exchange exchange;
    readPages(exchange.transfer);
    exchange.transfer.readOne(QStringLiteral("Pn-100"));
    exchange.transfer.cancel();
    exchange.answer();
    QCOMPARE(exchange.peer.frames, QList<QByteArray>{readJog});
}

void ParameterTransferTest::restOfACancelledReadIsReadFirst()
{
    Exchange exchange;
    readPages(exchange.transfer);
    exchange.answer();
    exchange.transfer.cancel();
    exchange.answer();
    exchange.peer.frames.clear();
    readPages(exchange.transfer);
    exchange.answerAll();
    QCOMPARE(exchange.peer.frames, (QList<QByteArray>{readGear, readJog, readGear}));
    QCOMPARE(exchange.ends.count(End::ReadDone), 1);
    // The count goes on from the two frames of the first run.
    const QList<std::tuple<int, int>> wanted{{1, 2}, {2, 2}, {3, 3}, {4, 3}, {5, 3}};
    QCOMPARE(exchange.counts.calls, wanted);
}

void ParameterTransferTest::writeAfterACancelledWriteStartsOver()
{
    Exchange exchange;
    writePages(exchange.transfer);
    exchange.transfer.cancel();
    exchange.answer();
    exchange.peer.frames.clear();
    writePages(exchange.transfer);
    exchange.answerAll();
    QCOMPARE(exchange.peer.frames.size(), 8);
    QCOMPARE(exchange.ends.count(End::WriteDone), 1);
}

void ParameterTransferTest::cancelWithoutARunSaysNothing()
{
    Exchange exchange;
    exchange.transfer.cancel();
    readPages(exchange.transfer);
    exchange.answerAll();
    exchange.transfer.cancel();
    QCOMPARE(exchange.ends.count(), 1);
    QCOMPARE(exchange.ends.count(End::ReadDone), 1);
    QCOMPARE(exchange.withdrawals.count(), 0);
}

void ParameterTransferTest::readBackOfACancelledWriteIsNotSent()
{
    Exchange exchange;
    writePages(exchange.transfer);
    exchange.transfer.cancel();
    exchange.transfer.sendReadBack();
    QCOMPARE(exchange.peer.frames, QList<QByteArray>{storeJog});
}

// As the message at the end of a run may let the window be closed.
void ParameterTransferTest::receiverMayEndTheTransfer()
{
    RegisterPeer peer;
    auto *const transfer = new ParameterTransfer({});
    connect(transfer, &ParameterTransfer::frameReady, &peer,
            [&peer](const QByteArray &frame) { peer.take(frame, QString()); });
    connect(&peer, &RegisterPeer::reply, transfer, &ParameterTransfer::takeReply);
    connect(transfer, &ParameterTransfer::ended, transfer, [transfer] { delete transfer; });
    readOne(*transfer);
    readPages(*transfer);
    const QPointer<ParameterTransfer> alive(transfer);
    QTRY_VERIFY(!alive);
    QCOMPARE(peer.frames.size(), 3);
}

QTEST_GUILESS_MAIN(ParameterTransferTest)
#include "tst_parametertransfer.moc"
