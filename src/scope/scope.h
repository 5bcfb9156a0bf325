// SPDX-License-Identifier: GPL-3.0-or-later
// The four-channel oscilloscope window: passes what the user does to the run, the plot and the files, and
// shows what they say. Main thread; a sub-window of MainWindow that deletes itself on close.
#pragma once

#include "scope/scopeacquisition.h"
#include "scope/scopewindow.h"

#include <QVector>

class ScopeReplay;

class Scope : public ScopeWindow
{
    Q_OBJECT

public:
    explicit Scope(QWidget *parent = nullptr);
    ~Scope() override;

signals:
    // A frame of the stream's control for the link, under the name "Scope"; an empty one withdraws what the
    // link has not sent yet.
    void writeToSerialPort(QByteArray data, QString windowName = QString());
    void sendPlotterDataSignal(QVector<double> data1, QVector<double> data2, QVector<double> data3,
                               QVector<double> data4);
    void sendScopeIsStopSignal(bool isStop);
    void scopeRuning(bool isRuning);

public slots:
    // Starts or stops by the state. Called by the link's stopscope() it stops only.
    void runActSlot();
    void handleParameterScope(QByteArray b);
    void closeWindowSlot();
    void readFilePlot(QVector<double> saveData);
    void readFinishSlot();
    void getPnValue(QString pn);
    void openFailed();
    void saveWaveData();
    void readDataSlot();

protected:
    void closeEvent(QCloseEvent *event) override;

private slots:
    void stopReceiveSlot();
    void clearSreenSlot();
    void communicationLostSlot();
    void setchannelConfigValueSlot(QVector<double> value);
    void comboxCurrentIndexChanged(int index);
    void hidePlot(bool state);
    void setStopCondition(bool enable);
    void radioButtonClicked();

private:
    void connectWidgets();
    void connectAcquisition();

    void startRun();
    void stopRun();
    bool isAskedByLink() const;
    void showEnd();
    void showBatch(const ScopeSamples &samples, int onlyChannel);
    void setRunLocked(bool locked);
    void tellIncompleteRecord();
    void startReplay(const QString &fileName);

    void send(const QByteArray &frame);

    ScopeAcquisition *acquisition = nullptr;
    ScopeReplay *replay = nullptr;
};
