// SPDX-License-Identifier: GPL-3.0-or-later
#include "scope/scopewindow.h"

#include "scope/channelconfig.h"
#include "scope/channelpanels.h"
#include "scope/plotter.h"
#include "scope/scopesidepanel.h"
#include "scope/scopetoolbar.h"
#include "scope/scopeview.h"
#include "settings/applanguage.h"
#include "widgets/pictures.h"
#include "widgets/windowstate.h"

#include <QAction>
#include <QCheckBox>
#include <QColorDialog>
#include <QDebug>
#include <QEvent>
#include <QFile>
#include <QFontInfo>
#include <QMessageBox>
#include <QPushButton>
#include <QRadioButton>

#include <algorithm>

namespace {

// What Plotter::setOption takes behind the four channels.
constexpr int timeAxisOption = 4;
constexpr int valueAxisOption = 5;
constexpr int gridOption = 6;

// The plot's labels have places of fixed size in pixels; larger letters would run into each other.
constexpr int largestFont = 12; // pixels

QFont labelFont(const QFont &font)
{
    QFont label = font;
    label.setPixelSize(std::min(largestFont, QFontInfo(font).pixelSize()));
    return label;
}

} // namespace

ScopeWindow::ScopeWindow(QWidget *parent)
    : QScrollArea(parent)
    , colors(readScopeColors())
    , plot(new Plotter(this))
{
    setCursor(Qt::ArrowCursor);
    setFont(labelFont(font()));
    plot->setObjectName(QStringLiteral("1"));
    setWindowIcon(QIcon(logoPicture));
    setWindowTitle(tr("Scope"));
    if (loadCatalogue())
        buildWidgets();
    else
        plot->hide();
    plot->setBackground(QColor(colors.background));
}

bool ScopeWindow::loadCatalogue()
{
    QFile file(languageFile(QStringLiteral(":/parameter/parameter/ParameterScope")));
    if (!file.exists()) {
        QMessageBox::warning(this, tr("Open Failed"), tr("File does not exist"));
        return false;
    }
    if (!file.open(QIODevice::ReadOnly)) {
        QMessageBox::warning(this, tr("Open Failed"), tr("Failed opening parameter XML!"));
        return false;
    }
    scopeItems = readScopeItems(file.readAll());
    if (scopeItems.isEmpty())
        qDebug() << "Badly formed XML";
    return !scopeItems.isEmpty();
}

void ScopeWindow::buildWidgets()
{
    view = new ScopeView(plot, scopeItems);
    tools = view->toolBar;
    panel = view->sidePanel;
    channels = view->channels;
    connectTools();
    connectSidePanel();
    setWidget(view);
    setWidgetResizable(true);
    // Not before: a widget with a style of its own no longer takes the window's font.
    for (int channel = 0; channel < scopeChannelCount; ++channel) {
        channels->channel(channel)->setColor(colors.channels.at(channel));
        plot->setColor(channel, QColor(colors.channels.at(channel)));
    }
    view->setMinimumSize(view->minimumSizeHint());
    emit panel->sameButton->clicked();
}

void ScopeWindow::connectTools()
{
    using Tool = ScopeToolBar::Tool;
    const std::array<std::pair<Tool, void (ScopeWindow::*)()>, 11> slotsOfTools{{
        {Tool::PrintScreen, &ScopeWindow::saveWaveSlot},
        {Tool::BackgroundColor, &ScopeWindow::setScopeBackColor},
        {Tool::ShowAll, &ScopeWindow::displayAllActSlot},
        {Tool::ShowAllAdjusted, &ScopeWindow::displayAllAutoAdjustActSlot},
        {Tool::ShiftLeft, &ScopeWindow::moveLeftSlt},
        {Tool::ShiftRight, &ScopeWindow::moveRigthSlt},
        {Tool::ShiftUp, &ScopeWindow::moveUpSlt},
        {Tool::ShiftDown, &ScopeWindow::moveDownSlt},
        {Tool::MeasureX, &ScopeWindow::xAxisMeasurement},
        {Tool::MeasureY, &ScopeWindow::yAxisMeasurement},
        {Tool::Fft, &ScopeWindow::FFTActSlot},
    }};
    for (const auto &[tool, slot] : slotsOfTools)
        connect(tools->action(tool), &QAction::triggered, this, slot);
    connect(tools->action(Tool::ZoomIn), &QAction::triggered, this, &ScopeWindow::zoomInSlt);
    connect(tools->action(Tool::ZoomOut), &QAction::triggered, this, &ScopeWindow::zoomOutSlt);
    connect(view->bottomButton, &QPushButton::clicked, this, &ScopeWindow::hideBottomFrame);
    connect(view->rightButton, &QPushButton::clicked, this, &ScopeWindow::hideRightFrame);
    for (const ChannelConfig *channel : channels->channels())
        connect(channel->colorButton, &QPushButton::clicked, this, &ScopeWindow::setNewColor);
}

void ScopeWindow::connectSidePanel()
{
    connect(panel->gridBox, &QCheckBox::clicked, this, &ScopeWindow::showGridSlt);
    connect(panel->autoAdjustBox, &QCheckBox::toggled, this, &ScopeWindow::autoScaleSlt);
    connect(panel->individualButton, &QRadioButton::clicked, this, &ScopeWindow::individualCoordonateSlt);
    connect(panel->sameButton, &QRadioButton::clicked, this, &ScopeWindow::sameCoordonateSlt);
    connect(panel->tuningBox, &QCheckBox::toggled, this, &ScopeWindow::enableTuning);
    for (const QCheckBox *box : panel->tuningBoxes)
        connect(box, &QCheckBox::toggled, this, &ScopeWindow::tuningCheckBoxToggled);
}

