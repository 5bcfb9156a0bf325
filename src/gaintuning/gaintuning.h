// SPDX-License-Identifier: GPL-3.0-or-later
// The window in which the drive's gains are tuned: inertia identification, gain mode with the rigidity
// grades, and the notch filters. Main thread; a sub-window of MainWindow that deletes itself on close.
#pragma once

#include <QByteArray>
#include <QMap>
#include <QWidget>

#include <memory>

class GainFieldWidgets;
class GainTuningLink;
class QTableWidgetItem;
class RigidityChart;

namespace Ui {
class GainTuning;
}

class GainTuning : public QWidget
{
    Q_OBJECT

public:
    explicit GainTuning(QWidget *parent = nullptr);
    ~GainTuning() override;

signals:
    void writeToSerialPort(QByteArray data, QString windowName);
    void writeToSerialPort(QByteArray data);
    // The title when the window becomes maximized, an empty text when it stops being so.
    void windowStateChanged(QString title);
    // Declared, never emitted. It hides the function of the base class.
    void resize();

public slots:
    void on_tableWidget_cellDoubleClicked(int row, int column);
    void on_radioButtonOffline_clicked(bool checked);
    void on_radioButtonOnline_clicked(bool checked);
    void on_spinBoxRigidityGrade_valueChanged(int arg1);
    void on_comBoxoffline_currentIndexChanged(int index);
    void on_comBoxGainMode_currentIndexChanged(int index);
    void on_btnCalculatedToCurrent_clicked();
    void on_pbtnSettingsToCurrent_clicked();
    void on_comBoxNotchMode_currentIndexChanged(int index);
    void on_pbtnSettingsToCurrent_Notch_clicked();
    // Takes a reply of the link and the register that its request named.
    void handleGaintuning(QByteArray reply, int address);
    // Fill the read lists of the three groups.
    void writeToSerial_ReadInertia();
    void writeToSerial_ReadGainMode();
    void writeToSerial_ReadVibration();
    // Begins the first read of everything.
    void writeToSerial();
    void on_comBoxonline_currentIndexChanged(int index);
    void on_tableWidget_itemChanged(QTableWidgetItem *item);
    // Ends the pause between two rounds.
    void timeout_count();

protected:
    bool eventFilter(QObject *object, QEvent *event) override;
    void changeEvent(QEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    void buildTable();
    void buildFocusRules();
    void connectLink();
    bool isInitialRead() const;
    void showValue(int address, quint32 value);
    void showMonitoredValue(int address, quint32 value);
    void endFirstRead();
    void showOnlineMode(bool isOnline);
    void showGainsOfGrade();
    QByteArray gainFrame(int field) const;
    // Writes count notches from this one (0 to 3) in one frame, and shows them as the current ones.
    QByteArray notchFrame(int notch, int count);

    std::unique_ptr<Ui::GainTuning> ui;
    std::unique_ptr<GainFieldWidgets> fields;
    GainTuningLink *link = nullptr;
    RigidityChart *chart = nullptr;
    int rigidityGrade = 0;
    int inertiaMode = 4;           // 4 torque wave, 5 JOG
    int gainMode = 1;              // 2 manual, 3 rigid table, 1 any other
    int notchMode = 9;             // 10 plus the index of the mode
    QMap<int, quint32> valuesRead; // by their registers, during the first read
    bool isClosing = false;
};
