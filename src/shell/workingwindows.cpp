// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/workingwindows.h"

#include "gaintuning/gaintuning.h"
#include "link/serialport.h"
#include "monitor/parameter_monitor.h"
#include "parameter/parametereditor.h"
#include "scope/scope.h"
#include "shell/mainwindow.h"
#include "trialrun/trialrun.h"

#include <QComboBox>
#include <QMdiArea>
#include <QMdiSubWindow>

#include <algorithm>
#include <array>
#include <cstring>

namespace {

template <typename Window>
QWidget *make(SerialPort *)
{
    return new Window;
}

// What every window that asks the drive through the queue has.
template <typename Window>
void connectRequests(Window *window, SerialPort *link, MainWindow *shell)
{
    QObject::connect(window, qOverload<QByteArray, QString>(&Window::writeToSerialPort), link,
                     &SerialPort::writeSlot);
    QObject::connect(window, &Window::windowStateChanged, shell, &MainWindow::subwindowStateChanged);
}

QSize editorSize(const QSize &area)
{
    return {int(area.width() * 0.9), int(area.height() * 0.9)};
}

void connectEditor(QWidget *widget, SerialPort *link, MainWindow *shell)
{
    auto *const editor = static_cast<ParameterEditor *>(widget);
    connectRequests(editor, link, shell);
    QObject::connect(editor, &ParameterEditor::withdrawRequests, link, &SerialPort::withdraw);
    QObject::connect(link, &QThread::finished, editor, &ParameterEditor::linkEnded);
    QObject::connect(link, &SerialPort::handleBaseParameter, editor, &ParameterEditor::handleBaseParameter);
    QObject::connect(editor, &ParameterEditor::subWindowClosed, shell, &MainWindow::hidePrintAct);
    QObject::connect(shell, &MainWindow::doPrint, editor, [shell, editor] {
        if (shell->isInFront(editor))
            editor->doPrintPreviewSlot();
    });
    shell->showPrintAct();
}

QSize trialRunSize(const QSize &)
{
    return {980, 650};
}

void connectTrialRun(QWidget *widget, SerialPort *link, MainWindow *shell)
{
    auto *const trialRun = static_cast<TrialRun *>(widget);
    connectRequests(trialRun, link, shell);
    QObject::connect(link, &SerialPort::handleTrialRun, trialRun, &TrialRun::handleTrialRun);
    QObject::connect(link, &QThread::finished, trialRun, &TrialRun::linkEnded);
    QObject::connect(trialRun, &TrialRun::withdrawRequests, link, &SerialPort::withdraw);
    QObject::connect(trialRun, &TrialRun::closeTrialRunWindow, shell, &MainWindow::closeTrialRunWindow);
}

QSize gainTuningSize(const QSize &area)
{
    return {1000, int(area.height() * 0.85)};
}

void connectGainTuning(QWidget *widget, SerialPort *link, MainWindow *shell)
{
    auto *const window = static_cast<GainTuning *>(widget);
    connectRequests(window, link, shell);
    QObject::connect(link, &SerialPort::handleGaintuning, window, &GainTuning::handleGaintuning);
}

QWidget *makeMonitor(SerialPort *link)
{
    return new Parameter_Monitor(link);
}

QSize monitorSize(const QSize &area)
{
    return {area.width() - 50, int(area.height() * 0.99)};
}

void connectMonitor(QWidget *widget, SerialPort *link, MainWindow *shell)
{
    auto *const window = static_cast<Parameter_Monitor *>(widget);
    connectRequests(window, link, shell);
    QObject::connect(window, &Parameter_Monitor::withdrawRequests, link, &SerialPort::withdraw);
    QObject::connect(link, &SerialPort::handleParameterMonitor, window,
                     &Parameter_Monitor::handleParameterMonitor);
    QObject::connect(link, &SerialPort::handlefault, window, &Parameter_Monitor::handleFalutHistory);
    // The wheel must not change a setting of the drive by accident.
    const QList<QComboBox *> boxes = window->findChildren<QComboBox *>();
    for (QComboBox *box : boxes)
        box->installEventFilter(shell);
}

QSize scopeSize(const QSize &)
{
    return {900, 685};
}

void connectScope(QWidget *widget, SerialPort *link, MainWindow *shell)
{
    auto *const scope = static_cast<Scope *>(widget);
    QObject::connect(link, &SerialPort::handleParameterScope, scope, &Scope::handleParameterScope);
    QObject::connect(scope, &Scope::writeToSerialPort, link, &SerialPort::writeScopeData);
    QObject::connect(scope, &Scope::scopeRuning, shell, &MainWindow::scopeIsRunning);
    QObject::connect(scope, &Scope::scopeRuning, link, &SerialPort::scopeIsRunning);
    QObject::connect(scope, &Scope::windowStateChanged, shell, &MainWindow::subwindowStateChanged);
    QObject::connect(link, &SerialPort::stopscope, scope, &Scope::runActSlot);
}

const std::array<WorkingWindow, 5> windows{{
    {workingwindow::parameterEditor, ":/pic/pic/Parameter.png", editorSize, make<ParameterEditor>,
     connectEditor},
    {workingwindow::gainTuning, ":/pic/pic/gain.png", gainTuningSize, make<GainTuning>, connectGainTuning},
    {workingwindow::monitor, ":/pic/pic/StatusMonitor.png", monitorSize, makeMonitor, connectMonitor},
    {workingwindow::trialRun, ":/pic/pic/trialrun.png", trialRunSize, make<TrialRun>, connectTrialRun},
    {workingwindow::scope, ":/pic/pic/scope.png", scopeSize, make<Scope>, connectScope},
}};

} // namespace

const WorkingWindow *findWorkingWindow(const char *className)
{
    const auto *const found = std::find_if(windows.begin(), windows.end(), [className](const auto &window) {
        return std::strcmp(window.className, className) == 0;
    });
    return found == windows.end() ? nullptr : found;
}

QMdiSubWindow *findSubWindow(const QMdiArea *area, const char *className)
{
    const QList<QMdiSubWindow *> open = area->subWindowList();
    for (QMdiSubWindow *window : open) {
        if (window->widget() && window->widget()->inherits(className))
            return window;
    }
    return nullptr;
}
