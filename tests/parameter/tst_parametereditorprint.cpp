// SPDX-License-Identifier: GPL-3.0-or-later
// The editor's ways to paper, from the button to the preview and to the file.
#include "parameter/parametereditor.h"
#include "parameter/parametertable.h"
#include "support/modalanswers.h"
#include "support/testdirectory.h"

#include <QAction>
#include <QDir>
#include <QFileDialog>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPointer>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QProgressDialog>
#include <QPushButton>
#include <QSignalSpy>
#include <QStackedWidget>
#include <QTest>
#include <QTextEdit>
#include <QTextTable>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>
#include <QTranslator>

#include <functional>

namespace {

const QString finished = QStringLiteral("Finish create Parameter PDF ");

// Meets the dialogs that printing opens and remembers what they were.
class Dialogs : public QObject
{
public:
    Dialogs() { qApp->installEventFilter(this); }
    ~Dialogs() override { qApp->removeEventFilter(this); }

    QString nameToGive; // none: the file dialog is cancelled
    std::function<void()> whileTransformed;
    std::function<void()> whilePreviewed;

    QStringList progress; // title, label, font size, range and modality of each progress dialog shown
    QStringList fileDialogs;
    QList<Qt::WindowFlags> previews;
    bool wasProgressOpen = false; // when the preview was there

protected:
    bool eventFilter(QObject *object, QEvent *event) override
    {
        if (event->type() == QEvent::Show) {
            if (auto *const file = qobject_cast<QFileDialog *>(object))
                later(file, [this, file] { answer(file); });
            else if (auto *const preview = qobject_cast<QPrintPreviewDialog *>(object))
                later(preview, [this, preview] { answer(preview); });
            else if (auto *const bar = qobject_cast<QProgressDialog *>(object))
                remember(bar);
        }
        return false;
    }

private:
    static void later(QDialog *dialog, const std::function<void()> &answer)
    {
        QTimer::singleShot(0, dialog, answer);
    }
    void remember(const QProgressDialog *bar)
    {
        shownBar = bar;
        if (whileTransformed)
            whileTransformed();
        progress.append(QStringLiteral("%1|%2|%3|%4-%5|%6|%7")
                            .arg(bar->windowTitle(), bar->labelText())
                            .arg(bar->font().pointSize())
                            .arg(bar->minimum())
                            .arg(bar->maximum())
                            .arg(bar->isModal() ? "modal" : "free",
                                 bar->findChild<QPushButton *>() ? "button" : "no button"));
    }
    void answer(QFileDialog *dialog)
    {
        fileDialogs.append(dialog->windowTitle() + QLatin1Char('|') +
                           dialog->nameFilters().join(QLatin1Char(',')) + QLatin1Char('|') +
                           (dialog->acceptMode() == QFileDialog::AcceptSave ? "save" : "open"));
        if (nameToGive.isEmpty()) {
            dialog->reject();
            return;
        }
        dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"))->setText(nameToGive);
        static_cast<QDialog *>(dialog)->accept();
    }
    void answer(QPrintPreviewDialog *preview)
    {
        previews.append(preview->windowFlags());
        wasProgressOpen = shownBar && shownBar->isVisible();
        if (whilePreviewed)
            whilePreviewed();
        preview->reject();
    }

    QPointer<const QProgressDialog> shownBar;
};

const QString transformProgress = QStringLiteral("transform|transform...|9|0-12|modal|no button");

// An editor with its catalogue loaded.
class Bench
{
public:
    Bench()
    {
        editor.show();
        stack = editor.findChild<QStackedWidget *>();
    }
    bool waitForCatalogue() const
    {
        const QListWidget *const list = editor.findChild<QListWidget *>();
        return QTest::qWaitFor([list] { return list->currentRow() == 1; });
    }
    // A few rows a page are enough where it is not about their number.
    bool waitForFewRows() const
    {
        if (!waitForCatalogue())
            return false;
        for (int index = 0; index < stack->count(); ++index)
            page(index)->setRowCount(10);
        return true;
    }
    ParameterTable *page(int index) const { return qobject_cast<ParameterTable *>(stack->widget(index)); }
    QAction *action(const char *name) const { return editor.findChild<QAction *>(QLatin1String(name)); }
    QTextEdit *text() const { return editor.findChild<QTextEdit *>(); }
    QTextTable *printed() const
    {
        return text() ? qobject_cast<QTextTable *>(text()->document()->rootFrame()->childFrames().value(0))
                      : nullptr;
    }
    QString printedText(int row, int column) const
    {
        return printed()->cellAt(row, column).firstCursorPosition().block().text();
    }

