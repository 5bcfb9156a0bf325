// SPDX-License-Identifier: GPL-3.0-or-later
// A modal progress dialog that its run alone puts away: the user's Escape or close asks the run to end. It
// keeps the windows behind it from starting a second run. Main thread; owned by the window of the run.
#pragma once

#include <QProgressDialog>

class DrawingPace;
class QProgressBar;

class RunProgressDialog : public QProgressDialog
{
    Q_OBJECT

public:
    explicit RunProgressDialog(QWidget *parent = nullptr);

    // Shows the dialog in the middle of this window and stacked above it: a dialog stacked above another
    // window brings that one to the front with it.
    void showOver(QWidget *window);
    // Sets the bar at once. The dialog's own setValue() runs events first, in which the next reply would be
    // handled before this one is done with, or the dialog itself deleted.
    void showValue(int value);
    // Puts the dialog away.
    void finish();

signals:
    // The user has pressed Escape or closed the dialog, which stays until finish().
    void endRequested();

public slots:
    // The escape key ends here.
    void reject() override;

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    QProgressBar *progressBar = nullptr;
    DrawingPace *pace = nullptr; // of the bar
};
