// SPDX-License-Identifier: GPL-3.0-or-later
// The dialog in which the user picks the port and the speed. Main thread; owned by MainWindow, shown again
// and again.
#pragma once

#include <QDialog>

class QComboBox;
class QFrame;
class QRadioButton;

class CommunicationSetting : public QDialog
{
    Q_OBJECT

public:
    explicit CommunicationSetting(QWidget *parent = nullptr);
    ~CommunicationSetting() override;

signals:
    // The chosen entry, "description(name)", and the speed in baud; 100 stands for a USB link.
    void setPortName(QString portName, qint32 baud);

protected:
    void showEvent(QShowEvent *event) override;

private slots:
    void OnLineBtnToggled(bool toggled);
    void OffLineBtnToggled(bool toggled);
    void detecDeviceSlt();
    void getPortSlt();

private:
    void buildLayout();
    void buildModeFrame();

    QComboBox *deviceCombox = nullptr;
    QComboBox *portCombox = nullptr;
    QComboBox *baudCombox = nullptr;
    QFrame *modeFrame = nullptr; // has no parent and is never shown; deleted here
    QRadioButton *onLineButton = nullptr;
    QRadioButton *offLineButton = nullptr;
};