    ParameterEditor editor;
    QStackedWidget *stack = nullptr;
};

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

class ParameterEditorPrintTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void printButtonOpensThePreview();
    void previewPaintsAgainWhenAsked();
    void previewLeavesNoProgressDialog();
    void documentHoldsAllPagesAsTheyStand_data();
    void documentHoldsAllPagesAsTheyStand();
    void laterPrintShowsLaterTexts();
    void textEditStaysHidden();
    void printingAsksTheDriveForNothing();
    void printingWithinPrintingIsLeftOut();
    void paintingWithoutAPrintoutDoesNothing();
    void pdfActionStandsAtThePrintButton();
    void pdfIsWrittenAndTold();
    void cancelledFileDialogDoesNothing();
    void pdfGetsItsSuffix_data();
    void pdfGetsItsSuffix();
    void unwritablePdfIsToldAsFinished();

private:
    TestDirectory directory;
};

void ParameterEditorPrintTest::initTestCase()
{
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
}

void ParameterEditorPrintTest::init()
{
    directory.clear();
    directory.setLanguage(QStringLiteral("en_US"));
}

void ParameterEditorPrintTest::printButtonOpensThePreview()
{
    const Bench bench;
    QVERIFY(bench.waitForFewRows());
    const Dialogs dialogs;
    bench.action("printAction")->trigger();
    QCOMPARE(dialogs.previews.size(), 1);
    QVERIFY(dialogs.previews.first() & Qt::Window);
    QVERIFY(!(dialogs.previews.first() & Qt::WindowContextHelpButtonHint));
    QCOMPARE(dialogs.progress, QStringList{transformProgress});
    QVERIFY(!dialogs.wasProgressOpen);
}

void ParameterEditorPrintTest::previewPaintsAgainWhenAsked()
{
    Bench bench;
    QVERIFY(bench.waitForFewRows());
    Dialogs dialogs;
    int progressCount = 0;
    // A change of the paper in the preview asks for the pages once more.
    dialogs.whilePreviewed = [&] {
        QPrinter printer(QPrinter::HighResolution);
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(QStringLiteral("again.pdf"));
        bench.editor.printPreviewSlot(&printer);
        progressCount = dialogs.progress.size();
    };
    bench.editor.doPrintPreviewSlot();
    QCOMPARE(progressCount, 1);
    QVERIFY(contentOf(QStringLiteral("again.pdf")).count("/Type /Page\n") > 1);
}

void ParameterEditorPrintTest::previewLeavesNoProgressDialog()
{
    Bench bench;
    QVERIFY(bench.waitForFewRows());
    const Dialogs dialogs;
    bench.editor.doPrintPreviewSlot();
    const QList<QProgressDialog *> bars = bench.editor.findChildren<QProgressDialog *>();
    for (const QProgressDialog *bar : bars)
        QVERIFY(!bar->isVisible());
    QVERIFY(!QApplication::activeModalWidget());
}

void ParameterEditorPrintTest::documentHoldsAllPagesAsTheyStand_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<int>("rows");
    QTest::addColumn<QStringList>("firstAndLastHead");

    QTest::newRow("English") << "en_US" << 520 << QStringList{"Function Code", "Description"};
    QTest::newRow("Chinese") << "zh_CN" << 571 << QStringList{"功能码", "参数说明"};
}

