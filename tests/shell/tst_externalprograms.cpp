// SPDX-License-Identifier: GPL-3.0-or-later
// Calculator and help viewer, with programs of the test's own in the search path.
#include "shellbench.h"

#include "shell/externalprograms.h"
#include "support/testdirectory.h"

#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QScopeGuard>
#include <QTest>
#include <QUrl>

// Stands in for the system's browser.
class Browser : public QObject
{
    Q_OBJECT

public:
    Browser() { QDesktopServices::setUrlHandler(QStringLiteral("file"), this, "open"); }
    ~Browser() override { QDesktopServices::unsetUrlHandler(QStringLiteral("file")); }
    Q_DISABLE_COPY_MOVE(Browser)

    QList<QUrl> opened;

public slots:
    void open(const QUrl &url) { opened << url; }
};

class ExternalProgramsTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void firstInstalledCalculatorIsStarted();
    void calculatorIsStartedAnew();
    void nothingHappensWithoutOne();
    void calculatorOfTheMenuRuns();
    void helpFileIsShownInTheFirstViewer();
    void guideIsShownWhereThereIsNoHelpFile_data();
    void guideIsShownWhereThereIsNoHelpFile();
    void guideIsFoundFromTheProgram_data();
    void guideIsFoundFromTheProgram();

private:
    void install(const QString &name, const QByteArray &script) const;
    static void writePage(const QString &path);

    QString argumentsOf(const QString &name) const;

    TestDirectory directory;
    QByteArray path;
};

void ExternalProgramsTest::init()
{
    directory.clear();
    path = qgetenv("PATH");
    qputenv("PATH", directory.path().toLocal8Bit());
}

void ExternalProgramsTest::cleanup()
{
    qputenv("PATH", path);
}

void ExternalProgramsTest::install(const QString &name, const QByteArray &script) const
{
    QFile file(directory.path() + QLatin1Char('/') + name);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("#!/bin/sh\n" + script);
    file.close();
    file.setPermissions(file.permissions() | QFile::ExeOwner);
}

void ExternalProgramsTest::writePage(const QString &path)
{
    QVERIFY(QDir().mkpath(QFileInfo(path).path()));
    QFile page(path);
    QVERIFY(page.open(QIODevice::WriteOnly));
}

void ExternalProgramsTest::firstInstalledCalculatorIsStarted()
{
    const QStringList programs = calculatorPrograms();
    install(programs.at(2), "read line\n");
    install(programs.at(1), "read line\n");
    QProcess process;
    startCalculator(&process);
    QVERIFY(process.waitForStarted());
    QCOMPARE(process.program(), directory.path() + QLatin1Char('/') + programs.at(1));
    QCOMPARE(process.openMode() & QIODevice::ReadWrite, QIODevice::ReadWrite);
    process.kill();
    process.waitForFinished();
}

void ExternalProgramsTest::calculatorIsStartedAnew()
{
    install(calculatorPrograms().first(), "read line\n");
    QProcess process;
    startCalculator(&process);
    QVERIFY(process.waitForStarted());
    const qint64 first = process.processId();
    startCalculator(&process);
    QVERIFY(process.waitForStarted());
    QVERIFY(process.processId() != first);
    process.kill();
    process.waitForFinished();
}

void ExternalProgramsTest::nothingHappensWithoutOne()
{
    QProcess process;
    startCalculator(&process);
    QCOMPARE(process.state(), QProcess::NotRunning);
    openHelp();
}

// What a program of the test's own was started with; it writes that beside itself.
QString ExternalProgramsTest::argumentsOf(const QString &name) const
{
    QFile file(directory.path() + QLatin1Char('/') + name + QLatin1String(".arguments"));
    return file.open(QIODevice::ReadOnly) ? QString::fromLocal8Bit(file.readAll()) : QString();
}

const QByteArray tellArguments = "printf '%s:%s\\n' $# \"$*\" > \"$0.arguments\"\n";

void ExternalProgramsTest::calculatorOfTheMenuRuns()
{
    directory.setLanguage(QStringLiteral("en_US"));
    install(calculatorPrograms().first(), tellArguments + "read line\n");
    const Shell shell;
    shell.action("actionCalculation")->trigger();
    QTRY_COMPARE(argumentsOf(calculatorPrograms().first()), QStringLiteral("0:\n"));
    const auto *const process = shell.window.findChild<QProcess *>();
    QVERIFY(process);
    QTRY_COMPARE(process->state(), QProcess::Running);
}

