// SPDX-License-Identifier: GPL-3.0-or-later
#include "parameter/parameterprintcontrol.h"

#include "files/pdffile.h"
#include "parameter/parametereditor.h"
#include "parameter/parameterprint.h"
#include "parameter/printedpages.h"
#include "widgets/runprogressdialog.h"

#include <QAction>
#include <QCoreApplication>
#include <QDebug>
#include <QFileDialog>
#include <QFileInfo>
#include <QGuiApplication>
#include <QMessageBox>
#include <QPointer>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QScreen>
#include <QTextEdit>

namespace {

// The printout's name for the spooler and in the properties of a PDF.
const QString documentName = QStringLiteral("KT500 Servo Parameter");

// The answer of a box before a window. Not made on the stack: when the window goes meanwhile it takes the box
// with it, and there is no answer.
QMessageBox::StandardButton answerOf(QMessageBox::Icon icon, const QString &title, const QString &text,
                                     QMessageBox::StandardButtons buttons, QWidget *window)
{
    const QPointer<QMessageBox> box(new QMessageBox(icon, title, text, buttons, window));
    if (buttons & QMessageBox::No)
        box->setDefaultButton(QMessageBox::No);
    const int answer = box->exec();
    delete box;
    return static_cast<QMessageBox::StandardButton>(answer);
}

// Nine tenths of the screen, the page as wide as there is room.
void showLarge(QPrintPreviewDialog *dialog)
{
    const QScreen *const screen = QGuiApplication::primaryScreen();
    if (screen) {
        dialog->resize(screen->availableSize() * 0.9);
        // A dialog that places itself leaves its title bar above the screen.
        dialog->move(screen->availableGeometry().center() - dialog->rect().center());
    }
    // By its action, so that the button shows it.
    if (auto *const fit = dialog->findChild<QAction *>(QStringLiteral("fitWidthAction")))
        fit->trigger();
}

} // namespace

ParameterPrintControl::ParameterPrintControl(ParameterPages editorPages, QWidget *editorWindow)
    : QObject(editorWindow)
    , pages(std::move(editorPages))
    , window(editorWindow)
{
}

void ParameterPrintControl::showProgress()
{
    if (!progressDialog) {
        progressDialog = new RunProgressDialog(window);
        connect(progressDialog, &RunProgressDialog::endRequested, this, [this] {
            isCancelled = true;
            progressDialog->finish();
        });
    }
    progressDialog->setLabelText(ParameterEditor::tr("transform..."));
    progressDialog->setWindowTitle(ParameterEditor::tr("transform"));
    progressDialog->setRange(0, pages.count());
    progressDialog->show();
}

void ParameterPrintControl::finishProgress()
{
    progressDialog->showValue(pages.count());
    progressDialog->finish();
}

// Takes the texts as they stand in the tables; the drive is not asked. False when it is under way already,
// for events run in between, and when one of them has closed the editor or the user has ended it.
bool ParameterPrintControl::transform()
{
    if (isTransforming)
        return false;
    isTransforming = true;
    isCancelled = false;
    showProgress();
    if (!printText) {
        printText = new QTextEdit(window);
        printText->hide();
    }
    printText->setFixedSize(1000, 800);
    const QPointer<ParameterPrintControl> alive(this);
    ParameterPrint print(printText->document());
    print.begin(pages.heads());
    for (int i = 0; i < pages.count(); ++i) {
        print.addRows(pages.rowTexts(i));
        progressDialog->showValue(i);
        QCoreApplication::processEvents();
        if (!alive)
            return false;
        if (isCancelled)
            break;
    }
    print.finish();
    printText->setAlignment(Qt::AlignCenter);
    isTransforming = false;
    return !isCancelled;
}

void ParameterPrintControl::preview()
{
    if (!transform())
        return;
    QPrinter printer(QPrinter::HighResolution);
    printer.setDocName(documentName);
    QPrintPreviewDialog dialog(&printer);
    showLarge(&dialog);
    dialog.setWindowFlags(dialog.windowFlags() & Qt::WindowMaximizeButtonHint);
    connect(&dialog, &QPrintPreviewDialog::paintRequested, this, &ParameterPrintControl::paint);
    const QPointer<ParameterPrintControl> alive(this);
    dialog.exec();
    // The preview ends the dialog as it paints; a preview that never did must not leave it in the way.
    if (alive)
        finishProgress();
}

void ParameterPrintControl::paint(QPrinter *printer)
{
    if (!printText || isTransforming)
        return;
    printParameters(*printText->document(), printer);
    finishProgress();
}

bool ParameterPrintControl::mayReplace(const QString &fileName, const QString &title)
{
    const QString question = QFileDialog::tr("%1 already exists.\nDo you want to replace it?");
    return answerOf(QMessageBox::Warning, title, question.arg(QFileInfo(fileName).fileName()),
                    QMessageBox::Yes | QMessageBox::No, window) == QMessageBox::Yes;
}

void ParameterPrintControl::createPdf()
{
    const QString title = ParameterEditor::tr("Create Parameter PDF");
    QString fileName = QFileDialog::getSaveFileName(window, title, QString(), QStringLiteral("*.pdf"));
    if (fileName.isEmpty())
        return;
    if (QFileInfo(fileName).suffix().isEmpty()) {
        fileName.append(QLatin1String(".pdf"));
        // The file dialog has asked about the name as it was.
        if (QFileInfo::exists(fileName) && !mayReplace(fileName, title))
            return;
    }
    if (!transform())
        return;
    const auto print = [this](QPrinter *printer) { printParameters(*printText->document(), printer); };
    // A file that can't be written is told to the log only: the user hears of the end of the run.
    if (!writePdfFile(fileName, documentName, print))
        qDebug().noquote() << "PDF: cannot write" << fileName;
    finishProgress();
    answerOf(QMessageBox::Information, title, ParameterEditor::tr("Finish create Parameter PDF "),
             QMessageBox::Ok, window);
}
