// SPDX-License-Identifier: GPL-3.0-or-later
// Start-up shared by the product and the demo: language, translators, main window. Main thread.
#pragma once

#include <QTranslator>

#include <memory>

class MainWindow;
class QLockFile;

// What lives as long as the process does. The window is destroyed before the translators.
struct Application
{
    std::unique_ptr<QLockFile> mark; // of this process in the folder of its settings
    std::unique_ptr<QTranslator>
        translator; // the program's own texts; kept by the window for its language actions
    std::unique_ptr<QTranslator> qtTranslator; // Qt's own dialogs
    std::unique_ptr<MainWindow> window;

    Application();
    ~Application();
    Application(Application &&) noexcept;
};

// Names the application, gives it its colours, reads the language, installs the translators and makes and
// shows the main window, which shows the connection dialog first. A QApplication must exist.
Application startApplication();
