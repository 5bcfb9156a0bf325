// SPDX-License-Identifier: GPL-3.0-or-later
// Whole conversations with a drive on its terminal, frame by frame, while its time is moved by the test.
#include "simulator/simulateddrive.h"

#include "terminalclient.h"

#include <QtTest>

using namespace kt500sim;

namespace {

/// Two bytes behind \a hex, as the wire has them: bit by bit, least significant byte first.
QByteArray withChecksum(const QByteArray &hex)
{
    const QByteArray raw = QByteArray::fromHex(hex);
    unsigned rest = 0xffff;
    for (const char byte : raw) {
        rest ^= static_cast<unsigned char>(byte);
        for (int bit = 0; bit < 8; ++bit)
            rest = (rest & 1) != 0 ? (rest >> 1) ^ 0xa001 : rest >> 1;
    }
    QByteArray frame = raw;
    frame.append(static_cast<char>(rest & 0xff));
    frame.append(static_cast<char>(rest >> 8));
    return frame.toHex();
}

} // namespace

class TestConversation : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<SimulatedDrive> m_drive;
    std::unique_ptr<TerminalClient> m_client;

    /// Sends a request, less its checksum, and compares the reply, less its.
    bool tells(const QByteArray &request, const QByteArray &reply)
    {
        const QByteArray expected = withChecksum(tight(reply));
        const QByteArray got =
            m_client->ask(withChecksum(tight(request)), static_cast<std::size_t>(expected.size() / 2));
        if (got != expected)
            qWarning("%s: %s", request.constData(), got.constData());
        return got == expected;
    }
    /// A write of one register, which is answered by its echo.
    bool write(const QByteArray &frame) { return tells(frame, frame); }
    /// The value of one register, or of two as one number.
    std::int32_t value(const QByteArray &address, int words)
    {
        const QByteArray request = "0103" + address + (words == 2 ? "0002" : "0001");
        const QByteArray reply =
            m_client->ask(withChecksum(request), static_cast<std::size_t>(5 + 2 * words));
        const QByteArray data = reply.mid(6, 4 * words);
        if (words == 2)
            return static_cast<std::int32_t>(data.toUInt(nullptr, 16));
        return static_cast<std::int16_t>(data.toUInt(nullptr, 16));
    }
    void wait(int time) { m_drive->advance(milliseconds(time)); }
    std::int32_t position() { return value("25eb", 2); }
    std::int32_t speed() { return value("25dc", 1); }

    /// What a trial run writes before anything else: JOG on, DI9 to DI11, their source, position method.
    bool prepareTrialRun()
    {
        return write("0106 200b 0001") && write("0106 20db 0027") && write("0106 20dc 0028") &&
               write("0106 20dd 0025") && write("0106 20c8 0701") &&
               tells("0110 2064 0001 02 0000", "0110 2064 0001");
    }

