// SPDX-License-Identifier: GPL-3.0-or-later
// Calculator and help viewer, with programs of the test's own in the search path.
#include "shell/externalprograms.h"
#include "support/testdirectory.h"

#include <QFile>
#include <QProcess>
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

private:
    void install(const QString &name, const QByteArray &script) const;

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

QTEST_MAIN(ExternalProgramsTest)
#include "tst_externalprograms.moc"
