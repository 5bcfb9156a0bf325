// SPDX-License-Identifier: GPL-3.0-or-later
// A plot that is shown, the runs that it is fed with and the mouse over it. Main thread.
#pragma once

#include "scope/plotter.h"

#include <QMouseEvent>
#include <QTest>

#include <memory>

namespace plotterbench {

using List = QVector<double>;

constexpr int width = 800;
constexpr int height = 600;

// A plot of 800 by 600 that is shown: 700 and 500 pixels of window by the rules of the cursors.
inline std::unique_ptr<Plotter> makePlotter()
{
    auto plotter = std::make_unique<Plotter>();
    plotter->resize(width, height);
    plotter->show();
    return plotter;
}

// A live run that is over: these samples on the screen.
inline void run(Plotter *plotter, const List &data1, const List &data2 = {})
{
    plotter->receiveScopIsStopSlot(false);
    plotter->setLive(true);
    plotter->receivePlotterDataScopeSlot({}, {}, {}, {});
    plotter->receivePlotterDataScopeSlot(data1, data2, {}, {});
    plotter->runTimerOutSlot();
    plotter->setLive(false);
    plotter->receiveScopIsStopSlot(true);
}

inline const PlotSettings &view(const Plotter &plotter)
{
    return plotter.viewHistory().current();
}

// As the window system reports it; QTest only moves the cursor of the screen.
inline void moveMouse(Plotter *plotter, const QPoint &point)
{
    QMouseEvent event(QEvent::MouseMove, point, plotter->mapToGlobal(point), Qt::NoButton, Qt::LeftButton,
                      Qt::NoModifier);
    QCoreApplication::sendEvent(plotter, &event);
}

inline void drag(Plotter *plotter, const QPoint &from, const QPoint &to)
{
    QTest::mousePress(plotter, Qt::LeftButton, {}, from);
    moveMouse(plotter, to);
    QTest::mouseRelease(plotter, Qt::LeftButton, {}, to);
}

inline bool hasColor(const QImage &image, const QRect &area, const QColor &color)
{
    for (int y = area.top(); y <= area.bottom(); ++y)
        for (int x = area.left(); x <= area.right(); ++x)
            if (image.pixelColor(x, y) == color)
                return true;
    return false;
}

} // namespace plotterbench
