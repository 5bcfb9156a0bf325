// SPDX-License-Identifier: GPL-3.0-or-later
// How a run of the editor's conversation is ended before it has come to its end.
#include "transferexchange.h"

#include "parameter/parametertransfer.h"
#include "support/registerpeer.h"
#include "support/wire.h"

#include <QPointer>
#include <QTest>

using namespace transferexchange;

class ParameterTransferCancelTest : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();
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
void ParameterTransferCancelTest::cleanup()
{
    Exchange exchange;
    exchange.transfer.readPages({});
    exchange.transfer.readBatch({});
    exchange.transfer.writePages({jog});
    exchange.answerAll();
}

void ParameterTransferCancelTest::cancelEndsARun_data()
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

void ParameterTransferCancelTest::cancelEndsARun()
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

void ParameterTransferCancelTest::nothingBeginsBeforeTheReplyOfACancelledRun()
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

void ParameterTransferCancelTest::cancelledReplyThatStaysAwayIsNotTold()
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

void ParameterTransferCancelTest::cancelForgetsWhatWaits()
{
    Exchange exchange;
    readPages(exchange.transfer);
    exchange.transfer.readOne(QStringLiteral("Pn-100"));
    exchange.transfer.cancel();
    exchange.answer();
    QCOMPARE(exchange.peer.frames, QList<QByteArray>{readJog});
}

void ParameterTransferCancelTest::restOfACancelledReadIsReadFirst()
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

void ParameterTransferCancelTest::writeAfterACancelledWriteStartsOver()
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

void ParameterTransferCancelTest::cancelWithoutARunSaysNothing()
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

void ParameterTransferCancelTest::readBackOfACancelledWriteIsNotSent()
{
    Exchange exchange;
    writePages(exchange.transfer);
    exchange.transfer.cancel();
    exchange.transfer.sendReadBack();
    QCOMPARE(exchange.peer.frames, QList<QByteArray>{storeJog});
}

// As the message at the end of a run may let the window be closed.
void ParameterTransferCancelTest::receiverMayEndTheTransfer()
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

QTEST_GUILESS_MAIN(ParameterTransferCancelTest)
#include "tst_parametertransfer_cancel.moc"
