// SPDX-License-Identifier: GPL-3.0-or-later
#include "simulatortest.h"

#include "simulator/drive.h"

#include <QtTest>

using namespace kt500sim;

namespace {

struct TestedDrive
{
    TestedDrive()
    {
        auto owned = std::make_unique<CountingModel>();
        model = owned.get();
        drive = std::make_unique<Drive>(builtInRegisterTable(), std::move(owned), 1, 40);
        drive->setRegister(7, 0x07d0, RegisterFile::Copy::WorkingAndStored);
        drive->setRegister(314, 0x0002, RegisterFile::Copy::WorkingAndStored);
        drive->setRegister(315, 0x0000, RegisterFile::Copy::WorkingAndStored);
        drive->setRegister(96, 0x4b54, RegisterFile::Copy::WorkingAndStored);
        drive->setRegister(97, 0x0500, RegisterFile::Copy::WorkingAndStored);
    }

    QByteArray ask(const QByteArray &hex) const { return hexOf(drive->answer(bytesOf(hex))); }

    CountingModel *model = nullptr;
    std::unique_ptr<Drive> drive;
};

} // namespace

class TestRequests : public QObject
{
    Q_OBJECT

private slots:
    void requestIsAnsweredByteForByte_data()
    {
        QTest::addColumn<QByteArray>("request");
        QTest::addColumn<QByteArray>("reply");
        const auto row = [](const char *name, const char *request, const char *reply) {
            QTest::newRow(name) << tight(request) << tight(reply);
        };
        row("probe", "01 03 2060 0002 cfd5", "01 03 04 4b54 0500 af57");
        row("read one", "01 03 2007 0001 3e0b", "01 03 02 07d0 bbe8");
        row("read a pair", "01 03 213a 0002 ee3a", "01 03 04 0002 0000 5bf3");
        row("read the stored copy", "01 03 e007 0001 020b", "01 03 02 07d0 bbe8");
        row("write one, working copy", "01 06 2007 0bb8 3489", "01 06 2007 0bb8 3489");
        row("write one, stored copy", "01 06 e007 0bb8 0889", "01 06 e007 0bb8 0889");
        row("write a pair, working copy", "01 10 213a 0002 04 fffffc18 a5bb", "01 10 213a 0002 6bf9");
        row("write a pair, stored copy", "01 10 e13a 0002 04 fffffc18 f5be", "01 10 e13a 0002 57f9");
        row("write one by the long form", "01 10 2064 0001 02 0000 8fb6", "01 10 2064 0001 4bd6");
    }
    void requestIsAnsweredByteForByte()
    {
        QFETCH(QByteArray, request);
        QFETCH(QByteArray, reply);
        QCOMPARE(TestedDrive().ask(request), reply);
    }

    void whatCantBeServedIsRefused_data()
    {
        QTest::addColumn<QByteArray>("request");
        QTest::addColumn<QByteArray>("reply");
        const auto row = [](const char *name, const char *request, const char *reply) {
            QTest::newRow(name) << tight(request) << tight(reply);
        };
        row("unknown function", "01 04 0200 0001 3072", "01 84 01 82c0");
        row("unknown function with nothing behind it", "01 41 c010", "01 c1 01 b050");
        row("unknown register", "01 03 2640 0001 8e96", "01 83 02 c0f1");
        row("a range that runs out of the registers", "01 03 2031 0002 9e04", "01 83 02 c0f1");
        row("an address below both bases", "01 06 1fff 0001 7fee", "01 86 02 c3a1");
        row("an address between the bases", "01 06 dfff 0001 43ee", "01 86 02 c3a1");
        row("an address far beyond", "01 03 e7d0 0001 b347", "01 83 02 c0f1");
        row("read of nothing", "01 03 2007 0000 ffcb", "01 83 03 0131");
        row("read of too much", "01 03 2007 007e 7feb", "01 83 03 0131");
        row("read request too short", "01 03 2060 00 304e", "01 83 03 0131");
        row("read request too long", "01 03 2060 0002 01 5494", "01 83 03 0131");
        row("write of a read-only register", "01 06 2000 ffff 83ba", "01 86 02 c3a1");
        row("long write of a read-only register", "01 10 2352 0001 02 0001 78e0", "01 90 02 cdc1");
        row("long write that ends outside", "01 10 2031 0002 04 00010002 78b7", "01 90 02 cdc1");
        row("long write with a wrong byte count", "01 10 213a 0002 02 fffffc18 2dbb", "01 90 03 0c01");
        row("long write without its address", "01 10 0001 02 0064 a887", "01 90 03 0c01");
        row("scope flag that means nothing", "01 14 3000 0000 0000 0000 ddd6", "01 94 03 0ec1");
        row("scope selection above the budget", "01 14 2000 2000 2010 0000 d1bf", "01 94 03 0ec1");
    }
    void whatCantBeServedIsRefused()
    {
        QFETCH(QByteArray, request);
        QFETCH(QByteArray, reply);
        QCOMPARE(TestedDrive().ask(request), reply);
    }

