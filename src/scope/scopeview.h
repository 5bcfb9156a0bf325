// SPDX-License-Identifier: GPL-3.0-or-later
// The layout of the scope window: tool bar and plot over the channel panels, the groups at the right, and the
// buttons that fold both away. Main thread; owned by the scope window, which reaches the parts directly.
#pragma once

#include "catalogue/scopecatalogue.h"

#include <QWidget>

class ChannelPanels;
class QHBoxLayout;
class QPushButton;
class ScopeSidePanel;
class ScopeToolBar;

class ScopeView : public QWidget
{
    Q_OBJECT

public:
    static constexpr int minimumWidth = 800;  // pixels
    static constexpr int minimumHeight = 646; // pixels

    // Takes the plot over.
    ScopeView(QWidget *plot, const ScopeItems &items, QWidget *parent = nullptr);

    ScopeToolBar *toolBar = nullptr;
    ChannelPanels *channels = nullptr;
    ScopeSidePanel *sidePanel = nullptr;
    QPushButton *bottomButton = nullptr; // folds the channel panels
    QPushButton *rightButton = nullptr;  // folds the groups at the right

    QSize minimumSizeHint() const override;

    void foldBottom();
    void foldRight();

private:
    QLayout *buildLeftColumn(QWidget *plot, const ScopeItems &items);
    QLayout *buildRightColumn();

    QHBoxLayout *rightButtonRow = nullptr;
};
