// SPDX-License-Identifier: GPL-3.0-or-later
// The dialog that a transfer holds before the windows: the user can't put it away.
#include "link/serialport.h"
#include "parameter/loadededitor.h"
#include "support/eventcount.h"
#include "support/modalanswers.h"
#include "support/rununtil.h"
#include "support/wire.h"

#include <QProgressDialog>
#include <QWindow>

class ParameterEditorProgressTest : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();
    void escapeLeavesAPageReadAlone();
    void escapeLeavesAnEndlessPageWriteAlone();
    void escapeLeavesABatchReadAlone();
    void dialogStandsOverTheWindowOfItsRun();
};

namespace {

// What the dialog shows.
QStringList shown(const QProgressDialog &dialog)
{
    return {dialog.isVisible() ? QStringLiteral("visible") : QStringLiteral("hidden"),
            dialog.labelText(),
            QString::number(dialog.minimum()),
            QString::number(dialog.value()),
            QString::number(dialog.maximum()),
            dialog.wasCanceled() ? QStringLiteral("cancelled") : QString()};
}

void pressEscape(QProgressDialog *dialog)
{
    const EventCount hides(dialog, QEvent::Hide);
    QTest::keyClick(dialog, Qt::Key_Escape);
    QCoreApplication::processEvents();
    QCOMPARE(hides.count, 0);
}

// Leaves the named rows only, so that a page write is short.
void keepOnly(const LoadedEditor &loaded, const QString &code)
{
    for (ParameterTable *page : qAsConst(loaded.pages)) {
        for (int row = page->rowCount() - 1; row >= 0; --row) {
            if (page->code(row) != code)
                page->removeRow(row);
        }
    }
}

} // namespace

void ParameterEditorProgressTest::cleanup()
{
    SerialPort::portOpened = false;
}

void ParameterEditorProgressTest::escapeLeavesAPageReadAlone()
{
    LoadedEditor loaded;
    auto *const dialog = loaded.editor->findChild<QProgressDialog *>();
    SerialPort::portOpened = true;
    loaded.peer.held = true;
    ModalAnswers boxes;
    boxes.expect(QStringLiteral("Parameters reading completed"));
    loaded.editor->readPageSlt();
    const QStringList before{"visible", "Reading...", "0", "1", "521", ""};
    QCOMPARE(shown(*dialog), before);
    pressEscape(dialog);
    QCOMPARE(shown(*dialog), before);
    QCOMPARE(loaded.peer.frames.size(), 1);
    QVERIFY(boxes.seen.isEmpty());
    // The read goes on to its end, each code asked for once.
    loaded.peer.release();
    QVERIFY(runUntil([&boxes] { return boxes.isDone(); }, 60000));
    QCOMPARE(loaded.peer.frames.size(), 520);
    QVERIFY(!dialog->isVisible());
}

void ParameterEditorProgressTest::escapeLeavesAnEndlessPageWriteAlone()
{
    LoadedEditor loaded;
    auto *const dialog = loaded.editor->findChild<QProgressDialog *>();
    keepOnly(loaded, QStringLiteral("Pn-007"));
    loaded.value(0, 0)->setText(QStringLiteral("1.0"));
    loaded.value(0, 0)->setForeground(Qt::red);
    bool holdsTheValue = false;
    loaded.peer.intercept = [&holdsTheValue](const QByteArray &request, const QByteArray &reply) {
        return request.at(1) == 0x03 && !holdsTheValue ? wire::readReply(wire::bytes("00 09")) : reply;
    };
    ModalAnswers boxes;
    boxes.expect(QStringLiteral("Parameters writing completed"));
    loaded.editor->writePageSlt();
    QTRY_VERIFY(loaded.peer.frames.size() > 5);
    const QStringList before{"visible", "Writing...", "0", "1", "2", ""};
    QCOMPARE(shown(*dialog), before);
    const int polled = loaded.peer.frames.size();
    pressEscape(dialog);
    QTRY_VERIFY(loaded.peer.frames.size() > polled + 5);
    QCOMPARE(shown(*dialog), before);
    QVERIFY(boxes.seen.isEmpty());
    QCOMPARE(loaded.value(0, 0)->foreground().color(), QColor(Qt::red));
    // One write, and the rest are read-backs.
    const QByteArray written = wire::frame("01 10 e0 07 00 01 02 00 0a");
    QCOMPARE(loaded.peer.frames.first(), written);
    QCOMPARE(loaded.peer.frames.count(wire::frame("01 03 20 07 00 01")), loaded.peer.frames.size() - 1);
    holdsTheValue = true;
    QTRY_VERIFY(boxes.isDone());
    QCOMPARE(loaded.peer.frames.count(written), 1);
    QVERIFY(!dialog->isVisible());
}

