// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/startup.h"

#include "settings/applanguage.h"
#include "shell/lightpalette.h"
#include "shell/mainwindow.h"
#include "shell/workingfolder.h"
#include "widgets/pictures.h"

#include <QApplication>
#include <QIcon>

Application::Application() = default;
Application::~Application()
{
    if (mark) // one that was moved from ends nothing
        holdLanguage(QString());
}
Application::Application(Application &&) noexcept = default;

Application startApplication()
{
    const auto install = [](QTranslator *translator, const QString &path) {
        if (translator->load(path))
            QCoreApplication::installTranslator(translator);
    };

    // Boxes without a title carry this name. It also is the display name; one that is set by itself would be
    // appended to every title.
    QCoreApplication::setApplicationName(QStringLiteral("Velmora"));
    useLightPalette();

    Application application;
    application.mark = markWorkingFolder();
    keepDialogsOutOfSettings();
    holdLanguage(configuredLanguage());
    application.translator = std::make_unique<QTranslator>();
    if (isChinese(configuredLanguage())) {
        install(application.translator.get(), QStringLiteral(":/lan/sd_zh_CN.qm"));
        application.qtTranslator = std::make_unique<QTranslator>();
        install(application.qtTranslator.get(), QStringLiteral(":/lan/qt_zh_CN.qm"));
    }
    application.window = std::make_unique<MainWindow>(application.translator.get());
    application.window->setWindowTitle(MainWindow::baseTitle);
    QApplication::setWindowIcon(QIcon(logoPicture));
    application.window->show();
    return application;
}
