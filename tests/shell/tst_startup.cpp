// SPDX-License-Identifier: GPL-3.0-or-later
#include "link/communicationsetting.h"
#include "parameter/parameterbatch.h"
#include "parameter/parametereditor.h"
#include "settings/applanguage.h"
#include "shell/mainwindow.h"
#include "shell/startup.h"
#include "support/testdirectory.h"

#include <QAction>
#include <QApplication>
#include <QFile>
#include <QMenu>
#include <QPalette>
#include <QSettings>
#include <QTest>
#include <QTimer>
#include <QToolTip>
#include <QTranslator>

namespace {

template <typename Window>
Window *topLevel()
{
    const QWidgetList widgets = QApplication::topLevelWidgets();
    for (QWidget *widget : widgets) {
        if (auto *const found = qobject_cast<Window *>(widget))
            return found;
    }
    return nullptr;
}

QStringList visibleWindows()
{
    QStringList names;
    const QWidgetList widgets = QApplication::topLevelWidgets();
    for (const QWidget *widget : widgets) {
        if (widget->isVisible())
            names.append(QString::fromLatin1(widget->metaObject()->className()));
    }
    return names;
}

} // namespace

class StartupTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { directory.clear(); }
    void languageSelectsTheFile_data();
    void languageSelectsTheFile();
    void withoutAKeyTheSystemLocaleCounts();
    void unreadableSettingsGiveTheSystemLocale();
    void windowStandsWithTitleAndIcon();
    void chineseStartIsChineseThroughout();
    void englishStartLoadsNoTranslation();
    void programIsNamedInBoxesWithoutATitle();
    void darkDesktopLeavesTheProgramLight();
    void otherDirectoryHasOtherSettings();
    void qtsOwnTextsAreCarried();
    void closingTheMainWindowEndsTheProgram_data();
    void closingTheMainWindowEndsTheProgram();

private:
    TestDirectory directory;
};

void StartupTest::languageSelectsTheFile_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<bool>("chinese");
    QTest::newRow("zh_CN") << "zh_CN" << true;
    QTest::newRow("en_US") << "en_US" << false;
    QTest::newRow("zh") << "zh" << false;
    QTest::newRow("ZH_CN") << "ZH_CN" << false;
    QTest::newRow("zh_TW") << "zh_TW" << false;
    QTest::newRow("empty") << "" << false;
    QTest::newRow("any text") << "any text" << false;
}

void StartupTest::languageSelectsTheFile()
{
    QFETCH(QString, language);
    QFETCH(bool, chinese);
    directory.setLanguage(language);
    QCOMPARE(configuredLanguage(), language);
    QCOMPARE(isChinese(configuredLanguage()), chinese);
    QCOMPARE(languageFile(QStringLiteral(":/a/b")),
             chinese ? QStringLiteral(":/a/b_zh_CN.xml") : QStringLiteral(":/a/b_en_US.xml"));
}

void StartupTest::withoutAKeyTheSystemLocaleCounts()
{
    QCOMPARE(configuredLanguage(), QLocale::system().name());
    QVERIFY(!QFile::exists(QStringLiteral("settings.ini")));
}

