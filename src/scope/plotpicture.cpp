// SPDX-License-Identifier: GPL-3.0-or-later
#include "scope/plotpicture.h"

#include <QStyleOptionFocusRect>
#include <QStylePainter>

namespace {

constexpr int labelHeight = 10; // pixels: the labels' rows stand that far apart

} // namespace

PlotPicture::PlotPicture(QWidget *parent)
    : QWidget(parent)
    , colors{QColor(255, 0, 0), QColor(85, 255, 127), QColor(255, 170, 255), QColor(255, 0, 255)}
{
    setBackgroundRole(QPalette::Dark);
    setAutoFillBackground(true);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    connect(&plotThread, &PlotThread::updateImage, this, &PlotPicture::receiveIamge);
}

PlotPicture::~PlotPicture()
{
    plotThread.end();
}

PlotContext PlotPicture::context() const
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

void PlotPicture::refreshPixmap()
{
    buttons.follow(history);
    const PlotContext now = context();
    grid.draw(now);
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

void PlotPicture::takeCurves()
{
    for (int c = 0; c < plotChannels; ++c)
        if (!data.channelPoints[static_cast<size_t>(c)].isEmpty())
            curveMap[c] = data.channelPoints[static_cast<size_t>(c)];
}

void PlotPicture::receiveIamge(const QImage &image1)
{
    curveImage = image1;
    update();
}

void PlotPicture::setPlotSettings(const PlotSettings &settings)
{
    history.reset(settings);
    refreshPixmap();
}

void PlotPicture::setColors(const QColor &color1, const QColor &color2, const QColor &color3,
                            const QColor &color4)
{
    colors = {color1, color2, color3, color4};
    refreshPixmap();
}

void PlotPicture::setColor(int channel, const QColor &color)
{
    colors[channel] = color;
    refreshPixmap();
}

void PlotPicture::setOption(int index, bool flag)
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

void PlotPicture::setVisibleAll(bool f1, bool f2, bool f3, bool f4, bool refresh)
{
    switches.visible = {f1, f2, f3, f4};
    if (refresh)
        refreshPixmap();
}

void PlotPicture::setVisible(int channel, bool flag)
{
    switches.visible[channel] = flag;
    refreshPixmap();
}

void PlotPicture::setBackground(const QColor &color)
{
    backgroundColor = color;
    lineColor = QColor(255 - color.red(), 255 - color.green(), 255 - color.blue(), 255);
    refreshPixmap();
}

void PlotPicture::setDecimals(int channel, int n)
{
    switches.decimals[channel] = n;
}

void PlotPicture::setAutoAdjust(bool on)
{
    switches.autoAdjust = on;
}

void PlotPicture::paintEvent(QPaintEvent *)
{
    if (grid.pixmap().devicePixelRatio() != devicePixelRatioF()) {
        // The window has moved to a screen of another resolution.
        measurement.resize(context());
        refreshPixmap();
    }
    QStylePainter painter(this);
    painter.drawPixmap(0, 0, grid.pixmap());
    if (context().geometry.isDrawable())
        painter.drawImage(0, 0, curveImage);
    measurement.paint(&painter);
    rubberBand.paint(&painter, lineColor);
    if (hasFocus()) {
        QStyleOptionFocusRect option;
        option.initFrom(this);
        option.backgroundColor = palette().dark().color();
        painter.drawPrimitive(QStyle::PE_FrameFocusRect, option);
    }
}

void PlotPicture::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    buttons.place(width());
    measurement.resize(context());
    refreshPixmap();
}
