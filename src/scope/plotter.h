// SPDX-License-Identifier: GPL-3.0-or-later
// The picture of the wave as the user works it: takes the samples of a run, the commands of the window, mouse
// and keys, and keeps the history of views. What a view is, what a cursor measures and how curves are drawn
// stand in classes beside it. Main thread; owned by the scope window, which closes it.
#pragma once

#include "scope/plotpicture.h"

#include <QTimer>

class SpectrumWindow;

class Plotter : public PlotPicture
{
    Q_OBJECT

public:
    explicit Plotter(QWidget *parent = nullptr);

    void setCoordinate(bool individual);
    void showAllAdjust();
    void clearPlot();
    void setLive(bool on);
    // The y ranges in the settings file, for the next start.
    void saveYRange();
    void loadYRange();
    void setXMeasurement(bool on);
    void setYMeasurement(bool on);
    void showFFT();
    // Asks for a file and saves the picture into it.
    void saveImage();

public slots:
    void receivePlotterDataScopeSlot(const QVector<double> &data1, const QVector<double> &data2,
                                     const QVector<double> &data3, const QVector<double> &data4);
    void runTimerOutSlot();
    void advanceButtonSlot();
    void backButtonSlot();
    void showAllDataSlot();
    void showZoomIn();
    void showZoomOut();
    void moveUp();
    void moveDown();
    void moveLeft();
    void moveRight();
    void receiveScopIsStopSlot(bool flag);

signals:
    void writeToSerialPort(QByteArray cmd);
    void sendMoveLineYSignal(QVector<double> value);

protected:
    void closeEvent(QCloseEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;

private:
    void pushView(const PlotSettings &settings);
    // The same on a picture that cursors may stand on: their statistics follow the new view.
    void pushMeasuredView(const PlotSettings &settings);
    void scrollAll(int dx, int dy);
    void endRubberBand();

    QTimer refreshTimer;
    SpectrumWindow *spectrumWindow = nullptr;
};
