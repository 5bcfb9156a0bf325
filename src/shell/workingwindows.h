// SPDX-License-Identifier: GPL-3.0-or-later
// The table of the working windows: what the shell must know of each kind to open it, to find it again and to
// wire it. Constant data; main thread.
#pragma once

#include <QSize>
#include <QString>

class MainWindow;
class QMdiArea;
class QMdiSubWindow;
class QWidget;
class SerialPort;

struct WorkingWindow
{
    const char *className; // the kind: a window is found by its class, never by its title
    const char *icon;
    QSize (*size)(const QSize &area);
    QWidget *(*create)(SerialPort *link); // without a parent
    // Makes the window's connections to the link and to the shell.
    void (*connectTo)(QWidget *window, SerialPort *link, MainWindow *shell);
};

// The classes that the shell asks for by name.
namespace workingwindow {

constexpr char parameterEditor[] = "ParameterEditor";
constexpr char gainTuning[] = "GainTuning";
constexpr char scope[] = "Scope";
constexpr char trialRun[] = "TrialRun";

} // namespace workingwindow

// The row of a class; null where there is none.
const WorkingWindow *findWorkingWindow(const char *className);

// The open sub-window whose widget is of this class, or null.
QMdiSubWindow *findSubWindow(const QMdiArea *area, const char *className);