void ExternalProgramsTest::helpFileIsShownInTheFirstViewer()
{
    QFile help(QCoreApplication::applicationDirPath() + QStringLiteral("/ServoHelp.CHM"));
    QVERIFY(help.open(QIODevice::WriteOnly));
    help.close();
    const auto removeHelp = qScopeGuard([&help] { help.remove(); });
    install(QStringLiteral("xchm"), tellArguments);
    install(QStringLiteral("okular"), tellArguments);
    Browser browser;
    directory.setLanguage(QStringLiteral("en_US"));
    const Shell shell;
    shell.action("actionSoftware_Guide")->trigger();
    QTRY_COMPARE(argumentsOf(QStringLiteral("xchm")), QStringLiteral("1:%1\n").arg(help.fileName()));
    QCOMPARE(argumentsOf(QStringLiteral("okular")), QString());
    QVERIFY(browser.opened.isEmpty());
}

void ExternalProgramsTest::guideIsShownWhereThereIsNoHelpFile_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<QString>("folder");
    QTest::newRow("English") << "en_US"
                             << "en";
    QTest::newRow("Chinese") << "zh_CN"
                             << "zh";
    QTest::newRow("neither") << "de_DE"
                             << "en";
}

void ExternalProgramsTest::guideIsShownWhereThereIsNoHelpFile()
{
    QFETCH(QString, language);
    QFETCH(QString, folder);
    const QString guide = QCoreApplication::applicationDirPath() + QStringLiteral("/../guide");
    const auto removeGuide = qScopeGuard([&guide] { QDir(guide).removeRecursively(); });
    writePage(guide + QStringLiteral("/en/index.html"));
    writePage(guide + QStringLiteral("/zh/index.html"));
    install(QStringLiteral("xchm"), tellArguments);
    directory.setLanguage(language);
    Browser browser;
    const Shell shell;
    shell.action("actionSoftware_Guide")->trigger();
    QCOMPARE(browser.opened.size(), 1);
    QVERIFY(browser.opened.first().isLocalFile());
    QCOMPARE(browser.opened.first().toLocalFile(),
             QDir(guide).canonicalPath() + QStringLiteral("/%1/index.html").arg(folder));
    QCOMPARE(argumentsOf(QStringLiteral("xchm")), QString());
}

void ExternalProgramsTest::guideIsFoundFromTheProgram_data()
{
    QTest::addColumn<QStringList>("pages");
    QTest::addColumn<QString>("programFolder");
    QTest::addColumn<QString>("language");
    QTest::addColumn<QString>("found"); // empty for none
    const QStringList installed{"usr/share/doc/velmora/guide/en/index.html",
                                "usr/share/doc/velmora/guide/zh/index.html"};
    const QStringList built{"build/release/guide/en/index.html", "build/release/guide/zh/index.html"};
    QTest::newRow("bin, English") << installed << "usr/bin"
                                  << "en_US" << installed.at(0);
    QTest::newRow("bin, Chinese") << installed << "usr/bin"
                                  << "zh_CN" << installed.at(1);
    QTest::newRow("libexec, English") << installed << "usr/libexec/velmora"
                                      << "en_US" << installed.at(0);
    QTest::newRow("libexec, Chinese") << installed << "usr/libexec/velmora"
                                      << "zh_CN" << installed.at(1);
    QTest::newRow("product built, English") << built << "build/release/src"
                                            << "en_US" << built.at(0);
    QTest::newRow("product built, Chinese") << built << "build/release/src"
                                            << "zh_CN" << built.at(1);
    QTest::newRow("demo built, English") << built << "build/release/demo-app"
                                         << "en_US" << built.at(0);
    QTest::newRow("demo built, Chinese") << built << "build/release/demo-app"
                                         << "zh_CN" << built.at(1);
    QTest::newRow("beside") << QStringList{"tool/guide/zh/index.html"} << "tool"
                            << "zh_CN"
                            << "tool/guide/zh/index.html";
    QTest::newRow("other language") << installed << "usr/bin"
                                    << "fr_FR" << installed.at(0);
    QTest::newRow("English alone") << QStringList{installed.at(0)} << "usr/bin"
                                   << "zh_CN" << installed.at(0);
    QTest::newRow("Chinese alone") << QStringList{installed.at(1)} << "usr/bin"
                                   << "en_US" << QString();
    QTest::newRow("installed before beside")
        << QStringList{installed.at(0), "usr/guide/en/index.html"} << "usr/bin"
        << "en_US" << installed.at(0);
    QTest::newRow("none") << QStringList() << "usr/bin"
                          << "en_US" << QString();
}

void ExternalProgramsTest::guideIsFoundFromTheProgram()
{
    QFETCH(QStringList, pages);
    QFETCH(QString, programFolder);
    QFETCH(QString, language);
    QFETCH(QString, found);
    const QDir root(directory.path());
    QVERIFY(root.mkpath(programFolder));
    for (const QString &page : qAsConst(pages))
        writePage(root.filePath(page));
    QCOMPARE(userGuide(root.filePath(programFolder), language),
             found.isEmpty() ? QString() : QDir(root.canonicalPath()).filePath(found));
}

QTEST_MAIN(ExternalProgramsTest)
#include "tst_externalprograms.moc"
