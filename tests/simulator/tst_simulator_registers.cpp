// SPDX-License-Identifier: GPL-3.0-or-later
#include "simulator/registerfile.h"
#include "simulator/registertable.h"

#include <QtTest>

using namespace kt500sim;

namespace {

const char smallTable[] = "# a comment line\n"
                          "7, 1, rw, 2000   # a comment behind an entry\n"
                          "\n"
                          "0,1,r,0x0152\n"
                          "314,2,rw,131072\n"
                          "401,2,rw,-2\r\n"
                          "253,1,rw,-300\n";

RegisterFile smallFile()
{
    return RegisterFile(*parseRegisterTable(QString::fromLatin1(smallTable)));
}

} // namespace

class TestRegisters : public QObject
{
    Q_OBJECT

private slots:
    void tableEntriesAreReadAsWritten()
    {
        const std::optional<RegisterTable> table = parseRegisterTable(QString::fromLatin1(smallTable));
        QVERIFY(table);
        QCOMPARE(table->size(), std::size_t(5));
        QCOMPARE((*table)[0].offset, 7);
        QCOMPARE((*table)[0].words, 1);
        QCOMPARE((*table)[0].readOnly, false);
        QCOMPARE((*table)[0].factory, 2000u);
        QCOMPARE((*table)[1].readOnly, true);
        QCOMPARE((*table)[1].factory, 0x152u);
        QCOMPARE((*table)[2].words, 2);
        QCOMPARE((*table)[3].factory, 0xfffffffeu);
    }

