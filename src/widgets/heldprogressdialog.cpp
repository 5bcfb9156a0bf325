// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/heldprogressdialog.h"

#include <QCloseEvent>
#include <QProgressBar>
#include <QWindow>

HeldProgressDialog::HeldProgressDialog(QWidget *parent)
    : QProgressDialog(parent)
{
    setModal(true);
    progressBar = new QProgressBar;
    setBar(progressBar);
    setCancelButton(nullptr);
    QFont ownFont = font();
    ownFont.setPointSize(9);
    setFont(ownFont);
    // A progress dialog shows itself after four seconds unless it is told that nothing runs.
    reset();
}

void HeldProgressDialog::showOver(QWidget *window)
{
    const QWidget *const top = window->window();
    winId(); // makes the native window
    windowHandle()->setTransientParent(top->windowHandle());
    adjustSize();
    move(top->frameGeometry().center() - rect().center());
    show();
}

void HeldProgressDialog::showValue(int value)
{
    progressBar->setValue(value);
}

void HeldProgressDialog::reject()
{
    if (isClosing)
        QProgressDialog::reject();
}

void HeldProgressDialog::closeEvent(QCloseEvent *event)
{
    if (event->spontaneous()) {
        event->ignore();
        return;
    }
    // A dialog is closed by way of reject().
    isClosing = true;
    QProgressDialog::closeEvent(event);
    isClosing = false;
}
