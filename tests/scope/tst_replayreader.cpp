// SPDX-License-Identifier: GPL-3.0-or-later
// The reader of record files: what it hands out of files of every kind, a batch at a time.
#include "scope/readplotdata.h"

#include "support/rununtil.h"

#include <QTemporaryDir>
#include <QtTest>

class TestReplayReader : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void linesComeInThousands_data();
    void linesComeInThousands();
    void linesAreNumbers_data();
    void linesAreNumbers();
    void filesWithoutAHeaderAreRefused_data();
    void filesWithoutAHeaderAreRefused();
    void fileThatIsNotThereIsTold();
    void emptyFileEndsTheNormalWay();
    void lineWithoutEndIsReadInPieces();
    void readingEndsWhenAsked();

private:
    void write(const QByteArray &content);
    void read();

    QTemporaryDir directory;
    QString name;
    QVector<QVector<double>> batches;
    QStringList codes;
    int refused = 0;
    int unreadable = 0;
    int finished = 0;
};

void TestReplayReader::init()
{
    name = directory.filePath("record.txt");
    batches.clear();
    codes.clear();
    refused = unreadable = finished = 0;
}

void TestReplayReader::cleanup()
{
    QFile::remove(name);
}

void TestReplayReader::write(const QByteArray &content)
{
    QFile file(name);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
}

void TestReplayReader::read()
{
    ReadPlotData reader(nullptr, name);
    connect(
        &reader, &ReadPlotData::readFilePlot, this,
        [this](const QVector<double> &data) { batches.append(data); }, Qt::BlockingQueuedConnection);
    connect(
        &reader, &ReadPlotData::getPnValue, this, [this](const QString &pn) { codes.append(pn); },
        Qt::BlockingQueuedConnection);
    connect(
        &reader, &ReadPlotData::openFailed, this, [this] { ++refused; }, Qt::BlockingQueuedConnection);
    connect(
        &reader, &ReadPlotData::fileUnreadable, this, [this] { ++unreadable; }, Qt::QueuedConnection);
    connect(
        &reader, &ReadPlotData::readFinishSignal, this, [this] { ++finished; }, Qt::BlockingQueuedConnection);
    reader.start();
    QVERIFY(runUntil([&reader] { return reader.isFinished(); }, 10000));
    QCoreApplication::processEvents();
}

void TestReplayReader::linesComeInThousands_data()
{
    QTest::addColumn<int>("lines"); // the header among them
    QTest::addColumn<QVector<int>>("sizes");
    QTest::newRow("header only") << 1 << QVector<int>{1};
    QTest::newRow("999") << 999 << QVector<int>{999};
    QTest::newRow("1000") << 1000 << QVector<int>{1000, 0};
    QTest::newRow("1001") << 1001 << QVector<int>{1000, 1};
    QTest::newRow("2000") << 2000 << QVector<int>{1000, 1000, 0};
    QTest::newRow("2500") << 2500 << QVector<int>{1000, 1000, 500};
}

void TestReplayReader::linesComeInThousands()
{
    QFETCH(int, lines);
    QByteArray content = "Pn-F00Motor speed\r\n";
    for (int line = 1; line < lines; ++line)
        content += QByteArray::number(line) + "\r\n";
    write(content);
    read();
    QVector<int> sizes;
    int line = 0;
    for (const QVector<double> &batch : qAsConst(batches)) {
        sizes.append(batch.size());
        for (const double value : batch)
            QCOMPARE(value, double(line++));
    }
    QTEST(sizes, "sizes");
    QCOMPARE(codes, QStringList{"Pn-F00"});
    QCOMPARE(finished, 1);
    QCOMPARE(refused, 0);
}

void TestReplayReader::linesAreNumbers_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("code");
    QTest::addColumn<QVector<double>>("values");
    const auto row = [](const char *what, const QByteArray &content, const char *code,
                        const QVector<double> &values) { QTest::newRow(what) << content << code << values; };
    row("CR LF", "Pn-F00x\r\n1.5\r\n-2e3\r\n", "Pn-F00", {0, 1.5, -2000});
    row("LF only, no end of the last line", "Pn-F00x\n1\n2", "Pn-F00", {0, 1, 2});
    row("comma decimals are no numbers", "Pn-F00x\r\n1,5\r\n2\r\n", "Pn-F00", {0, 0, 2});
    row("no numbers, empty lines", "Pn-F00x\r\nabc\r\n\r\n3\r\n", "Pn-F00", {0, 0, 0, 3});
    row("blanks around", "Pn-F00x\r\n  4  \r\n", "Pn-F00", {0, 4});
    row("any case, not at the front", "xxPN-F00\r\n1\r\n", "xxPN-F", {0, 1});
    row("short first line", "pn\n1\n", "pn\n", {0, 1});
}

void TestReplayReader::linesAreNumbers()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, code);
    write(content);
    read();
    QCOMPARE(codes, QStringList{code});
    QCOMPARE(batches.size(), 1);
    QTEST(batches.first(), "values");
}

void TestReplayReader::filesWithoutAHeaderAreRefused_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("samples only") << QByteArray("1\r\n2\r\n");
    QTest::newRow("an item of another kind") << QByteArray("Sn-S40Position\r\n1\r\n");
    QTest::newRow("empty first line") << QByteArray("\r\nPn-F00\r\n");
    QTest::newRow("binary") << QByteArray("\0\x7f\x45\x4c\x46\n\xff\xfe", 8).repeated(5000);
}

void TestReplayReader::filesWithoutAHeaderAreRefused()
{
    QFETCH(QByteArray, content);
    write(content);
    read();
    QCOMPARE(refused, 1);
    QCOMPARE(finished, 0);
    QCOMPARE(batches.size(), 0);
    QCOMPARE(codes, QStringList());
}

void TestReplayReader::fileThatIsNotThereIsTold()
{
    read();
    QCOMPARE(unreadable, 1);
    QCOMPARE(refused + finished + batches.size() + codes.size(), 0);
}

void TestReplayReader::emptyFileEndsTheNormalWay()
{
    write({});
    read();
    QCOMPARE(batches, QVector<QVector<double>>{{}});
    QCOMPARE(finished, 1);
    QCOMPARE(refused, 0);
}

void TestReplayReader::lineWithoutEndIsReadInPieces()
{
    write("Pn-F00" + QByteArray(20 * 1024 * 1024, 'x') + "\r\n7\r\n");
    read();
    QCOMPARE(batches, (QVector<QVector<double>>{{0, 7}}));
}

void TestReplayReader::readingEndsWhenAsked()
{
    write("Pn-F00\r\n" + QByteArray("1\r\n").repeated(100000));
    ReadPlotData reader(nullptr, name);
    int count = 0;
    connect(
        &reader, &ReadPlotData::readFilePlot, this,
        [&](const QVector<double> &) {
            if (++count == 3)
                reader.requestInterruption();
        },
        Qt::BlockingQueuedConnection);
    connect(
        &reader, &ReadPlotData::readFinishSignal, this, [this] { ++finished; }, Qt::BlockingQueuedConnection);
    reader.start();
    QVERIFY(runUntil([&reader] { return reader.isFinished(); }, 10000));
    QCOMPARE(count, 3);
    QCOMPARE(finished, 0);
}

QTEST_GUILESS_MAIN(TestReplayReader)
#include "tst_replayreader.moc"
