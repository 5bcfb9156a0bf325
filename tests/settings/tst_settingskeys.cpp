// SPDX-License-Identifier: GPL-3.0-or-later
// The names in the settings file: a key that is renamed loses what users have set.
#include "settings/applanguage.h"
#include "settings/settingskeys.h"
#include "support/testdirectory.h"

#include <QFile>
#include <QSettings>
#include <QTest>

class SettingsKeysTest : public QObject
{
    Q_OBJECT

private slots:
    void nameStaysAsItIs_data();
    void nameStaysAsItIs();
    void fileLiesInTheWorkingDirectory();
};

void SettingsKeysTest::nameStaysAsItIs_data()
{
    QTest::addColumn<QString>("constant");
    QTest::addColumn<QString>("name");
    QTest::newRow("file") << QString(settingsFile) << "settings.ini";
    QTest::newRow("geometry") << QString(settingskey::geometry) << "geometry";
    QTest::newRow("language") << QString(settingskey::language) << "Language";
    QTest::newRow("splitterSizes") << QString(settingskey::splitterSizes) << "splitterSizes";
    QTest::newRow("needSetYaxis") << QString(settingskey::needSetYaxis) << "NeedSetYaxis";
    QTest::newRow("scopeColor") << QString(settingskey::scopeColor) << "ScopeColor";
    QTest::newRow("savePath") << QString(settingskey::savePath) << "SavePath";
    QTest::newRow("openFilePath") << QString(settingskey::openFilePath) << "openFilePath";
    QTest::newRow("saveFilePath") << QString(settingskey::saveFilePath) << "saveFilePath";
    QTest::newRow("savePixmapPath") << QString(settingskey::savePixmapPath) << "savePixmapPath";
}

void SettingsKeysTest::nameStaysAsItIs()
{
    QFETCH(QString, constant);
    QFETCH(QString, name);
    QCOMPARE(constant, name);
}

void SettingsKeysTest::fileLiesInTheWorkingDirectory()
{
    const TestDirectory directory;
    QVERIFY(!QFile::exists(directory.path() + "/settings.ini"));
    writeConfiguredLanguage(QStringLiteral("zh_CN"));
    QFile file(directory.path() + "/settings.ini");
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll().replace("\r\n", "\n").trimmed(), QByteArray("[Language]\nLanguage=zh_CN"));
}

QTEST_GUILESS_MAIN(SettingsKeysTest)
#include "tst_settingskeys.moc"
