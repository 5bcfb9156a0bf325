// SPDX-License-Identifier: GPL-3.0-or-later
// What the main window refuses and keeps when it is closed, and what it makes of the settings afterwards.
#include "shellbench.h"

#include "link/serialport.h"
#include "parameter/parametereditor.h"
#include "scope/scope.h"
#include "support/modalanswers.h"
#include "support/testdirectory.h"
#include "trialrun/trialrun.h"

#include <QListWidget>
#include <QPointer>
#include <QSettings>
#include <QTest>

class MainWindowClosingTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void closingIsRefusedWithATrialRun();
    void closingIsRefusedWhileTheScopeCaptures();
    void closingWithAnIdleScopeIsAllowed();
    void titleAloneHoldsNothing();
    void trialRunWindowIsDeletedOnItsWish();
    void closingKeepsGeometryAndBlanksThePaths();
    void geometryIsRestored();
    void brokenSettingsGiveTheDefaults_data();
    void brokenSettingsGiveTheDefaults();
    void readOnlySettingsDoNotDisturb();
    void closingInMidTransferIsSafe();

private:
    TestDirectory directory;
};

void MainWindowClosingTest::init()
{
    directory.clear();
    directory.setLanguage(QStringLiteral("en_US"));
    SerialPort::portOpened = false;
    SerialPort::reconnecting = false;
}

void MainWindowClosingTest::closingIsRefusedWithATrialRun()
{
    ModalAnswers boxes;
    Shell shell;
    shell.addWindow(new TrialRun, QStringLiteral("any title"));
    boxes.expect(QStringLiteral("Please close \"Trial Run\" window frist"));
    QVERIFY(!shell.window.close());
    QVERIFY(shell.window.isVisible());
    QCOMPARE(boxes.seen.first().title, QStringLiteral("Warnig"));
    QCOMPARE(boxes.seen.first().icon, QMessageBox::Warning);
    QCOMPARE(boxes.seen.first().buttons, QStringList("OK"));
    QVERIFY(!QSettings(QStringLiteral("settings.ini"), QSettings::IniFormat)
                 .contains(QStringLiteral("geometry")));
}

void MainWindowClosingTest::closingIsRefusedWhileTheScopeCaptures()
{
    ModalAnswers boxes;
    Shell shell;
    shell.addWindow(new Scope, QStringLiteral("any title"));
    shell.window.scopeIsRunning(true);
    boxes.expect(QStringLiteral("Please close \"Scope\" window frist"));
    QVERIFY(!shell.window.close());
    QCOMPARE(boxes.seen.first().title, QStringLiteral("Warnig"));
}

void MainWindowClosingTest::closingWithAnIdleScopeIsAllowed()
{
    ModalAnswers boxes;
    Shell shell;
    shell.addWindow(new Scope, QStringLiteral("any title"));
    QVERIFY(shell.window.close());
}

void MainWindowClosingTest::titleAloneHoldsNothing()
{
    ModalAnswers boxes;
    Shell shell;
    shell.addWindow(QStringLiteral("Trial Run"));
    shell.addWindow(QStringLiteral("Scope"));
    shell.window.scopeIsRunning(true);
    QVERIFY(shell.window.close());
}

void MainWindowClosingTest::trialRunWindowIsDeletedOnItsWish()
{
    Shell shell;
    const QPointer<QMdiSubWindow> trial = shell.addWindow(new TrialRun, QStringLiteral("any title"));
    const QPointer<QMdiSubWindow> other = shell.addWindow(QStringLiteral("Other"));
    shell.window.closeTrialRunWindow();
    QTRY_VERIFY(!trial);
    QVERIFY(other);
}

void MainWindowClosingTest::closingKeepsGeometryAndBlanksThePaths()
{
    {
        QSettings settings(QStringLiteral("settings.ini"), QSettings::IniFormat);
        settings.setValue(QStringLiteral("SavePath/openFilePath"), QStringLiteral("/somewhere"));
    }
    Shell shell;
    QVERIFY(shell.window.close());
    const QSettings settings(QStringLiteral("settings.ini"), QSettings::IniFormat);
    QVERIFY(!settings.value(QStringLiteral("geometry")).toByteArray().isEmpty());
    for (const char *key : {"openFilePath", "saveFilePath", "savePixmapPath"}) {
        const QString path = QLatin1String("SavePath/") + QLatin1String(key);
        QVERIFY2(settings.contains(path), key);
        QCOMPARE(settings.value(path).toString(), QString());
    }
}

void MainWindowClosingTest::geometryIsRestored()
{
    {
        Shell shell;
        shell.window.setGeometry(60, 70, 640, 480);
        QVERIFY(shell.window.close());
    }
    QTranslator translator;
    const MainWindow window(&translator);
    QCOMPARE(window.size(), QSize(640, 480));
}

void MainWindowClosingTest::brokenSettingsGiveTheDefaults_data()
{
    QTest::addColumn<QByteArray>("contents");
    QTest::newRow("garbage") << QByteArray("\x00\xff\x80[[[=\n\n=x\n", 12);
    QTest::newRow("geometry of unexpected form") << QByteArray("geometry=12\n[Language]\nLanguage=en_US\n");
    QTest::newRow("empty") << QByteArray();
}

void MainWindowClosingTest::brokenSettingsGiveTheDefaults()
{
    QFETCH(QByteArray, contents);
    QFile file(QStringLiteral("settings.ini"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(contents);
    file.close();
    const Shell shell;
    QVERIFY(shell.window.isVisible());
    shell.action("actionParameter_Editor")->trigger();
    QCOMPARE(shell.area()->subWindowList().size(), 1);
}

void MainWindowClosingTest::readOnlySettingsDoNotDisturb()
{
    // A directory of that name can be neither read nor written as a file.
    QFile::remove(QStringLiteral("settings.ini"));
    QVERIFY(QDir().mkdir(QStringLiteral("settings.ini")));
    ModalAnswers boxes;
    Shell shell;
    shell.action("actionParameter_Editor")->trigger();
    shell.window.on_actionEnglish_triggered();
    QVERIFY(shell.window.close());
    QVERIFY(QFileInfo(QStringLiteral("settings.ini")).isDir());
}

void MainWindowClosingTest::closingInMidTransferIsSafe()
{
    ModalAnswers boxes;
    Shell shell;
    shell.action("actionParameter_Editor")->trigger();
    const QPointer<ParameterEditor> editor = shell.window.findChild<ParameterEditor *>();
    QTRY_COMPARE(editor->findChild<QListWidget *>()->currentRow(), 1);
    SerialPort::portOpened = true;
    editor->readPageSlt();
    QVERIFY(shell.window.close());
    QTRY_VERIFY(!editor);
}

QTEST_MAIN(MainWindowClosingTest)
#include "tst_mainwindow_closing.moc"
