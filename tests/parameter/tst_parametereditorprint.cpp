// SPDX-License-Identifier: GPL-3.0-or-later
// The editor's ways to paper, from the button to the preview and to the file.
#include "parameter/parametereditor.h"
#include "parameter/parametertable.h"
#include "parameter/printdialogs.h"
#include "support/filedialoganswers.h"
#include "support/modalanswers.h"
#include "support/testdirectory.h"

#include <QAction>
#include <QDir>
#include <QListWidget>
#include <QMenu>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QProgressDialog>
#include <QSignalSpy>
#include <QStackedWidget>
#include <QTest>
#include <QTextEdit>
#include <QTextTable>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>
#include <QTranslator>

namespace {

const QString finished = QStringLiteral("Finish create Parameter PDF ");
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

void put(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("the test can't write its own file");
}

} // namespace

class ParameterEditorPrintTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void printButtonOpensThePreview();
    void previewIsForAPrinterOfHighResolution();
    void previewKeepsTheMaximizeButtonAlone();
    void transformShowsThePageItIsAt();
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
    void pdfDialogStartsWithoutAPath();
    void pdfGetsItsSuffix_data();
    void pdfGetsItsSuffix();
    void pdfThatIsThereIsAskedAbout_data();
    void pdfThatIsThereIsAskedAbout();
    void pdfOfAWholeNameIsAskedAboutOnce();
    void unwritablePdfIsToldAsFinished();

private:
    TestDirectory directory;
};

void ParameterEditorPrintTest::init()
{
    directory.clear();
    directory.setLanguage(QStringLiteral("en_US"));
}

void ParameterEditorPrintTest::printButtonOpensThePreview()
{
    const Bench bench;
    QVERIFY(bench.waitForFewRows());
    const PrintDialogs dialogs;
    bench.action("printAction")->trigger();
    QCOMPARE(dialogs.previews.size(), 1);
    QVERIFY(dialogs.previews.first() & Qt::Window);
    QVERIFY(!(dialogs.previews.first() & Qt::WindowContextHelpButtonHint));
    QCOMPARE(dialogs.progress, QStringList{transformProgress});
    QVERIFY(!dialogs.wasProgressOpen);
}

void ParameterEditorPrintTest::previewIsForAPrinterOfHighResolution()
{
    Bench bench;
    QVERIFY(bench.waitForFewRows());
    const PrintDialogs dialogs;
    bench.editor.doPrintPreviewSlot();
    QCOMPARE(dialogs.resolutions, QList<int>{QPrinter(QPrinter::HighResolution).resolution()});
    QVERIFY(dialogs.resolutions.first() > 2 * QPrinter(QPrinter::ScreenResolution).resolution());
}

void ParameterEditorPrintTest::previewKeepsTheMaximizeButtonAlone()
{
    Bench bench;
    QVERIFY(bench.waitForFewRows());
    PrintDialogs dialogs;
    const Qt::WindowFlags hints = Qt::WindowMinimizeButtonHint | Qt::WindowMaximizeButtonHint |
                                  Qt::WindowCloseButtonHint | Qt::WindowContextHelpButtonHint |
                                  Qt::WindowFullscreenButtonHint;
    // Where dialogs come with every button.
    dialogs.whenPreviewIsMade = [hints](QPrintPreviewDialog *preview) {
        preview->setWindowFlags(Qt::Dialog | Qt::WindowTitleHint | hints);
    };
    bench.editor.doPrintPreviewSlot();
    QCOMPARE(dialogs.previews.size(), 1);
    QCOMPARE(dialogs.previews.first() & hints, Qt::WindowFlags(Qt::WindowMaximizeButtonHint));
    QCOMPARE(int(dialogs.previews.first() & Qt::WindowType_Mask), int(Qt::Window));
}

void ParameterEditorPrintTest::transformShowsThePageItIsAt()
{
    Bench bench;
    QVERIFY(bench.waitForFewRows());
    PrintDialogs dialogs;
    // Rows of the document beside the progress, at each time that the transform lets events through.
    QStringList steps;
    QTimer look;
    dialogs.whileTransformed = [&] { look.start(0); };
    dialogs.whilePreviewed = [&look] { look.stop(); };
    connect(&look, &QTimer::timeout, &look, [&] {
        const auto *const bar = qobject_cast<QProgressDialog *>(QApplication::activeModalWidget());
        if (!bar)
            return;
        // A paragraph a cell, and a few above and below the table. The table itself is not to be had yet.
        const int rows = bench.text()->document()->blockCount() / 12;
        steps.append(QStringLiteral("%1: %2").arg(bar->value()).arg(rows));
    });
    bench.editor.doPrintPreviewSlot();
    steps.removeDuplicates();
    QCOMPARE(steps, (QStringList{"0: 11", "1: 21", "2: 31", "3: 41", "4: 51", "5: 61", "6: 71", "7: 81",
                                 "8: 91", "9: 101", "10: 111", "11: 121"}));
}

void ParameterEditorPrintTest::previewPaintsAgainWhenAsked()
{
    Bench bench;
    QVERIFY(bench.waitForFewRows());
    PrintDialogs dialogs;
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
    const PrintDialogs dialogs;
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
    QTest::newRow("Chinese") << "zh_CN" << 571 << QStringList{"功能码", "参数名称"};
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
    const PrintDialogs dialogs;
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
    const PrintDialogs dialogs;
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
    PrintDialogs dialogs;
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
    const PrintDialogs dialogs;
    bench.editor.doPrintPreviewSlot();
    QCOMPARE(frames.count(), 0);
}

