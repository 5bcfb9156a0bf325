// SPDX-License-Identifier: GPL-3.0-or-later
// Lists of the batch window that are saved, and its window around the file dialogs.
#include "batchlists.h"

#include "parameter/loadededitor.h"
#include "support/batchtexts.h"
#include "support/editortexts.h"
#include "support/eventcount.h"
#include "support/filedialoganswers.h"
#include "support/fulldisk.h"
#include "support/modalanswers.h"

#include <QFile>

using namespace batchlists;
using namespace testfiles;

namespace {

void save(const LoadedEditor &loaded)
{
    ModalAnswers boxes;
    boxes.expect(editortext::saveDone);
    loaded.list().saveFile(listName);
}

} // namespace

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
};

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

QTEST_MAIN(ParameterBatchFilesTest)
#include "tst_parameterbatch_files.moc"
