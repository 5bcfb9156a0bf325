// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/wholefile.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

std::optional<QByteArray> readWholeFile(const QString &name)
{
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    // Counted while it is read: a device tells no size.
    const QByteArray bytes = file.read(wholeFileLimit + 1);
    if (bytes.size() > wholeFileLimit || file.error() != QFileDevice::NoError)
        return std::nullopt;
    return bytes;
}

bool writeWholeFile(const QString &name, const QByteArray &bytes)
{
    const QFileInfo info(name);
    if (info.exists() && !info.isFile()) {
        // A device is written to; a file renamed onto its name would take its place.
        QFile device(name);
        return device.open(QIODevice::WriteOnly) && device.write(bytes) == bytes.size() && device.flush();
    }
    QSaveFile file(name);
    file.setDirectWriteFallback(true);
    // Flushed first: a commit takes a last part that the disk has no room for as written.
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.flush() &&
           file.commit();
}
