// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/windowgeometry.h"

#include <QEvent>
#include <QGuiApplication>
#include <QScreen>
#include <QStyle>
#include <QWidget>
#include <QWindow>

namespace {

QMargins expectedFrame(const QWidget *window)
{
    const int side = window->style()->pixelMetric(QStyle::PM_MdiSubWindowFrameWidth);
    return {side, window->style()->pixelMetric(QStyle::PM_TitleBarHeight) + side, side, side};
}

QRect availableAreaOf(const QRect &geometry)
{
    const QScreen *screen = QGuiApplication::screenAt(geometry.center());
    if (!screen)
        screen = QGuiApplication::primaryScreen();
    return screen->availableGeometry();
}

// Waits for the first picture of a window on the screen: by then the window manager has framed it.
class FrameWatch : public QObject
{
public:
    explicit FrameWatch(QWidget *watched)
        : QObject(watched)
        , window(watched)
        , requested(watched->size())
    {
        fit(expectedFrame(window));
        fitted = window->size();
        window->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject *object, QEvent *event) override
    {
        if (object == window && event->type() == QEvent::Show && window->windowHandle())
            window->windowHandle()->installEventFilter(this);
        else if (event->type() == QEvent::Expose && window->windowHandle()->isExposed())
            finish();
        return false;
    }

private:
    void finish()
    {
        window->removeEventFilter(this);
        window->windowHandle()->removeEventFilter(this);
        if (window->size() == fitted)
            fit(window->windowHandle()->frameMargins());
        deleteLater();
    }

    void fit(const QMargins &frame)
    {
        if (window->windowState() & (Qt::WindowMaximized | Qt::WindowFullScreen | Qt::WindowMinimized))
            return;
        const QRect asked(window->geometry().topLeft(), requested);
        const QRect available = availableAreaOf(asked);
        const QSize framed = asked.marginsAdded(frame).size();
        // The window manager finds a place of its own for a window that has none.
        const bool isPlaced = window->testAttribute(Qt::WA_Moved) || window->isVisible();
        if (!isPlaced && framed.boundedTo(available.size()) == framed)
            return;
        window->setGeometry(fittedGeometry(asked, frame, available));
    }

    QWidget *const window;
    const QSize requested; // before anything was fitted
    QSize fitted;          // for the frame that was expected
};

} // namespace

QRect fittedGeometry(const QRect &geometry, const QMargins &frame, const QRect &available)
{
    const QRect room = available.marginsRemoved(frame);
    QRect fitted(geometry.topLeft(), geometry.size().boundedTo(room.size()));
    fitted.moveLeft(qBound(room.left(), fitted.left(), room.right() - fitted.width() + 1));
    fitted.moveTop(qBound(room.top(), fitted.top(), room.bottom() - fitted.height() + 1));
    return fitted;
}

void keepOnScreen(QWidget *window)
{
    new FrameWatch(window);
}
