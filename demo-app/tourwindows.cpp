// SPDX-License-Identifier: GPL-3.0-or-later
#include "demo-app/tourwindows.h"

const std::vector<TourWindow> &tourWindows()
{
    static const char *const brokenBuild = "comes only when a file is missing in the program itself";
    static const std::vector<TourWindow> windows{
        {"gaintuning/gainfieldwidgets.cpp", "QMessageBox"},
        {"gaintuning/gaintuning.ui", "GainTuning"},
        {"link/communicationsetting.cpp", "CommunicationSetting"},
        {"link/serialport.cpp", "QMessageBox"},
        {"monitor/control_run.cpp", "QMessageBox"},
        {"monitor/monitorpanel.cpp", "QMessageBox", brokenBuild},
        {"monitor/parameter_monitor.cpp", "Parameter_Monitor"},
        {"parameter/offlinenotice.cpp", "QMessageBox"},
        {"parameter/parameterbatch.cpp", "ParameterBatch"},
        {"parameter/parameterbatchcontrol.cpp", "QFileDialog"},
        {"parameter/parameterbatchcontrol.cpp", "QMessageBox"},
        {"parameter/parametereditor.cpp", "ParameterEditor"},
        {"parameter/parameterfiledialogs.cpp", "QFileDialog"},
        {"parameter/parameterfiledialogs.cpp", "QMessageBox"},
        {"parameter/parameterprintcontrol.cpp", "QFileDialog"},
        {"parameter/parameterprintcontrol.cpp", "QMessageBox"},
        {"parameter/parameterprintcontrol.cpp", "QPrintPreviewDialog"},
        {"parameter/parameterprintcontrol.cpp", "RunProgressDialog"},
        {"parameter/parameterrundisplay.cpp", "QMessageBox"},
        {"parameter/parameterrundisplay.cpp", "RunProgressDialog"},
        {"parameter/parametersettinghelper.cpp", "ParameterSettingHelper"},
        {"parameter/parametersettinghelper.cpp", "QMessageBox"},
        {"parameter/parametertable.cpp", "QMenu"},
        {"parameter/parametertoolbar.cpp", "QMenu"},
        {"scope/plotdialogs.cpp", "QFileDialog"},
        {"scope/plotdialogs.cpp", "QMessageBox"},
        {"scope/plotter.cpp", "QMessageBox"},
        {"scope/scope.cpp", "QMessageBox"},
        {"scope/scopefiles.cpp", "QFileDialog"},
        {"scope/scopefiles.cpp", "QMessageBox"},
        {"scope/scopewindow.cpp", "QColorDialog"},
        {"scope/scopewindow.cpp", "QMessageBox", brokenBuild},
        {"scope/scopewindow.cpp", "ScopeWindow"},
        {"scope/spectrumwindow.cpp", "SpectrumWindow"},
        {"shell/mainwindow.cpp", "MainWindow"},
        {"shell/mainwindow.cpp", "QMessageBox"},
        {"shell/mainwindow.ui", "QMenu"},
        {"trialrun/trialrun.cpp", "QMessageBox"},
        {"trialrun/trialrun.cpp", "TrialRun"},
    };
    return windows;
}
