// SPDX-License-Identifier: GPL-3.0-or-later
#include "link/framecodec.h"
#include "parameter/parameterframes.h"
#include "support/wire.h"

#include <QTest>

class ParameterFramesTest : public QObject
{
    Q_OBJECT

private slots:
    void readFrameNamesRegisterAndCount_data();
    void readFrameNamesRegisterAndCount();
    void writeFrameCarriesBaseWidthAndValue_data();
    void writeFrameCarriesBaseWidthAndValue();
    void replyDataIsCountedFromTheEnd_data();
    void replyDataIsCountedFromTheEnd();
    void readBackIsJudged_data();
    void readBackIsJudged();
};

void ParameterFramesTest::readFrameNamesRegisterAndCount_data()
{
    QTest::addColumn<QString>("code");
    QTest::addColumn<bool>("twoRegisters");
    QTest::addColumn<QByteArray>("frame");
    QTest::newRow("Pn-000") << "Pn-000" << false << wire::bytes("0103200000018FCA");
    QTest::newRow("Pn-304, one") << "Pn-304" << false << wire::frame("010321300001");
    QTest::newRow("Pn-304, two") << "Pn-304" << true << wire::frame("010321300002");
    QTest::newRow("Pn-B81~Pn-B82") << "Pn-B81~Pn-B82" << true << wire::frame("0103249D0002");
}

void ParameterFramesTest::readFrameNamesRegisterAndCount()
{
    QFETCH(QString, code);
    QFETCH(bool, twoRegisters);
    QFETCH(QByteArray, frame);
    QCOMPARE(parameterReadFrame(code, twoRegisters).toHex(), frame.toHex());
}

void ParameterFramesTest::writeFrameCarriesBaseWidthAndValue_data()
{
    QTest::addColumn<QStringList>("record");
    QTest::addColumn<int>("base");
    QTest::addColumn<QByteArray>("frame");
    const QStringList jog{"Pn-007", "", "200.0", "0.1rpm", "0.0", "6000.0"};
    QTest::newRow("16 bits to RAM") << jog << 0x2000 << wire::frame("01102007000102 07D0");
    QTest::newRow("16 bits to EEPROM") << jog << 0xE000 << wire::frame("0110E007000102 07D0");
    const QStringList path{"Pn-A04", "", "-10000", "pp", "-2147483647", "2147483647"};
    QTest::newRow("32 bits to RAM") << path << 0x2000 << wire::frame("011023EC000204 FFFFD8F0");
    QTest::newRow("32 bits to EEPROM") << path << 0xE000 << wire::frame("0110E3EC000204 FFFFD8F0");
    QTest::newRow("hexadecimal") << QStringList({"Pn-004", "H", "0x0101", "", "0x0000", "0x1111"}) << 0xE000
                                 << wire::frame("0110E004000102 0101");
    QTest::newRow("empty value") << QStringList({"Pn-100", "", "", "", "0", "8"}) << 0xE000
                                 << wire::frame("0110E064000102 0000");
}

void ParameterFramesTest::writeFrameCarriesBaseWidthAndValue()
{
    QFETCH(QStringList, record);
    QFETCH(int, base);
    QFETCH(QByteArray, frame);
    QCOMPARE(parameterWriteFrame(record, base).toHex(), frame.toHex());
}

void ParameterFramesTest::replyDataIsCountedFromTheEnd_data()
{
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<QByteArray>("data");
    QTest::newRow("one register") << wire::frame("010302ABCD") << wire::bytes("abcd");
    QTest::newRow("two registers") << wire::frame("01030401020304") << wire::bytes("01020304");
    QTest::newRow("byte count longer than the frame") << wire::frame("010304ABCD") << wire::bytes("0304abcd");
    QTest::newRow("byte count that is no decimal number") << wire::frame("01030A0102") << QByteArray();
    QTest::newRow("exception reply") << wire::bytes("018302C0F1") << wire::bytes("8302");
    QTest::newRow("two bytes") << wire::bytes("FFFF") << QByteArray();
    QTest::newRow("empty") << QByteArray() << QByteArray();
}

void ParameterFramesTest::replyDataIsCountedFromTheEnd()
{
    QFETCH(QByteArray, reply);
    QFETCH(QByteArray, data);
    QCOMPARE(replyData(reply).toHex(), data.toHex());
}

void ParameterFramesTest::readBackIsJudged_data()
{
    QTest::addColumn<QStringList>("record");
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<int>("verdict");
    const QStringList jog{"Pn-007", "", "200.0", "0.1rpm", "0.0", "6000.0"};
    const QStringList path{"Pn-A04", "", "-10000", "pp", "-2147483647", "2147483647"};
    QTest::newRow("equal, 16 bits") << jog << wire::frame("01030207D0") << int(ReadBack::Equal);
    QTest::newRow("equal, 32 bits") << path << wire::frame("010304FFFFD8F0") << int(ReadBack::Equal);
    QTest::newRow("another value") << jog << wire::frame("01030207D1") << int(ReadBack::Differs);
    QTest::newRow("another width") << jog << wire::frame("010304000007D0") << int(ReadBack::Differs);
    QTest::newRow("another count") << jog << wire::frame("010306000007D00000") << int(ReadBack::Differs);
    QTest::newRow("reply to a write") << jog << wire::frame("011020070001") << int(ReadBack::NotARead);
    QTest::newRow("exception") << jog << wire::bytes("018302C0F1") << int(ReadBack::NotARead);
    QTest::newRow("empty") << jog << QByteArray() << int(ReadBack::NotARead);
}

void ParameterFramesTest::readBackIsJudged()
{
    QFETCH(QStringList, record);
    QFETCH(QByteArray, reply);
    QFETCH(int, verdict);
    QCOMPARE(int(judgeReadBack(reply, record)), verdict);
}

QTEST_GUILESS_MAIN(ParameterFramesTest)
#include "tst_parameterframes.moc"