void ParameterEditorPrintTest::documentHoldsAllPagesAsTheyStand()
{
    QFETCH(const QString, language);
    QFETCH(const int, rows);
    QFETCH(const QStringList, firstAndLastHead);
    directory.setLanguage(language);
    QTranslator translator;
    if (language == QLatin1String("zh_CN")) {
        QVERIFY(translator.load(QStringLiteral(":/lan/sd_zh_CN.qm")));
        QCoreApplication::installTranslator(&translator);
    }
    Bench bench;
    QVERIFY(bench.waitForCatalogue());
    const Dialogs dialogs;
    bench.editor.doPrintPreviewSlot();

    // The series name is not translated.
    QCOMPARE(bench.text()->document()->firstBlock().next().text(), QStringLiteral("KT500 Servo Parameter"));
    QVERIFY(bench.printed());
    QCOMPARE(bench.printed()->columns(), 12);
    QCOMPARE(bench.printed()->rows(), rows + 1);
    QCOMPARE(bench.printedText(0, 0), firstAndLastHead.first());
    QCOMPARE(bench.printedText(0, 11), firstAndLastHead.last());
    for (int column = 0; column < 11; ++column)
        QCOMPARE(bench.printedText(0, column + 1), bench.page(0)->horizontalHeaderItem(column)->text());
    int printedRow = 1;
    for (int index = 0; index < 12; ++index) {
        const ParameterTable *const page = bench.page(index);
        for (int row = 0; row < page->rowCount(); ++row, ++printedRow) {
            QCOMPARE(bench.printedText(printedRow, 0), page->code(row));
            for (int column = 0; column < 11; ++column)
                QCOMPARE(bench.printedText(printedRow, column + 1), page->item(row, column)->text());
        }
    }
    QCOMPARE(printedRow, rows + 1);
}

void ParameterEditorPrintTest::laterPrintShowsLaterTexts()
{
    Bench bench;
    QVERIFY(bench.waitForFewRows());
    const Dialogs dialogs;
    bench.editor.doPrintPreviewSlot();
    QCOMPARE(bench.printedText(8, 6), QStringLiteral("200.0"));
    bench.page(0)->item(7, ParameterTable::ValueColumn)->setText(QStringLiteral("312.5"));
    // The document stays as it was until the next time.
    QCOMPARE(bench.printedText(8, 6), QStringLiteral("200.0"));
    bench.editor.doPrintPreviewSlot();
    QCOMPARE(bench.printedText(8, 6), QStringLiteral("312.5"));
    QCOMPARE(bench.printed()->rows(), 12 * 10 + 1);
}

void ParameterEditorPrintTest::textEditStaysHidden()
{
    Bench bench;
    QVERIFY(bench.waitForFewRows());
    Dialogs dialogs;
    bool wasVisible = true;
    dialogs.whilePreviewed = [&] { wasVisible = bench.text()->isVisible(); };
    bench.editor.doPrintPreviewSlot();
    QVERIFY(!wasVisible);
    QVERIFY(!bench.text()->isVisible());
    QCOMPARE(bench.text()->minimumSize(), QSize(1000, 800));
    QCOMPARE(bench.text()->maximumSize(), QSize(1000, 800));
    QCOMPARE(bench.text()->alignment(), Qt::AlignCenter);
}

void ParameterEditorPrintTest::printingAsksTheDriveForNothing()
{
    Bench bench;
    QVERIFY(bench.waitForFewRows());
    const QSignalSpy frames(&bench.editor,
                            qOverload<QByteArray, QString>(&ParameterEditor::writeToSerialPort));
    const Dialogs dialogs;
    bench.editor.doPrintPreviewSlot();
    QCOMPARE(frames.count(), 0);
}

void ParameterEditorPrintTest::printingWithinPrintingIsLeftOut()
{
    Bench bench;
    QVERIFY(bench.waitForFewRows());
    const Dialogs dialogs;
    // Comes up while the transformation lets events through.
    QTimer::singleShot(0, &bench.editor, &ParameterEditor::doPrintPreviewSlot);
    bench.editor.doPrintPreviewSlot();
    QCOMPARE(dialogs.previews.size(), 1);
    QCOMPARE(bench.printed()->rows(), 12 * 10 + 1);
}

void ParameterEditorPrintTest::paintingWithoutAPrintoutDoesNothing()
{
    Bench bench;
    QPrinter printer;
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(QStringLiteral("none.pdf"));
    bench.editor.printPreviewSlot(&printer);
    QVERIFY(!QFile::exists(QStringLiteral("none.pdf")));
}

