// SPDX-License-Identifier: GPL-3.0-or-later
// The two language actions, in a running application of either language.
#include "shell/mainwindow.h"
#include "shell/startup.h"
#include "support/modalanswers.h"
#include "support/testdirectory.h"

#include <QAction>
#include <QApplication>
#include <QFile>
#include <QSettings>
#include <QTest>
#include <QTimer>

namespace {

// Where this is set the program has been started by its own restart and leaves its arguments in that file.
const char restartVariable[] = "VELMORA_TEST_RESTART";

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
    void acceptedQuestionRestartsTheProgram();

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

void LanguageTest::acceptedQuestionRestartsTheProgram()
{
    const QString told = directory.path() + QStringLiteral("/restarted");
    qputenv(restartVariable, QFile::encodeName(told));
    ModalAnswers boxes;
    directory.setLanguage(QStringLiteral("en_US"));
    const Application application = startApplication();
    boxes.expect(QStringLiteral("语言已更改。"), QMessageBox::Ok);
    constexpr int notEnded = 1;
    QTimer::singleShot(10000, application.window.get(), [] { QCoreApplication::exit(notEnded); });
    QTimer::singleShot(0, application.window.get(), &MainWindow::on_actionSimplified_Chinese_triggered);
    QCOMPARE(QApplication::exec(), 0);
    qunsetenv(restartVariable);
    QVERIFY(boxes.isDone());
    QFile file(told);
    QTRY_VERIFY_WITH_TIMEOUT(file.exists() && file.size() > 0, 20000);
    QVERIFY(file.open(QIODevice::ReadOnly));
    // The program itself, with no arguments.
    QCOMPARE(QString::fromLocal8Bit(file.readAll()), QCoreApplication::applicationFilePath() + "|1\n");
}

int main(int argc, char *argv[])
{
    if (qEnvironmentVariableIsSet(restartVariable)) {
        QFile file(QFile::decodeName(qgetenv(restartVariable)));
        if (!file.open(QIODevice::WriteOnly))
            return 1;
        file.write(QByteArray(argv[0]) + '|' + QByteArray::number(argc) + '\n');
        return 0;
    }
    QApplication application(argc, argv);
    LanguageTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_language.moc"