void ParameterEditorProgressTest::escapeLeavesABatchReadAlone()
{
    LoadedEditor loaded;
    auto *const dialog = loaded.editor->findChild<QProgressDialog *>();
    loaded.editor->editParaSlot();
    for (int i = 0; i < 3; ++i)
        loaded.editor->newRowSlot();
    loaded.peer.registers[0x2000] = 7;
    loaded.peer.held = true;
    ModalAnswers boxes;
    boxes.expect(QStringLiteral("Parameters reading completed"));
    loaded.editor->readParaCsvSlot();
    const QStringList before{"visible", "Reading...", "0", "1", "4", ""};
    QCOMPARE(shown(*dialog), before);
    pressEscape(dialog);
    QCOMPARE(shown(*dialog), before);
    QCOMPARE(loaded.peer.frames.size(), 1);
    QVERIFY(loaded.batch->isVisible());
    QVERIFY(boxes.seen.isEmpty());
    loaded.peer.release();
    QTRY_VERIFY(boxes.isDone());
    QCOMPARE(loaded.peer.frames.size(), 3);
    for (int row = 0; row < 3; ++row)
        QCOMPARE(loaded.batch->table()->item(row, 12)->text(), QStringLiteral("7"));
    QVERIFY(!dialog->isVisible());
}

// A dialog that stood over the editor would bring that one before the batch window.
void ParameterEditorProgressTest::dialogStandsOverTheWindowOfItsRun()
{
    LoadedEditor loaded;
    auto *const dialog = loaded.editor->findChild<QProgressDialog *>();
    keepOnly(loaded, QStringLiteral("Pn-007"));
    SerialPort::portOpened = true;
    loaded.editor->show();
    loaded.editor->editParaSlot();
    QWindow *const editor = loaded.editor->windowHandle();
    QWindow *const batch = loaded.batch->windowHandle();
    QVERIFY(editor && batch);
    ModalAnswers boxes;
    const auto windowBelow = [&](void (ParameterEditor::*run)(), const char *done) -> QWindow * {
        const EventCount shows(dialog, QEvent::Show);
        boxes.expect(QLatin1String(done));
        (loaded.editor.get()->*run)();
        const bool isOver = runUntil([&boxes] { return boxes.isDone(); }, 60000);
        return isOver && shows.count == 1 ? dialog->windowHandle()->transientParent() : nullptr;
    };
    const char *const reading = "Parameters reading completed";
    const char *const writing = "Parameters writing completed";
    loaded.editor->newRowSlot();
    QCOMPARE(windowBelow(&ParameterEditor::readParaCsvSlot, reading), batch);
    QCOMPARE(windowBelow(&ParameterEditor::writePageSlt, writing), editor);
    QCOMPARE(windowBelow(&ParameterEditor::writeCsvSlot, writing), batch);
    QCOMPARE(windowBelow(&ParameterEditor::readPageSlt, reading), editor);

    // After a batch write that ended with a time-out.
    loaded.batch->table()->item(0, 0)->setText(QStringLiteral("Pn-007"));
    loaded.editor->Csv_ValueChangedSlot(0, 0);
    loaded.peer.held = true;
    loaded.editor->writeCsvSlot();
    QCOMPARE(loaded.peer.frames.last(), wire::frame("01 10 e0 07 00 01 02 07 d0"));
    boxes.expect(QStringLiteral("Write Timeout!"));
    QVERIFY(runUntil([&boxes] { return boxes.isDone(); }, 5000));
    loaded.peer.held = false;
    QCOMPARE(windowBelow(&ParameterEditor::readPageSlt, reading), editor);
}

QTEST_MAIN(ParameterEditorProgressTest)
#include "tst_parametereditor_progress.moc"
