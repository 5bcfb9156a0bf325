// SPDX-License-Identifier: GPL-3.0-or-later
// Reading and writing whole files in the working folder of a test.
#pragma once

#include <QFile>

namespace testfiles {

inline QByteArray contentOf(const QString &name)
{
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no file");
}

inline void put(const QString &name, const QByteArray &bytes)
{
    QFile file(name);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("the test can't write its own file");
}

} // namespace testfiles
