// SPDX-License-Identifier: GPL-3.0-or-later
#include "demo-app/widgetcheck.h"

#include "demo-app/textfit.h"

#include <QAbstractScrollArea>
#include <QApplication>
#include <QImage>
#include <QLayout>
#include <QMdiSubWindow>
#include <QScreen>
#include <QStackedLayout>
#include <QToolBar>
#include <QToolButton>

namespace {

class Finder
{
public:
    void look(const QWidget *widget);

    QVector<WidgetFault> faults;

private:
    void add(const QWidget *widget, const QString &what) { faults.append({widgetPath(widget), what}); }
    void lookAtTitle(const QWidget *widget);
    void lookAtText(const QWidget *widget);
    void lookAtPlace(const QWidget *widget);
    void lookAtPicture(const QToolButton *button);
    void lookAtTools(const QToolBar *bar);
    void lookAtLayout(const QWidget *widget);
};

bool hasPicture(const QIcon &icon, const QSize &size)
{
    const QImage image = icon.pixmap(size).toImage();
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (qAlpha(image.pixel(x, y)) > 0)
                return true;
        }
    }
    return false;
}

bool isViewport(const QWidget *widget)
{
    const auto *const area = qobject_cast<const QAbstractScrollArea *>(widget->parentWidget());
    return area && area->viewport() == widget;
}

// Of a window in a frame, be it that of the screen or that of the main window's area.
void Finder::lookAtTitle(const QWidget *widget)
{
    constexpr int buttons = 80; // pixels that picture and buttons of a title bar take
    const bool isTitled = widget->windowType() != Qt::Popup &&
                          (widget->isWindow() || qobject_cast<const QMdiSubWindow *>(widget)) &&
                          !widget->isMaximized();
    const int needed = QFontMetrics(QApplication::font()).horizontalAdvance(widget->windowTitle());
    if (isTitled && needed > 0 && needed + buttons > widget->width())
        add(widget, QStringLiteral("cuts off its title \"%1\"").arg(widget->windowTitle()));
}

void Finder::lookAtText(const QWidget *widget)
{
    const QStringList cut = cutTexts(widget);
    for (const QString &text : cut)
        add(widget, QStringLiteral("cuts off \"%1\"").arg(text.simplified()));
}

// A text outside of what holds it can't be seen, unless it can be scrolled to.
void Finder::lookAtPlace(const QWidget *widget)
{
    if (shownText(widget).isEmpty())
        return;
    constexpr int tolerance = 2; // pixels, of frames
    for (const QWidget *holder = widget->parentWidget(); holder; holder = holder->parentWidget()) {
        if (isViewport(holder))
            return;
        const QRect room = holder->rect().adjusted(-tolerance, -tolerance, tolerance, tolerance);
        if (!room.contains(QRect(widget->mapTo(holder, QPoint(0, 0)), widget->size()))) {
            add(widget, QStringLiteral("reaches out of %1").arg(widgetPath(holder)));
            return;
        }
        if (holder->isWindow())
            return;
    }
}

void Finder::lookAtPicture(const QToolButton *button)
{
    const bool isTool = qobject_cast<const QToolBar *>(button->parentWidget()) != nullptr;
    if (button->arrowType() != Qt::NoArrow || (!isTool && !button->text().isEmpty()))
        return;
    // The arrow that opens what a bar has no room for is told of by the bar.
    if (button->objectName().endsWith(QLatin1String("_ext_button")))
        return;
    if (!hasPicture(button->icon(), button->iconSize()))
        add(button, QStringLiteral("has no picture"));
}

void Finder::lookAtTools(const QToolBar *bar)
{
    const auto *const more = bar->findChild<QToolButton *>(QStringLiteral("qt_toolbar_ext_button"));
    if (more && more->isVisible())
        add(bar, QStringLiteral("has no room for all its tools"));
}

void leavesOf(QLayout *layout, QVector<const QWidget *> *leaves)
{
    // The layout of a main window does not know how many it has.
    int i = 0;
    while (QLayoutItem *const item = layout->itemAt(i++)) {
        if (item->layout())
            leavesOf(item->layout(), leaves);
        else if (item->widget() && item->widget()->isVisible() && !item->widget()->isWindow())
            leaves->append(item->widget());
    }
}

void Finder::lookAtLayout(const QWidget *widget)
{
    if (!widget->layout() || qobject_cast<QStackedLayout *>(widget->layout()))
        return;
    QVector<const QWidget *> leaves;
    leavesOf(widget->layout(), &leaves);
    for (int i = 0; i < leaves.size(); ++i) {
        for (int j = i + 1; j < leaves.size(); ++j) {
            const QRect common = leaves.at(i)->geometry() & leaves.at(j)->geometry();
            if (leaves.at(i)->parentWidget() == leaves.at(j)->parentWidget() && common.width() > 1 &&
                common.height() > 1)
                add(leaves.at(i), QStringLiteral("overlaps %1").arg(widgetPath(leaves.at(j))));
        }
    }
}

void Finder::look(const QWidget *widget)
{
    lookAtTitle(widget);
    lookAtText(widget);
    lookAtPlace(widget);
    lookAtLayout(widget);
    if (const auto *const button = qobject_cast<const QToolButton *>(widget))
        lookAtPicture(button);
    if (const auto *const bar = qobject_cast<const QToolBar *>(widget))
        lookAtTools(bar);
    const QObjectList children = widget->children();
    for (const QObject *child : children) {
        const auto *const inner = qobject_cast<const QWidget *>(child);
        if (inner && inner->isVisible() && !inner->isWindow())
            look(inner);
    }
}

// Of windows whose frame has an odd number of the screen's pixels on a screen with two for one.
constexpr int rounding = 2; // pixels

// Of a maximized window Qt may know the frame that it had before, which reaches over the screen's edges.
QRect placeOf(const QWidget *window)
{
    return window->isMaximized() ? window->geometry() : window->frameGeometry();
}

// A window that its screen has no room for.
bool isLargerThanScreen(const QWidget *window)
{
    const QSize frame = placeOf(window).size() - QSize(rounding, rounding);
    const QScreen *const shownOn = window->screen();
    return shownOn && frame.boundedTo(shownOn->size()) != frame;
}

} // namespace

QVector<WidgetFault> widgetFaults(const QWidget *window)
{
    Finder finder;
    if (window->isWindow() && isLargerThanScreen(window))
        finder.faults.append({widgetPath(window), QStringLiteral("reaches out of the screen")});
    finder.look(window);
    return finder.faults;
}

bool isOnScreen(const QWidget *window)
{
    const QScreen *const shownOn = window->screen();
    return !shownOn ||
           shownOn->geometry().adjusted(-rounding, -rounding, rounding, rounding).contains(placeOf(window));
}

QString widgetPath(const QWidget *widget)
{
    QString path;
    for (const QWidget *step = widget; step; step = step->isWindow() ? nullptr : step->parentWidget()) {
        const QString name = step->objectName().isEmpty()
                                 ? QString::fromLatin1(step->metaObject()->className())
                                 : step->objectName();
        path = path.isEmpty() ? name : name + QLatin1Char('/') + path;
    }
    return path;
}
