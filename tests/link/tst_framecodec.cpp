// SPDX-License-Identifier: GPL-3.0-or-later
#include "link/framecodec.h"
#include "link/serialport.h"

#include <QTest>

class FrameCodecTest : public QObject
{
    Q_OBJECT

private slots:
    void crcTextIsLowByteFirst_data();
    void crcTextIsLowByteFirst();
    void crcOfNothingIsTheStartValue();
    void onlySixteenBitsOfTheLengthCount();
    void fieldsAreFitted_data();
    void fieldsAreFitted();
    void singleWriteIsPacked_data();
    void singleWriteIsPacked();
    void frameIsJudgedByItsCrc_data();
    void frameIsJudgedByItsCrc();
    void crcIsAppended();
    void scopeAndStopFramesAreRecognised_data();
    void scopeAndStopFramesAreRecognised();
};

void FrameCodecTest::crcTextIsLowByteFirst_data()
{
    QTest::addColumn<QString>("frame");
    QTest::addColumn<QString>("crc");
    QTest::newRow("probe") << "010320600002"
                           << "CFD5";
    QTest::newRow("stop frame") << "01140000000000000000"
                                << "DEC2";
    QTest::newRow("write several") << "011020640001020000"
                                   << "8FB6";
    QTest::newRow("blanks are skipped") << "01 03 20 60 00 02"
                                        << "CFD5";
    QTest::newRow("upper case digits") << "01030A"
                                       << "A0F7";
    QTest::newRow("lower case digits") << "01030a"
                                       << "A0F7";
    QTest::newRow("digit left over is ignored") << "0103206000027"
                                                << "CFD5";
    QTest::newRow("digit left over behind a blank") << "010320600002 7"
                                                    << "CFD5";
    // Found by a search with an independent computation: both bytes need their leading zero.
    QTest::newRow("leading zero in the low byte") << "0160"
                                                  << "0008";
    QTest::newRow("empty") << ""
                           << "FFFF";
}

void FrameCodecTest::crcTextIsLowByteFirst()
{
    QFETCH(QString, frame);
    QFETCH(QString, crc);
    QCOMPARE(crcText(frame), crc);
}

void FrameCodecTest::crcOfNothingIsTheStartValue()
{
    QCOMPARE(crc16(QByteArray()), quint16(0xFFFF));
}

void FrameCodecTest::onlySixteenBitsOfTheLengthCount()
{
    const QByteArray longer(0x10000, 'x');
    QCOMPARE(crc16(longer), quint16(0xFFFF));
    QCOMPARE(crc16(longer + "123456789"), crc16("xxxxxxxxx"));
    QCOMPARE(crc16("123456789"), quint16(0x4B37));
}

void FrameCodecTest::fieldsAreFitted_data()
{
    QTest::addColumn<qlonglong>("value");
    QTest::addColumn<int>("width");
    QTest::addColumn<QByteArray>("field");
    QTest::newRow("-1 in four") << -1LL << 4 << QByteArray::fromHex("FFFFFFFF");
    QTest::newRow("-1 in two") << -1LL << 2 << QByteArray::fromHex("FFFF");
    QTest::newRow("5 in two") << 5LL << 2 << QByteArray::fromHex("0005");
    QTest::newRow("5 in four") << 5LL << 4 << QByteArray::fromHex("00000005");
    QTest::newRow("0x12345 in two") << 0x12345LL << 2 << QByteArray::fromHex("2345");
    QTest::newRow("-300 in two") << -300LL << 2 << QByteArray::fromHex("FED4");
    QTest::newRow("0 in two") << 0LL << 2 << QByteArray::fromHex("0000");
}

void FrameCodecTest::fieldsAreFitted()
{
    QFETCH(qlonglong, value);
    QFETCH(int, width);
    QFETCH(QByteArray, field);
    QCOMPARE(fitBytes(QByteArray::fromHex(QString::number(value, 16).toLatin1()), width), field);
}

void FrameCodecTest::singleWriteIsPacked_data()
{
    QTest::addColumn<QString>("code");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QByteArray>("head"); // without the CRC
    QTest::newRow("Pn202") << "Pn202"
                           << "0101" << QByteArray::fromHex("010620CA0101");
    QTest::newRow("PnA01") << "PnA01"
                           << "0003" << QByteArray::fromHex("010623E90003");
    QTest::newRow("PnB06") << "PnB06"
                           << "FFFF" << QByteArray::fromHex("01062452FFFF");
    QTest::newRow("Pn000") << "Pn000"
                           << "0000" << QByteArray::fromHex("010620000000");
}

void FrameCodecTest::singleWriteIsPacked()
{
    QFETCH(QString, code);
    QFETCH(QString, value);
    QFETCH(QByteArray, head);
    const QByteArray frame = packSingleWrite(code, value);
    QCOMPARE(frame.left(6), head);
    QCOMPARE(frame.size(), 8);
    QVERIFY(hasGoodCrc(frame));
}

void FrameCodecTest::frameIsJudgedByItsCrc_data()
{
    QTest::addColumn<QByteArray>("frame");
    QTest::addColumn<bool>("good");
    QTest::newRow("probe") << QByteArray::fromHex("010320600002cfd5") << true;
    QTest::newRow("stop frame") << QByteArray::fromHex("01140000000000000000dec2") << true;
    QTest::newRow("exception reply") << QByteArray::fromHex("018302C0F1") << true;
    QTest::newRow("CRC high byte first") << QByteArray::fromHex("010320600002d5cf") << false;
    QTest::newRow("bit turned over") << QByteArray::fromHex("010320600003cfd5") << false;
    QTest::newRow("empty") << QByteArray() << false;
    QTest::newRow("one byte") << QByteArray::fromHex("FF") << false;
    QTest::newRow("CRC of nothing") << QByteArray::fromHex("FFFF") << true;
    QTest::newRow("low byte below 0x10") << QByteArray::fromHex("01600008") << true;
}

void FrameCodecTest::frameIsJudgedByItsCrc()
{
    QFETCH(QByteArray, frame);
    QFETCH(bool, good);
    QCOMPARE(hasGoodCrc(frame), good);
    SerialPort port;
    QCOMPARE(port.checkFrameCrc(frame, false), good);
}

void FrameCodecTest::crcIsAppended()
{
    QCOMPARE(withCrc(QByteArray::fromHex("010320600002")), QByteArray::fromHex(probeFrameText));
}

void FrameCodecTest::scopeAndStopFramesAreRecognised_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("scope");
    QTest::addColumn<bool>("stop");
    QTest::newRow("stop") << QByteArray::fromHex("01140000000000000000dec2") << true << true;
    QTest::newRow("start") << QByteArray::fromHex("011410001003200700000000") << true << false;
    QTest::newRow("read") << QByteArray::fromHex("010320600002cfd5") << false << false;
    QTest::newRow("one byte") << QByteArray::fromHex("01") << false << false;
    QTest::newRow("empty") << QByteArray() << false << false;
}

void FrameCodecTest::scopeAndStopFramesAreRecognised()
{
    QFETCH(QByteArray, bytes);
    QFETCH(bool, scope);
    QFETCH(bool, stop);
    QCOMPARE(isScopeFrame(bytes), scope);
    QCOMPARE(isStopFrame(bytes), stop);
}

QTEST_GUILESS_MAIN(FrameCodecTest)
#include "tst_framecodec.moc"
