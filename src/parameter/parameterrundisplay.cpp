// SPDX-License-Identifier: GPL-3.0-or-later
#include "parameter/parameterrundisplay.h"

#include "parameter/parametereditor.h"
#include "widgets/messages.h"
#include "widgets/runprogressdialog.h"

ParameterRunDisplay::ParameterRunDisplay(ParameterTransfer *parameterTransfer, QWidget *editorWindow,
                                         QWidget *batchWindow)
    : QObject(editorWindow)
    , transfer(parameterTransfer)
    , editor(editorWindow)
    , batch(batchWindow)
    , dialog(new RunProgressDialog(editorWindow))
{
    connect(transfer, &ParameterTransfer::progress, this, &ParameterRunDisplay::showProgress);
    connect(transfer, &ParameterTransfer::ended, this, &ParameterRunDisplay::tellEnd);
    connect(dialog, &RunProgressDialog::endRequested, transfer, &ParameterTransfer::cancel);
}

void ParameterRunDisplay::showProgress(int value, int total)
{
    if (dialog->isHidden()) {
        dialog->setRange(0, total + 1);
        dialog->setLabelText(transfer->isWriting() ? ParameterEditor::tr("Writing...")
                                                   : ParameterEditor::tr("Reading..."));
        dialog->showOver(transfer->isBatchRun() ? batch : editor);
    }
    dialog->showValue(value);
}

void ParameterRunDisplay::tellEnd(ParameterTransfer::End end)
{
    dialog->finish();
    switch (end) {
    case ParameterTransfer::End::ReadDone:
        showMessage(ParameterEditor::tr("Parameters reading completed"));
        break;
    case ParameterTransfer::End::WriteDone:
    case ParameterTransfer::End::BatchWriteDone:
        showMessage(ParameterEditor::tr("Parameters writing completed"));
        break;
    case ParameterTransfer::End::RequestTimeout:
        showMessage(ParameterEditor::tr("Request Timeout!"));
        break;
    case ParameterTransfer::End::WriteTimeout:
        showMessage(ParameterEditor::tr("Write Timeout!"));
        break;
    case ParameterTransfer::End::SilentTimeout:
    case ParameterTransfer::End::Cancelled:
        break;
    }
}
