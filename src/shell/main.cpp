// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/mainwindow.h"
#include "shell/startup.h"

#include <QApplication>

int main(int argc, char *argv[])
{
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QApplication application(argc, argv);
    const Application velmora = startApplication();
    return QApplication::exec();
}
