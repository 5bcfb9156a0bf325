// SPDX-License-Identifier: GPL-3.0-or-later
// A catalogue file of the resources as bytes, or why there are none. Free function; any thread.
#pragma once

#include <QByteArray>
#include <QString>

struct CatalogueFile
{
    enum class Failure { None, Missing, Unreadable };

    QByteArray content;
    Failure failure = Failure::None;
};

CatalogueFile readCatalogueFile(const QString &path);
