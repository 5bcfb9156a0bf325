// SPDX-License-Identifier: GPL-3.0-or-later
// Two processes in one folder: what they leave of each other's settings. The other one is this program again,
// which does what the environment says and then waits for the end of its input.
#include "shellbench.h"

#include "scope/scopecolors.h"
#include "scope/yranges.h"
#include "settings/applanguage.h"
#include "shell/startup.h"
#include "shell/workingfolder.h"
#include "support/testdirectory.h"

#include <QFile>
#include <QFileDialog>
#include <QProcess>
#include <QScopeGuard>
#include <QSettings>
#include <QTest>

#include <cstdio>

namespace {

const char taskVariable[] = "VELMORA_TEST_TASK";
constexpr int rounds = 60;

class OtherProcess
{
public:
    explicit OtherProcess(const char *task)
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QLatin1String(taskVariable), QLatin1String(task));
        process.setProcessEnvironment(environment);
        process.start(QCoreApplication::applicationFilePath(), QStringList());
    }
    bool waitUntilReady()
    {
        while (!process.canReadLine()) {
            if (!process.waitForReadyRead(60000))
                return false;
        }
        return true;
    }
    bool isReady()
    {
        process.waitForReadyRead(1);
        return process.canReadLine();
    }
    bool end()
    {
        process.closeWriteChannel();
        return process.waitForFinished(20000) && process.exitCode() == 0;
    }
    bool kill()
    {
        process.kill();
        return process.waitForFinished(20000);
    }

private:
    QProcess process;
};

QString setting(const QString &key)
{
    return QSettings(QStringLiteral("settings.ini"), QSettings::IniFormat).value(key, "none").toString();
}

// The other process. It runs in the folder of the one that started it.
int runTask(const QByteArray &task)
{
    std::unique_ptr<QLockFile> mark;
    if (task == "mark")
        mark = markWorkingFolder();
    for (int round = 1; task == "ranges" && round <= rounds; ++round) {
        PlotSettings settings;
        settings.maxY[3] = round;
        storeYRanges(settings);
    }
    for (int round = 1; task == "colors" && round <= rounds; ++round)
        writeScopeColor(round % scopeChannelCount, QStringLiteral("#%1").arg(round, 6, 10, QLatin1Char('0')));
    std::puts("ready");
    std::fflush(stdout);
    while (std::getchar() != EOF) {
    }
    return 0;
}

} // namespace

class WorkingFolderTest : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void folderIsSharedWhileAnotherProcessLives_data();
    void folderIsSharedWhileAnotherProcessLives();
    void ownMarkSharesNothing();
    void runningProgramHasItsMark();
    void closingLeavesTheDirectoriesOfOthers();
    void languageOfOthersIsNotTakenOver();
    void dialogsBeginInTheDocumentsOfAnInstalledProgram_data();
    void dialogsBeginInTheDocumentsOfAnInstalledProgram();
    void writersSideBySideLoseNothing();

private:
    TestDirectory directory;
};

void WorkingFolderTest::init()
{
    directory.clear();
    directory.setLanguage(QStringLiteral("en_US"));
}

void WorkingFolderTest::folderIsSharedWhileAnotherProcessLives_data()
{
    QTest::addColumn<bool>("killed");
    QTest::newRow("until it ends") << false;
    QTest::newRow("until it is killed") << true;
}

void WorkingFolderTest::folderIsSharedWhileAnotherProcessLives()
{
    QFETCH(bool, killed);
    QVERIFY(!isWorkingFolderShared());
    OtherProcess other("mark");
    QVERIFY(other.waitUntilReady());
    QVERIFY(isWorkingFolderShared());
    QVERIFY(isWorkingFolderShared()); // looking takes nothing away
    {
        const TestDirectory elsewhere;
        QVERIFY(!isWorkingFolderShared());
    }
    QVERIFY(killed ? other.kill() : other.end());
    QVERIFY(!isWorkingFolderShared());
}

void WorkingFolderTest::ownMarkSharesNothing()
{
    const std::unique_ptr<QLockFile> mark = markWorkingFolder();
    QVERIFY(mark->isLocked());
    QVERIFY(!isWorkingFolderShared());
    QVERIFY(mark->isLocked());
}

void WorkingFolderTest::runningProgramHasItsMark()
{
    const QStringList marks{QStringLiteral("instance-%1.lock").arg(QCoreApplication::applicationPid())};
    {
        const Application application = startApplication();
        QCOMPARE(QDir::current().entryList({"*.lock"}), marks);
    }
    QCOMPARE(QDir::current().entryList({"*.lock"}), QStringList());
}

