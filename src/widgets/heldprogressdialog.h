// SPDX-License-Identifier: GPL-3.0-or-later
// A modal progress dialog without a cancel button that the user cannot put away: it keeps the windows behind
// it from starting a second transfer while one runs. Main thread.
#pragma once

#include <QProgressDialog>

class QProgressBar;

class HeldProgressDialog : public QProgressDialog
{
    Q_OBJECT

public:
    explicit HeldProgressDialog(QWidget *parent = nullptr);

    // Shows the dialog in the middle of this window and stacked above it: a dialog stacked above another
    // window brings that one to the front with it.
    void showOver(QWidget *window);
    // Sets the bar at once. The dialog's own setValue() runs events first, in which the next reply would be
    // handled before this one is done with, or the dialog itself deleted.
    void showValue(int value);

public slots:
    // The escape key ends here; close() still closes.
    void reject() override;

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    QProgressBar *progressBar = nullptr;
    bool isClosing = false;
};
