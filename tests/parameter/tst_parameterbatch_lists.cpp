// SPDX-License-Identifier: GPL-3.0-or-later
// Lists from files on their way to the drive: what of them is written, and in which width.
#include "parameter/loadededitor.h"
#include "support/batchtexts.h"
#include "support/editortexts.h"
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
    void unknownRowOfAParametersRegisterIsNotWritten_data();
    void unknownRowOfAParametersRegisterIsNotWritten();
    void fileThatIsNoListChangesNothing_data();
    void fileThatIsNoListChangesNothing();
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
    loaded.list().openFile(name);
}

} // namespace

void ParameterBatchListsTest::codeSpeltOtherwiseIsTransferredInItsWidth_data()
{
    QTest::addColumn<QByteArray>("list");
    QTest::newRow("as the catalogue") << QByteArray("Pn-A04-1,,,,,,65541,,,,,,,\n");
    QTest::newRow("small letters") << QByteArray("pn-a04-1,,,,,,65541,,,,,,,\n");
    QTest::newRow("small digit") << QByteArray("Pn-a04-1,,,,,,65541,,,,,,,\n");
    QTest::newRow("one digit") << QByteArray("Pn-A4,,,,,,65541,,,,,,,\n");
    QTest::newRow("blanks around") << QByteArray(" Pn-A4 ,,,,,,65541,,,,,,,\n");
    QTest::newRow("great letters") << QByteArray("PN-A04-1,,,,,,65541,,,,,,,\n");
    // A line counts as a row for any "pn" in it.
    QTest::newRow("another prefix") << QByteArray("xx-A04-1,,,,,,65541,,,,,see pn,,\n");
}

void ParameterBatchListsTest::codeSpeltOtherwiseIsTransferredInItsWidth()
{
    QFETCH(QByteArray, list);
    LoadedEditor loaded;
    open(loaded, list);
    QCOMPARE(loaded.list().text(0, 0), QStringLiteral("Pn-A04"));
    // A code of fewer characters has its tick elsewhere in the line.
    loaded.list().trigger(BatchDriver::TickAllTool);
    const QByteArray readFrame = wire::frame("01 03 23 ec 00 02");
    QVERIFY(loaded.list().write());
    QCOMPARE(loaded.peer.frames, (QList<QByteArray>{wire::frame("01 10 e3 ec 00 02 04 00 01 00 05"),
                                                    readFrame, readFrame, readFrame}));
    loaded.peer.frames.clear();
    loaded.peer.registers[0x23EC] = 2;
    loaded.peer.registers[0x23ED] = 3;
    QVERIFY(loaded.list().read());
    QCOMPARE(loaded.peer.frames, QList<QByteArray>{readFrame});
    QCOMPARE(loaded.list().text(0, 12), QStringLiteral("131075"));
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
    QVERIFY(loaded.list().isTicked(0));
    QVERIFY(loaded.list().isTicked(1));
    QVERIFY(loaded.list().write());
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
    QVERIFY(loaded.list().isTicked(0));
    QVERIFY(loaded.list().write());
    QCOMPARE(loaded.peer.frames, writtenWritable);
}

void ParameterBatchListsTest::unknownRowOfAParametersRegisterIsNotWritten_data()
{
    QTest::addColumn<QString>("code");
    QTest::addColumn<bool>("written");
    // Characters 4 and 5 that are no number read as 0, so that these would be Pn-300 and Pn-000.
    QTest::newRow("letter for a digit") << "Pn-3A4" << false;
    QTest::newRow("one digit and a letter") << "Pn-38x" << false;
    QTest::newRow("nothing of a code") << "abc" << false;
    QTest::newRow("empty") << "" << false;
    QTest::newRow("group of no page") << "Pn-C05" << true;
    QTest::newRow("number of no row") << "Pn-199" << true;
}

void ParameterBatchListsTest::unknownRowOfAParametersRegisterIsNotWritten()
{
    QFETCH(QString, code);
    QFETCH(bool, written);
    const LoadedEditor loaded;
    loaded.list().addRow(code);
    QCOMPARE(loaded.list().text(0, 6), batchtext::unknown);
    QCOMPARE(loaded.list().text(0, 11), batchtext::unknown);
    // Typing a value makes no parameter of it.
    loaded.list().setText(0, BatchDriver::Value, QStringLiteral("5"));
    QVERIFY(loaded.list().write());
    QCOMPARE(loaded.peer.frames.size(), written ? 4 : 0);
}

void ParameterBatchListsTest::fileThatIsNoListChangesNothing_data()
{
    QTest::addColumn<QByteArray>("list");
    QTest::newRow("codes without a comma") << QByteArray("Pn-304-1\nPn-305-1\n");
    QTest::newRow("another table") << QByteArray("Function code,Value,\n");
    QTest::newRow("empty file") << QByteArray();
    QTest::newRow("parameter file") << QByteArray("UG4tMDAw\r\nMHgwMDAw\r\n");
    QTest::newRow("too many rows") << QByteArray("Pn-304-1,a,\n").repeated(10001);
}

void ParameterBatchListsTest::fileThatIsNoListChangesNothing()
{
    QFETCH(QByteArray, list);
    const LoadedEditor loaded;
    open(loaded, writableRow);
    ModalAnswers boxes;
    boxes.expect(editortext::openFailed);
    open(loaded, list);
    QVERIFY(boxes.isDone());
    QCOMPARE(loaded.list().rowCount(), 1);
    QCOMPARE(loaded.list().text(0, 0), QStringLiteral("Pn-008"));
    QVERIFY(loaded.list().isTicked(0));
}

QTEST_MAIN(ParameterBatchListsTest)
#include "tst_parameterbatch_lists.moc"