void StartupTest::unreadableSettingsGiveTheSystemLocale()
{
    QFile file(QStringLiteral("settings.ini"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(QByteArray("\x89\x00\xff[Lang", 8));
    file.close();
    QCOMPARE(configuredLanguage(), QLocale::system().name());
}

void StartupTest::windowStandsWithTitleAndIcon()
{
    directory.setLanguage(QStringLiteral("en_US"));
    const Application application = startApplication();
    QCOMPARE(application.window->windowTitle(), QStringLiteral("Velmora V1.0.3"));
    QVERIFY(application.window->isVisible());
    QVERIFY(!QApplication::windowIcon().pixmap(32, 32).isNull());
    bool dialogIsVisible = false;
    const QWidgetList widgets = QApplication::topLevelWidgets();
    for (const QWidget *widget : widgets)
        dialogIsVisible |= qobject_cast<const CommunicationSetting *>(widget) && widget->isVisible();
    QVERIFY(dialogIsVisible);
}

void StartupTest::chineseStartIsChineseThroughout()
{
    directory.setLanguage(QStringLiteral("zh_CN"));
    const Application application = startApplication();
    QVERIFY(application.translator && !application.translator->isEmpty());
    QVERIFY(application.qtTranslator && !application.qtTranslator->isEmpty());
    QCOMPARE(QCoreApplication::translate("ParameterTable", "Reserved"), QStringLiteral("保留"));
    QCOMPARE(QCoreApplication::translate("QPlatformTheme", "Cancel"), QStringLiteral("取消"));
}

void StartupTest::englishStartLoadsNoTranslation()
{
    directory.setLanguage(QStringLiteral("en_US"));
    const Application application = startApplication();
    QVERIFY(application.translator && application.translator->isEmpty());
    QVERIFY(!application.qtTranslator);
    QCOMPARE(QCoreApplication::translate("ParameterTable", "Reserved"), QStringLiteral("Reserved"));
}

void StartupTest::programIsNamedInBoxesWithoutATitle()
{
    directory.setLanguage(QStringLiteral("en_US"));
    QCoreApplication::setApplicationName(QStringLiteral("some-executable"));
    const Application application = startApplication();
    QCOMPARE(QGuiApplication::applicationDisplayName(), QStringLiteral("Velmora"));
    QCOMPARE(QCoreApplication::applicationName(), QStringLiteral("Velmora"));
}

void StartupTest::darkDesktopLeavesTheProgramLight()
{
    directory.setLanguage(QStringLiteral("en_US"));
    QPalette dark(QColor(0x30, 0x30, 0x30));
    for (int role = 0; role < QPalette::NColorRoles; ++role)
        dark.setColor(QPalette::All, QPalette::ColorRole(role), QColor(0x30, 0x30, 0x30));
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        dark.setColor(QPalette::All, role, Qt::white);
    QApplication::setPalette(dark);
    QApplication::setPalette(dark, "QMenu");
    QToolTip::setPalette(dark);
    const Application application = startApplication();
    const QMenu menu;
    for (const QPalette &shown :
         {QApplication::palette(), application.window->palette(), menu.palette(), QToolTip::palette()}) {
        for (int group = 0; group < QPalette::NColorGroups; ++group) {
            const auto colour = [&](QPalette::ColorRole role) {
                return shown.color(QPalette::ColorGroup(group), role);
            };
            QCOMPARE(colour(QPalette::Window), QColor(0xef, 0xef, 0xef));
            QVERIFY(colour(QPalette::Base).lightness() > 220);
            QVERIFY(colour(QPalette::Button).lightness() > 220);
            QVERIFY(colour(QPalette::ToolTipBase).lightness() > 220);
            QCOMPARE(colour(QPalette::ToolTipText), QColor(Qt::black));
            for (int role = 0; role < QPalette::NColorRoles; ++role) {
                if (role != QPalette::NoRole)
                    QVERIFY2(colour(QPalette::ColorRole(role)) != QColor(0x30, 0x30, 0x30),
                             qPrintable(QString::number(role)));
            }
        }
        QCOMPARE(shown.color(QPalette::WindowText), QColor(Qt::black));
        QCOMPARE(shown.color(QPalette::Text), QColor(Qt::black));
        QCOMPARE(shown.color(QPalette::ButtonText), QColor(Qt::black));
    }
}

void StartupTest::otherDirectoryHasOtherSettings()
{
    directory.setLanguage(QStringLiteral("zh_CN"));
    const TestDirectory other;
    QCOMPARE(configuredLanguage(), QLocale::system().name());
    writeConfiguredLanguage(QStringLiteral("en_US"));
    QVERIFY(QFile::exists(other.path() + QStringLiteral("/settings.ini")));
    QCOMPARE(QSettings(directory.path() + QStringLiteral("/settings.ini"), QSettings::IniFormat)
                 .value(QStringLiteral("Language/Language"))
                 .toString(),
             QStringLiteral("zh_CN"));
}

void StartupTest::qtsOwnTextsAreCarried()
{
    QTranslator translator;
    QVERIFY(translator.load(QStringLiteral(":/lan/qt_zh_CN.qm")));
    // The texts themselves, and not a list that names other files.
    QCOMPARE(translator.translate("QPlatformTheme", "Cancel"), QStringLiteral("取消"));
    QVERIFY(QFile(QStringLiteral(":/lan/qt_zh_CN.qm")).size() > 50000);
    QVERIFY(QTranslator().load(QStringLiteral(":/lan/sd_zh_CN.qm")));
}

void StartupTest::closingTheMainWindowEndsTheProgram_data()
{
    QTest::addColumn<bool>("withBatchWindow");
    QTest::newRow("editor open") << false;
    QTest::newRow("batch window shown") << true;
}

void StartupTest::closingTheMainWindowEndsTheProgram()
{
    QFETCH(bool, withBatchWindow);
    directory.setLanguage(QStringLiteral("en_US"));
    const Application application = startApplication();
    topLevel<CommunicationSetting>()->close();
    application.window->findChild<QAction *>(QStringLiteral("actionParameter_Editor"))->trigger();
    const auto *const editor = application.window->findChild<ParameterEditor *>();
    QVERIFY(editor);
    if (withBatchWindow) {
        editor->findChild<QAction *>(QStringLiteral("editAction"))->trigger();
        QVERIFY(topLevel<ParameterBatch>()->isVisible());
    }

    constexpr int notEnded = 1;
    QTimer::singleShot(10000, application.window.get(), [] { QCoreApplication::exit(notEnded); });
    QTimer::singleShot(0, application.window.get(), &QWidget::close);
    QCOMPARE(QApplication::exec(), 0);
    QCOMPARE(visibleWindows(), QStringList());
}

QTEST_MAIN(StartupTest)
#include "tst_startup.moc"
