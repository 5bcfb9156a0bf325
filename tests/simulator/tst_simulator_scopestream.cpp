// SPDX-License-Identifier: GPL-3.0-or-later
#include "simulatortest.h"

#include "simulator/drive.h"

#include <QtTest>

using namespace kt500sim;

namespace {

Drive makeDrive(int samplesPerFrame)
{
    return Drive(builtInRegisterTable(), std::make_unique<CountingModel>(), 1, samplesPerFrame);
}

QByteArrayList advance(Drive *drive, int samples)
{
    QByteArrayList frames;
    drive->advance(samples, [&frames](const Bytes &frame) { frames << hexOf(frame); });
    return frames;
}

} // namespace

class TestScopeStream : public QObject
{
    Q_OBJECT

private slots:
    void streamFrameHasTheWiresLayout_data()
    {
        QTest::addColumn<QByteArray>("request");
        QTest::addColumn<QByteArray>("frame");
        // Two samples a frame; the model gives 1 and 2, plus 0x10000 times the item number.
        QTest::newRow("one narrow channel")
            << tight("01 14 1000 0000 0000 0000 dfce") << tight("01 14 0010 1002 0001 0002 0000 0000 0000");
        QTest::newRow("one wide channel") << tight("01 14 2000 0000 0000 0000 dcda")
                                          << tight("01 14 0014 2002 00000001 00000002 0000 0000 0000");
        QTest::newRow("two narrow, one wide")
            << tight("01 14 1000 1003 2007 0000 235f")
            << tight("01 14 001c 1002 0001 0002 1002 0001 0002 2002 00070001 00070002 0000");
        QTest::newRow("first channel off")
            << tight("01 14 0000 1003 0000 0000 0000") << tight("01 14 0010 0000 1002 0001 0002 0000 0000");
        QTest::newRow("all four")
            << tight("01 14 1000 1001 1002 1003 0000")
            << tight("01 14 001c 1002 0001 0002 1002 0001 0002 1002 0001 0002 1002 0001 0002");
    }
    void streamFrameHasTheWiresLayout()
    {
        QFETCH(QByteArray, request);
        QFETCH(QByteArray, frame);
        Drive drive = makeDrive(2);
        QCOMPARE(drive.answer(bytesOf(request)), Bytes());
        QCOMPARE(advance(&drive, 1), QByteArrayList());
        QCOMPARE(advance(&drive, 1), QByteArrayList({frame}));
    }

    void framesFollowEachOtherWithoutAGapInTheSamples()
    {
        Drive drive = makeDrive(3);
        drive.answer(bytesOf("01141000000000000000dfce"));
        QCOMPARE(advance(&drive, 7), QByteArrayList({tight("01 14 0012 1003 000100020003 000000000000"),
                                                     tight("01 14 0012 1003 000400050006 000000000000")}));
        QCOMPARE(advance(&drive, 2), QByteArrayList({tight("01 14 0012 1003 000700080009 000000000000")}));
    }

    void fullestFrameHas255Samples()
    {
        Drive drive = makeDrive(1000);
        drive.answer(bytesOf("01142000200000000000"
                             "0000"));
        const QByteArrayList frames = advance(&drive, 255);
        QCOMPARE(frames.size(), 1);
        QCOMPARE(frames.first().size(), 2 * (4 + 2 * (2 + 255 * 4) + 2 * 2));
        QCOMPARE(frames.first().mid(0, 12), tight("01 14 0804 20ff"));
    }

    void narrowSampleIsTheLowWord()
    {
        Drive drive = makeDrive(1);
        drive.answer(bytesOf("011410070000000000000000"));
        QCOMPARE(advance(&drive, 1), QByteArrayList({tight("01 14 000e 1001 0001 000000000000")}));
    }

    void nothingIsStreamedUnasked()
    {
        Drive drive = makeDrive(1);
        QCOMPARE(advance(&drive, 100), QByteArrayList());
    }

    void stopFrameEndsTheStreamAtOnce()
    {
        Drive drive = makeDrive(4);
        drive.answer(bytesOf("01141000000000000000dfce"));
        QCOMPARE(advance(&drive, 7).size(), 1);
        QCOMPARE(drive.answer(bytesOf("01140000000000000000dec2")), Bytes());
        QVERIFY(!drive.stream().isRunning());
        QCOMPARE(advance(&drive, 8), QByteArrayList());
    }

    void newStartDropsTheHalfFilledFrame()
    {
        Drive drive = makeDrive(2);
        drive.answer(bytesOf("01141000000000000000dfce"));
        QCOMPARE(advance(&drive, 1), QByteArrayList());
        drive.answer(bytesOf("01141000000000000000dfce"));
        QCOMPARE(advance(&drive, 2), QByteArrayList({tight("01 14 0010 1002 00020003 000000000000")}));
    }

    void refusedStartLeavesTheRunningStream()
    {
        Drive drive = makeDrive(1);
        drive.answer(bytesOf("01141000000000000000dfce"));
        QCOMPARE(hexOf(drive.answer(bytesOf("01143000000000000000ddd6"))), tight("01 94 03 0ec1"));
        QCOMPARE(advance(&drive, 1).size(), 1);
    }

    void registersAreServedWhileStreaming()
    {
        Drive drive = makeDrive(1);
        drive.answer(bytesOf("01141000000000000000dfce"));
        QCOMPARE(hexOf(drive.answer(bytesOf("010620070bb83489"))), QByteArray("010620070bb83489"));
    }
};

QTEST_APPLESS_MAIN(TestScopeStream)
#include "tst_simulator_scopestream.moc"
