// SPDX-License-Identifier: GPL-3.0-or-later
#include "link/replies.h"
#include "link/requests.h"
#include "support/wire.h"

#include <QTest>

class TestRequests : public QObject
{
    Q_OBJECT

private slots:
    void readNamesRegisterAndCount();
    void singleWriteCarriesSixteenBits();
    void multipleWriteCountsRegistersAndBytes();
    void pairGoesHighWordFirst();
    void registerOfARequestIsInBytesTwoAndThree();
    void onlyAReadAsksForRegisters();
    void replies_data();
    void replies();
    void payloadFromTheBackStopsBeforeTheCrc();
    void numbersTakeTheSignOfTheirWidth();
};

void TestRequests::readNamesRegisterAndCount()
{
    QCOMPARE(readRequest(0x2060, 2).toHex(), QByteArray("010320600002cfd5"));
    QCOMPARE(readRequest(0x20CA, 1), wire::frame("01 03 20 CA 00 01"));
}

void TestRequests::singleWriteCarriesSixteenBits()
{
    QCOMPARE(writeSingleRequest(0x20CA, 0x0101), wire::frame("01 06 20 CA 01 01"));
    QCOMPARE(writeSingleRequest(0xE064, -2), wire::frame("01 06 E0 64 FF FE"));
}

void TestRequests::multipleWriteCountsRegistersAndBytes()
{
    QCOMPARE(writeMultipleRequest(0x2064, wire::bytes("00 00")).toHex(),
             QByteArray("0110206400010200008fb6"));
    QCOMPARE(writeMultipleRequest(0xE130, wire::bytes("00 01 02 03")),
             wire::frame("01 10 E1 30 00 02 04 00 01 02 03"));
    QCOMPARE(writeMultipleRequest(0x23E8, wire::bytes("00 01 02 03 04 05 06 07")),
             wire::frame("01 10 23 E8 00 04 08 00 01 02 03 04 05 06 07"));
}

void TestRequests::pairGoesHighWordFirst()
{
    QCOMPARE(writePairRequest(0x2130, 131073), wire::frame("01 10 21 30 00 02 04 00 02 00 01"));
    QCOMPARE(writePairRequest(0x2130, -1), wire::frame("01 10 21 30 00 02 04 FF FF FF FF"));
}

void TestRequests::registerOfARequestIsInBytesTwoAndThree()
{
    QCOMPARE(addressOfRequest(wire::bytes("01 03 E1 30 00 01")), 0xE130);
    QCOMPARE(addressOfRequest(wire::bytes("01 03 E1 30")), 0xE130);
    QCOMPARE(addressOfRequest(wire::bytes("01 03 E1")), -1);
    QCOMPARE(addressOfRequest(QByteArray()), -1);
}

void TestRequests::onlyAReadAsksForRegisters()
{
    QCOMPARE(registersOfRequest(wire::frame("01 03 20 60 00 02")), 2);
    QCOMPARE(registersOfRequest(wire::frame("01 03 20 60 01 0A")), 266);
    QCOMPARE(registersOfRequest(wire::frame("01 06 20 CA 00 02")), 0);
    QCOMPARE(registersOfRequest(wire::frame("01 10 E1 91 00 02 04 00 00 03 ED")), 0);
    QCOMPARE(registersOfRequest(wire::bytes("01 03 20 60 00")), 0);
    QCOMPARE(registersOfRequest(QByteArray()), 0);
}

void TestRequests::replies_data()
{
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<bool>("isRead");
    QTest::addColumn<bool>("isReadOfOne");
    QTest::addColumn<bool>("isReadOfTwo");
    QTest::addColumn<bool>("isException");
    QTest::addColumn<QByteArray>("payload");

    QTest::newRow("one register") << wire::frame("01 03 02 12 34") << true << true << false << false
                                  << wire::bytes("12 34");
    QTest::newRow("two registers") << wire::frame("01 03 04 12 34 56 78") << true << false << true << false
                                   << wire::bytes("12 34 56 78");
    QTest::newRow("cut short") << wire::frame("01 03 04 12 34") << true << false << false << false
                               << wire::frame("01 03 04 12 34").mid(3);
    QTest::newRow("longer than it says")
        << wire::frame("01 03 02 12 34 56") << true << false << false << false << wire::bytes("12 34");
    QTest::newRow("exception") << wire::frame("01 83 02") << false << false << false << true
                               << wire::frame("01 83 02").mid(3);
    QTest::newRow("echo of a write") << wire::frame("01 06 02 CA 01 01") << false << false << false << false
                                     << wire::bytes("CA 01");
    QTest::newRow("nothing") << QByteArray() << false << false << false << false << QByteArray();
    QTest::newRow("one byte") << wire::bytes("01") << false << false << false << false << QByteArray();
}

void TestRequests::replies()
{
    QFETCH(QByteArray, reply);
    QTEST(isReadReply(reply), "isRead");
    QTEST(isReadReplyOf(reply, 1), "isReadOfOne");
    QTEST(isReadReplyOf(reply, 2), "isReadOfTwo");
    QTEST(isExceptionReply(reply), "isException");
    QTEST(payloadFromFront(reply), "payload");
}

void TestRequests::payloadFromTheBackStopsBeforeTheCrc()
{
    const QByteArray reply = wire::frame("01 03 04 12 34 56 78");
    QCOMPARE(payloadFromBack(reply, 2), wire::bytes("56 78"));
    QCOMPARE(payloadFromBack(reply, 4), wire::bytes("12 34 56 78"));
    QCOMPARE(payloadFromBack(reply, 100), reply.chopped(2));
    QCOMPARE(payloadFromBack(reply, 0), QByteArray());
    QCOMPARE(payloadFromBack(wire::bytes("01"), 4), QByteArray());
}

void TestRequests::numbersTakeTheSignOfTheirWidth()
{
    QCOMPARE(unsignedNumber(wire::bytes("FF FE")), 65534u);
    QCOMPARE(unsignedNumber(wire::bytes("FF FF FF FE")), 4294967294u);
    QCOMPARE(signedNumber(wire::bytes("FF FE")), -2);
    QCOMPARE(signedNumber(wire::bytes("00 00 FF FE")), 65534);
    QCOMPARE(signedNumber(wire::bytes("FF FF FF FE")), -2);
    QCOMPARE(unsignedNumber(QByteArray()), 0u);
}

QTEST_APPLESS_MAIN(TestRequests)
#include "tst_requests.moc"
