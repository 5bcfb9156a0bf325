// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/cataloguefile.h"

#include <QFile>

CatalogueFile readCatalogueFile(const QString &path)
{
    CatalogueFile read;
    QFile file(path);
    if (!file.exists())
        read.failure = CatalogueFile::Failure::Missing;
    else if (!file.open(QIODevice::ReadOnly))
        read.failure = CatalogueFile::Failure::Unreadable;
    else
        read.content = file.readAll();
    return read;
}
