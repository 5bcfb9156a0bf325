// SPDX-License-Identifier: GPL-3.0-or-later
// Lists that the batch window opens, its own and others.
#include "batchlists.h"

#include "parameter/loadededitor.h"
#include "support/batchtexts.h"
#include "support/editortexts.h"
#include "support/filedialoganswers.h"
#include "support/modalanswers.h"

#include <QFile>

using namespace batchlists;
using namespace testfiles;

class ParameterBatchOpeningTest : public QObject
{
    Q_OBJECT

private slots:
    void openedFileReplacesTheRows();
    void openedMarksHaveFontAndColour();
    void openedRowOfAFewFieldsIsComplete();
    void openingBringsTheWindowBack();
    void fileThatIsGoneIsToldAndKeepsTheRows();
#ifdef Q_OS_LINUX
    void fileWhoseReadFailsIsToldAndKeepsTheRows();
#endif
    void fileThatIsTooLargeIsToldAndKeepsTheRows();
    void foreignFileIsReadAsFarAsItGoes_data();
    void foreignFileIsReadAsFarAsItGoes();
    void openingFillsNoRowFromThePages();
    void fileOfTheMostRowsIsOpened();
    void endlessValueLeavesTheColumnsNarrow();
};

void ParameterBatchOpeningTest::openedFileReplacesTheRows()
{
    const LoadedEditor loaded;
    for (int i = 0; i < 5; ++i)
        loaded.list().addRow(QStringLiteral("Pn-007"));
    put(listName, heads + "Pn-304-1,,,,,,5,pp,1,9,7,gear,8,\nPn-A04-0,,,,,,6,,,,,,,\n");
    open(loaded);
    QCOMPARE(loaded.list().allTexts(),
             (QList<QStringList>{{"Pn-304", "", "", "", "", "", "5", "pp", "1", "9", "7", "gear", "8"},
                                 {"Pn-A04", "", "", "", "", "", "6", "", "", "", "", "", ""}}));
    QVERIFY(loaded.list().isTicked(0));
    QVERIFY(!loaded.list().isTicked(1));
    const QTableWidget *const table = loaded.batch->table();
    QCOMPARE(Qt::Alignment(table->item(0, 0)->textAlignment()), Qt::AlignLeft | Qt::AlignVCenter);
    for (int column = 1; column < 13; ++column)
        QCOMPARE(Qt::Alignment(table->item(0, column)->textAlignment()), Qt::AlignCenter);
}

void ParameterBatchOpeningTest::openedMarksHaveFontAndColour()
{
    const LoadedEditor loaded;
    // The second row has marks in columns of others, which are plain text there.
    put(listName, "Pn-000-1,\xE2\x98\x85,\xE2\x96\xA0,\xE2\x97\x8F,\xE2\x96\xB2,H,\n"
                  "Pn-001-1,H,\xE2\x98\x85,F,,\xE2\x96\xA0,\n");
    open(loaded);
    const QTableWidget *const table = loaded.batch->table();
    const QStringList colours{"#008080", "#0000ff", "#ff0000", "#000000", "#bc00f3"};
    for (int i = 0; i < 5; ++i) {
        QCOMPARE(table->item(0, 1 + i)->foreground().color().name(), colours.at(i));
        QCOMPARE(table->item(0, 1 + i)->font().pointSize(), i < 4 ? 17 : 15);
        QCOMPARE(table->item(1, 1 + i)->data(Qt::ForegroundRole), QVariant());
        QCOMPARE(table->item(1, 1 + i)->data(Qt::FontRole), QVariant());
    }
}

void ParameterBatchOpeningTest::openedRowOfAFewFieldsIsComplete()
{
    const LoadedEditor loaded;
    put(listName, "Pn-304-0,\nPn-305\n");
    open(loaded);
    // The line without a comma is none.
    QCOMPARE(loaded.list().allTexts(),
             (QList<QStringList>{{"Pn-304", "", "", "", "", "", "", "", "", "", "", "", ""}}));
    loaded.list().trigger(BatchDriver::TickAllTool);
    QVERIFY(loaded.list().isTicked(0));
}

void ParameterBatchOpeningTest::openingBringsTheWindowBack()
{
    const LoadedEditor loaded;
    put(listName, heads);
    open(loaded);
    QVERIFY(loaded.batch->isVisible());
}

void ParameterBatchOpeningTest::fileThatIsGoneIsToldAndKeepsTheRows()
{
    const LoadedEditor loaded;
    loaded.list().addRow(QStringLiteral("Pn-007"));
    const QList<QStringList> before = loaded.list().allTexts();
    put(listName, heads);
    ModalAnswers boxes;
    boxes.expect(editortext::openFailed);
    FileDialogAnswers dialogs;
    dialogs.expect(batchtext::openDialog, listName, [] { QFile::remove(listName); });
    loaded.list().trigger(BatchDriver::OpenTool);
    QCOMPARE(loaded.list().allTexts(), before);
}

