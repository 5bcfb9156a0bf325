// SPDX-License-Identifier: GPL-3.0-or-later
// Lists from files on their way to the drive: what of them is written, and in which width.
#include "parameter/loadededitor.h"
#include "support/filedialoganswers.h"
#include "support/modalanswers.h"
#include "support/wire.h"

#include <QFile>

class ParameterBatchListsTest : public QObject
{
    Q_OBJECT

private slots:
    void codeSpeltOtherwiseIsTransferredInItsWidth_data();
    void codeSpeltOtherwiseIsTransferredInItsWidth();
    void readOnlyRowWithoutItsMarkIsNotWritten_data();
    void readOnlyRowWithoutItsMarkIsNotWritten();
    void reservedRowOfTheOtherLanguageIsNotWritten_data();
    void reservedRowOfTheOtherLanguageIsNotWritten();
};

namespace {

const QByteArray writableRow("Pn-008-1,,,,,,7,,,,,,,\n");
const QByteArray readBackOfWritable = wire::frame("01 03 20 08 00 01");
const QList<QByteArray> writtenWritable{wire::frame("01 10 e0 08 00 01 02 00 07"), readBackOfWritable,
                                        readBackOfWritable, readBackOfWritable};

void open(const LoadedEditor &loaded, const QByteArray &list)
{
    const QString name = QStringLiteral("list.csv");
    QFile file(name);
    if (!file.open(QIODevice::WriteOnly) || file.write(list) != list.size())
        qFatal("the test can't write its own file");
    file.close();
    FileDialogAnswers dialogs;
    dialogs.expect(QStringLiteral("open csv file"), name);
    loaded.editor->openCsvSlot();
}

void write(const LoadedEditor &loaded)
{
    ModalAnswers boxes;
    boxes.expect(QStringLiteral("Parameters writing completed"));
    loaded.editor->writeCsvSlot();
    QTRY_VERIFY(boxes.isDone());
}

void read(const LoadedEditor &loaded)
{
    ModalAnswers boxes;
    boxes.expect(QStringLiteral("Parameters reading completed"));
    loaded.editor->readParaCsvSlot();
    QTRY_VERIFY(boxes.isDone());
}

} // namespace

void ParameterBatchListsTest::codeSpeltOtherwiseIsTransferredInItsWidth_data()
{
    QTest::addColumn<QByteArray>("list");
    QTest::newRow("as the catalogue") << QByteArray("Pn-A04-1,,,,,,65541,,,,,,,\n");
    QTest::newRow("small letters") << QByteArray("pn-a04-1,,,,,,65541,,,,,,,\n");
    QTest::newRow("small digit") << QByteArray("Pn-a04-1,,,,,,65541,,,,,,,\n");
    QTest::newRow("great letters") << QByteArray("PN-A04-1,,,,,,65541,,,,,,,\n");
    // A line counts as a row for any "pn" in it.
    QTest::newRow("another prefix") << QByteArray("xx-A04-1,,,,,,65541,,,,,see pn,,\n");
}

void ParameterBatchListsTest::codeSpeltOtherwiseIsTransferredInItsWidth()
{
    QFETCH(QByteArray, list);
    LoadedEditor loaded;
    open(loaded, list);
    QCOMPARE(loaded.batch->table()->item(0, 0)->text(), QStringLiteral("Pn-A04"));
    const QByteArray readFrame = wire::frame("01 03 23 ec 00 02");
    write(loaded);
    QCOMPARE(loaded.peer.frames, (QList<QByteArray>{wire::frame("01 10 e3 ec 00 02 04 00 01 00 05"),
                                                    readFrame, readFrame, readFrame}));
    loaded.peer.frames.clear();
    loaded.peer.registers[0x23EC] = 2;
    loaded.peer.registers[0x23ED] = 3;
    read(loaded);
    QCOMPARE(loaded.peer.frames, QList<QByteArray>{readFrame});
    QCOMPARE(loaded.batch->table()->item(0, 12)->text(), QStringLiteral("131075"));
}

void ParameterBatchListsTest::readOnlyRowWithoutItsMarkIsNotWritten_data()
{
    QTest::addColumn<QByteArray>("list");
    QTest::newRow("with its mark") << QByteArray("Pn-000-1,\xE2\x98\x85,,,,,5,,,,,CPU VERSION,,\n");
    QTest::newRow("question mark") << QByteArray("Pn-000-1,?,,,,,5,,,,,CPU VERSION,,\n");
    QTest::newRow("several question marks") << QByteArray("Pn-000-1,???,,,,,5,,,,,CPU VERSION,,\n");
    QTest::newRow("no mark") << QByteArray("Pn-000-1,,,,,,5,,,,,CPU VERSION,,\n");
    QTest::newRow("no mark, spelt otherwise") << QByteArray("pn-000-1,,,,,,5,,,,,,,\n");
}

void ParameterBatchListsTest::readOnlyRowWithoutItsMarkIsNotWritten()
{
    QFETCH(QByteArray, list);
    const LoadedEditor loaded;
    open(loaded, list + writableRow);
    QVERIFY(loaded.batch->isTicked(0));
    QVERIFY(loaded.batch->isTicked(1));
    write(loaded);
    QCOMPARE(loaded.peer.frames, writtenWritable);
}

void ParameterBatchListsTest::reservedRowOfTheOtherLanguageIsNotWritten_data()
{
    QTest::addColumn<QByteArray>("list");
    const QByteArray chinese = QByteArrayLiteral("\xE4\xBF\x9D\xE7\x95\x99");
    QTest::newRow("English name") << QByteArray("Pn-112-1,,,,,,5,,,,,Reserved,,\n");
    QTest::newRow("Chinese name") << QByteArray("Pn-112-1,,,,,,5,,,,," + chinese + ",,\n");
    QTest::newRow("no name") << QByteArray("Pn-112-1,,,,,,5,,,,,,,\n");
}

void ParameterBatchListsTest::reservedRowOfTheOtherLanguageIsNotWritten()
{
    QFETCH(QByteArray, list);
    const LoadedEditor loaded;
    QCOMPARE(loaded.pages.at(1)->item(loaded.rowOf(1, QStringLiteral("Pn-112")), 10)->text(),
             QStringLiteral("Reserved"));
    open(loaded, list + writableRow);
    QVERIFY(loaded.batch->isTicked(0));
    write(loaded);
    QCOMPARE(loaded.peer.frames, writtenWritable);
}

QTEST_MAIN(ParameterBatchListsTest)
#include "tst_parameterbatch_lists.moc"