void WorkingFolderTest::closingLeavesTheDirectoriesOfOthers()
{
    const QString key = QStringLiteral("SavePath/saveFilePath");
    QSettings(QStringLiteral("settings.ini"), QSettings::IniFormat).setValue(key, "/of/the/other");
    OtherProcess other("mark");
    QVERIFY(other.waitUntilReady());
    {
        Shell shell;
        QVERIFY(shell.window.close());
    }
    QCOMPARE(setting(key), QStringLiteral("/of/the/other"));
    QVERIFY(setting(QStringLiteral("geometry")) != QLatin1String("none"));
    QVERIFY(other.end());
    {
        Shell shell;
        QVERIFY(shell.window.close());
    }
    QCOMPARE(setting(key), QString());
}

void WorkingFolderTest::languageOfOthersIsNotTakenOver()
{
    const QString file = QStringLiteral(":/parameter/parameter/parameters");
    {
        const Application application = startApplication();
        directory.setLanguage(QStringLiteral("zh_CN")); // as another process does
        QCOMPARE(languageFile(file), file + "_en_US.xml");
        writeConfiguredLanguage(QStringLiteral("zh_CN"));
        QCOMPARE(languageFile(file), file + "_zh_CN.xml");
        directory.setLanguage(QStringLiteral("en_US"));
        QCOMPARE(languageFile(file), file + "_zh_CN.xml");
    }
    QCOMPARE(languageFile(file), file + "_en_US.xml"); // the next start
}

void WorkingFolderTest::dialogsBeginInTheDocumentsOfAnInstalledProgram_data()
{
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QString>("documents");
    QTest::addColumn<QString>("begin");
    QTest::newRow("installed") << "config/velmora"
                               << "home/Documents"
                               << "home/Documents";
    QTest::newRow("installed, no documents") << "config/velmora"
                                             << "home"
                                             << "home";
    QTest::newRow("not installed") << "configs"
                                   << "home/Documents"
                                   << "configs";
}

void WorkingFolderTest::dialogsBeginInTheDocumentsOfAnInstalledProgram()
{
    QFETCH(QString, folder);
    QFETCH(QString, documents);
    QFETCH(QString, begin);
    const QDir root(QDir(directory.path()).canonicalPath());
    for (const QString &name : {QStringLiteral("config"), folder, documents})
        QVERIFY(root.mkpath(name));
    const QByteArray home = qgetenv("HOME");
    const auto restore = qScopeGuard([this, home] {
        qputenv("HOME", home);
        qunsetenv("XDG_CONFIG_HOME");
        QDir::setCurrent(directory.path());
    });
    qputenv("HOME", QFile::encodeName(root.filePath("home")));
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(root.filePath("config")));
    QVERIFY(QDir::setCurrent(root.filePath(folder)));
    QFileDialog().setDirectory(QDir::currentPath()); // where the first dialog of a process begins
    const Application application = startApplication();
    QCOMPARE(QFileDialog(nullptr, QString(), QString()).directory().canonicalPath(), root.filePath(begin));
}

void WorkingFolderTest::writersSideBySideLoseNothing()
{
    OtherProcess ranges("ranges");
    OtherProcess colors("colors");
    // Whoever reads meanwhile meets a whole file.
    int reads = 0;
    while (!ranges.isReady() || !colors.isReady()) {
        QCOMPARE(configuredLanguage(), QStringLiteral("en_US"));
        ++reads;
    }
    QVERIFY(reads > 1);
    QCOMPARE(setting(QStringLiteral("NeedSetYaxis/Channel4Max")), QString::number(rounds));
    // The last four rounds, one a channel.
    QCOMPARE(setting(QStringLiteral("ScopeColor/color1")), QStringLiteral("#000060"));
    QCOMPARE(setting(QStringLiteral("ScopeColor/color2")), QStringLiteral("#000057"));
    QCOMPARE(setting(QStringLiteral("ScopeColor/color4")), QStringLiteral("#000059"));
    QVERIFY(ranges.end());
    QVERIFY(colors.end());
}

int main(int argc, char *argv[])
{
    if (qEnvironmentVariableIsSet(taskVariable)) {
        const QCoreApplication application(argc, argv);
        return runTask(qgetenv(taskVariable));
    }
    QApplication application(argc, argv);
    WorkingFolderTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_workingfolder.moc"
