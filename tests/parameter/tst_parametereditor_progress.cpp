// SPDX-License-Identifier: GPL-3.0-or-later
// The dialog that a transfer holds before the windows: over which window it stands, and that Escape and
// closing it end the transfer.
#include "link/serialport.h"
#include "parameter/loadededitor.h"
#include "support/batchtexts.h"
#include "support/editortexts.h"
#include "support/eventcount.h"
#include "support/modalanswers.h"
#include "support/rununtil.h"
#include "support/wire.h"

#include <QProgressDialog>
#include <QSignalSpy>
#include <QWindow>

class ParameterEditorProgressTest : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();
    void dialogPutAwayEndsThePageRead_data();
    void dialogPutAwayEndsThePageRead();
    void escapeEndsAnEndlessPageWrite();
    void escapeEndsABatchRead();
    void escapeEndsABatchWrite();
    void nothingStartsIntoTheRepliesOfAnEndedRun();
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

void ParameterEditorProgressTest::dialogPutAwayEndsThePageRead_data()
{
    QTest::addColumn<bool>("byEscape");
    QTest::newRow("escape") << true;
    QTest::newRow("close") << false;
}

void ParameterEditorProgressTest::dialogPutAwayEndsThePageRead()
{
    QFETCH(const bool, byEscape);
    LoadedEditor loaded;
    const QSignalSpy withdrawn(loaded.editor.get(), &ParameterEditor::withdrawRequests);
    auto *const dialog = loaded.editor->findChild<QProgressDialog *>();
    SerialPort::portOpened = true;
    loaded.peer.held = true;
    loaded.peer.registers[0x2000] = 77;
    const ModalAnswers noBox;
    const QString before = loaded.value(0, 0)->text();
    loaded.editor->readPageSlt();
    QVERIFY(dialog->isVisible());
    QCOMPARE(dialog->labelText(), QStringLiteral("Reading..."));
    if (byEscape)
        QTest::keyClick(dialog, Qt::Key_Escape);
    else
        dialog->close();
    QVERIFY(!dialog->isVisible());
    QCOMPARE(withdrawn.count(), 1);
    QCOMPARE(withdrawn.first().first().toString(), QStringLiteral("Editor"));
    // The reply that was on its way is nobody's, and nothing more is asked.
    QSignalSpy replies(&loaded.peer, &RegisterPeer::reply);
    loaded.peer.release();
    QTRY_COMPARE(replies.count(), 1);
    QCoreApplication::processEvents();
    QCOMPARE(loaded.peer.frames.size(), 1);
    QCOMPARE(loaded.value(0, 0)->text(), before);
    QVERIFY(noBox.seen.isEmpty());
}

void ParameterEditorProgressTest::escapeEndsAnEndlessPageWrite()
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
    loaded.editor->writePageSlt();
    QTRY_VERIFY(loaded.peer.frames.size() > 5);
    QCOMPARE(shown(*dialog), (QStringList{"visible", "Writing...", "0", "1", "2", ""}));
    QTest::keyClick(dialog, Qt::Key_Escape);
    QVERIFY(!dialog->isVisible());
    const int polled = loaded.peer.frames.size();
    QSignalSpy replies(&loaded.peer, &RegisterPeer::reply);
    QTRY_COMPARE(replies.count(), 1);
    QCoreApplication::processEvents();
    QCOMPARE(loaded.peer.frames.size(), polled);
    QCOMPARE(loaded.value(0, 0)->foreground().color(), QColor(Qt::red));
    QVERIFY(boxes.seen.isEmpty());
    // One write, and the rest are read-backs.
    const QByteArray written = wire::frame("01 10 e0 07 00 01 02 00 0a");
    QCOMPARE(loaded.peer.frames.first(), written);
    QCOMPARE(loaded.peer.frames.count(wire::frame("01 03 20 07 00 01")), polled - 1);
    // The next write starts over, and its dialog is there again.
    holdsTheValue = true;
    loaded.peer.held = true;
    boxes.expect(editortext::writingDone);
    loaded.editor->writePageSlt();
    QVERIFY(dialog->isVisible());
    loaded.peer.release();
    QTRY_VERIFY(boxes.isDone());
    QCOMPARE(loaded.peer.frames.count(written), 2);
    QVERIFY(!dialog->isVisible());
}

