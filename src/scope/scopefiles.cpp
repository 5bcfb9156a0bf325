// SPDX-License-Identifier: GPL-3.0-or-later
#include "scope/scopefiles.h"

#include "scope/scoperecord.h"
#include "settings/settingskeys.h"
#include "widgets/messages.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileDialog>
#include <QSettings>

namespace {

struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(Scope)
};

QString savedPath(QLatin1String key)
{
    QSettings settings(settingsFile, QSettings::IniFormat);
    settings.beginGroup(settingskey::savePath);
    return settings.value(key).toString();
}

void savePath(QLatin1String key, const QString &path)
{
    QSettings settings(settingsFile, QSettings::IniFormat);
    settings.beginGroup(settingskey::savePath);
    settings.setValue(key, path);
}

QString folderOf(const QString &fileName)
{
    return fileName.left(fileName.lastIndexOf(QLatin1Char('/')));
}

// The folder that the user picks. The first time it is a new one inside it.
QString askForRecordFolder(QWidget *parent)
{
    const QString before = savedPath(settingskey::saveFilePath);
    const QString answer = QFileDialog::getExistingDirectory(
        parent, Texts::tr("Save File"), before.isEmpty() ? QStringLiteral("/home") : before,
        QFileDialog::ShowDirsOnly | QFileDialog::DontResolveSymlinks);
    return answer.isEmpty() || !before.isEmpty() ? answer : answer + QLatin1String("/scope");
}

bool isSameFolder(const QString &one, const QString &other)
{
    return QDir(one).canonicalPath() == QDir(other).canonicalPath();
}

} // namespace

void saveScopeRecord(ScopeRecord *record, QWidget *parent)
{
    const QString saveDir = askForRecordFolder(parent);
    if (saveDir.isEmpty())
        return;
    if (QDir(saveDir).exists() && isSameFolder(saveDir, record->directory())) {
        showMessage(
            Texts::tr("The record already lies in this folder, and the next run deletes it. Please choose "
                      "another folder."));
        return;
    }
    QDir().mkpath(saveDir);
    const QStringList left = record->copyTo(saveDir);
    savePath(settingskey::saveFilePath, saveDir);
    QString text = Texts::tr("Successfully save scope data file!");
    if (!left.isEmpty())
        text += QLatin1Char('\n') +
                Texts::tr("Not saved, since the name is taken or the folder takes no files:") +
                QLatin1Char('\n') + left.join(QLatin1Char('\n'));
    showMessage(text);
}

QString askForScopeFile()
{
    const QString fileName = QFileDialog::getOpenFileName(nullptr, Texts::tr("Open txt file"),
                                                          savedPath(settingskey::openFilePath),
                                                          Texts::tr("Parameter File(*.txt)"));
    if (!fileName.isEmpty())
        savePath(settingskey::openFilePath, folderOf(fileName));
    return fileName;
}
