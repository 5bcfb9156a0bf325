// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/workingfolder.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileDialog>
#include <QStandardPaths>

#include <algorithm>

namespace {

QString markName(const QString &process)
{
    return QStringLiteral("instance-%1.lock").arg(process);
}

std::unique_ptr<QLockFile> tryMark(const QString &name)
{
    // Absolute: it is removed by its name.
    auto mark = std::make_unique<QLockFile>(QDir::current().absoluteFilePath(name));
    mark->setStaleLockTime(0); // no age makes it void, only a dead process
    mark->tryLock(0);
    return mark;
}

} // namespace

std::unique_ptr<QLockFile> markWorkingFolder()
{
    return tryMark(markName(QString::number(QCoreApplication::applicationPid())));
}

bool isWorkingFolderShared()
{
    const QString own = markName(QString::number(QCoreApplication::applicationPid()));
    const QStringList names = QDir::current().entryList({markName(QStringLiteral("*"))}, QDir::Files);
    return std::any_of(names.begin(), names.end(), [&own](const QString &name) {
        return name != own && tryMark(name)->error() == QLockFile::LockFailedError;
    });
}

void keepDialogsOutOfSettings()
{
    const QDir settings(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation));
    if (!QDir::current().canonicalPath().startsWith(settings.canonicalPath() + QLatin1Char('/')))
        return;
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    // Outlasts the dialog: the next one begins where the last one stood.
    QFileDialog().setDirectory(QDir(documents).exists() ? documents : QDir::homePath());
}
