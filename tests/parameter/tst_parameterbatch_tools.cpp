// SPDX-License-Identifier: GPL-3.0-or-later
// The tool bar of the batch window: what each tool looks like and what it sets going.
#include "parameter/loadededitor.h"
#include "support/editortexts.h"
#include "support/eventcount.h"
#include "support/filedialoganswers.h"
#include "support/modalanswers.h"
#include "support/wire.h"

#include <QAction>
#include <QProgressDialog>
#include <QToolBar>

namespace {

// Does what a tool needs, triggers it and looks at what has come of it.
using Trial = void (*)(LoadedEditor &loaded, QAction *tool);

int rowCount(const LoadedEditor &loaded)
{
    return loaded.batch->table()->rowCount();
}

Qt::CheckState tick(const LoadedEditor &loaded, int row)
{
    return loaded.batch->table()->item(row, 0)->checkState();
}

void addRow(const LoadedEditor &loaded, const QString &code, const QString &value)
{
    loaded.editor->newRowSlot();
    QTableWidget *const table = loaded.batch->table();
    loaded.editor->Csv_DoubleClickedSlot(table->rowCount() - 1, 0);
    table->item(table->rowCount() - 1, 0)->setText(code);
    table->item(table->rowCount() - 1, 6)->setText(value);
}

// The tool asks for a file, is refused one and does nothing else.
void asksForAFile(LoadedEditor &loaded, QAction *tool, const QString &title, QFileDialog::AcceptMode mode)
{
    const ModalAnswers noBox;
    FileDialogAnswers dialogs;
    dialogs.expectCancelled(title);
    tool->trigger();
    QCOMPARE(dialogs.seen.size(), 1);
    QCOMPARE(dialogs.seen.first().acceptMode, mode);
    QCOMPARE(rowCount(loaded), 0);
    QVERIFY(loaded.peer.frames.isEmpty());
}

void opensAFile(LoadedEditor &loaded, QAction *tool)
{
    asksForAFile(loaded, tool, QStringLiteral("open csv file"), QFileDialog::AcceptOpen);
}

void savesAFile(LoadedEditor &loaded, QAction *tool)
{
    asksForAFile(loaded, tool, QStringLiteral("Save csv file"), QFileDialog::AcceptSave);
}

void reads(LoadedEditor &loaded, QAction *tool)
{
    addRow(loaded, QStringLiteral("Pn-007"), QStringLiteral("123.4"));
    loaded.peer.registers[0x2007] = 2000;
    ModalAnswers boxes;
    boxes.expect(editortext::readingDone);
    tool->trigger();
    QTRY_VERIFY(boxes.isDone());
    QCOMPARE(loaded.peer.frames, QList<QByteArray>{wire::frame("01 03 20 07 00 01")});
    QCOMPARE(loaded.batch->table()->item(0, 12)->text(), QStringLiteral("200.0"));
}

void writes(LoadedEditor &loaded, QAction *tool)
{
    addRow(loaded, QStringLiteral("Pn-007"), QStringLiteral("123.4"));
    ModalAnswers boxes;
    boxes.expect(editortext::writingDone);
    tool->trigger();
    QTRY_VERIFY(boxes.isDone());
    const QByteArray readBack = wire::frame("01 03 20 07 00 01");
    QCOMPARE(loaded.peer.frames,
             (QList<QByteArray>{wire::frame("01 10 e0 07 00 01 02 04 d2"), readBack, readBack, readBack}));
}

void addsARow(LoadedEditor &loaded, QAction *tool)
{
    addRow(loaded, QStringLiteral("Pn-007"), QStringLiteral("123.4"));
    tool->trigger();
    QCOMPARE(rowCount(loaded), 2);
    QCOMPARE(loaded.batch->table()->item(0, 0)->text(), QStringLiteral("Pn-007"));
    QCOMPARE(loaded.batch->table()->item(1, 0)->text(), QStringLiteral("Pn-000"));
}

void removesARow(LoadedEditor &loaded, QAction *tool)
{
    addRow(loaded, QStringLiteral("Pn-007"), QStringLiteral("123.4"));
    addRow(loaded, QStringLiteral("Pn-401"), QStringLiteral("1.0"));
    tool->trigger();
    QCOMPARE(rowCount(loaded), 1);
    QCOMPARE(loaded.batch->table()->item(0, 0)->text(), QStringLiteral("Pn-007"));
}

void ticksAll(LoadedEditor &loaded, QAction *tool)
{
    for (const char *code : {"Pn-007", "Pn-401", "Pn-300"})
        addRow(loaded, QLatin1String(code), QStringLiteral("1"));
    for (int row = 0; row < 2; ++row)
        loaded.batch->table()->item(row, 0)->setCheckState(Qt::Unchecked);
    tool->trigger();
    for (int row = 0; row < 3; ++row)
        QCOMPARE(tick(loaded, row), Qt::Checked);
}

void unticksAll(LoadedEditor &loaded, QAction *tool)
{
    for (const char *code : {"Pn-007", "Pn-401", "Pn-300"})
        addRow(loaded, QLatin1String(code), QStringLiteral("1"));
    loaded.batch->table()->item(1, 0)->setCheckState(Qt::Unchecked);
    tool->trigger();
    for (int row = 0; row < 3; ++row)
        QCOMPARE(tick(loaded, row), Qt::Unchecked);
}

QImage comparable(const QImage &image)
{
    return image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

} // namespace

Q_DECLARE_METATYPE(Trial)

class ParameterBatchToolsTest : public QObject
{
    Q_OBJECT

private slots:
    void toolLooksAndWorksAsItShould_data();
    void toolLooksAndWorksAsItShould();
    void emptyListWrittenFlashesTheDialogAndIsTold();
};

void ParameterBatchToolsTest::toolLooksAndWorksAsItShould_data()
{
    QTest::addColumn<int>("place"); // in the tool bar, where 2 and 3 are the separator and the gap
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("picture");
    QTest::addColumn<Trial>("trial");
    const auto row = [](int place, const char *text, const char *picture, Trial trial) {
        QTest::newRow(text) << place << QString::fromLatin1(text) << QString::fromLatin1(picture) << trial;
    };
    row(0, "open parameter file", "open file.png", opensAFile);
    row(1, "save parameter file", "save.png", savesAFile);
    row(4, "read parameter", "downarrow.png", reads);
    row(5, "write parameter file", "uparrow.png", writes);
    row(6, "newRow", "add.png", addsARow);
    row(7, "deleteRow", "sub.png", removesARow);
    row(8, "selectAll", "selectAll.png", ticksAll);
    row(9, "deselectAll", "deselectAll.png", unticksAll);
}

void ParameterBatchToolsTest::toolLooksAndWorksAsItShould()
{
    QFETCH(int, place);
    QFETCH(QString, text);
    QFETCH(QString, picture);
    QFETCH(Trial, trial);
    LoadedEditor loaded;
    const QList<QAction *> tools = loaded.batch->findChild<QToolBar *>()->actions();
    QCOMPARE(tools.size(), 10);
    QAction *const tool = tools.at(place);
    QCOMPARE(tool->text(), text);
    QCOMPARE(tool->statusTip(), text);
    const QImage wanted(QStringLiteral(":/pic/pic/") + picture);
    QVERIFY(!wanted.isNull());
    QCOMPARE(comparable(tool->icon().pixmap(wanted.size()).toImage()), comparable(wanted));
    trial(loaded, tool);
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
    loaded.editor->writeCsvSlot();
    QVERIFY(boxes.isDone());
    QCOMPARE(shows.count, 1);
    QCOMPARE(hidesBeforeTheBox, 1);
    QCOMPARE(hides.count, 1);
    QVERIFY(!progress->isVisible());
    QVERIFY(loaded.peer.frames.isEmpty());
}

QTEST_MAIN(ParameterBatchToolsTest)
#include "tst_parameterbatch_tools.moc"
