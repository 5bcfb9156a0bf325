// SPDX-License-Identifier: GPL-3.0-or-later
// The product's start-up, ended as soon as the main window is on the screen.
#include "endwhenpainted.h"
#include "shell/mainwindow.h"
#include "shell/startup.h"

#include <QApplication>

int main(int argc, char *argv[])
{
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QApplication application(argc, argv);
    const Application product = startApplication();
    const EndWhenPainted end(product.window.get());
    return QApplication::exec();
}