    void badTableIsRefusedWithItsLine_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("error");
        QTest::newRow("field missing") << "1,1,rw"
                                       << "line 1: four fields are needed";
        QTest::newRow("offset no number") << "\nPn-304,1,rw,0"
                                          << "line 2: the offset is no number";
        QTest::newRow("negative offset") << "-1,1,rw,0"
                                         << "line 1: the offset is no number";
        QTest::newRow("three words") << "1,3,rw,0"
                                     << "line 1: the number of words must be 1 or 2";
        QTest::newRow("beyond the space") << "1600,1,rw,0"
                                          << "line 1: the offset is beyond the register space";
        QTest::newRow("pair across the end") << "1599,2,rw,0"
                                             << "line 1: the offset is beyond the register space";
        QTest::newRow("unknown access") << "1,1,w,0"
                                        << "line 1: the access must be r or rw";
        QTest::newRow("value too wide") << "1,1,rw,65536"
                                        << "line 1: the factory value is no number of that width";
        QTest::newRow("value empty") << "1,1,rw,"
                                     << "line 1: the factory value is no number of that width";
        QTest::newRow("listed twice") << "1,1,rw,0\n1,1,rw,0"
                                      << "line 2: offset 1 is listed twice";
        QTest::newRow("inside a pair") << "1,2,rw,0\n2,1,rw,0"
                                       << "line 2: offset 2 is listed twice";
    }
    void badTableIsRefusedWithItsLine()
    {
        QFETCH(QString, text);
        QFETCH(QString, error);
        QString told;
        QVERIFY(!parseRegisterTable(text, &told));
        QCOMPARE(told, error);
    }

    void builtInTableHasTheRegistersThatClientsRead_data()
    {
        QTest::addColumn<int>("first");
        QTest::addColumn<int>("last");
        QTest::newRow("basic parameters") << 0 << 49;
        QTest::newRow("the probe") << 96 << 97;
        QTest::newRow("basic control") << 100 << 119;
        QTest::newRow("inputs and outputs") << 200 << 299;
        QTest::newRow("position control") << 300 << 345;
        QTest::newRow("speed control") << 400 << 421;
        QTest::newRow("torque control") << 500 << 518;
        QTest::newRow("gains") << 600 << 613;
        QTest::newRow("more gains") << 620 << 694;
        QTest::newRow("full closed loop") << 700 << 719;
        QTest::newRow("failure and protection") << 800 << 864;
        QTest::newRow("communication") << 900 << 940;
        QTest::newRow("more communication") << 950 << 953;
        QTest::newRow("multi-segment displacement") << 1000 << 1099;
        QTest::newRow("multi-segment speed") << 1100 << 1185;
        QTest::newRow("torque values") << 1188 << 1195;
        QTest::newRow("status") << 1500 << 1585;
    }
    void builtInTableHasTheRegistersThatClientsRead()
    {
        QFETCH(int, first);
        QFETCH(int, last);
        const RegisterFile file(builtInRegisterTable());
        for (int offset = first; offset <= last; ++offset)
            QVERIFY2(file.exists(offset), qPrintable(QString::number(offset)));
    }

    void statusAndFaultRecordAreReadOnly()
    {
        const RegisterFile file(builtInRegisterTable());
        for (const int offset : {0, 850, 864, 1500, 1585})
            QVERIFY2(file.isReadOnly(offset), qPrintable(QString::number(offset)));
        for (const int offset : {7, 800, 849, 1099})
            QVERIFY2(!file.isReadOnly(offset), qPrintable(QString::number(offset)));
    }

    void factoryValuesFillBothCopies()
    {
        const RegisterFile file = smallFile();
        QCOMPARE(file.working(7), std::uint16_t(2000));
        QCOMPARE(file.stored(7), std::uint16_t(2000));
        QCOMPARE(file.working(253), std::uint16_t(0xfed4));
    }

    void pairHasItsHighWordFirst()
    {
        RegisterFile file = smallFile();
        QCOMPARE(file.working(314), std::uint16_t(2));
        QCOMPARE(file.working(315), std::uint16_t(0));
        QCOMPARE(file.workingPair(401), -2);
        file.setPair(314, -1000);
        QCOMPARE(file.working(314), std::uint16_t(0xffff));
        QCOMPARE(file.working(315), std::uint16_t(0xfc18));
    }

    void missingRegisterNeitherExistsNorTakesAValue_data()
    {
        QTest::addColumn<int>("offset");
        QTest::newRow("unlisted") << 8;
        QTest::newRow("negative") << -1;
        QTest::newRow("first beyond") << registerSpace;
        QTest::newRow("far beyond") << 0xe000;
    }
    void missingRegisterNeitherExistsNorTakesAValue()
    {
        QFETCH(int, offset);
        RegisterFile file = smallFile();
        QVERIFY(!file.exists(offset));
        file.set(offset, 5, RegisterFile::Copy::WorkingAndStored);
        QCOMPARE(file.working(offset), std::uint16_t(0));
        QCOMPARE(file.stored(offset), std::uint16_t(0));
    }

    void bothWordsOfAReadOnlyPairAreReadOnly()
    {
        const RegisterFile file(*parseRegisterTable(QStringLiteral("700,2,r,5\n702,2,rw,5\n704,1,r,5\n")));
        QVERIFY(file.isReadOnly(700));
        QVERIFY(file.isReadOnly(701));
        QVERIFY(!file.isReadOnly(702));
        QVERIFY(!file.isReadOnly(703));
        QVERIFY(file.isReadOnly(704));
        QVERIFY(!file.isReadOnly(705));
    }

    void powerCycleKeepsWhatIsStoredAlone()
    {
        RegisterFile file = smallFile();
        file.set(7, 1);
        file.set(253, 2, RegisterFile::Copy::WorkingAndStored);
        file.powerCycle();
        QCOMPARE(file.working(7), std::uint16_t(2000));
        QCOMPARE(file.working(253), std::uint16_t(2));
    }

    void factoryResetReachesBothCopies()
    {
        RegisterFile file = smallFile();
        file.set(7, 1, RegisterFile::Copy::WorkingAndStored);
        file.factoryReset();
        QCOMPARE(file.working(7), std::uint16_t(2000));
        QCOMPARE(file.stored(7), std::uint16_t(2000));
    }
};

QTEST_APPLESS_MAIN(TestRegisters)
#include "tst_simulator_registers.moc"
