// SPDX-License-Identifier: GPL-3.0-or-later
// A folder that one process alone records into, held by a lock file beside it. Any thread; owned by whoever
// records there.
#pragma once

#include <QString>
#include <QStringList>

#include <memory>

class QLockFile;

class RecordFolder
{
public:
    // Takes "scope" in the first of the places that takes files; "scope-2", "scope-3" and so on there while
    // others hold those before. A folder whose holder has died is free again.
    explicit RecordFolder(const QStringList &places);
    ~RecordFolder();
    Q_DISABLE_COPY_MOVE(RecordFolder)

    // That of this process, for as long as it lives: the program's own folder, or the user's data folder
    // where that takes no files.
    static const RecordFolder &ofThisProcess();

    // Where no place takes files the usual one in the last of them, held by nobody.
    QString path() const { return folder; }

private:
    bool take(const QString &place);

    std::unique_ptr<QLockFile> lock;
    QString folder;
};
