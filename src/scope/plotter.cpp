// SPDX-License-Identifier: GPL-3.0-or-later
#include "scope/plotter.h"

#include "scope/plotdialogs.h"
#include "scope/spectrumwindow.h"
#include "scope/yranges.h"
#include "widgets/messages.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPointer>
#include <QToolButton>
#include <QWheelEvent>

#include <utility>

namespace {

constexpr int refreshInterval = 200; // ms

} // namespace

Plotter::Plotter(QWidget *parent)
    : PlotPicture(parent)
    , spectrumWindow(new SpectrumWindow(this))
{
    connect(buttons.backButton, &QToolButton::clicked, this, &Plotter::backButtonSlot);
    connect(buttons.advanceButton, &QToolButton::clicked, this, &Plotter::advanceButtonSlot);
    refreshTimer.setInterval(refreshInterval);
    connect(&refreshTimer, &QTimer::timeout, this, &Plotter::runTimerOutSlot);
    loadYRange();
}

void Plotter::pushView(const PlotSettings &settings)
{
    history.push(settings);
    refreshPixmap();
}

void Plotter::pushMeasuredView(const PlotSettings &settings)
{
    if (measurement.isXOn())
        measurement.markDirty();
    pushView(settings);
}

void Plotter::setCoordinate(bool individual)
{
    switches.individualCoordinate = individual;
    pushView(viewrules::withCoordinate(history.current(), data, switches));
}

void Plotter::showAllDataSlot()
{
    pushMeasuredView(viewrules::showingAll(data, switches));
}

void Plotter::showAllAdjust()
{
    pushMeasuredView(viewrules::adjusted(data, switches));
}

void Plotter::clearPlot()
{
    history.clear();
    data.clear();
    curveMap.clear();
    emit sendMoveLineYSignal(data.lastValue);
    refreshPixmap();
}

void Plotter::setLive(bool on)
{
    if (!on) {
        // What came since the last tick belongs to the picture that stays; a short replay has had no tick at
        // all.
        if (refreshTimer.isActive())
            runTimerOutSlot();
        refreshTimer.stop();
        return;
    }
    measurement.clearTag();
    refreshPixmap();
    if (!refreshTimer.isActive())
        refreshTimer.start();
    plotThread.begin();
}

void Plotter::saveYRange()
{
    storeYRanges(history.current());
}

void Plotter::loadYRange()
{
    if (areYRangesKept())
        history.push(storedYRanges());
    refreshPixmap();
}

void Plotter::setXMeasurement(bool on)
{
    measurement.setXOn(on, context());
    refreshPixmap();
}

void Plotter::setYMeasurement(bool on)
{
    measurement.setYOn(on, context());
    refreshPixmap();
}

void Plotter::showFFT()
{
    if (!isStopped || !measurement.isXOn()) {
        showMessage(tr("Failed to calculate the FFT \nPlease Turn on the X-Axis measurement"));
        return;
    }
    fft transformer;
    const PlotContext now = context();
    for (int c = 0; c < plotChannels; ++c) {
        if (switches.visible.at(c))
            spectrumWindow->showSpectrum(c, spectrumOf(measurement.samplesBetween(c, now), &transformer),
                                         colors.at(c));
        else
            spectrumWindow->clear(c);
    }
    spectrumWindow->bringUp();
}

void Plotter::saveImage()
{
    saveWidgetImage(this);
}

void Plotter::receivePlotterDataScopeSlot(const QVector<double> &data1, const QVector<double> &data2,
                                          const QVector<double> &data3, const QVector<double> &data4)
{
    data.receive({data1, data2, data3, data4}, switches.visible);
}

void Plotter::runTimerOutSlot()
{
    data.followSpan();
    takeCurves();
    if (switches.autoAdjust)
        showAllAdjust();
    else
        pushView(viewrules::rolled(history.current(), data, switches));
}

void Plotter::advanceButtonSlot()
{
    if (!history.canAdvance())
        return;
    history.advance();
    measurement.markDirty();
    refreshPixmap();
}

