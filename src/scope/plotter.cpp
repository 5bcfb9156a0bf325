// SPDX-License-Identifier: GPL-3.0-or-later
#include "scope/plotter.h"

#include "scope/plotdialogs.h"
#include "scope/plotgrid.h"
#include "scope/spectrumwindow.h"
#include "scope/yranges.h"
#include "widgets/messages.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPointer>
#include <QStyleOptionFocusRect>
#include <QStylePainter>
#include <QToolButton>
#include <QWheelEvent>

#include <utility>

namespace {

constexpr int refreshInterval = 200; // ms
constexpr int labelHeight = 10;      // pixels: the labels' rows stand that far apart
constexpr int smallestBand = 3;      // pixels; a smaller one is a click

QToolButton *makeHistoryButton(QWidget *parent, const QString &picture, const QString &toolTip)
{
    auto *button = new QToolButton(parent);
    button->setIcon(QIcon(picture));
    button->setToolTip(toolTip);
    button->adjustSize();
    button->hide();
    return button;
}

} // namespace

Plotter::Plotter(QWidget *parent)
    : QWidget(parent)
    , colors{QColor(255, 0, 0), QColor(85, 255, 127), QColor(255, 170, 255), QColor(255, 0, 255)}
{
    setBackgroundRole(QPalette::Dark);
    setAutoFillBackground(true);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    backButton = makeHistoryButton(this, QStringLiteral(":/pic/pic/撤销.png"), tr("Revocation"));
    advanceButton = makeHistoryButton(this, QStringLiteral(":/pic/pic/重做.png"), tr("Recover"));
    connect(backButton, &QToolButton::clicked, this, &Plotter::backButtonSlot);
    connect(advanceButton, &QToolButton::clicked, this, &Plotter::advanceButtonSlot);
    connect(&plotThread, &PlotThread::updateImage, this, &Plotter::receiveIamge);
    refreshTimer.setInterval(refreshInterval);
    connect(&refreshTimer, &QTimer::timeout, this, &Plotter::runTimerOutSlot);
    spectrumWindow = new SpectrumWindow(this);
    loadYRange();
}

Plotter::~Plotter()
{
    plotThread.end();
}

PlotContext Plotter::context() const
{
    QFont labelFont = font();
    labelFont.setPixelSize(labelHeight);
    return {data,
            history.current(),
            switches,
            colors,
            backgroundColor,
            lineColor,
            isStopped,
            {width() - 1, height() - 1},
            devicePixelRatioF(),
            labelFont};
}

void Plotter::refreshPixmap()
{
    advanceButton->setEnabled(history.canAdvance());
    backButton->setEnabled(history.canGoBack());
    const PlotContext now = context();
    gridPixmap = plotgrid::draw(now);
    update();
    if (!now.geometry.isDrawable()) {
        plotThread.setInputs(PlotInputs());
        return;
    }
    if (isStopped)
        measurement.drawStatistics(now);
    plotThread.setInputs({now.geometry.plotRect(), now.settings, width(), height(), now.pixelRatio, curveMap,
                          colors, switches.visible});
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

void Plotter::setPlotSettings(const PlotSettings &settings)
{
    history.reset(settings);
    refreshPixmap();
}

void Plotter::setColors(const QColor &color1, const QColor &color2, const QColor &color3,
                        const QColor &color4)
{
    colors = {color1, color2, color3, color4};
    refreshPixmap();
}

void Plotter::setColor(int channel, const QColor &color)
{
    colors[channel] = color;
    refreshPixmap();
}

void Plotter::setOption(int index, bool flag)
{
    if (index < plotChannels)
        switches.zoomChannel[index] = flag;
    else if (index == 4)
        switches.zoomTimeAxis = flag;
    else if (index == 5)
        switches.zoomValueAxis = flag;
    else
        switches.showGrid = flag;
    refreshPixmap();
}

void Plotter::setVisibleAll(bool f1, bool f2, bool f3, bool f4, bool refresh)
{
    switches.visible = {f1, f2, f3, f4};
    if (refresh)
        refreshPixmap();
}

void Plotter::setVisible(int channel, bool flag)
{
    switches.visible[channel] = flag;
    refreshPixmap();
}

void Plotter::setBackground(const QColor &color)
{
    backgroundColor = color;
    lineColor = QColor(255 - color.red(), 255 - color.green(), 255 - color.blue(), 255);
    refreshPixmap();
}

void Plotter::setDecimals(int channel, int n)
{
    switches.decimals[channel] = n;
}

void Plotter::setAutoAdjust(bool on)
{
    switches.autoAdjust = on;
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

void Plotter::takeCurves()
{
    for (int c = 0; c < plotChannels; ++c)
        if (!data.channelPoints[static_cast<size_t>(c)].isEmpty())
            curveMap[c] = data.channelPoints[static_cast<size_t>(c)];
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

void Plotter::receiveIamge(const QImage &image1)
{
    curveImage = image1;
    update();
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

void Plotter::paintEvent(QPaintEvent *)
{
    if (gridPixmap.devicePixelRatio() != devicePixelRatioF()) {
        // The window has moved to a screen of another resolution.
        measurement.resize(context());
        refreshPixmap();
    }
    QStylePainter painter(this);
    painter.drawPixmap(0, 0, gridPixmap);
    if (context().geometry.isDrawable())
        painter.drawImage(0, 0, curveImage);
    measurement.paint(&painter);
    if (rubberBandShown) {
        painter.setPen(lineColor);
        painter.drawRect(rubberBandRect.normalized().adjusted(0, 0, -1, -1));
    }
    if (hasFocus()) {
        QStyleOptionFocusRect option;
        option.initFrom(this);
        option.backgroundColor = palette().dark().color();
        painter.drawPrimitive(QStyle::PE_FrameFocusRect, option);
    }
}

void Plotter::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    advanceButton->move(width() - advanceButton->width() - 5, 5);
    backButton->move(advanceButton->x() - backButton->width() - 5, 5);
    measurement.resize(context());
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
        rubberBandShown = true;
        rubberBandRect = QRect(event->pos(), event->pos());
        updateBandEdges();
        setCursor(Qt::CrossCursor);
    }
    measurement.press(event->pos(), now);
}

void Plotter::mouseMoveEvent(QMouseEvent *event)
{
    if (rubberBandShown) {
        updateBandEdges();
        rubberBandRect.setBottomRight(event->pos());
        updateBandEdges();
    } else if (isStopped && measurement.drag(event->pos(), context(), &data.lastValue)) {
        emit sendMoveLineYSignal(data.lastValue);
        update();
    }
}

void Plotter::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton && rubberBandShown) {
        const QRect band = rubberBandRect.normalized();
        endRubberBand();
        measurement.clearTag();
        refreshPixmap();
        if (band.width() >= smallestBand && band.height() >= smallestBand)
            pushMeasuredView(viewrules::zoomedTo(band, history.current(), data, context().geometry));
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
    if (!rubberBandShown)
        return;
    rubberBandShown = false;
    unsetCursor();
    update();
}

void Plotter::updateBandEdges()
{
    const QRect band = rubberBandRect.normalized();
    update(band.left(), band.top(), band.width(), 1);
    update(band.left(), band.top(), 1, band.height());
    update(band.left(), band.bottom(), band.width(), 1);
    update(band.right(), band.top(), 1, band.height());
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
