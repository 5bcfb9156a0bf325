// SPDX-License-Identifier: GPL-3.0-or-later
// The tool bar of the batch window: what each tool looks like and what it sets going.
#include "parameter/loadededitor.h"
#include "support/batchtexts.h"
#include "support/editortexts.h"
#include "support/eventcount.h"
#include "support/filedialoganswers.h"
#include "support/modalanswers.h"
#include "support/wire.h"

#include <QAction>
#include <QProgressDialog>
#include <QToolBar>

#include <functional>

namespace {

// Does what a tool needs, runs it and looks at what has come of it.
using Run = std::function<void()>;
using Trial = void (*)(LoadedEditor &loaded, const Run &run);
using Slot = void (ParameterEditor::*)();

// The tool asks for a file, is refused one and does nothing else.
void asksForAFile(LoadedEditor &loaded, const Run &run, const QString &title, QFileDialog::AcceptMode mode)
{
    const ModalAnswers noBox;
    FileDialogAnswers dialogs;
    dialogs.expectCancelled(title);
    run();
    QCOMPARE(dialogs.seen.size(), 1);
    QCOMPARE(dialogs.seen.first().acceptMode, mode);
    QCOMPARE(loaded.list().rowCount(), 0);
    QVERIFY(loaded.peer.frames.isEmpty());
}

void opensAFile(LoadedEditor &loaded, const Run &run)
{
    asksForAFile(loaded, run, batchtext::openDialog, QFileDialog::AcceptOpen);
}

void savesAFile(LoadedEditor &loaded, const Run &run)
{
    asksForAFile(loaded, run, batchtext::saveDialog, QFileDialog::AcceptSave);
}

void reads(LoadedEditor &loaded, const Run &run)
{
    loaded.list().addRow(QStringLiteral("Pn-007"), QStringLiteral("123.4"));
    loaded.peer.registers[0x2007] = 2000;
    ModalAnswers boxes;
    boxes.expect(editortext::readingDone);
    run();
    QTRY_VERIFY(boxes.isDone());
    QCOMPARE(loaded.peer.frames, QList<QByteArray>{wire::frame("01 03 20 07 00 01")});
    QCOMPARE(loaded.list().text(0, 12), QStringLiteral("200.0"));
}

void writes(LoadedEditor &loaded, const Run &run)
{
    loaded.list().addRow(QStringLiteral("Pn-007"), QStringLiteral("123.4"));
    ModalAnswers boxes;
    boxes.expect(editortext::writingDone);
    run();
    QTRY_VERIFY(boxes.isDone());
    const QByteArray readBack = wire::frame("01 03 20 07 00 01");
    QCOMPARE(loaded.peer.frames,
             (QList<QByteArray>{wire::frame("01 10 e0 07 00 01 02 04 d2"), readBack, readBack, readBack}));
}

void addsARow(LoadedEditor &loaded, const Run &run)
{
    loaded.list().addRow(QStringLiteral("Pn-007"), QStringLiteral("123.4"));
    run();
    QCOMPARE(loaded.list().rowCount(), 2);
    QCOMPARE(loaded.list().text(0, 0), QStringLiteral("Pn-007"));
    QCOMPARE(loaded.list().text(1, 0), QStringLiteral("Pn-000"));
}

void removesARow(LoadedEditor &loaded, const Run &run)
{
    loaded.list().addRow(QStringLiteral("Pn-007"), QStringLiteral("123.4"));
    loaded.list().addRow(QStringLiteral("Pn-401"), QStringLiteral("1.0"));
    run();
    QCOMPARE(loaded.list().rowCount(), 1);
    QCOMPARE(loaded.list().text(0, 0), QStringLiteral("Pn-007"));
}

void ticksAll(LoadedEditor &loaded, const Run &run)
{
    for (const char *code : {"Pn-007", "Pn-401", "Pn-300"})
        loaded.list().addRow(QLatin1String(code), QStringLiteral("1"));
    for (int row = 0; row < 2; ++row)
        loaded.list().tick(row, false);
    run();
    for (int row = 0; row < 3; ++row)
        QVERIFY(loaded.list().isTicked(row));
}

void unticksAll(LoadedEditor &loaded, const Run &run)
{
    for (const char *code : {"Pn-007", "Pn-401", "Pn-300"})
        loaded.list().addRow(QLatin1String(code), QStringLiteral("1"));
    loaded.list().tick(1, false);
    run();
    for (int row = 0; row < 3; ++row)
        QVERIFY(!loaded.list().isTicked(row));
}

QImage comparable(const QImage &image)
{
    return image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

} // namespace

Q_DECLARE_METATYPE(Trial)
Q_DECLARE_METATYPE(Slot)

class ParameterBatchToolsTest : public QObject
{
    Q_OBJECT

private slots:
    void toolLooksAndWorksAsItShould_data();
    void toolLooksAndWorksAsItShould();
    void slotDoesWhatItsToolDoes_data();
    void slotDoesWhatItsToolDoes();
    void emptyListWrittenFlashesTheDialogAndIsTold();
};

void ParameterBatchToolsTest::toolLooksAndWorksAsItShould_data()
{
    QTest::addColumn<int>("place");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("picture");
    QTest::addColumn<Trial>("trial");
    const auto row = [](BatchDriver::Tool place, const QString &text, const char *picture, Trial trial) {
        QTest::newRow(qPrintable(text)) << int(place) << text << QString::fromLatin1(picture) << trial;
    };
    row(BatchDriver::OpenTool, batchtext::openTool, "open file.png", opensAFile);
    row(BatchDriver::SaveTool, batchtext::saveTool, "save.png", savesAFile);
    row(BatchDriver::ReadTool, batchtext::readTool, "downarrow.png", reads);
    row(BatchDriver::WriteTool, batchtext::writeTool, "uparrow.png", writes);
    row(BatchDriver::NewRowTool, batchtext::newRowTool, "add.png", addsARow);
    row(BatchDriver::DeleteRowTool, batchtext::deleteRowTool, "sub.png", removesARow);
    row(BatchDriver::TickAllTool, batchtext::tickAllTool, "selectAll.png", ticksAll);
    row(BatchDriver::UntickAllTool, batchtext::untickAllTool, "deselectAll.png", unticksAll);
}

void ParameterBatchToolsTest::toolLooksAndWorksAsItShould()
{
    QFETCH(int, place);
    QFETCH(QString, text);
    QFETCH(QString, picture);
    QFETCH(Trial, trial);
    LoadedEditor loaded;
    const QList<QAction *> tools = loaded.list().tools();
    QCOMPARE(tools.size(), 10);
    QAction *const tool = tools.at(place);
    QCOMPARE(tool->text(), text);
    QCOMPARE(tool->statusTip(), text);
    const QImage wanted(QStringLiteral(":/pic/pic/") + picture);
    QVERIFY(!wanted.isNull());
    QCOMPARE(comparable(tool->icon().pixmap(wanted.size()).toImage()), comparable(wanted));
    trial(loaded, [tool] { tool->trigger(); });
}

void ParameterBatchToolsTest::slotDoesWhatItsToolDoes_data()
{
    QTest::addColumn<Slot>("slot");
    QTest::addColumn<Trial>("trial");
    const auto row = [](const char *name, Slot slot, Trial trial) { QTest::newRow(name) << slot << trial; };
    row("openCsvSlot", &ParameterEditor::openCsvSlot, opensAFile);
    row("saveCsvSlot", &ParameterEditor::saveCsvSlot, savesAFile);
    row("readParaCsvSlot", &ParameterEditor::readParaCsvSlot, reads);
    row("writeCsvSlot", &ParameterEditor::writeCsvSlot, writes);
    row("newRowSlot", &ParameterEditor::newRowSlot, addsARow);
    row("deleteRowSlot", &ParameterEditor::deleteRowSlot, removesARow);
    row("selectAllSlot", &ParameterEditor::selectAllSlot, ticksAll);
    row("deselectAllSlot", &ParameterEditor::deselectAllSlot, unticksAll);
}

void ParameterBatchToolsTest::slotDoesWhatItsToolDoes()
{
    QFETCH(Slot, slot);
    QFETCH(Trial, trial);
    LoadedEditor loaded;
    trial(loaded, [&loaded, slot] { (loaded.editor.get()->*slot)(); });
}

void ParameterBatchToolsTest::emptyListWrittenFlashesTheDialogAndIsTold()
{
    const LoadedEditor loaded;
    auto *const progress = loaded.editor->findChild<QProgressDialog *>();
    const EventCount shows(progress, QEvent::Show);
    const EventCount hides(progress, QEvent::Hide);
    ModalAnswers boxes;
    int hidesBeforeTheBox = 0;
    boxes.expect(editortext::writingDone, [&](QMessageBox *box) {
        hidesBeforeTheBox = hides.count;
        box->accept();
    });
    loaded.list().trigger(BatchDriver::WriteTool);
    QVERIFY(boxes.isDone());
    QCOMPARE(shows.count, 1);
    QCOMPARE(hidesBeforeTheBox, 1);
    QCOMPARE(hides.count, 1);
    QVERIFY(!progress->isVisible());
    QVERIFY(loaded.peer.frames.isEmpty());
}

QTEST_MAIN(ParameterBatchToolsTest)
#include "tst_parameterbatch_tools.moc"
