// SPDX-License-Identifier: GPL-3.0-or-later
// The editor's way to a PDF file, from the action to the box that tells of it.
#include "printbench.h"
#include "testfiles.h"

#include "parameter/printdialogs.h"
#include "support/filedialoganswers.h"
#include "support/modalanswers.h"
#include "support/testdirectory.h"

#include <QAction>
#include <QDir>
#include <QMenu>
#include <QProgressDialog>
#include <QTest>
#include <QToolBar>
#include <QToolButton>

using namespace printbench;
using namespace testfiles;

namespace {

const QString finished = QStringLiteral("Finish create Parameter PDF ");

} // namespace

class ParameterEditorPrintPdfTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
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

void ParameterEditorPrintPdfTest::init()
{
    directory.clear();
    directory.setLanguage(QStringLiteral("en_US"));
}

void ParameterEditorPrintPdfTest::pdfActionStandsAtThePrintButton()
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

void ParameterEditorPrintPdfTest::pdfIsWrittenAndTold()
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

void ParameterEditorPrintPdfTest::cancelledFileDialogDoesNothing()
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
void ParameterEditorPrintPdfTest::pdfDialogStartsWithoutAPath()
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

void ParameterEditorPrintPdfTest::pdfGetsItsSuffix_data()
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

void ParameterEditorPrintPdfTest::pdfGetsItsSuffix()
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

void ParameterEditorPrintPdfTest::pdfThatIsThereIsAskedAbout_data()
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

void ParameterEditorPrintPdfTest::pdfThatIsThereIsAskedAbout()
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
void ParameterEditorPrintPdfTest::pdfOfAWholeNameIsAskedAboutOnce()
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
void ParameterEditorPrintPdfTest::unwritablePdfIsToldAsFinished()
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

QTEST_MAIN(ParameterEditorPrintPdfTest)
#include "tst_parametereditorprint_pdf.moc"
