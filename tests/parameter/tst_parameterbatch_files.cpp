// SPDX-License-Identifier: GPL-3.0-or-later
#include "parameter/loadededitor.h"
#include "support/batchtexts.h"
#include "support/editortexts.h"
#include "support/eventcount.h"
#include "support/filedialoganswers.h"
#include "support/fulldisk.h"
#include "support/modalanswers.h"

#include <QFile>

class ParameterBatchFilesTest : public QObject
{
    Q_OBJECT

private slots:
    void dialogsOfferCsvFiles();
    void cancelledDialogsDoNothing();
    void savedFileHoldsHeadsAndRows();
    void savingIsToldAndBringsTheWindowBack();
    void savingHidesAndShowsTheWindow();
    void openingHidesAndShowsTheWindow();
    void minimisedWindowComesBackFromAFile();
    void savedRowsComeBackAsTheyWere_data();
    void savedRowsComeBackAsTheyWere();
    void failedSaveIsToldAndKeepsTheFile();
#ifdef Q_OS_UNIX
    void fullDiskIsToldAndKeepsTheFile();
#endif
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

namespace {

const QString listName = QStringLiteral("list.csv");
const QByteArray heads("Function code,\xE2\x98\x85,\xE2\x96\xA0,\xE2\x97\x8F,\xE2\x96\xB2,H,"
                       "Value,Uint,Min,Max,Default,Description,Real,\n");

QByteArray contentOf(const QString &name)
{
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no file");
}

void put(const QString &name, const QByteArray &bytes)
{
    QFile file(name);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("the test can't write its own file");
}

void save(const LoadedEditor &loaded)
{
    ModalAnswers boxes;
    boxes.expect(editortext::saveDone);
    loaded.list().saveFile(listName);
}

void open(const LoadedEditor &loaded)
{
    const ModalAnswers noBox;
    loaded.list().openFile(listName);
}

} // namespace

void ParameterBatchFilesTest::dialogsOfferCsvFiles()
{
    const LoadedEditor loaded;
    FileDialogAnswers dialogs;
    dialogs.expectCancelled(batchtext::openDialog);
    dialogs.expectCancelled(batchtext::saveDialog);
    loaded.list().trigger(BatchDriver::OpenTool);
    loaded.list().trigger(BatchDriver::SaveTool);
    QCOMPARE(dialogs.seen.size(), 2);
    QCOMPARE(dialogs.seen.at(0).filters, QStringList{batchtext::openFilter});
    QCOMPARE(dialogs.seen.at(0).acceptMode, QFileDialog::AcceptOpen);
    QCOMPARE(dialogs.seen.at(1).filters, QStringList{batchtext::saveFilter});
    QCOMPARE(dialogs.seen.at(1).acceptMode, QFileDialog::AcceptSave);
}

void ParameterBatchFilesTest::cancelledDialogsDoNothing()
{
    const LoadedEditor loaded;
    loaded.list().addRow(QStringLiteral("Pn-007"));
    const QList<QStringList> before = loaded.list().allTexts();
    const ModalAnswers noBox;
    FileDialogAnswers dialogs;
    dialogs.expectCancelled(batchtext::openDialog);
    dialogs.expectCancelled(batchtext::saveDialog);
    loaded.list().trigger(BatchDriver::OpenTool);
    loaded.list().trigger(BatchDriver::SaveTool);
    QCOMPARE(loaded.list().allTexts(), before);
    QVERIFY(!loaded.batch->isVisible());
}

void ParameterBatchFilesTest::savedFileHoldsHeadsAndRows()
{
    const LoadedEditor loaded;
    loaded.list().addRow(QStringLiteral("Pn-401"));
    loaded.list().addRow(QStringLiteral("Pn-809"));
    loaded.list().tick(1, false);
    loaded.list().setText(1, 6, QStringLiteral("1.5"));
    save(loaded);
    QCOMPARE(contentOf(listName),
             heads +
                 "Pn-401-1,,,,,,100.0,0.1rpm,-6000.0,6000.0,100.0,Internal speed command setting,default,\n"
                 "Pn-809-0,,\xE2\x96\xA0,,,,1.5,0.1,1.0,3.0,1.2,Overspeed fault threshold,default,\n");
}

void ParameterBatchFilesTest::savingIsToldAndBringsTheWindowBack()
{
    const LoadedEditor loaded;
    QVERIFY(!loaded.batch->isVisible());
    save(loaded);
    QVERIFY(loaded.batch->isVisible());
    QCOMPARE(contentOf(listName), heads);
}

void ParameterBatchFilesTest::savingHidesAndShowsTheWindow()
{
    const LoadedEditor loaded;
    loaded.editor->editParaSlot();
    const EventCount hides(loaded.batch, QEvent::Hide);
    const EventCount shows(loaded.batch, QEvent::Show);
    ModalAnswers boxes;
    int hidesBeforeTheAnswer = -1;
    boxes.expect(editortext::saveDone, [&](QMessageBox *box) {
        hidesBeforeTheAnswer = hides.count;
        box->accept();
    });
    FileDialogAnswers dialogs;
    dialogs.expect(batchtext::saveDialog, listName);
    loaded.list().trigger(BatchDriver::SaveTool);
    QCOMPARE(hidesBeforeTheAnswer, 0);
    QCOMPARE(hides.count, 1);
    QCOMPARE(shows.count, 1);
    QVERIFY(loaded.batch->isVisible());
}

void ParameterBatchFilesTest::openingHidesAndShowsTheWindow()
{
    const LoadedEditor loaded;
    loaded.editor->editParaSlot();
    put(listName, heads);
    const EventCount hides(loaded.batch, QEvent::Hide);
    const EventCount shows(loaded.batch, QEvent::Show);
    open(loaded);
    QCOMPARE(hides.count, 1);
    QCOMPARE(shows.count, 1);
    QVERIFY(loaded.batch->isVisible());
}

void ParameterBatchFilesTest::minimisedWindowComesBackFromAFile()
{
    const LoadedEditor loaded;
    loaded.editor->editParaSlot();
    loaded.batch->showMinimized();
    QVERIFY(loaded.batch->isMinimized());
    save(loaded);
    QVERIFY(loaded.batch->isVisible());
    QVERIFY(!loaded.batch->isMinimized());
    loaded.batch->showMinimized();
    QFile::remove(listName);
    put(listName, heads);
    open(loaded);
    QVERIFY(loaded.batch->isVisible());
    QVERIFY(!loaded.batch->isMinimized());
}

void ParameterBatchFilesTest::savedRowsComeBackAsTheyWere_data()
{
    QTest::addColumn<QString>("language");
    QTest::newRow("English") << QStringLiteral("en_US");
    QTest::newRow("Chinese") << QStringLiteral("zh_CN");
}

void ParameterBatchFilesTest::savedRowsComeBackAsTheyWere()
{
    QFETCH(QString, language);
    const LoadedEditor loaded(language);
    QTableWidget *const table = loaded.batch->table();
    for (const char *code : {"Pn-000", "Pn-004", "Pn-007", "Pn-304", "Pn-401", "Pn-606", "Pn-A04", "Pn-C00"})
        loaded.list().addRow(QLatin1String(code));
    for (int row = 0; row < table->rowCount(); row += 2)
        table->item(row, 0)->setCheckState(Qt::Unchecked);
    table->item(2, 6)->setText(QString());
    table->item(3, 12)->setText(QStringLiteral("-5"));
    const QList<QStringList> before = loaded.list().allTexts();
    save(loaded);
    while (table->rowCount() > 0)
        loaded.list().trigger(BatchDriver::DeleteRowTool);
    open(loaded);
    QCOMPARE(loaded.list().allTexts(), before);
    for (int row = 0; row < table->rowCount(); ++row)
        QCOMPARE(loaded.list().isTicked(row), row % 2 == 1);
}

void ParameterBatchFilesTest::failedSaveIsToldAndKeepsTheFile()
{
    const LoadedEditor loaded;
    put(QStringLiteral("plain"), "old");
    ModalAnswers boxes;
    boxes.expect(editortext::saveFailed);
    FileDialogAnswers dialogs;
    dialogs.expect(batchtext::saveDialog, QStringLiteral("plain/list.csv"));
    loaded.list().trigger(BatchDriver::SaveTool);
    QCOMPARE(contentOf(QStringLiteral("plain")), QByteArray("old"));
    QVERIFY(!loaded.batch->isVisible());
}

#ifdef Q_OS_UNIX
void ParameterBatchFilesTest::fullDiskIsToldAndKeepsTheFile()
{
    const LoadedEditor loaded;
    put(listName, "old");
    ModalAnswers boxes;
    boxes.expect(QStringLiteral("list.csv already exists.\nDo you want to replace it?"), QMessageBox::Yes);
    boxes.expect(editortext::saveFailed);
    FileDialogAnswers dialogs;
    dialogs.expect(batchtext::saveDialog, listName);

    {
        const FullDisk disk(50);
        loaded.list().trigger(BatchDriver::SaveTool);
    }
    QCOMPARE(contentOf(listName), QByteArray("old"));
}
#endif

void ParameterBatchFilesTest::openedFileReplacesTheRows()
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

void ParameterBatchFilesTest::openedMarksHaveFontAndColour()
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

void ParameterBatchFilesTest::openedRowOfAFewFieldsIsComplete()
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

void ParameterBatchFilesTest::openingBringsTheWindowBack()
{
    const LoadedEditor loaded;
    put(listName, heads);
    open(loaded);
    QVERIFY(loaded.batch->isVisible());
}

void ParameterBatchFilesTest::fileThatIsGoneIsToldAndKeepsTheRows()
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
void ParameterBatchFilesTest::fileWhoseReadFailsIsToldAndKeepsTheRows()
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

void ParameterBatchFilesTest::fileThatIsTooLargeIsToldAndKeepsTheRows()
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

void ParameterBatchFilesTest::foreignFileIsReadAsFarAsItGoes_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<int>("rows");
    QTest::newRow("export of the pages")
        << QByteArray(",\xE2\x98\x85,Value,\nPn-000,,5,\n\r\n,Value,\n") << 1;
    QTest::newRow("line of a megabyte") << "Pn-304-1," + QByteArray(1024 * 1024, 'x') + ",\n" << 1;
    QTest::newRow("a thousand fields") << "Pn-304-1" + QByteArray(1000, ',') + "\n" << 1;
    QTest::newRow("cut within a row") << QByteArray("Pn-304-1,a,b,\nPn-305-1,a,1") << 2;
}

void ParameterBatchFilesTest::foreignFileIsReadAsFarAsItGoes()
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

void ParameterBatchFilesTest::openingFillsNoRowFromThePages()
{
    const LoadedEditor loaded;
    loaded.list().addRow(QStringLiteral("Pn-007"));
    loaded.list().beginEditing(0, BatchDriver::Code);
    put(listName, "Pn-401-1,,,,,,5,,,,,mine,,\n");
    open(loaded);
    QCOMPARE(loaded.list().text(0, 6), QStringLiteral("5"));
    QCOMPARE(loaded.list().text(0, 11), QStringLiteral("mine"));
}

void ParameterBatchFilesTest::fileOfTheMostRowsIsOpened()
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

void ParameterBatchFilesTest::endlessValueLeavesTheColumnsNarrow()
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

QTEST_MAIN(ParameterBatchFilesTest)
#include "tst_parameterbatch_files.moc"
