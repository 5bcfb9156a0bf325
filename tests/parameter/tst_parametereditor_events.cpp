// SPDX-License-Identifier: GPL-3.0-or-later
// What may come while the editor is busy with paper or a file: a reply, a time-out, and its own end.
#include "parameter/loadededitor.h"
#include "parameter/printdialogs.h"
#include "support/editortexts.h"
#include "support/filedialoganswers.h"
#include "support/modalanswers.h"

#include <QAction>
#include <QTextEdit>
#include <QTextTable>
#include <QToolBar>

class ParameterEditorEventsTest : public QObject
{
    Q_OBJECT

private slots:
    void replyDuringTheTransformIsShown();
    void timeOutDuringTheTransformIsTold();
    void editorMayGoDuringTheTransform_data();
    void editorMayGoDuringTheTransform();
    void editorMayGoWhileThePreviewIsOpen_data();
    void editorMayGoWhileThePreviewIsOpen();
    void editorMayGoWhileABoxOfThePdfIsShown_data();
    void editorMayGoWhileABoxOfThePdfIsShown();
    void editorMayGoWhileTheSavedListIsTold_data();
    void editorMayGoWhileTheSavedListIsTold();
};

namespace {

const QStringList singleRead{"Pn-A04", "", "", "pp", "-2147483647", "2147483647"};

// Row 0 is that of the heads.
QString printedText(const LoadedEditor &loaded, const QString &code, int column)
{
    const QTextDocument *const document = loaded.editor->findChild<QTextEdit *>()->document();
    const auto *const table = qobject_cast<QTextTable *>(document->rootFrame()->childFrames().value(0));
    for (int row = 1; table && row < table->rows(); ++row) {
        if (table->cellAt(row, 0).firstCursorPosition().block().text() == code)
            return table->cellAt(row, column).firstCursorPosition().block().text();
    }
    return QStringLiteral("no such row");
}

// Takes an editor out of the hands of its test and ends it, at once or as a closed window ends.
class Ending
{
public:
    Ending(LoadedEditor *loaded, bool isAtOnce)
        : atOnce(isAtOnce)
        , editor(loaded->editor.release())
    {
        editor->setAttribute(Qt::WA_DeleteOnClose);
        editor->show();
    }
    ~Ending() { delete editor; }
    Q_DISABLE_COPY_MOVE(Ending)

    void end() const
    {
        if (atOnce)
            delete editor;
        else
            editor->close();
    }
    bool isOver() const
    {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return !editor && !QApplication::activeModalWidget();
    }

    bool atOnce;
    QPointer<ParameterEditor> editor;
};

void ways()
{
    QTest::addColumn<bool>("atOnce");
    QTest::newRow("deleted") << true;
    QTest::newRow("closed") << false;
}

} // namespace

void ParameterEditorEventsTest::replyDuringTheTransformIsShown()
{
    LoadedEditor loaded;
    loaded.peer.registers[0x23EC] = 1;
    loaded.peer.registers[0x23ED] = 5;
    const int row = loaded.rowOf(10, QStringLiteral("Pn-A04"));
    QCOMPARE(loaded.value(10, row)->text(), QStringLiteral("10000"));
    PrintDialogs dialogs;
    QString duringThePreview;
    dialogs.whilePreviewed = [&] { duringThePreview = loaded.value(10, row)->text(); };
    const ModalAnswers noBox;
    loaded.editor->readCurrentParameter(singleRead);
    loaded.editor->doPrintPreviewSlot();
    QCOMPARE(duringThePreview, QStringLiteral("65541"));
    // It came before the transform had got to its page.
    QCOMPARE(printedText(loaded, QStringLiteral("Pn-A04"), 6), QStringLiteral("65541"));
    QCOMPARE(printedText(loaded, QStringLiteral("Pn-B95"), 0), QStringLiteral("Pn-B95"));
    QCOMPARE(dialogs.previews.size(), 1);
    QCOMPARE(dialogs.progress.size(), 1);
    QVERIFY(!QApplication::activeModalWidget());
    QCOMPARE(loaded.peer.frames.size(), 1);
    QCOMPARE(loaded.editor->findChild<QStackedWidget *>()->currentIndex(), 0);
}

void ParameterEditorEventsTest::timeOutDuringTheTransformIsTold()
{
    LoadedEditor loaded;
    loaded.peer.intercept = [](const QByteArray &, const QByteArray &) { return QByteArray(); };
    PrintDialogs dialogs;
    // An event that takes longer than the wait for a reply.
    dialogs.whileTransformed = [] { QTimer::singleShot(0, qApp, [] { QTest::qSleep(1200); }); };
    ModalAnswers boxes;
    bool wasTransformHeld = false;
    boxes.expect(editortext::requestTimeout, [&](QMessageBox *box) {
        const QList<QProgressDialog *> bars = loaded.editor->findChildren<QProgressDialog *>();
        for (const QProgressDialog *bar : bars)
            wasTransformHeld |= bar->isVisible() && bar->windowTitle() == QLatin1String("transform");
        box->accept();
    });
    loaded.editor->readCurrentParameter(singleRead);
    loaded.editor->doPrintPreviewSlot();
    QVERIFY(boxes.isDone());
    QVERIFY(wasTransformHeld);
    QCOMPARE(printedText(loaded, QStringLiteral("Pn-A04"), 6), QStringLiteral("10000"));
    QCOMPARE(printedText(loaded, QStringLiteral("Pn-B95"), 0), QStringLiteral("Pn-B95"));
    QCOMPARE(dialogs.previews.size(), 1);
    QCOMPARE(dialogs.progress.size(), 1);
    QVERIFY(!QApplication::activeModalWidget());
}