void ParameterEditorProgressTest::escapeEndsABatchRead()
{
    LoadedEditor loaded;
    auto *const dialog = loaded.editor->findChild<QProgressDialog *>();
    loaded.editor->editParaSlot();
    for (int i = 0; i < 3; ++i)
        loaded.list().trigger(BatchDriver::NewRowTool);
    loaded.peer.registers[0x2000] = 7;
    loaded.peer.held = true;
    const ModalAnswers noBox;
    loaded.list().trigger(BatchDriver::ReadTool);
    QCOMPARE(shown(*dialog), (QStringList{"visible", "Reading...", "0", "1", "4", ""}));
    QTest::keyClick(dialog, Qt::Key_Escape);
    QVERIFY(!dialog->isVisible());
    QVERIFY(loaded.batch->isVisible());
    QSignalSpy replies(&loaded.peer, &RegisterPeer::reply);
    loaded.peer.release();
    QTRY_COMPARE(replies.count(), 1);
    QCoreApplication::processEvents();
    QCOMPARE(loaded.peer.frames.size(), 1);
    for (int row = 0; row < 3; ++row)
        QCOMPARE(loaded.list().text(row, BatchDriver::Real), batchtext::notRead);
    QVERIFY(noBox.seen.isEmpty());
}

void ParameterEditorProgressTest::escapeEndsABatchWrite()
{
    LoadedEditor loaded;
    auto *const dialog = loaded.editor->findChild<QProgressDialog *>();
    loaded.list().addRow(QStringLiteral("Pn-007"));
    loaded.peer.held = true;
    const ModalAnswers noBox;
    loaded.list().trigger(BatchDriver::WriteTool);
    QVERIFY(dialog->isVisible());
    QTest::keyClick(dialog, Qt::Key_Escape);
    QVERIFY(!dialog->isVisible());
    QSignalSpy replies(&loaded.peer, &RegisterPeer::reply);
    loaded.peer.release();
    QTRY_COMPARE(replies.count(), 1);
    QCoreApplication::processEvents();
    QCOMPARE(loaded.peer.frames, QList<QByteArray>{wire::frame("01 10 e0 07 00 01 02 07 d0")});
    QVERIFY(noBox.seen.isEmpty());
}

void ParameterEditorProgressTest::nothingStartsIntoTheRepliesOfAnEndedRun()
{
    LoadedEditor loaded;
    auto *const dialog = loaded.editor->findChild<QProgressDialog *>();
    SerialPort::portOpened = true;
    loaded.peer.held = true;
    loaded.peer.registers[0x2000] = 77;
    loaded.peer.registers[0x2007] = 1500;
    const ModalAnswers noBox;
    loaded.editor->readPageSlt();
    QTest::keyClick(dialog, Qt::Key_Escape);
    loaded.editor->readCurrentParameter({QStringLiteral("Pn-007")});
    QCOMPARE(loaded.peer.frames.size(), 1);
    loaded.peer.release();
    const int row = loaded.rowOf(0, QStringLiteral("Pn-007"));
    QTRY_COMPARE(loaded.value(0, row)->text(), QStringLiteral("150.0"));
    QCOMPARE(loaded.peer.frames,
             (QList<QByteArray>{wire::frame("01 03 20 00 00 01"), wire::frame("01 03 20 07 00 01")}));
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
    const auto windowBelow = [&](void (ParameterEditor::*run)(), const QString &done) -> QWindow * {
        const EventCount shows(dialog, QEvent::Show);
        boxes.expect(done);
        (loaded.editor.get()->*run)();
        const bool isOver = runUntil([&boxes] { return boxes.isDone(); }, 60000);
        return isOver && shows.count == 1 ? dialog->windowHandle()->transientParent() : nullptr;
    };
    loaded.list().trigger(BatchDriver::NewRowTool);
    QCOMPARE(windowBelow(&ParameterEditor::readParaCsvSlot, editortext::readingDone), batch);
    QCOMPARE(windowBelow(&ParameterEditor::writePageSlt, editortext::writingDone), editor);
    QCOMPARE(windowBelow(&ParameterEditor::writeCsvSlot, editortext::writingDone), batch);
    QCOMPARE(windowBelow(&ParameterEditor::readPageSlt, editortext::readingDone), editor);

    // After a batch write that ended with a time-out.
    loaded.list().setCode(0, QStringLiteral("Pn-007"));
    loaded.peer.held = true;
    loaded.list().trigger(BatchDriver::WriteTool);
    QCOMPARE(loaded.peer.frames.last(), wire::frame("01 10 e0 07 00 01 02 07 d0"));
    boxes.expect(editortext::writeTimeout);
    QVERIFY(runUntil([&boxes] { return boxes.isDone(); }, 5000));
    loaded.peer.held = false;
    QCOMPARE(windowBelow(&ParameterEditor::readPageSlt, editortext::readingDone), editor);
}

QTEST_MAIN(ParameterEditorProgressTest)
#include "tst_parametereditor_progress.moc"
