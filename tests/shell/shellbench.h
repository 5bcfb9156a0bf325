// SPDX-License-Identifier: GPL-3.0-or-later
// A main window with its connection dialog out of the way. Main thread; an object on the stack of a test
// function.
#pragma once

#include "link/communicationsetting.h"
#include "shell/mainwindow.h"

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QTranslator>

class Shell
{
public:
    Shell()
    {
        window.resize(1000, 700);
        window.show();
        dialog()->close();
    }
    QAction *action(const char *name) const { return window.findChild<QAction *>(QLatin1String(name)); }
    QMdiArea *area() const { return window.findChild<QMdiArea *>(); }
    static CommunicationSetting *dialog()
    {
        const QWidgetList widgets = QApplication::topLevelWidgets();
        for (QWidget *widget : widgets) {
            if (auto *const found = qobject_cast<CommunicationSetting *>(widget))
                return found;
        }
        return nullptr;
    }
    QMdiSubWindow *addWindow(const QString &title) const { return addWindow(new QLabel(title), title); }
    QMdiSubWindow *addWindow(QWidget *widget, const QString &title) const
    {
        widget->setWindowTitle(title);
        QMdiSubWindow *const sub = area()->addSubWindow(widget);
        sub->setAttribute(Qt::WA_DeleteOnClose);
        widget->show();
        return sub;
    }

    QTranslator translator;
    MainWindow window{&translator};
};
