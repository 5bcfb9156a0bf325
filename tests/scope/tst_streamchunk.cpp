// SPDX-License-Identifier: GPL-3.0-or-later
// Chunks of the drive's stream, cut into the bytes of samples. Every chunk is written by hand.
#include "scope/streamchunk.h"

#include "support/wire.h"

#include <QtTest>

class TestStreamChunk : public QObject
{
    Q_OBJECT

private slots:
    void chunksAreCutIntoBlocks_data();
    void chunksAreCutIntoBlocks();
    void blocksShorterThanAnnouncedGiveWhatIsThere();
};

namespace {

// One letter a channel: "-" off, "n" 16-bit, "w" 32-bit.
ScopeChannelSettings channelsOf(const QByteArray &letters)
{
    ScopeChannelSettings channels;
    for (int i = 0; i < scopeChannelCount; ++i)
        channels.at(i) = {letters.at(i) != '-', letters.at(i) == 'w', QString()};
    return channels;
}

} // namespace

void TestStreamChunk::chunksAreCutIntoBlocks_data()
{
    QTest::addColumn<QByteArray>("channels");
    QTest::addColumn<QByteArray>("chunk");
    QTest::addColumn<QVector<int>>("counts");
    QTest::addColumn<QList<QByteArray>>("samples"); // hexadecimal

    const auto row = [](const char *name, const char *channels, const char *chunk, const QVector<int> &counts,
                        const QList<QByteArray> &samples) {
        QTest::newRow(name) << QByteArray(channels) << wire::bytes(chunk) << counts << samples;
    };
    const QList<QByteArray> none{"", "", "", ""};
    row("four narrow channels", "nnnn", "0114 0014 10010001 10010002 10010003 10010004", {2, 2, 2, 2},
        {"0001", "0002", "0003", "0004"});
    row("two samples a channel, two channels off", "n-n-", "0114 0014 1002000a000b 0000 1002000c000d 0000",
        {4, 0, 4, 0}, {"000a000b", "", "000c000d", ""});
    row("a wide channel", "w---", "0114 0010 2001 00010002 0000 0000 0000", {4, 0, 0, 0},
        {"00010002", "", "", ""});
    row("the flag of the reply plays no part", "n---", "0114 000e 20010102 0000 0000 0000", {2, 0, 0, 0},
        {"0102", "", "", ""});
    row("a narrow Type reads two bytes a sample of a wide reply", "n---",
        "0114 0010 2001 00010002 0000 0000 0000", {2, 0, 0, 0}, {"0001", "", "", ""});
    row("what follows the last block is not looked at", "n---", "0114 0010 1001 0007 0000 0000 0000 ffff",
        {2, 0, 0, 0}, {"0007", "", "", ""});
    row("all channels off", "----", "0114 000c 0000 0000 0000 0000", {0, 0, 0, 0}, none);
    row("a block without samples", "n---", "0114 000c 1000 0000 0000 0000", {0, 0, 0, 0}, none);
    row("counts of both frames, samples of the last", "n---",
        "0114 000e 1001 0001 0000 0000 0000 0114 0010 1002 00020003 0000 0000 0000", {2, 0, 0, 0, 4, 0, 0, 0},
        {"00020003", "", "", ""});
    row("three frames and a part of one", "n---",
        "0114 000e 1001 0001 0000 0000 0000 0114 000e 1001 0002 0000 0000 0000 "
        "0114 000e 1001 0003 0000 0000 0000 0114 000e 1001",
        {2, 0, 0, 0, 2, 0, 0, 0, 2, 0, 0, 0}, {"0003", "", "", ""});
    row("a part frame alone", "n---", "0114 000e 1001 0001", {}, none);
    row("a part frame without its length", "n---", "0114 00", {}, none);
    row("four bytes or fewer left over are no frame", "n---", "0114 000e 1001 0001 0000 0000 0000 0114 0004",
        {2, 0, 0, 0}, {"0001", "", "", ""});
    row("nothing", "n---", "", {}, none);
    row("length 0 drops the rest", "n---", "0114 0000 0114 000e 1001 0001 0000 0000 0000", {}, none);
    row("length 0 behind a frame", "n---",
        "0114 000e 1001 0001 0000 0000 0000 0114 0000 0114 000e 1001 0002 0000 0000 0000", {2, 0, 0, 0},
        {"0001", "", "", ""});
    row("a reply among the frames ends them", "n---",
        "0114 000e 1001 0001 0000 0000 0000 01030400120005abcd "
        "0114 000e 1001 0002 0000 0000 0000 0114 000e 1001 0003 0000 0000 0000",
        {2, 0, 0, 0}, {"0001", "", "", ""});
    // Its length would reach to the end: 01 03 00 10.
    row("a reply that looks as long as what follows", "n---",
        "0114 000e 1001 0001 0000 0000 0000 01030010 1001 7fff 0000 0000 00000000", {2, 0, 0, 0},
        {"0001", "", "", ""});
    row("a frame of its head only", "n---", "0114 0004", {0, 0, 0, 0}, none);
    row("a frame shorter than its head goes on behind it", "n---",
        "0114 0002 0114 000e 1001 0005 0000 0000 0000", {0, 0, 0, 0}, none);
}

void TestStreamChunk::chunksAreCutIntoBlocks()
{
    QFETCH(QByteArray, channels);
    QFETCH(QByteArray, chunk);
    QFETCH(QVector<int>, counts);
    QFETCH(QList<QByteArray>, samples);
    const StreamChunk cut = cutStreamChunk(chunk, channelsOf(channels));
    QCOMPARE(cut.counts, counts);
    for (int i = 0; i < scopeChannelCount; ++i)
        QCOMPARE(cut.samples.at(i).toHex(), samples.at(i));
}

void TestStreamChunk::blocksShorterThanAnnouncedGiveWhatIsThere()
{
    // CH1 announces three samples, the frame ends in the second; CH2 has nothing left.
    const StreamChunk cut = cutStreamChunk(wire::bytes("0114 0009 1003 0001 00"), channelsOf("nn--"));
    QCOMPARE(cut.samples.at(0).toHex(), QByteArray("000100"));
    QCOMPARE(cut.samples.at(1), QByteArray());
    QCOMPARE(cut.counts, (QVector<int>{6, 0, 0, 0}));
}

QTEST_GUILESS_MAIN(TestStreamChunk)
#include "tst_streamchunk.moc"
