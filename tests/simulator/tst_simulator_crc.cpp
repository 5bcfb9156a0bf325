// SPDX-License-Identifier: GPL-3.0-or-later
#include "simulatortest.h"

#include "simulator/crc16.h"

#include <QtTest>

using namespace kt500sim;

class TestCrc : public QObject
{
    Q_OBJECT

private slots:
    void appendedChecksumIsThatOfTheWire_data()
    {
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<QByteArray>("checksum");
        QTest::newRow("read request") << QByteArray("010320600002") << QByteArray("cfd5");
        QTest::newRow("stop frame") << QByteArray("01140000000000000000") << QByteArray("dec2");
        QTest::newRow("write request") << QByteArray("011020640001020000") << QByteArray("8fb6");
        QTest::newRow("low byte below 0x10") << QByteArray("0103e0070001") << QByteArray("020b");
        QTest::newRow("check string") << QByteArray("313233343536373839") << QByteArray("374b");
        QTest::newRow("nothing") << QByteArray("") << QByteArray("ffff");
    }
    void appendedChecksumIsThatOfTheWire()
    {
        QFETCH(QByteArray, body);
        QFETCH(QByteArray, checksum);
        Bytes frame = bytesOf(body);
        appendCrc(frame);
        QCOMPARE(hexOf(frame), body + checksum);
    }

    void goodFrameIsRecognised()
    {
        const Bytes frame = bytesOf("010320600002cfd5");
        QVERIFY(endsWithItsCrc(frame.data(), frame.size()));
    }

    void everySingleWrongBitIsNoticed()
    {
        const Bytes good = bytesOf("010320600002cfd5");
        for (std::size_t bit = 0; bit < 8 * good.size(); ++bit) {
            Bytes bad = good;
            bad[bit / 8] ^= static_cast<std::uint8_t>(1u << (bit % 8));
            QVERIFY(!endsWithItsCrc(bad.data(), bad.size()));
        }
    }

    void frameWithoutBodyIsNoFrame()
    {
        const Bytes onlyChecksum = bytesOf("ffff");
        QVERIFY(!endsWithItsCrc(onlyChecksum.data(), onlyChecksum.size()));
        QVERIFY(!endsWithItsCrc(nullptr, 0));
    }
};

QTEST_APPLESS_MAIN(TestCrc)
#include "tst_simulator_crc.moc"