void ParameterEditorEventsTest::editorMayGoDuringTheTransform_data()
{
    QTest::addColumn<bool>("atOnce");
    QTest::addColumn<bool>("toPdf");
    QTest::newRow("deleted, preview") << true << false;
    QTest::newRow("closed, preview") << false << false;
    QTest::newRow("deleted, PDF") << true << true;
    QTest::newRow("closed, PDF") << false << true;
}

void ParameterEditorEventsTest::editorMayGoDuringTheTransform()
{
    QFETCH(const bool, atOnce);
    QFETCH(const bool, toPdf);
    LoadedEditor loaded;
    const Ending ending(&loaded, atOnce);
    PrintDialogs dialogs;
    dialogs.nameToGive = QStringLiteral("list.pdf");
    // Comes up while the transform lets events through.
    dialogs.whileTransformed = [&ending] { QTimer::singleShot(0, qApp, [&ending] { ending.end(); }); };
    ModalAnswers boxes;
    boxes.allow(QStringLiteral("Finish create Parameter PDF "));
    if (toPdf)
        ending.editor->createPDFSlot();
    else
        ending.editor->doPrintPreviewSlot();
    QVERIFY(ending.isOver());
    QCOMPARE(dialogs.progress.size(), 1);
    if (atOnce) {
        QCOMPARE(dialogs.previews.size(), 0);
        QCOMPARE(boxes.seen.size(), 0);
        QVERIFY(!QFile::exists(QStringLiteral("list.pdf")));
    }
}

void ParameterEditorEventsTest::editorMayGoWhileThePreviewIsOpen_data()
{
    ways();
}

void ParameterEditorEventsTest::editorMayGoWhileThePreviewIsOpen()
{
    QFETCH(const bool, atOnce);
    LoadedEditor loaded;
    const Ending ending(&loaded, atOnce);
    PrintDialogs dialogs;
    dialogs.whilePreviewed = [&ending] { ending.end(); };
    ending.editor->doPrintPreviewSlot();
    QCOMPARE(dialogs.previews.size(), 1);
    QVERIFY(ending.isOver());
}

void ParameterEditorEventsTest::editorMayGoWhileABoxOfThePdfIsShown_data()
{
    QTest::addColumn<bool>("atOnce");
    QTest::addColumn<QString>("text");
    const QString question = QStringLiteral("list.pdf already exists.\nDo you want to replace it?");
    const QString end = QStringLiteral("Finish create Parameter PDF ");
    QTest::newRow("question, deleted") << true << question;
    QTest::newRow("question, closed") << false << question;
    QTest::newRow("end, deleted") << true << end;
    QTest::newRow("end, closed") << false << end;
}

void ParameterEditorEventsTest::editorMayGoWhileABoxOfThePdfIsShown()
{
    QFETCH(const bool, atOnce);
    QFETCH(const QString, text);
    LoadedEditor loaded;
    if (text.contains(QLatin1String("exists"))) {
        QFile older(QStringLiteral("list.pdf"));
        QVERIFY(older.open(QIODevice::WriteOnly));
    }
    const Ending ending(&loaded, atOnce);
    PrintDialogs dialogs;
    dialogs.nameToGive = QStringLiteral("list");
    ModalAnswers boxes;
    boxes.expect(text, [&ending](QMessageBox *shown) {
        const QPointer<QMessageBox> box(shown);
        ending.end();
        if (box)
            box->done(QMessageBox::No);
    });
    ending.editor->createPDFSlot();
    QVERIFY(boxes.isDone());
    QVERIFY(ending.isOver());
}

void ParameterEditorEventsTest::editorMayGoWhileTheSavedListIsTold_data()
{
    ways();
}

void ParameterEditorEventsTest::editorMayGoWhileTheSavedListIsTold()
{
    QFETCH(const bool, atOnce);
    LoadedEditor loaded;
    const Ending ending(&loaded, atOnce);
    const QPointer<ParameterBatch> window(loaded.batch);
    window->show();
    FileDialogAnswers dialogs;
    dialogs.expect(QStringLiteral("Save csv file"), QStringLiteral("list.csv"));
    ModalAnswers boxes;
    boxes.expect(editortext::saveDone, [&ending](QMessageBox *box) {
        ending.end();
        box->accept();
    });
    window->findChild<QToolBar *>()->actions().at(1)->trigger();
    QVERIFY(boxes.isDone());
    QVERIFY(ending.isOver());
    QVERIFY(!window);
    QVERIFY(QFile::exists(QStringLiteral("list.csv")));
}

QTEST_MAIN(ParameterEditorEventsTest)
#include "tst_parametereditor_events.moc"
