// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/testdirectory.h"

#include <QDir>
#include <QSettings>

TestDirectory::TestDirectory()
    : before(QDir::currentPath())
{
    QDir::setCurrent(directory.path());
}

TestDirectory::~TestDirectory()
{
    QDir::setCurrent(before);
}

void TestDirectory::clear() const
{
    QDir dir(directory.path());
    const QFileInfoList entries = dir.entryInfoList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden);
    for (const QFileInfo &entry : entries) {
        if (entry.isDir())
            QDir(entry.filePath()).removeRecursively();
        else
            QFile::remove(entry.filePath());
    }
}

void TestDirectory::setLanguage(const QString &language) const
{
    QSettings settings(QStringLiteral("settings.ini"), QSettings::IniFormat);
    settings.setValue(QStringLiteral("Language/Language"), language);
}
