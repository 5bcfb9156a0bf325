// SPDX-License-Identifier: GPL-3.0-or-later
// The picture of the wave: stacks the layers of grid, curves, cursors and tag, takes mouse and keys, and
// keeps the samples and the history of views. What a view is, what a cursor measures and how curves are drawn
// stand in classes beside it. Main thread; owned by the scope window, which closes it.
#pragma once

#include "scope/measurement.h"
#include "scope/plotdata.h"
#include "scope/plotsettings.h"
#include "scope/plotthread.h"
#include "scope/viewhistory.h"
#include "scope/viewrules.h"

#include <QImage>
#include <QPixmap>
#include <QTimer>
#include <QWidget>

class QToolButton;
class SpectrumWindow;

class Plotter : public QWidget
{
    Q_OBJECT

public:
    explicit Plotter(QWidget *parent = nullptr);
    ~Plotter() override;

    QSize sizeHint() const override { return {600, 400}; }
    QSize minimumSizeHint() const override { return {300, 200}; }

    // Channels count from 0. All but setDecimals(), setAutoAdjust() and, unless asked to, setVisibleAll()
    // refresh.
    using QWidget::setVisible;
    void setPlotSettings(const PlotSettings &settings); // becomes the only view of the history
    void setColors(const QColor &color1, const QColor &color2, const QColor &color3, const QColor &color4);
    void setColor(int channel, const QColor &color);
    // 0 to 3: the channel zooms and shifts; 4: zoom acts on the time axis; 5: on the value axis; 6: grid
    // lines.
    void setOption(int index, bool flag);
    void setVisibleAll(bool f1, bool f2, bool f3, bool f4, bool refresh);
    void setVisible(int channel, bool flag);
    void setBackground(const QColor &color); // its inverse colours grid and frame
    void setDecimals(int channel, int n);
    void setAutoAdjust(bool on);
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

    const PlotData &plotData() const { return data; }
    const ViewHistory &viewHistory() const { return history; }
    const ViewSwitches &viewSwitches() const { return switches; }

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
    void receiveIamge(const QImage &image1);
    void receiveScopIsStopSlot(bool flag);

signals:
    void writeToSerialPort(QByteArray cmd);
    void sendMoveLineYSignal(QVector<double> value);

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;

private:
    // What the layers are drawn from at this moment.
    PlotContext context() const;
    void refreshPixmap();
    void pushView(const PlotSettings &settings);
    // The same on a picture that cursors may stand on: their statistics follow the new view.
    void pushMeasuredView(const PlotSettings &settings);
    void scrollAll(int dx, int dy);
    // One box for all channels where no axis is chosen, one where no channel is. False when the plot has been
    // deleted meanwhile.
    bool showZoomHints(const QString &noAxis, const QString &noChannel);
    void takeCurves();
    void updateBandEdges();
    void endRubberBand();

    PlotData data;
    ViewHistory history;
    ViewSwitches switches;
    QVector<QColor> colors;
    QColor backgroundColor = Qt::white;
    QColor lineColor = Qt::black;

    Measurement measurement;
    bool isStopped = true; // no live data
    bool rubberBandShown = false;
    QRect rubberBandRect;

    QMap<int, PointTrack> curveMap; // of the last refresh tick
    QPixmap gridPixmap;
    QImage curveImage;
    PlotThread plotThread{this};
    QTimer refreshTimer;
    QToolButton *backButton = nullptr;
    QToolButton *advanceButton = nullptr;
    SpectrumWindow *spectrumWindow = nullptr;
};
