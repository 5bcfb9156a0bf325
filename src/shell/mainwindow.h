// SPDX-License-Identifier: GPL-3.0-or-later
// The shell: menus, the tool bar, the area of the working windows, and the link that they share.
// Main thread; made by start-up, one a process.
#pragma once

#include <QMainWindow>
#include <QPixmap>

#include <memory>
#include <optional>

class CommunicationSetting;
class QLabel;
class QMdiArea;
class QProcess;
class QTranslator;
class SerialPort;

namespace Ui {
class MainWindow;
}

class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    // The title without a window's name behind it.
    static const QString baseTitle;

    // Keeps the translator, loaded or not, for the language actions.
    explicit MainWindow(QTranslator *translator, QWidget *parent = nullptr);
    ~MainWindow() override;

    // Belongs to an action that no menu shows; does nothing.
    void on_actionUser_Guide_triggered();

    // True when the sub-window in front holds this widget: a command of the menu is meant for it alone.
    bool isInFront(const QWidget *widget) const;
    void showPrintAct();

signals:
    void doPrint();

public slots:
    void updateMenus();
    void servoONOFFLine(bool state);
    void showCommunicationLost();
    void hidePrintAct();
    void changeCursor();
    void scopeIsRunning(bool isRunning);
    void closeTrialRunWindow();
    void subwindowStateChanged(QString title);

    void on_actionPrint_triggered();
    void on_actionExit_triggered();
    void on_actionSimplified_Chinese_triggered();
    void on_actionEnglish_triggered();
    void on_actionCommunication_triggered();
    void on_actionParameter_Editor_triggered();
    void on_actionParameter_Monitor_triggered();
    void on_actionStatus_Monitor_triggered();
    void on_actionTrial_run_triggered();
    void on_actionGain_Tuning_triggered();
    void on_actionData_Scope_triggered();
    void on_actionScope_triggered();
    void on_actionCascade_triggered();
    void on_actionTitle_Horizontally_triggered();
    void on_actionTitle_Vertically_triggered();
    void on_actionMinimize_All_triggered();
    void on_actionCalculation_triggered();
    void on_actionAbout_triggered();
    void on_actionSoftware_Guide_triggered();

protected:
    void closeEvent(QCloseEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void changeEvent(QEvent *event) override;
    bool event(QEvent *event) override;
    bool eventFilter(QObject *object, QEvent *event) override;

private:
    // Makes the window of this class, or the one that is open the active one.
    void openWorkingWindow(const char *className);
    bool refusesToClose();
    void saveSettings() const;
    void askForRestart();

    std::unique_ptr<Ui::MainWindow> ui;
    QMdiArea *mdiArea = nullptr;
    QTranslator *translator = nullptr;
    SerialPort *serialPort = nullptr;
    QProcess *calcProcess = nullptr;
    CommunicationSetting *communicationDialog = nullptr;
    QLabel *onlineLabel = nullptr;
    QPixmap onlinePixmap;
    QString shownTitle = baseTitle;
    std::optional<bool> onlineState; // what the indicator shows
    bool scopeStopped = true;
};
