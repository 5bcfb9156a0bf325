// SPDX-License-Identifier: GPL-3.0-or-later
// The picture of the wave as it stands: which view of which samples it shows and how it looks, and the layers
// of grid, curves, cursors and tag that it is stacked of. What changes it, the run and the user, stands in
// Plotter. Main thread; the base of Plotter.
#pragma once

#include "scope/historybuttons.h"
#include "scope/measurement.h"
#include "scope/plotdata.h"
#include "scope/plotgrid.h"
#include "scope/plotsettings.h"
#include "scope/plotthread.h"
#include "scope/rubberband.h"
#include "scope/viewhistory.h"
#include "scope/viewrules.h"

#include <QImage>
#include <QWidget>

class PlotPicture : public QWidget
{
    Q_OBJECT

public:
    explicit PlotPicture(QWidget *parent = nullptr);
    ~PlotPicture() override;

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

    const PlotData &plotData() const { return data; }
    const ViewHistory &viewHistory() const { return history; }
    const ViewSwitches &viewSwitches() const { return switches; }

public slots:
    void receiveIamge(const QImage &image1);

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

    // What the layers are drawn from at this moment.
    PlotContext context() const;
    void refreshPixmap();
    // The samples that have come reach the curves.
    void takeCurves();

    PlotData data;
    ViewHistory history;
    ViewSwitches switches;
    QVector<QColor> colors;
    bool isStopped = true; // no live data

    Measurement measurement;
    RubberBand rubberBand;
    QMap<int, PointTrack> curveMap; // of the last refresh tick
    PlotThread plotThread{this};
    HistoryButtons buttons{this};

private:
    QColor backgroundColor = Qt::white;
    QColor lineColor = Qt::black;
    GridLayer grid;
    QImage curveImage;
};
