// SPDX-License-Identifier: GPL-3.0-or-later
// The platform's calculator and help viewer: all that differs by platform outside the link. Main thread.
#pragma once

#include <QString>
#include <QStringList>

class QProcess;

// Starts the platform's calculator in the process given, which is closed first if it runs one. Nothing is
// reported when there is none.
void startCalculator(QProcess *process);

// Opens the help file beside the executable in the platform's viewer; where there is no such file, the user
// guide of the configured language in the system's browser. Nothing is reported when neither can be shown.
void openHelp();

// The contents page of the guide that belongs to a program in the folder given: installed, in its build tree,
// or beside it. A language without a guide gets the English one; empty where there is none.
QString userGuide(const QString &programFolder, const QString &language);

// Names of calculators in the order of preference; the first installed one is started.
QStringList calculatorPrograms();
