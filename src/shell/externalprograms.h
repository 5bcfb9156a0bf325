// SPDX-License-Identifier: GPL-3.0-or-later
// The platform's calculator and help viewer: all that differs by platform outside the link. Main thread.
#pragma once

#include <QString>
#include <QStringList>

class QProcess;

// Starts the platform's calculator in the process given, which is closed first if it runs one. Nothing is
// reported when there is none.
void startCalculator(QProcess *process);

// Opens the help file beside the executable in the platform's viewer, or the user guide where there is no
// such file. Nothing is reported when neither can be shown.
void openHelp();

// Names of calculators in the order of preference; the first installed one is started.
QStringList calculatorPrograms();
