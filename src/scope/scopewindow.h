// SPDX-License-Identifier: GPL-3.0-or-later
// The scope's window without its runs and files: layout, colours, and what tool bar and groups do with the
// plot. Main thread; the base of Scope.
#pragma once

#include "scope/scopecolors.h"

#include "catalogue/scopecatalogue.h"

#include <QColor>
#include <QScrollArea>

class ChannelPanels;
class Plotter;
class ScopeSidePanel;
class ScopeToolBar;
class ScopeView;

class ScopeWindow : public QScrollArea
{
    Q_OBJECT

public:
    // Tells the user when there is no catalogue; the window then has no widgets.
    explicit ScopeWindow(QWidget *parent = nullptr);

signals:
    // The title when the window becomes maximized, an empty text when it stops being so.
    void windowStateChanged(QString title);

protected:
    void changeEvent(QEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

    // The Type fields by the items; a channel that is off leaves the plot.
    void refreshTypes();
    void resetMeasurements();

    ScopeItems scopeItems;
    ScopeColors colors;
    Plotter *plot = nullptr;
    ScopeView *view = nullptr; // with all that follows, null without a catalogue
    ScopeToolBar *tools = nullptr;
    ScopeSidePanel *panel = nullptr;
    ChannelPanels *channels = nullptr;
    bool isClosing = false; // the MDI area still reports a state after a maximized window has gone

private slots:
    void tuningCheckBoxToggled(bool toggled);
    void setNewColor();
    void getNewColor(QColor color);
    void hideBottomFrame();
    void hideRightFrame();
    void showGridSlt();
    void zoomInSlt(bool zoomIn);
    void zoomOutSlt(bool zoomOut);
    void displayAllActSlot();
    void displayAllAutoAdjustActSlot();
    void moveLeftSlt();
    void moveRigthSlt();
    void moveUpSlt();
    void moveDownSlt();
    void individualCoordonateSlt();
    void sameCoordonateSlt();
    void autoScaleSlt(bool isAutoScale);
    void enableTuning(bool enable);
    void axisCheckBoxClicked(bool checked);
    void setScopeBackColor();
    void xAxisMeasurement();
    void yAxisMeasurement();
    void FFTActSlot();
    void saveWaveSlot();

private:
    bool loadCatalogue();
    void buildWidgets();
    void connectTools();
    void connectSidePanel();
    void copyZoomAxes();

    bool xMeasurement = false;
    bool yMeasurement = false;
};