void Plotter::backButtonSlot()
{
    if (!history.canGoBack())
        return;
    history.goBack();
    measurement.markDirty();
    refreshPixmap();
}

void Plotter::showZoomIn()
{
    const QPointer<Plotter> self(this);
    showZoomInHints(ViewSwitches(switches));
    if (self)
        pushMeasuredView(viewrules::zoomedIn(history.current(), switches));
}

void Plotter::showZoomOut()
{
    const QPointer<Plotter> self(this);
    showZoomOutHints(ViewSwitches(switches));
    if (self)
        pushMeasuredView(viewrules::zoomedOut(history.current(), data, switches));
}

void Plotter::moveUp()
{
    history.current() = viewrules::movedUp(history.current(), switches);
    refreshPixmap();
}

void Plotter::moveDown()
{
    history.current() = viewrules::movedDown(history.current(), switches);
    refreshPixmap();
}

void Plotter::moveLeft()
{
    pushMeasuredView(viewrules::movedLeft(history.current(), data, switches));
}

void Plotter::moveRight()
{
    pushMeasuredView(viewrules::movedRight(history.current(), data, switches));
}

void Plotter::scrollAll(int dx, int dy)
{
    history.current().scroll(dx, dy);
    if (dx != 0)
        measurement.markDirty();
    refreshPixmap();
}

void Plotter::receiveScopIsStopSlot(bool flag)
{
    isStopped = flag;
    if (!flag) {
        endRubberBand();
        measurement.letGo();
        measurement.clearLayers();
    }
    refreshPixmap();
}

void Plotter::closeEvent(QCloseEvent *event)
{
    refreshTimer.stop();
    plotThread.end();
    clearPlot();
    QWidget::closeEvent(event);
}

void Plotter::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton || !isStopped)
        return;
    const PlotContext now = context();
    if (now.geometry.isDrawable() && now.geometry.plotRect().contains(event->pos())) {
        rubberBand.begin(event->pos());
        update(rubberBand.edges());
        setCursor(Qt::CrossCursor);
    }
    measurement.press(event->pos(), now);
}

void Plotter::mouseMoveEvent(QMouseEvent *event)
{
    if (rubberBand.isShown()) {
        update(rubberBand.edges());
        rubberBand.moveTo(event->pos());
        update(rubberBand.edges());
    } else if (isStopped) {
        const QRegion changed = measurement.drag(event->pos(), context(), &data.lastValue);
        if (changed.isEmpty())
            return;
        emit sendMoveLineYSignal(data.lastValue);
        update(changed);
    }
}

void Plotter::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton && rubberBand.isShown()) {
        endRubberBand();
        measurement.clearTag();
        refreshPixmap();
        if (rubberBand.isLargeEnough())
            pushMeasuredView(
                viewrules::zoomedTo(rubberBand.band(), history.current(), data, context().geometry));
    } else if (event->button() == Qt::LeftButton) {
        measurement.release(event->pos(), context());
        measurement.clearTag();
        refreshPixmap();
    } else if (event->button() == Qt::RightButton && isStopped &&
               cursorrules::isInPlotArea(event->pos(), context().geometry)) {
        measurement.showTag(event->pos(), context());
        update();
    }
}

void Plotter::endRubberBand()
{
    if (!rubberBand.isShown())
        return;
    rubberBand.end();
    unsetCursor();
    update();
}

void Plotter::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Plus:
        advanceButtonSlot();
        break;
    case Qt::Key_Minus:
        backButtonSlot();
        break;
    case Qt::Key_Left:
        scrollAll(-1, 0);
        break;
    case Qt::Key_Right:
        scrollAll(1, 0);
        break;
    case Qt::Key_Down:
        scrollAll(0, -1);
        break;
    case Qt::Key_Up:
        scrollAll(0, 1);
        break;
    default:
        QWidget::keyPressEvent(event);
    }
}

void Plotter::wheelEvent(QWheelEvent *event)
{
    if (!isStopped)
        return;
    scrollAll(event->angleDelta().x() / QWheelEvent::DefaultDeltasPerStep,
              event->angleDelta().y() / QWheelEvent::DefaultDeltasPerStep);
}
