// SPDX-License-Identifier: GPL-3.0-or-later
#include "scope/scopeview.h"

#include "scope/channelpanels.h"
#include "scope/scopesidepanel.h"
#include "scope/scopetoolbar.h"

#include <QFrame>
#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

constexpr int margin = 4;         // pixels
constexpr int lineHeight = 2;     // pixels
constexpr int foldThickness = 12; // pixels
constexpr int foldLength = 60;    // pixels
constexpr int leftStretch = 2;

QPushButton *foldButton(int width, int height, const QString &picture)
{
    auto *button = new QPushButton;
    button->setFixedSize(width, height);
    button->setFocusPolicy(Qt::NoFocus);
    button->setStyleSheet(picture);
    return button;
}

QString pictureStyle(const char *picture)
{
    return QStringLiteral("border-image: url(:/pic/pic/%1);").arg(QLatin1String(picture));
}

} // namespace

ScopeView::ScopeView(QWidget *plot, const ScopeItems &items, QWidget *parent)
    : QWidget(parent)
{
    auto *line = new QFrame;
    line->setFrameStyle(QFrame::HLine | QFrame::Sunken);
    line->setFixedHeight(lineHeight);

    auto *columns = new QHBoxLayout;
    columns->addLayout(buildLeftColumn(plot, items), leftStretch);
    columns->addLayout(buildRightColumn());
    auto *rows = new QVBoxLayout(this);
    rows->setContentsMargins(margin, margin, margin, margin);
    rows->addWidget(line);
    rows->addLayout(columns, 1);
}

// A large font takes more room: the window scrolls then, rather than squeeze what it holds.
QSize ScopeView::minimumSizeHint() const
{
    return QWidget::minimumSizeHint().expandedTo({minimumWidth, minimumHeight});
}

QLayout *ScopeView::buildLeftColumn(QWidget *plot, const ScopeItems &items)
{
    toolBar = new ScopeToolBar;
    auto *plotRow = new QHBoxLayout;
    plotRow->addWidget(plot);
    plotRow->addSpacing(foldThickness);
    bottomButton = foldButton(foldLength, foldThickness, pictureStyle("DownUp1.bmp"));

    channels = new ChannelPanels(items);

    auto *column = new QVBoxLayout;
    column->addWidget(toolBar);
    column->addLayout(plotRow, 1);
    column->addWidget(bottomButton, 0, Qt::AlignHCenter);
    column->addWidget(channels);
    return column;
}

QLayout *ScopeView::buildRightColumn()
{
    rightButton = foldButton(foldThickness, foldLength, pictureStyle("ScrR.bmp"));
    rightButtonRow = new QHBoxLayout;
    rightButtonRow->addWidget(rightButton, 0, Qt::AlignRight | Qt::AlignTop);
    sidePanel = new ScopeSidePanel;
    auto *column = new QVBoxLayout;
    column->addLayout(rightButtonRow);
    column->addWidget(sidePanel, 1);
    return column;
}

void ScopeView::foldBottom()
{
    const bool fold = channels->isVisible();
    channels->setVisible(!fold);
    bottomButton->setStyleSheet(pictureStyle(fold ? "DownUp2.bmp" : "DownUp1.bmp"));
}

void ScopeView::foldRight()
{
    const bool fold = sidePanel->isVisible();
    sidePanel->setVisible(!fold);
    rightButton->setStyleSheet(pictureStyle(fold ? "ScrL.bmp" : "ScrR.bmp"));
    if (fold) {
        rightButtonRow->setContentsMargins(0, 0, 0, 0);
        rightButtonRow->addStretch();
    }
}
