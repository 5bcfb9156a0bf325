// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/runprogressdialog.h"

#include "widgets/drawingpace.h"

#include <QCloseEvent>
#include <QProgressBar>
#include <QWindow>

RunProgressDialog::RunProgressDialog(QWidget *parent)
    : QProgressDialog(parent)
{
    setModal(true);
    progressBar = new QProgressBar;
    setBar(progressBar);
    pace = new DrawingPace(progressBar);
    // By its text, and not by the button: a dialog whose text was never set gets a new button when the
    // language changes.
    setCancelButtonText(QString());
    QFont ownFont = font();
    ownFont.setPointSize(9);
    setFont(ownFont);
    // A progress dialog shows itself after four seconds unless it is told that nothing runs.
    reset();
}

void RunProgressDialog::showOver(QWidget *window)
{
    const QWidget *const top = window->window();
    winId(); // makes the native window
    windowHandle()->setTransientParent(top->windowHandle());
    adjustSize();
    move(top->frameGeometry().center() - rect().center());
    show();
}

void RunProgressDialog::showValue(int value)
{
    pace->touch();
    progressBar->setValue(value);
}

void RunProgressDialog::finish()
{
    reset();
}

void RunProgressDialog::reject()
{
    emit endRequested();
}

void RunProgressDialog::closeEvent(QCloseEvent *event)
{
    event->ignore();
    emit endRequested();
}
