// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/doubleaddress.h"

#include <QFile>
#include <QSet>

QStringList readDoubleAddressList(const QString &path)
{
    QStringList codes;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return codes;
    while (!file.atEnd())
        codes.append(QString::fromLatin1(file.readLine()).trimmed());
    return codes;
}

bool isDouble(const QString &code)
{
    static const QStringList lines = readDoubleAddressList(QStringLiteral(":/config/config/address.txt"));
    static const QSet<QString> codes(lines.begin(), lines.end());
    return codes.contains(code);
}
