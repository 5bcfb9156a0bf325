// SPDX-License-Identifier: GPL-3.0-or-later
#include "simulatortest.h"

#include "simulator/requestframer.h"

#include <QtTest>

using namespace kt500sim;

namespace {

constexpr milliseconds gap{5};
const TimePoint start{};

/// Feeds hexadecimal text at a time after the start.
void feed(RequestFramer *framer, const QByteArray &hex, nanoseconds at)
{
    const Bytes bytes = bytesOf(hex);
    framer->feed(bytes.data(), bytes.size(), start + at);
}

/// All frames that are complete at a time, as text; one with a wrong checksum has a "!" before it.
QByteArrayList framesAt(RequestFramer *framer, nanoseconds at)
{
    QByteArrayList frames;
    while (const std::optional<ReceivedFrame> frame = framer->next(start + at))
        frames << (frame->checksumGood ? "" : "!") + hexOf(frame->bytes);
    return frames;
}

} // namespace

class TestFramer : public QObject
{
    Q_OBJECT

private slots:
    void frameIsCompleteWithItsLastByte_data()
    {
        QTest::addColumn<QByteArray>("frame");
        QTest::newRow("read") << QByteArray("010320600002cfd5");
        QTest::newRow("write one") << QByteArray("010620070bb83489");
        QTest::newRow("write one register by the long form") << QByteArray("0110206400010200008fb6");
        QTest::newRow("write a pair") << QByteArray("0110213a000204fffffc18a5bb");
        QTest::newRow("scope") << QByteArray("01140000000000000000dec2");
    }
    void frameIsCompleteWithItsLastByte()
    {
        QFETCH(QByteArray, frame);
        RequestFramer framer(gap);
        for (int i = 0; i < frame.size(); i += 2) {
            QCOMPARE(framesAt(&framer, microseconds(i)), QByteArrayList());
            feed(&framer, frame.mid(i, 2), microseconds(i));
        }
        QCOMPARE(framesAt(&framer, microseconds(frame.size())), QByteArrayList({frame}));
        QVERIFY(!framer.gapEnd());
    }

    void framesWithoutAGapAreTakenApart()
    {
        RequestFramer framer(gap);
        feed(&framer,
             "010320600002cfd5"
             "010620070bb83489"
             "0103",
             milliseconds(0));
        QCOMPARE(framesAt(&framer, milliseconds(0)),
                 QByteArrayList({"010320600002cfd5", "010620070bb83489"}));
        feed(&framer, "20600002cfd5", milliseconds(1));
        QCOMPARE(framesAt(&framer, milliseconds(1)), QByteArrayList({"010320600002cfd5"}));
    }

    void halfAFrameIsGivenUpAfterTheGap()
    {
        RequestFramer framer(gap);
        feed(&framer, "01032060", milliseconds(0));
        QCOMPARE(framesAt(&framer, milliseconds(4)), QByteArrayList());
        QCOMPARE(*framer.gapEnd(), start + gap);
        QCOMPARE(framesAt(&framer, milliseconds(5)), QByteArrayList({"!01032060"}));
    }

    void frameBehindGarbageAndAGapIsRead()
    {
        RequestFramer framer(gap);
        feed(&framer, "ff00ff1122", milliseconds(0));
        feed(&framer, "010320600002cfd5", milliseconds(6));
        QCOMPARE(framesAt(&framer, milliseconds(6)), QByteArrayList({"!ff00ff1122", "010320600002cfd5"}));
    }

    void frameInTheMiddleOfGarbageIsLost()
    {
        RequestFramer framer(gap);
        feed(&framer,
             "ff"
             "010320600002cfd5",
             milliseconds(0));
        QCOMPARE(framesAt(&framer, milliseconds(4)), QByteArrayList());
        QCOMPARE(framesAt(&framer, milliseconds(5)), QByteArrayList({"!ff010320600002cfd5"}));
    }

    void wrongChecksumIsToldAfterTheGap()
    {
        RequestFramer framer(gap);
        feed(&framer, "010320600002cfd6", milliseconds(0));
        QCOMPARE(framesAt(&framer, milliseconds(4)), QByteArrayList());
        QCOMPARE(framesAt(&framer, milliseconds(5)), QByteArrayList({"!010320600002cfd6"}));
    }

    void goodChecksumOfAnOddLengthIsAFrameAfterTheGap_data()
    {
        QTest::addColumn<QByteArray>("frame");
        QTest::newRow("unknown function") << QByteArray("0104020000013072");
        QTest::newRow("read request too short") << QByteArray("0103206000304e");
        QTest::newRow("read request too long") << QByteArray("010320600002015494");
        QTest::newRow("long write without its address") << QByteArray("01100001020064a887");
    }
    void goodChecksumOfAnOddLengthIsAFrameAfterTheGap()
    {
        QFETCH(QByteArray, frame);
        RequestFramer framer(gap);
        feed(&framer, frame, milliseconds(0));
        QCOMPARE(framesAt(&framer, milliseconds(4)), QByteArrayList());
        QCOMPARE(framesAt(&framer, milliseconds(5)), QByteArrayList({frame}));
    }

    void endlessGarbageTakesNoEndlessRoom()
    {
        RequestFramer framer(gap);
        for (int i = 0; i < 100; ++i)
            feed(&framer, QByteArray("ff").repeated(100), microseconds(i));
        int told = 0;
        for (const QByteArray &frame : framesAt(&framer, milliseconds(10))) {
            QVERIFY(frame.startsWith('!'));
            QVERIFY(frame.size() < 2 * 400);
            told += (frame.size() - 1) / 2;
        }
        QCOMPARE(told, 10000);
    }
};

QTEST_APPLESS_MAIN(TestFramer)
#include "tst_simulator_framer.moc"
