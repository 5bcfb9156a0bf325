// SPDX-License-Identifier: GPL-3.0-or-later
#include "benchmain.h"

#include <QApplication>
#include <QDir>
#include <QTemporaryDir>

#include <cstdio>
#include <exception>

void useNoScreen()
{
    if (qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        return;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // That platform warns of every window that it shows.
    qputenv("QT_LOGGING_RULES", "default.warning=false");
}

int runBenchmark(int argc, char *argv[], const std::function<void()> &benchmark)
{
    useNoScreen();
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    // The settings of whoever runs this are neither read nor written.
    const QTemporaryDir directory;
    QDir::setCurrent(directory.path());
    try {
        benchmark();
    } catch (const std::exception &error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    return 0;
}