    void otherStationsFramesAreNotAnswered()
    {
        QCOMPARE(TestedDrive().ask("020320600002cfe6"), QByteArray());
    }

    void ramWriteLeavesTheStoredCopy()
    {
        const TestedDrive tested;
        tested.ask("010620070bb83489");
        QCOMPARE(tested.drive->registers().working(7), std::uint16_t(0x0bb8));
        QCOMPARE(tested.drive->registers().stored(7), std::uint16_t(0x07d0));
        tested.drive->powerCycle();
        QCOMPARE(tested.drive->registers().working(7), std::uint16_t(0x07d0));
    }

    void storingWriteReachesBothCopies()
    {
        const TestedDrive tested;
        tested.ask("0110e13a000204fffffc18f5be");
        QCOMPARE(tested.drive->registers().workingPair(314), -1000);
        tested.drive->powerCycle();
        QCOMPARE(tested.drive->registers().workingPair(314), -1000);
    }

    void refusedLongWriteChangesNothing()
    {
        const TestedDrive tested;
        const std::uint16_t before = tested.drive->registers().working(49);
        tested.ask("0110203100020400010002"
                   "78b7");
        QCOMPARE(tested.drive->registers().working(49), before);
        QCOMPARE(tested.model->lastWritten, 97);
    }

    void modelLearnsOfEachWrite()
    {
        const TestedDrive tested;
        tested.ask("0110213a000204fffffc18a5bb");
        QCOMPARE(tested.model->lastWritten, 314);
        QCOMPARE(tested.model->lastWrittenCount, 2);
    }

    void statusIsFreshInEveryReply()
    {
        const TestedDrive tested;
        tested.drive->advance(0x1234, {});
        QCOMPARE(tested.ask("010325dc00014efc").mid(0, 10), QByteArray("0103021234"));
        tested.drive->advance(1, {});
        QCOMPARE(tested.ask("010325dc00014efc").mid(0, 10), QByteArray("0103021235"));
    }

    void powerCycleRestartsTheModelAndEndsTheStream()
    {
        const TestedDrive tested;
        tested.drive->advance(100, {});
        tested.ask("01141000000000000000dfce");
        QVERIFY(tested.drive->stream().isRunning());
        tested.drive->powerCycle();
        QVERIFY(!tested.drive->stream().isRunning());
        QCOMPARE(tested.drive->registers().working(1500), std::uint16_t(0));
    }

    void factoryResetForgetsStoredWrites()
    {
        const TestedDrive tested;
        tested.ask("0110e13a000204fffffc18f5be");
        tested.drive->factoryReset();
        QCOMPARE(tested.drive->registers().workingPair(314), 131072);
    }
};

QTEST_APPLESS_MAIN(TestRequests)
#include "tst_simulator_requests.moc"