#ifdef Q_OS_LINUX
void ParameterBatchOpeningTest::fileWhoseReadFailsIsToldAndKeepsTheRows()
{
    const LoadedEditor loaded;
    loaded.list().addRow(QStringLiteral("Pn-007"));
    const QList<QStringList> before = loaded.list().allTexts();
    // It can be opened, but there is no memory at its start.
    QVERIFY(QFile::link(QStringLiteral("/proc/self/mem"), listName));
    ModalAnswers boxes;
    boxes.expect(editortext::openFailed);
    FileDialogAnswers dialogs;
    dialogs.expect(batchtext::openDialog, listName);
    loaded.list().trigger(BatchDriver::OpenTool);
    QCOMPARE(loaded.list().allTexts(), before);
    QVERIFY(!loaded.batch->isVisible());
}
#endif

void ParameterBatchOpeningTest::fileThatIsTooLargeIsToldAndKeepsTheRows()
{
    const LoadedEditor loaded;
    loaded.list().addRow(QStringLiteral("Pn-007"));
    const QList<QStringList> before = loaded.list().allTexts();
    put(listName, "Pn-304-1,\n" + QByteArray(4 * 1024 * 1024, '\n'));
    ModalAnswers boxes;
    boxes.expect(editortext::openFailed);
    FileDialogAnswers dialogs;
    dialogs.expect(batchtext::openDialog, listName);
    loaded.list().trigger(BatchDriver::OpenTool);
    QCOMPARE(loaded.list().allTexts(), before);
}

void ParameterBatchOpeningTest::foreignFileIsReadAsFarAsItGoes_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<int>("rows");
    QTest::newRow("export of the pages")
        << QByteArray(",\xE2\x98\x85,Value,\nPn-000,,5,\n\r\n,Value,\n") << 1;
    QTest::newRow("line of a megabyte") << "Pn-304-1," + QByteArray(1024 * 1024, 'x') + ",\n" << 1;
    QTest::newRow("a thousand fields") << "Pn-304-1" + QByteArray(1000, ',') + "\n" << 1;
    QTest::newRow("cut within a row") << QByteArray("Pn-304-1,a,b,\nPn-305-1,a,1") << 2;
}

void ParameterBatchOpeningTest::foreignFileIsReadAsFarAsItGoes()
{
    QFETCH(QByteArray, file);
    QFETCH(int, rows);
    const LoadedEditor loaded;
    loaded.list().addRow(QStringLiteral("Pn-007"));
    put(listName, file);
    open(loaded);
    QCOMPARE(loaded.list().rowCount(), rows);
    QCOMPARE(loaded.batch->table()->columnCount(), 13);
}

void ParameterBatchOpeningTest::openingFillsNoRowFromThePages()
{
    const LoadedEditor loaded;
    loaded.list().addRow(QStringLiteral("Pn-007"));
    loaded.list().beginEditing(0, BatchDriver::Code);
    put(listName, "Pn-401-1,,,,,,5,,,,,mine,,\n");
    open(loaded);
    QCOMPARE(loaded.list().text(0, 6), QStringLiteral("5"));
    QCOMPARE(loaded.list().text(0, 11), QStringLiteral("mine"));
}

void ParameterBatchOpeningTest::fileOfTheMostRowsIsOpened()
{
    const LoadedEditor loaded;
    loaded.list().addRow(QStringLiteral("Pn-007"));
    QByteArray file = heads;
    for (int i = 0; i < 10000; ++i)
        file += "Pn-304-1,,,,,," + QByteArray::number(i) + ",pp,1,9,7,gear,8,\n";
    put(listName, file);
    open(loaded);
    const QTableWidget *const table = loaded.batch->table();
    QCOMPARE(table->rowCount(), 10000);
    for (const int row : {0, 4999, 9999}) {
        QCOMPARE(loaded.list().texts(row), (QStringList{"Pn-304", "", "", "", "", "", QString::number(row),
                                                        "pp", "1", "9", "7", "gear", "8"}));
        QVERIFY(loaded.list().isTicked(row));
    }
    // What is on the list can still be changed.
    loaded.list().trigger(BatchDriver::NewRowTool);
    QCOMPARE(table->rowCount(), 10001);
}

void ParameterBatchOpeningTest::endlessValueLeavesTheColumnsNarrow()
{
    const LoadedEditor loaded;
    const QTableWidget *const table = loaded.batch->table();
    const QByteArray endless(100000, 'x');
    const QByteArray few(10, 'x');
    // Something wider than the column, and then what no column can be wide enough for.
    put(listName, "Pn-304-1,,,,,," + few.repeated(2) + ",,,,,,\n");
    const int before = table->columnWidth(6);
    open(loaded);
    QVERIFY(table->columnWidth(6) > before);
    QVERIFY(table->columnWidth(6) < 300);
    put(listName, "Pn-304-1,,,,,," + endless + "," + few + ",1,9,7,gear," + endless + ",\n");
    open(loaded);
    QCOMPARE(loaded.list().texts(0).at(6).size(), 100000);
    QCOMPARE(table->columnWidth(6), 300);
    QCOMPARE(table->columnWidth(12), 300);
    for (int column = 0; column < 13; ++column) {
        if (column != 11) // takes what is left of the window
            QVERIFY(table->columnWidth(column) <= 300);
    }
}

QTEST_MAIN(ParameterBatchOpeningTest)
#include "tst_parameterbatch_opening.moc"
