// SPDX-License-Identifier: GPL-3.0-or-later
// The two language actions, in a running application of either language.
#include "shell/mainwindow.h"
#include "shell/startup.h"
#include "support/modalanswers.h"
#include "support/testdirectory.h"

#include <QAction>
#include <QSettings>
#include <QTest>

namespace {

QString storedLanguage()
{
    return QSettings(QStringLiteral("settings.ini"), QSettings::IniFormat)
        .value(QStringLiteral("Language/Language"))
        .toString();
}

} // namespace

class LanguageTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { directory.clear(); }
    void englishInEnglishAsksNothing();
    void chineseInEnglishAsks();
    void englishInChineseAsks();
    void chineseInChineseAsksToo();
    void cancelledQuestionChangesNothingMore();

private:
    TestDirectory directory;
};

void LanguageTest::englishInEnglishAsksNothing()
{
    ModalAnswers boxes;
    directory.setLanguage(QStringLiteral("other"));
    const Application application = startApplication();
    application.window->on_actionEnglish_triggered();
    QCoreApplication::processEvents();
    QCOMPARE(storedLanguage(), QStringLiteral("en_US"));
    QVERIFY(boxes.seen.isEmpty());
}

void LanguageTest::chineseInEnglishAsks()
{
    ModalAnswers boxes;
    directory.setLanguage(QStringLiteral("en_US"));
    const Application application = startApplication();
    boxes.expect(QStringLiteral("语言已更改。"), QMessageBox::Cancel);
    application.window->on_actionSimplified_Chinese_triggered();
    QTRY_VERIFY(boxes.isDone());
    QCOMPARE(storedLanguage(), QStringLiteral("zh_CN"));
    QCOMPARE(boxes.seen.first().informativeText, QStringLiteral("是否重新启动应用程序？"));
    QCOMPARE(boxes.seen.first().buttons.size(), 2);
}

void LanguageTest::englishInChineseAsks()
{
    ModalAnswers boxes;
    directory.setLanguage(QStringLiteral("zh_CN"));
    const Application application = startApplication();
    boxes.expect(QStringLiteral("The language has been modified."), QMessageBox::Cancel);
    application.window->on_actionEnglish_triggered();
    QTRY_VERIFY(boxes.isDone());
    QCOMPARE(storedLanguage(), QStringLiteral("en_US"));
    QCOMPARE(boxes.seen.first().informativeText, QStringLiteral("Do you want to restart application?"));
}

void LanguageTest::chineseInChineseAsksToo()
{
    ModalAnswers boxes;
    directory.setLanguage(QStringLiteral("zh_CN"));
    const Application application = startApplication();
    boxes.expect(QStringLiteral("语言已更改。"), QMessageBox::Cancel);
    application.window->on_actionSimplified_Chinese_triggered();
    QTRY_VERIFY(boxes.isDone());
    QCOMPARE(storedLanguage(), QStringLiteral("zh_CN"));
}

void LanguageTest::cancelledQuestionChangesNothingMore()
{
    ModalAnswers boxes;
    directory.setLanguage(QStringLiteral("en_US"));
    const Application application = startApplication();
    const auto *const action =
        application.window->findChild<QAction *>(QStringLiteral("actionCommunication"));
    boxes.expect(QStringLiteral("语言已更改。"), QMessageBox::Cancel);
    application.window->on_actionSimplified_Chinese_triggered();
    QTRY_VERIFY(boxes.isDone());
    QCOMPARE(action->text(), QStringLiteral("Communication"));
    QVERIFY(application.window->isVisible());
}

QTEST_MAIN(LanguageTest)
#include "tst_language.moc"
