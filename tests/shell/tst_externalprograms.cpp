// SPDX-License-Identifier: GPL-3.0-or-later
// Calculator and help viewer, with programs of the test's own in the search path.
#include "shellbench.h"

#include "shell/externalprograms.h"
#include "support/testdirectory.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QScopeGuard>
#include <QTest>

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
    void guideIsShownWhereThereIsNoHelpFile();

private:
    void install(const QString &name, const QByteArray &script) const;

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
    install(QStringLiteral("xdg-open"), tellArguments);
    directory.setLanguage(QStringLiteral("en_US"));
    const Shell shell;
    shell.action("actionSoftware_Guide")->trigger();
    QTRY_COMPARE(argumentsOf(QStringLiteral("xchm")), QStringLiteral("1:%1\n").arg(help.fileName()));
    QCOMPARE(argumentsOf(QStringLiteral("okular")), QString());
    QCOMPARE(argumentsOf(QStringLiteral("xdg-open")), QString());
}

void ExternalProgramsTest::guideIsShownWhereThereIsNoHelpFile()
{
    const QString docs = QCoreApplication::applicationDirPath() + QStringLiteral("/docs");
    QVERIFY(QDir().mkpath(docs + QStringLiteral("/user-guide")));
    const auto removeDocs = qScopeGuard([&docs] { QDir(docs).removeRecursively(); });
    QFile guide(docs + QStringLiteral("/user-guide/README.md"));
    QVERIFY(guide.open(QIODevice::WriteOnly));
    guide.close();
    install(QStringLiteral("xchm"), tellArguments);
    install(QStringLiteral("xdg-open"), tellArguments);
    openHelp();
    QTRY_COMPARE(argumentsOf(QStringLiteral("xdg-open")),
                 QStringLiteral("1:%1\n").arg(QFileInfo(guide).canonicalFilePath()));
    QCOMPARE(argumentsOf(QStringLiteral("xchm")), QString());
}

QTEST_MAIN(ExternalProgramsTest)
#include "tst_externalprograms.moc"
