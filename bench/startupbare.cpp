// SPDX-License-Identifier: GPL-3.0-or-later
// An empty main window, ended as soon as it is on the screen: what Qt itself needs.
#include "endwhenpainted.h"

#include <QApplication>
#include <QMainWindow>

int main(int argc, char *argv[])
{
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QApplication application(argc, argv);
    QMainWindow window;
    window.show();
    const EndWhenPainted end(&window);
    return QApplication::exec();
}
