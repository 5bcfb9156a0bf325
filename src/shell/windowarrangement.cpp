// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/windowarrangement.h"

#include <QMdiArea>
#include <QMdiSubWindow>

#include <functional>

namespace {

constexpr double cascadeShare = 0.85;
constexpr int cascadeStep = 20; // pixels

// Gives each window its rectangle, by its place in the list and the number of windows.
void tileWindows(QMdiArea *area, const std::function<QRect(int, int)> &place)
{
    const QList<QMdiSubWindow *> windows = area->subWindowList();
    for (int i = 0; i < windows.size(); ++i) {
        if (windows.at(i)->isMinimized())
            return;
        windows.at(i)->showNormal();
        windows.at(i)->setGeometry(place(i, windows.size()));
    }
}

} // namespace

void cascadeWindows(QMdiArea *area)
{
    const QList<QMdiSubWindow *> windows = area->subWindowList();
    for (int i = 0; i < windows.size(); ++i) {
        QMdiSubWindow *const window = windows.at(i);
        area->setActiveSubWindow(window);
        if (window->isMinimized())
            return;
        window->showNormal();
        window->resize(int(area->width() * cascadeShare), int(area->height() * cascadeShare));
        window->move(cascadeStep * i, cascadeStep * i);
    }
}

void tileWindowsSideBySide(QMdiArea *area)
{
    tileWindows(area, [area](int i, int count) {
        return QRect(i * area->width() / count, 0, area->width() / count, area->height());
    });
}

void tileWindowsStacked(QMdiArea *area)
{
    tileWindows(area, [area](int i, int count) {
        return QRect(0, i * area->height() / count, area->width(), area->height() / count);
    });
}