void ParameterEditorPrintTest::printingWithinPrintingIsLeftOut()
{
    Bench bench;
    QVERIFY(bench.waitForFewRows());
    const PrintDialogs dialogs;
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
    const PrintDialogs dialogs;
    create->trigger();
    QCOMPARE(dialogs.fileDialogs.size(), 1);
}

void ParameterEditorPrintTest::pdfIsWrittenAndTold()
{
    Bench bench;
    QVERIFY(bench.waitForFewRows());
    PrintDialogs dialogs;
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
    const PrintDialogs dialogs;
    const ModalAnswers answers;
    bench.editor.createPDFSlot();
    QCOMPARE(dialogs.fileDialogs.size(), 1);
    QCOMPARE(dialogs.progress, QStringList());
    QVERIFY(!bench.text());
    QCOMPARE(QDir().entryList(QDir::Files), QStringList{"settings.ini"});
}

// Without a path the dialog starts in the folder that was looked at last, with no name in its line.
void ParameterEditorPrintTest::pdfDialogStartsWithoutAPath()
{
    Bench bench;
    QVERIFY(QDir().mkdir(QStringLiteral("elsewhere")));
    const QString elsewhere = QFileInfo(QStringLiteral("elsewhere")).absoluteFilePath();
    FileDialogAnswers dialogs;
    QFileDialog().setDirectory(elsewhere);
    dialogs.expectCancelled(QStringLiteral("Create Parameter PDF"));
    bench.editor.createPDFSlot();
    QCOMPARE(dialogs.seen.size(), 1);
    QCOMPARE(dialogs.seen.first().directory, elsewhere);
    QCOMPARE(dialogs.seen.first().name, QString());
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
    PrintDialogs dialogs;
    dialogs.nameToGive = given;
    ModalAnswers answers;
    answers.expect(finished);
    bench.editor.createPDFSlot();
    const QStringList files = QDir().entryList(QDir::Files);
    QCOMPARE(files.size(), 2);
    QVERIFY2(files.contains(written), qPrintable(files.join(QLatin1Char(' '))));
    QVERIFY(contentOf(written).startsWith("%PDF-1."));
}

void ParameterEditorPrintTest::pdfThatIsThereIsAskedAbout_data()
{
    QTest::addColumn<QString>("given");
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("replaces");

    QTest::newRow("no") << "list"
                        << "list.pdf"
                        << "list.pdf" << false;
    QTest::newRow("yes") << "list"
                         << "list.pdf"
                         << "list.pdf" << true;
    QTest::newRow("no, dot at the end") << "list."
                                        << "list..pdf"
                                        << "list..pdf" << false;
    QTest::newRow("yes, in a folder") << "stick/list"
                                      << "stick/list.pdf"
                                      << "list.pdf" << true;
}

void ParameterEditorPrintTest::pdfThatIsThereIsAskedAbout()
{
    QFETCH(const QString, given);
    QFETCH(const QString, file);
    QFETCH(const QString, name);
    QFETCH(const bool, replaces);
    Bench bench;
    QVERIFY(bench.waitForFewRows());
    QVERIFY(QDir().mkdir(QStringLiteral("stick")));
    put(file, "old");
    PrintDialogs dialogs;
    dialogs.nameToGive = given;
    ModalAnswers answers;
    QMessageBox::StandardButton byDefault = QMessageBox::NoButton;
    answers.expect(name + QStringLiteral(" already exists.\nDo you want to replace it?"),
                   [&byDefault, replaces](QMessageBox *box) {
                       byDefault = box->standardButton(box->defaultButton());
                       box->button(replaces ? QMessageBox::Yes : QMessageBox::No)->click();
                   });
    if (replaces)
        answers.expect(finished);
    bench.editor.createPDFSlot();

    QCOMPARE(answers.seen.size(), replaces ? 2 : 1);
    QCOMPARE(answers.seen.first().title, QStringLiteral("Create Parameter PDF"));
    QCOMPARE(answers.seen.first().icon, QMessageBox::Warning);
    QCOMPARE(answers.seen.first().buttons, (QStringList{"Yes", "No"}));
    QCOMPARE(byDefault, QMessageBox::No);
    QCOMPARE(dialogs.fileDialogs.size(), 1);
    if (replaces) {
        QVERIFY(contentOf(file).startsWith("%PDF-1."));
    } else {
        QCOMPARE(contentOf(file), QByteArray("old"));
        QCOMPARE(dialogs.progress, QStringList());
        QVERIFY(!bench.text());
    }
}

// The file dialog asks itself when the name is that of the file.
void ParameterEditorPrintTest::pdfOfAWholeNameIsAskedAboutOnce()
{
    Bench bench;
    QVERIFY(bench.waitForFewRows());
    put(QStringLiteral("list.pdf"), "old");
    PrintDialogs dialogs;
    dialogs.nameToGive = QStringLiteral("list.pdf");
    ModalAnswers answers;
    answers.expect(QStringLiteral("list.pdf already exists.\nDo you want to replace it?"), QMessageBox::Yes);
    answers.expect(finished);
    bench.editor.createPDFSlot();
    QCOMPARE(answers.seen.size(), 2);
    QVERIFY(contentOf(QStringLiteral("list.pdf")).startsWith("%PDF-1."));
}

// The end of the run is told, not whether the file could be written.
void ParameterEditorPrintTest::unwritablePdfIsToldAsFinished()
{
    Bench bench;
    QVERIFY(QDir().mkdir(QStringLiteral("stick")));
    PrintDialogs dialogs;
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