void ScopeWindow::refreshTypes()
{
    channels->refreshTypes();
    for (int channel = 0; channel < scopeChannelCount; ++channel) {
        if (!channels->channel(channel)->checkBox->isChecked())
            plot->setVisible(channel, false);
    }
}

void ScopeWindow::setNewColor()
{
    auto *dialog = new QColorDialog(this);
    dialog->setObjectName(sender() ? sender()->objectName() : QString());
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setModal(true);
    connect(dialog, &QColorDialog::colorSelected, this, &ScopeWindow::getNewColor);
    dialog->show();
}

void ScopeWindow::getNewColor(QColor color)
{
    const int channel = channels->indexOf(sender());
    if (channel < 0)
        return;
    color.setAlpha(255);
    channels->channel(channel)->setColor(color.name(QColor::HexArgb));
    colors.channels.at(channel) = color.name();
    plot->setColor(channel, color);
    writeScopeColor(channel, color.name());
}

void ScopeWindow::setScopeBackColor()
{
    const QColor color = QColorDialog::getColor(Qt::white, this);
    if (!color.isValid())
        return;
    plot->setBackground(color);
    writeScopeBackground(color.name(QColor::HexArgb));
}

void ScopeWindow::hideBottomFrame()
{
    view->foldBottom();
}

void ScopeWindow::hideRightFrame()
{
    view->foldRight();
}

void ScopeWindow::showGridSlt()
{
    plot->setOption(gridOption, panel->gridBox->isChecked());
}

void ScopeWindow::copyZoomAxes()
{
    plot->setOption(timeAxisOption, panel->tuningBoxes.at(ScopeSidePanel::timeAxisBox)->isChecked());
    plot->setOption(valueAxisOption, panel->tuningBoxes.at(ScopeSidePanel::valueAxisBox)->isChecked());
}

void ScopeWindow::zoomInSlt(bool)
{
    copyZoomAxes();
    plot->showZoomIn();
}

void ScopeWindow::zoomOutSlt(bool)
{
    copyZoomAxes();
    plot->showZoomOut();
}

void ScopeWindow::displayAllActSlot()
{
    plot->showAllDataSlot();
}

void ScopeWindow::displayAllAutoAdjustActSlot()
{
    plot->showAllAdjust();
}

void ScopeWindow::moveLeftSlt()
{
    plot->moveLeft();
}

void ScopeWindow::moveRigthSlt()
{
    plot->moveRight();
}

void ScopeWindow::moveUpSlt()
{
    plot->moveUp();
}

void ScopeWindow::moveDownSlt()
{
    plot->moveDown();
}

void ScopeWindow::individualCoordonateSlt()
{
    plot->setCoordinate(true);
}

void ScopeWindow::sameCoordonateSlt()
{
    plot->setCoordinate(false);
}

void ScopeWindow::autoScaleSlt(bool isAutoScale)
{
    plot->setAutoAdjust(isAutoScale);
}

void ScopeWindow::enableTuning(bool enable)
{
    for (std::size_t i = 0; i < panel->tuningBoxes.size(); ++i) {
        panel->tuningBoxes.at(i)->setEnabled(enable);
        const bool isAxis = i >= ScopeSidePanel::timeAxisBox;
        if (isAxis || !enable)
            panel->tuningBoxes.at(i)->setChecked(enable);
    }
    tools->action(ScopeToolBar::ZoomIn)->setEnabled(enable);
    tools->action(ScopeToolBar::ZoomOut)->setEnabled(enable);
}

void ScopeWindow::tuningCheckBoxToggled(bool toggled)
{
    const int channel = channels->indexOf(sender());
    if (channel >= 0)
        plot->setOption(channel, toggled);
}

void ScopeWindow::axisCheckBoxClicked(bool) {}

void ScopeWindow::xAxisMeasurement()
{
    xMeasurement = !xMeasurement;
    plot->setXMeasurement(xMeasurement);
}

void ScopeWindow::yAxisMeasurement()
{
    yMeasurement = !yMeasurement;
    plot->setYMeasurement(yMeasurement);
}

void ScopeWindow::FFTActSlot()
{
    plot->showFFT();
}

void ScopeWindow::saveWaveSlot()
{
    plot->saveImage();
}

void ScopeWindow::resetMeasurements()
{
    xMeasurement = false;
    yMeasurement = false;
    plot->setXMeasurement(false);
    plot->setYMeasurement(false);
}

void ScopeWindow::changeEvent(QEvent *event)
{
    QScrollArea::changeEvent(event);
    if (event->type() == QEvent::WindowStateChange)
        emit windowStateChanged(reportedWindowState(this, isClosing));
    if (!isVisible())
        emit windowStateChanged(QString());
}

void ScopeWindow::hideEvent(QHideEvent *event)
{
    QScrollArea::hideEvent(event);
    emit windowStateChanged(QString());
}

void ScopeWindow::resizeEvent(QResizeEvent *event)
{
    const bool fits = width() >= ScopeView::minimumWidth && height() >= ScopeView::minimumHeight;
    setWidgetResizable(fits);
    if (view && !fits)
        view->resize(viewport()->size().expandedTo(view->minimumSize()));
    QScrollArea::resizeEvent(event);
}
