// SPDX-License-Identifier: GPL-3.0-or-later
// Printing of the parameter editor: preview and PDF.
#include "parameter/parametereditor.h"

#include "files/pdffile.h"
#include "parameter/parameterprint.h"
#include "parameter/parametertable.h"
#include "widgets/runprogressdialog.h"

#include <QCoreApplication>
#include <QDebug>
#include <QFileDialog>
#include <QFileInfo>
#include <QMenu>
#include <QMessageBox>
#include <QPointer>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QTextEdit>
#include <QToolBar>
#include <QToolButton>

namespace {

// The printout's name for the spooler and in the properties of a PDF.
const QString documentName = QStringLiteral("KT500 Servo Parameter");

QStringList printHeads(const ParameterTable &page, const QString &codeHead)
{
    QStringList heads{codeHead};
    for (int column = 0; column < ParameterTable::ColumnCount; ++column)
        heads.append(page.horizontalHeaderItem(column)->text());
    return heads;
}

QList<QStringList> printRows(const ParameterTable &page)
{
    QList<QStringList> rows;
    for (int row = 0; row < page.rowCount(); ++row) {
        QStringList texts{page.code(row)};
        for (int column = 0; column < ParameterTable::ColumnCount; ++column)
            texts.append(page.text(row, ParameterTable::Column(column)));
        rows.append(texts);
    }
    return rows;
}

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

} // namespace

// The tool bar's buttons are fixed, so the other way to paper opens from the arrow of "Print".
void ParameterEditor::addPdfMenu(QToolBar *bar, QAction *print)
{
    auto *const button = qobject_cast<QToolButton *>(bar->widgetForAction(print));
    auto *const menu = new QMenu(button);
    QAction *const createPdf = menu->addAction(tr("createPDF..."), this, &ParameterEditor::createPDFSlot);
    createPdf->setObjectName(QStringLiteral("createPDFAction"));
    createPdf->setStatusTip(tr("Create PDF"));
    button->setMenu(menu);
    button->setPopupMode(QToolButton::MenuButtonPopup);
}

void ParameterEditor::showTransformProgress()
{
    if (!transformDialog)
        transformDialog = new RunProgressDialog(this);
    transformDialog->setLabelText(tr("transform..."));
    transformDialog->setWindowTitle(tr("transform"));
    transformDialog->setRange(0, pages.size());
    transformDialog->show();
}

void ParameterEditor::finishTransformProgress()
{
    transformDialog->showValue(pages.size());
    transformDialog->finish();
}

// Takes the texts as they stand in the tables; the drive is not asked. False when it is under way already,
// for events run in between, and when one of them has closed the editor.
bool ParameterEditor::transformPages()
{
    if (isTransforming)
        return false;
    isTransforming = true;
    showTransformProgress();
    if (!printText) {
        printText = new QTextEdit(this);
        printText->hide();
    }
    printText->setFixedSize(1000, 800);
    const QPointer<ParameterEditor> alive(this);
    ParameterPrint print(printText->document());
    print.begin(printHeads(*pages.first(), ParameterTable::tr("Function Code")));
    for (int i = 0; i < pages.size(); ++i) {
        print.addRows(printRows(*pages.at(i)));
        transformDialog->showValue(i);
        QCoreApplication::processEvents();
        if (!alive)
            return false;
    }
    print.finish();
    printText->setAlignment(Qt::AlignCenter);
    isTransforming = false;
    return true;
}

void ParameterEditor::doPrintPreviewSlot()
{
    if (!transformPages())
        return;
    QPrinter printer(QPrinter::HighResolution);
    printer.setDocName(documentName);
    QPrintPreviewDialog preview(&printer);
    preview.setWindowFlags(preview.windowFlags() & Qt::WindowMaximizeButtonHint);
    connect(&preview, &QPrintPreviewDialog::paintRequested, this, &ParameterEditor::printPreviewSlot);
    const QPointer<ParameterEditor> alive(this);
    preview.exec();
    // The preview ends the dialog as it paints; a preview that never did must not leave it in the way.
    if (alive)
        finishTransformProgress();
}

void ParameterEditor::printPreviewSlot(QPrinter *printer)
{
    if (!printText || isTransforming)
        return;
    printParameters(*printText->document(), printer);
    finishTransformProgress();
}

bool ParameterEditor::mayReplace(const QString &fileName, const QString &title)
{
    const QString question = QFileDialog::tr("%1 already exists.\nDo you want to replace it?");
    return answerOf(QMessageBox::Warning, title, question.arg(QFileInfo(fileName).fileName()),
                    QMessageBox::Yes | QMessageBox::No, this) == QMessageBox::Yes;
}

void ParameterEditor::createPDFSlot()
{
    const QString title = tr("Create Parameter PDF");
    QString fileName = QFileDialog::getSaveFileName(this, title, QString(), QStringLiteral("*.pdf"));
    if (fileName.isEmpty())
        return;
    if (QFileInfo(fileName).suffix().isEmpty()) {
        fileName.append(QLatin1String(".pdf"));
        // The file dialog has asked about the name as it was.
        if (QFileInfo::exists(fileName) && !mayReplace(fileName, title))
            return;
    }
    if (!transformPages())
        return;
    const auto print = [this](QPrinter *printer) { printParameters(*printText->document(), printer); };
    // A file that can't be written is told to the log only: the user hears of the end of the run.
    if (!writePdfFile(fileName, documentName, print))
        qDebug().noquote() << "PDF: cannot write" << fileName;
    finishTransformProgress();
    answerOf(QMessageBox::Information, title, tr("Finish create Parameter PDF "), QMessageBox::Ok, this);
}
