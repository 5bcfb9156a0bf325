// SPDX-License-Identifier: GPL-3.0-or-later
#include "scope/recordfolder.h"

#include <QCoreApplication>
#include <QDir>
#include <QLockFile>
#include <QStandardPaths>
#include <QTemporaryFile>

namespace {

// More than anybody starts side by side; ends the search where locks are never given.
constexpr int mostFolders = 100;

bool takesFiles(const QString &folder)
{
    return QDir().mkpath(folder) && QTemporaryFile(folder + QLatin1String("/probe")).open();
}

QString folderIn(const QString &place, int number)
{
    const QString usual = place + QLatin1String("/scope");
    return number == 1 ? usual : QStringLiteral("%1-%2").arg(usual).arg(number);
}

} // namespace

RecordFolder::RecordFolder(const QStringList &places)
{
    for (const QString &place : places) {
        if (take(place))
            return;
    }
    folder = folderIn(places.last(), 1);
}

RecordFolder::~RecordFolder() = default;

const RecordFolder &RecordFolder::ofThisProcess()
{
    static const RecordFolder folder(
        {QCoreApplication::applicationDirPath(),
         QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation)});
    return folder;
}

bool RecordFolder::take(const QString &place)
{
    QDir().mkpath(place);
    for (int number = 1; number <= mostFolders; ++number) {
        folder = folderIn(place, number);
        lock = std::make_unique<QLockFile>(folder + QLatin1String(".lock"));
        lock->setStaleLockTime(0); // a run may last for days; only a dead holder gives it up
        if (lock->tryLock(0) && takesFiles(folder))
            return true;
        if (lock->error() != QLockFile::LockFailedError)
            break;
    }
    lock.reset();
    return false;
}
