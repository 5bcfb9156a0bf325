// SPDX-License-Identifier: GPL-3.0-or-later
// Shows how far a run of the editor's transfer is, in a dialog over the window that has started it, and tells
// how it ended. Main thread; owned by ParameterEditor.
#pragma once

#include "parameter/parametertransfer.h"

#include <QObject>

class RunProgressDialog;
class QWidget;

class ParameterRunDisplay : public QObject
{
    Q_OBJECT

public:
    // Listens to the transfer from now on, and ends its run when the dialog is closed.
    ParameterRunDisplay(ParameterTransfer *parameterTransfer, QWidget *editorWindow, QWidget *batchWindow);

private:
    void showProgress(int value, int total);
    void tellEnd(ParameterTransfer::End end);

    ParameterTransfer *const transfer;
    QWidget *const editor;
    QWidget *const batch;
    RunProgressDialog *const dialog;
};