void ParameterEditorPrintTest::pdfActionStandsAtThePrintButton()
{
    Bench bench;
    auto *const bar = bench.editor.findChild<QToolBar *>();
    const auto *const button = qobject_cast<QToolButton *>(bar->widgetForAction(bench.action("printAction")));
    QVERIFY(button);
    QCOMPARE(button->popupMode(), QToolButton::MenuButtonPopup);
    QAction *const create = button->menu()->actions().value(0);
    QVERIFY(create);
    QCOMPARE(create->text(), QStringLiteral("createPDF..."));
    QCOMPARE(create->statusTip(), QStringLiteral("Create PDF"));
    const Dialogs dialogs;
    create->trigger();
    QCOMPARE(dialogs.fileDialogs.size(), 1);
}

void ParameterEditorPrintTest::pdfIsWrittenAndTold()
{
    Bench bench;
    QVERIFY(bench.waitForFewRows());
    Dialogs dialogs;
    dialogs.nameToGive = QStringLiteral("list.pdf");
    ModalAnswers answers;
    answers.expect(finished);
    bench.editor.createPDFSlot();

    QCOMPARE(dialogs.fileDialogs, QStringList{"Create Parameter PDF|*.pdf|save"});
    QCOMPARE(dialogs.progress, QStringList{transformProgress});
    QCOMPARE(answers.seen.size(), 1);
    QCOMPARE(answers.seen.first().title, QStringLiteral("Create Parameter PDF"));
    QCOMPARE(answers.seen.first().icon, QMessageBox::Information);
    QCOMPARE(answers.seen.first().buttons, QStringList{"OK"});
    const QByteArray pdf = contentOf(QStringLiteral("list.pdf"));
    QVERIFY(pdf.startsWith("%PDF-1."));
    QVERIFY(pdf.count("/Type /Page\n") > 1);
    for (const QProgressDialog *bar : bench.editor.findChildren<QProgressDialog *>())
        QVERIFY(!bar->isVisible());
}

void ParameterEditorPrintTest::cancelledFileDialogDoesNothing()
{
    Bench bench;
    QVERIFY(bench.waitForFewRows());
    const Dialogs dialogs;
    const ModalAnswers answers;
    bench.editor.createPDFSlot();
    QCOMPARE(dialogs.fileDialogs.size(), 1);
    QCOMPARE(dialogs.progress, QStringList());
    QVERIFY(!bench.text());
    QCOMPARE(QDir().entryList(QDir::Files), QStringList{"settings.ini"});
}

void ParameterEditorPrintTest::pdfGetsItsSuffix_data()
{
    QTest::addColumn<QString>("given");
    QTest::addColumn<QString>("written");

    QTest::newRow("none") << "list"
                          << "list.pdf";
    QTest::newRow("its own") << "list.pdf"
                             << "list.pdf";
    QTest::newRow("another") << "list.txt"
                             << "list.txt";
    QTest::newRow("dot at the end") << "list."
                                    << "list..pdf";
    QTest::newRow("dot within") << "drive 1.2"
                                << "drive 1.2";
    QTest::newRow("Chinese") << "参数"
                             << "参数.pdf";
}

void ParameterEditorPrintTest::pdfGetsItsSuffix()
{
    QFETCH(const QString, given);
    QFETCH(const QString, written);
    Bench bench;
    Dialogs dialogs;
    dialogs.nameToGive = given;
    ModalAnswers answers;
    answers.expect(finished);
    bench.editor.createPDFSlot();
    const QStringList files = QDir().entryList(QDir::Files);
    QCOMPARE(files.size(), 2);
    QVERIFY2(files.contains(written), qPrintable(files.join(QLatin1Char(' '))));
    QVERIFY(contentOf(written).startsWith("%PDF-1."));
}

// The end of the run is told, not whether the file could be written.
void ParameterEditorPrintTest::unwritablePdfIsToldAsFinished()
{
    Bench bench;
    QVERIFY(QDir().mkdir(QStringLiteral("stick")));
    Dialogs dialogs;
    dialogs.nameToGive = QStringLiteral("stick/list");
    // The folder is gone after the dialog has looked at it.
    dialogs.whileTransformed = [] { QVERIFY(QDir().rmdir(QStringLiteral("stick"))); };
    ModalAnswers answers;
    answers.expect(finished);
    bench.editor.createPDFSlot();
    QCOMPARE(answers.seen.size(), 1);
    QCOMPARE(QDir().entryList(QDir::AllEntries | QDir::NoDotAndDotDot), QStringList{"settings.ini"});
}

QTEST_MAIN(ParameterEditorPrintTest)
#include "tst_parametereditorprint.moc"
