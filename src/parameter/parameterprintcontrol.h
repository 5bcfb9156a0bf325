// SPDX-License-Identifier: GPL-3.0-or-later
// The editor's two ways to paper: the preview and the PDF file. Main thread; a child of ParameterEditor.
#pragma once

#include "parameter/parameterpages.h"

#include <QObject>

class QPrinter;
class QTextEdit;
class QWidget;
class RunProgressDialog;

class ParameterPrintControl : public QObject
{
    Q_OBJECT

public:
    // The dialogs stand over the window, which owns this.
    ParameterPrintControl(ParameterPages editorPages, QWidget *editorWindow);

    // Shows all pages as they would be printed, and prints them from there.
    void preview();
    // Paints the last printout; what the preview asks for.
    void paint(QPrinter *printer);
    // Asks for a name and writes all pages to a PDF file.
    void createPdf();

private:
    bool transform();
    void showProgress();
    void finishProgress();
    bool mayReplace(const QString &fileName, const QString &title);

    ParameterPages pages;
    QWidget *const window;
    QTextEdit *printText = nullptr; // never shown; holds the last printout
    RunProgressDialog *progressDialog = nullptr;
    bool isTransforming = false;
    bool isCancelled = false; // by Escape or by closing the progress dialog
};