private slots:
    void init()
    {
        m_drive = std::make_unique<SimulatedDrive>();
        m_drive->freeze();
        QVERIFY(m_drive->start());
        m_client = std::make_unique<TerminalClient>(m_drive->portName());
        QVERIFY(m_client->isOpen());
        wait(5);
    }
    void cleanup()
    {
        m_client.reset();
        m_drive.reset();
    }

    void jogGoesBothWaysWhileItIsHeld()
    {
        QVERIFY(prepareTrialRun());
        QVERIFY(write("0106 20ca 0100")); // JOG without the servo
        wait(1000);
        QCOMPARE(position(), 0);
        QVERIFY(write("0106 20ca 0001"));
        wait(500);
        QCOMPARE(position(), 0);
        QVERIFY(write("0106 20ca 0101"));
        wait(1000);
        QVERIFY(std::abs(speed() - 200) <= 2);
        const std::int32_t forward = position();
        QVERIFY(forward > 30000); // 200 rpm for nearly a second, 10000 units a turn
        QVERIFY(write("0106 20ca 0001"));
        wait(500);
        QVERIFY(std::abs(speed()) <= 1);
        const std::int32_t stopped = position();
        wait(500);
        QVERIFY(std::abs(position() - stopped) <= 1);
        QVERIFY(write("0106 20ca 0201"));
        wait(2500);
        QVERIFY(std::abs(speed() + 200) <= 2);
        QVERIFY(position() < 0);
        QVERIFY(write("0106 20ca 0000"));
        wait(1000);
        const std::int32_t off = position();
        QVERIFY(write("0106 20ca 0200"));
        wait(1000);
        QCOMPARE(position(), off);
    }

    void positionIsRunByTheTrigger()
    {
        QVERIFY(prepareTrialRun());
        QVERIFY(write("0106 200b 0000"));
        QVERIFY(write("0106 212c 0001"));
        QVERIFY(tells("0110 213a 0002 04 0000 4e20", "0110 213a 0002")); // 20000 units
        QVERIFY(write("0106 20ca 0401"));
        wait(100);
        QVERIFY(write("0106 20ca 0001"));
        wait(2000);
        QCOMPARE(position(), 20000);
        QVERIFY(tells("0110 213a 0002 04 ffff b1e0", "0110 213a 0002")); // and back
        QVERIFY(write("0106 20ca 0401"));
        wait(3000);
        QCOMPARE(position(), 0);
    }

    void sectionsSwingAsLongAsTheServoIsOn()
    {
        QVERIFY(prepareTrialRun());
        QVERIFY(write("0106 200b 0000"));
        QVERIFY(tells("0110 23ec 0002 04 0000 03e8", "0110 23ec 0002"));
        QVERIFY(tells("0110 23f2 0002 04 ffff fc18", "0110 23f2 0002"));
        QVERIFY(tells("0110 23f0 0002 04 0000 00c8", "0110 23f0 0002"));
        QVERIFY(tells("0110 23f6 0002 04 0000 00c8", "0110 23f6 0002"));
        QVERIFY(tells("0110 23e8 0001 02 0001", "0110 23e8 0001"));
        QVERIFY(tells("0110 23e9 0001 02 0002", "0110 23e9 0001"));
        QVERIFY(write("0106 212c 0002"));
        QVERIFY(write("0106 20ca 0001"));
        int ends = 0;
        int starts = 0;
        for (int i = 0; i < 400; ++i) {
            wait(10);
            const std::int32_t place = position();
            QVERIFY(place > -100 && place < 1100);
            ends += place > 990 && place < 1010 ? 1 : 0;
            starts += place > -10 && place < 10 ? 1 : 0;
        }
        QVERIFY(ends > 50 && starts > 50);
        QVERIFY(write("0106 20ca 0000"));
        wait(1000);
        const std::int32_t stopped = position();
        wait(1000);
        QCOMPARE(position(), stopped);
    }

    void softwareLimitKeepsAPositionWithin()
    {
        QVERIFY(prepareTrialRun());
        QVERIFY(write("0106 200b 0000"));
        QVERIFY(write("0106 212c 0001"));
        QVERIFY(write("0106 2331 0001"));
        QVERIFY(tells("0110 2332 0004 08 0000 1388 ffff ec78", "0110 2332 0004")); // +-5000
        QVERIFY(tells("0110 213a 0002 04 0000 4e20", "0110 213a 0002"));
        QVERIFY(write("0106 20ca 0401"));
        wait(3000);
        QCOMPARE(position(), 5000);
        QVERIFY(tells("0103 25f7 0001", "0103 02 0007"));
        QVERIFY(tells("0110 213a 0002 04 ffff fc18", "0110 213a 0002"));
        QVERIFY(write("0106 20ca 0001"));
        wait(20);
        QVERIFY(write("0106 20ca 0401"));
        wait(2000);
        QCOMPARE(position(), 4000);
        QVERIFY(tells("0103 25f7 0001", "0103 02 0000"));
    }

    void emergencyStopsWhileSpeedIsCommanded()
    {
        QVERIFY(write("0106 2064 0001"));
        QVERIFY(tells("0110 2191 0002 04 0000 7530", "0110 2191 0002")); // 3000.0 rpm
        QVERIFY(write("0106 20db 0002"));
        QVERIFY(write("0106 20c8 0101"));
        QVERIFY(write("0106 20ca 0001"));
        wait(1500);
        QVERIFY(std::abs(speed() - 3000) <= 5);
        QVERIFY(write("0106 20ca 0101"));
        wait(100); // 1.95 kg cm2 from 3000 rpm by 2.39 Nm: 26 ms
        QVERIFY(std::abs(speed()) <= 5);
        QVERIFY(tells("0103 25f7 0001", "0103 02 0001"));
        QVERIFY(write("0106 20ca 0001"));
        wait(1000);
        QVERIFY(std::abs(speed()) <= 1);
    }

    void faultStopsIsRecordedAndIsReset()
    {
        QVERIFY(write("0106 2064 0001"));
        QVERIFY(write("0106 20c8 0001"));
        QVERIFY(write("0106 20ca 0001"));
        wait(500);
        QVERIFY(std::abs(speed() - 100) <= 2);
        QVERIFY(m_drive->raiseFault(16));
        wait(1000);
        QVERIFY(std::abs(speed()) <= 1);
        QVERIFY(tells("0103 25f7 0002", "0103 04 0000 0010"));
        QVERIFY(tells("0103 2352 000a", "0103 14 0010 0000 0000 0000 0000 0000 0000 0000 0000 0000"));
        QVERIFY(write("0106 2320 0001"));
        QVERIFY(tells("0103 25f7 0002", "0103 04 0000 0000"));
        QVERIFY(tells("0103 2320 0001", "0103 02 0000"));
        wait(500);
        QVERIFY(std::abs(speed()) <= 1);
        QVERIFY(write("0106 20ca 0000"));
        wait(10);
        QVERIFY(write("0106 20ca 0001"));
        wait(500);
        QVERIFY(std::abs(speed() - 100) <= 2);
    }

    void powerCycleRestoresTheStoredCopyAndStops()
    {
        QVERIFY(write("0106 2064 0001"));
        QVERIFY(write("0106 e1f5 0019")); // stored as well
        QVERIFY(write("0106 20c8 0001"));
        QVERIFY(write("0106 20ca 0001"));
        wait(500);
        QVERIFY(std::abs(speed() - 100) <= 2);
        m_drive->powerCycle();
        wait(1000);
        QCOMPARE(speed(), 0);
        QCOMPARE(position(), 0);
        QVERIFY(tells("0103 2064 0001", "0103 02 0000"));
        QVERIFY(tells("0103 20ca 0001", "0103 02 0000"));
        QVERIFY(tells("0103 21f5 0001", "0103 02 0019"));
    }

    void frequentWritesToTheStoreAreReported()
    {
        QVERIFY(write("0106 2342 000a")); // ten an hour
        for (int i = 0; i < 10; ++i)
            QVERIFY(write("0106 e064 0000"));
        QVERIFY(tells("0103 25f8 0001", "0103 02 0000"));
        QVERIFY(write("0106 e064 0000"));
        QVERIFY(tells("0103 25f8 0001", "0103 02 000d"));
        for (int i = 0; i < 20; ++i)
            QVERIFY(write("0106 2064 0000")); // the working copy wears nothing
    }

    void frameWithoutAnAddressIsRefused_data()
    {
        QTest::addColumn<QByteArray>("frame");
        QTest::newRow("one register") << QByteArray("0110 0001 02 0064");
        QTest::newRow("two registers") << QByteArray("0110 0002 04 0001 86a0");
    }
    void frameWithoutAnAddressIsRefused()
    {
        QFETCH(QByteArray, frame);
        QVERIFY(tells(frame, "0190 03"));
        QVERIFY(tells("0103 2322 0001", "0103 02 0064")); // and nothing is changed
    }

    void streamShowsTheMotorAtWork()
    {
        QVERIFY(write("0106 2064 0001"));
        QVERIFY(tells("0110 2191 0002 04 0000 2710", "0110 2191 0002")); // 1000.0 rpm
        QVERIFY(write("0106 20c8 0001"));
        QVERIFY(write("0106 20ca 0001"));
        wait(1000);
        QVERIFY(m_client->write(withChecksum("0114 1000 2009 0000 0000")));
        QVERIFY(becomesTrue([this] { return m_drive->isStreaming(); }));
        wait(5);
        // Speed of 16 and counts of 32 bits, 40 samples each.
        const QByteArray frame = m_client->readStreamFrame();
        QCOMPARE(frame.mid(8, 4), QByteArray("1028"));
        QCOMPARE(frame.mid(172, 4), QByteArray("2028"));
        std::int64_t first = 0;
        for (int i = 0; i < 40; ++i) {
            const int shown = static_cast<std::int16_t>(frame.mid(12 + 4 * i, 4).toUInt(nullptr, 16));
            QVERIFY(std::abs(shown - 1000) <= 3);
            const auto counts = static_cast<std::int32_t>(frame.mid(176 + 8 * i, 8).toUInt(nullptr, 16));
            if (i == 0)
                first = counts;
            // 1000 rpm are 273.07 counts a sample.
            QVERIFY(std::abs(static_cast<double>(counts - first) - 273.07 * i) < 30);
        }
    }
};

QTEST_APPLESS_MAIN(TestConversation)
#include "tst_simulator_conversation.moc"
