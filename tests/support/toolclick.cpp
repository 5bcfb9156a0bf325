// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/toolclick.h"

#include <QAction>
#include <QTest>
#include <QToolBar>

bool clickTool(const QAction *action)
{
    const QList<QWidget *> shownOn = action ? action->associatedWidgets() : QList<QWidget *>();
    for (const QWidget *widget : shownOn) {
        const auto *const bar = qobject_cast<const QToolBar *>(widget);
        QWidget *const button = bar ? bar->widgetForAction(const_cast<QAction *>(action)) : nullptr;
        if (button && button->isVisible()) {
            QTest::mouseClick(button, Qt::LeftButton);
            return true;
        }
    }
    return false;
}

bool clickTool(const QWidget *window, const char *name)
{
    return clickTool(window->findChild<QAction *>(QLatin1String(name)));
}
